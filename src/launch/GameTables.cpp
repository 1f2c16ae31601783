// GameTables: the menu positions of the Modeler and Impact games, and the S11 game numbers.
#include "launch/GameTables.h"

#include <array>
#include <utility>

namespace ombrel::launch {

namespace {

using Position = std::pair<std::string_view, int>;

// The Modeler emulator's list has no game one row below the first.
constexpr std::array<Position, 20> kModeler { {
    { "arabianfight", 0 },
    { "ga2", 2 },
    { "ga2usa", 3 },
    { "spiderman", 4 },
    { "spideyusa", 5 },
    { "sonicarcade", 6 },
    { "F1ExhaustNote", 7 },
    { "f1superlap", 8 },
    { "orunners", 9 },
    { "radmobile", 10 },
    { "radrally", 11 },
    { "vrracin", 12 },
    { "alien3", 13 },
    { "harddunk", 14 },
    { "svf", 15 },
    { "titlef", 16 },
    { "burningrival", 17 },
    { "holosseum", 18 },
    { "vf", 19 },
    { "starwarsarcade", 20 },
} };

constexpr std::array<Position, 12> kImpact { {
    { "arabianfight", 0 },
    { "psychic force", 1 },
    { "rvschool", 2 },
    { "sg2j", 3 },
    { "sfex", 4 },
    { "sfexj", 5 },
    { "sfexpj", 6 },
    { "sfexp", 7 },
    { "sfex2", 8 },
    { "sfex2p", 9 },
    { "tgmj", 10 },
    { "ts2j", 11 },
} };

constexpr std::array<std::pair<std::string_view, std::string_view>, 8> kS11 { {
    { "danceyes", "1" },
    { "xevi3dg", "2" },
    { "souledge", "3" },
    { "souledgec", "4" },
    { "tekken", "5" },
    { "starswep", "6" },
    { "tk2b", "7" },
    { "myangel3", "8" },
} };

template <class Table>
auto lookUp(const Table& table, std::string_view rom)
    -> std::optional<typename Table::value_type::second_type>
{
    for (const auto& [name, value] : table)
        if (name == rom)
            return value;
    return std::nullopt;
}

} // namespace

std::optional<int> modelerDownPresses(std::string_view rom)
{
    return lookUp(kModeler, rom);
}

std::optional<int> impactDownPresses(std::string_view rom)
{
    return lookUp(kImpact, rom);
}

std::optional<std::string> s11GameNumber(std::string_view rom)
{
    if (auto number = lookUp(kS11, rom))
        return std::string(*number);
    return std::nullopt;
}

void getS11Game(std::string& runRom)
{
    if (auto number = s11GameNumber(runRom))
        runRom = *number;
}

} // namespace ombrel::launch
