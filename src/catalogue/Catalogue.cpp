// Catalogue: the tables of the 27 game lists and the master list.
#include "catalogue/Catalogue.h"

#include <utility>

namespace ombrel::catalogue {

namespace {

template <size_t... I> std::array<Table, sizeof...(I)> gamesTables(std::index_sequence<I...>)
{
    return { ((void)I, Table(kMaxGamesPerList, 2))... };
}

} // namespace

std::array<Table, 27> Catalogue::makeGames()
{
    return gamesTables(std::make_index_sequence<27>());
}

Table* Catalogue::list(int n)
{
    if (n >= 1 && n < kLists)
        return &games[static_cast<size_t>(n)];
    if (n == kLists)
        return &extras;
    return nullptr;
}

const Table* Catalogue::list(int n) const
{
    if (n >= 1 && n < kLists)
        return &games[static_cast<size_t>(n)];
    if (n == kLists)
        return &extras;
    return nullptr;
}

} // namespace ombrel::catalogue
