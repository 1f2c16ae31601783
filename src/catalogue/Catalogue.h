// Catalogue: the 27 game lists, the master list and the scan's working table.
#pragma once

#include "catalogue/Table.h"

#include <array>

namespace ombrel::catalogue {

constexpr int kMaxGamesPerList = 4000;
constexpr int kMaxMasterRows = 5000;
constexpr int kLists = 27;

struct Catalogue
{
    Table gameList { kMaxMasterRows, 2 }; // column 1 the ROM name, column 2 the description
    Table scanList { kMaxMasterRows, 2 };
    // games[n] for lists 1 to 26; games[0] is never used.
    std::array<Table, 27> games { makeGames() };
    Table extras { kMaxGamesPerList, 4 }; // program, description, folder, options

    // The table of list n: games(n) for 1 to 26, extras for 27; nullptr outside 1 to 27.
    Table* list(int n);
    const Table* list(int n) const;

private:
    static std::array<Table, 27> makeGames();
};

} // namespace ombrel::catalogue
