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

TEST(KeySequences, EachEmulatorGetsItsKeysInOrder)
{
    const std::string tab3 = presses(vk::kTab, 3);
    const std::string tail
        = presses(vk::kEnter, 1) + " " + presses(vk::kTab, 5) + " " + presses(vk::kEnter, 1);
    struct Row
    {
        const char* name;
        KeySequence keys;
        std::string expected;
    };
    const Row rows[] = {
        { "modeler, found", modelerListKeys("svf").keys, tab3 + " " + presses(vk::kDown, 15) + " " + tail },
        // The first row of the list: no Down, but the rest in full.
        { "modeler, first row", modelerListKeys("arabianfight").keys, tab3 + " " + tail },
        { "modeler, not in the list", modelerListKeys("pacman").keys, tab3 },
        { "impact, found", impactListKeys("sfex2p"), presses(vk::kDown, 9) + " " + presses(vk::kEnter, 1) },
        { "impact, not in the list", impactListKeys("pacman"), presses(vk::kEnter, 1) },
        { "ultra 64", u64ListKeys(), presses(vk::kTab, 1) + " " + presses(vk::kEnter, 1) },
        // Alt comes up before F.
        { "visual pinball's close", vpCloseKeys(), "v81 ^81 v18 v70 ^18 ^70 v88 ^88" },
        { "tv", tvKeys(), "v17 v18 v65 ^65 ^18 ^17" },
        { "monitor", monitorKeys(), "v17 v18 v68 ^68 ^18 ^17" },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(text(row.keys), row.expected);
    }
    EXPECT_TRUE(modelerListKeys("vf").complete);
    EXPECT_TRUE(modelerListKeys("arabianfight").complete);
    EXPECT_FALSE(modelerListKeys("VF").complete);
}

} // namespace
} // namespace ombrel::launch
