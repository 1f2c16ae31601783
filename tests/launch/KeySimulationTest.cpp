// Tests of the games' places in the emulators' lists and of the key sequences pressed into games.
#include "launch/GameTables.h"
#include "launch/KeySimulation.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace ombrel::launch {
namespace {

// A sequence as text, "v13 ^13" for a press of Enter, so a failure shows where the order goes wrong.
std::string text(const KeySequence& keys)
{
    std::ostringstream out;
    for (const KeyEvent& key : keys)
        out << (out.tellp() > 0 ? " " : "") << (key.up ? "^" : "v") << key.vk;
    return out.str();
}

std::string presses(int vk, int times)
{
    std::string out;
    for (int i = 0; i < times; ++i)
        out += (out.empty() ? "" : " ") + ("v" + std::to_string(vk) + " ^" + std::to_string(vk));
    return out;
}

TEST(GameTables, NamesMatchWholeAndWithCase)
{
    // The tables' own places are data; what is tested is how a name finds its row.
    EXPECT_EQ(modelerDownPresses("arabianfight"), 0);
    EXPECT_EQ(modelerDownPresses("F1ExhaustNote"), 7);
    EXPECT_EQ(impactDownPresses("psychic force"), 1);
    EXPECT_EQ(s11GameNumber("souledgec"), "4");
    for (const char* other : { "f1exhaustnote", "F1superlap", "ga", "vf ", "" }) {
        SCOPED_TRACE(other);
        EXPECT_EQ(modelerDownPresses(other), std::nullopt);
    }
    EXPECT_EQ(impactDownPresses("vf"), std::nullopt);
    EXPECT_EQ(s11GameNumber("Tekken"), std::nullopt);

    // getS11Game rewrites a known name to its number and leaves anything else as it is.
    for (const auto& [rom, expected] : { std::pair { "tk2b", "7" }, { "roms\\tekken", "roms\\tekken" }, { "7", "7" } }) {
        std::string rewritten = rom;
        getS11Game(rewritten);
        EXPECT_EQ(rewritten, expected);
    }
}

TEST(KeySequences, EdgesOfTheListsAndTheCabinetKeys)
{
    // The launch scenarios press the common sequences; these are the ones they do not reach.
    const std::pair<KeySequence, std::string> rows[] = {
        // The first row of the list: no Down, but the rest in full.
        { modelerListKeys("arabianfight").keys,
            presses(vk::kTab, 3) + " " + presses(vk::kEnter, 1) + " " + presses(vk::kTab, 5) + " "
                + presses(vk::kEnter, 1) },
        { impactListKeys("pacman"), presses(vk::kEnter, 1) },
        { tvKeys(), "v17 v18 v65 ^65 ^18 ^17" },
        { monitorKeys(), "v17 v18 v68 ^68 ^18 ^17" },
    };
    for (const auto& [keys, expected] : rows)
        EXPECT_EQ(text(keys), expected);
    EXPECT_TRUE(modelerListKeys("arabianfight").complete);
    EXPECT_FALSE(modelerListKeys("VF").complete);
}

} // namespace
} // namespace ombrel::launch
