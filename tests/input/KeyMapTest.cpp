// KeyMap: reading omkeys.cfg (whole, short, damaged, missing) with the Tab fallback, and the writer's
// exact bytes.
#include "TempHome.h"

#include "input/KeyMap.h"
#include "platform/Files.h"

#include "CabinetKeys.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace ombrel;
using input::KeyCode;
using input::KeyMap;

namespace {

// The keys in file order, for comparing whole maps at a glance.
std::vector<KeyCode> inFileOrder(const KeyMap& keys)
{
    std::vector<KeyCode> out;
    for (KeyCode KeyMap::*key : input::kKeyFileOrder)
        out.push_back(keys.*key);
    return out;
}

std::vector<KeyCode> codes(std::initializer_list<int> values)
{
    std::vector<KeyCode> out;
    for (int v : values)
        out.push_back(v < 0 ? KeyCode() : KeyCode(static_cast<int16_t>(v)));
    return out;
}

struct ReadCase
{
    const char* name;
    std::string file;
    std::vector<KeyCode> expected;
    bool complete; // read without a stop
    const char* fileName = "omkeys.cfg"; // as written; it is always looked up as omkeys.cfg
    bool held = false; // the keys were 101 to 113 before the reading, as when the browser is rebuilt
};

TEST(KeyMapTest, ReadsTheFileOrFallsBackToTabForTheMenu)
{
    const std::vector<ReadCase> cases {
        { "one line", "38,40,34,33,116,112,39,37,13,27,83,77,73\r\n",
            codes({ 38, 40, 34, 33, 116, 112, 39, 37, 13, 27, 83, 77, 73 }), true },
        { "line ends and commas mixed, blanks around values, no final line end",
            "  38\r\n40,34\n 33 ,116\r112,39,37,13,27,83,77,73",
            codes({ 38, 40, 34, 33, 116, 112, 39, 37, 13, 27, 83, 77, 73 }), true },
        { "twelve values: the menu key becomes Tab over the value read",
            "38,40,34,33,116,112,39,37,13,27,83,77\r\n",
            codes({ 38, 40, 34, 33, 116, 9, 39, 37, 13, 27, 83, 77, -1 }), false },
        { "three values", "38,40,34\r\n", codes({ 38, 40, 34, -1, -1, 9, -1, -1, -1, -1, -1, -1, -1 }),
            false },
        { "an empty file", "", codes({ -1, -1, -1, -1, -1, 9, -1, -1, -1, -1, -1, -1, -1 }), false },
        { "empty fields leave their keys empty and the reading goes on", ",,,,,9,,,,27,,,\r\n",
            codes({ -1, -1, -1, -1, -1, 9, -1, -1, -1, 27, -1, -1, -1 }), true },
        { "a word stops the reading", "38,40,up,33,116,112,39,37,13,27,83,77,73\r\n",
            codes({ 38, 40, -1, -1, -1, 9, -1, -1, -1, -1, -1, -1, -1 }), false },
        { "a code beyond 16 bits stops the reading", "38,40,34,33,116,112,39,37,13,70000,83,77,73\r\n",
            codes({ 38, 40, 34, 33, 116, 9, 39, 37, 13, -1, -1, -1, -1 }), false },
        { "a fraction is rounded half to even", "38.5,39.5,34,33,116,112,39,37,13,27,83,77,73\r\n",
            codes({ 38, 40, 34, 33, 116, 112, 39, 37, 13, 27, 83, 77, 73 }), true },
        { "values past the thirteenth are not read", "1,2,3,4,5,6,7,8,9,10,11,12,13,14,oops\r\n",
            codes({ 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13 }), true },
        { "a file written on Windows is found whatever its case", "1,2,3,4,5,6,7,8,9,10,11,12,13\r\n",
            codes({ 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13 }), true, "OMKEYS.CFG" },
        { "a missing file gives Tab for the menu", "1,2\r\n",
            codes({ -1, -1, -1, -1, -1, 9, -1, -1, -1, -1, -1, -1, -1 }), false, "other.cfg" },
        { "a missing file keeps the other keys", "1,2\r\n",
            codes({ 101, 102, 103, 104, 105, 9, 107, 108, 109, 110, 111, 112, 113 }), false, "other.cfg",
            true },
    };
    for (const ReadCase& row : cases) {
        SCOPED_TRACE(row.name);
        test::TempHome home;
        home.write(row.fileName, row.file);
        KeyMap keys;
        for (size_t i = 0; row.held && i < input::kKeyFileOrder.size(); ++i)
            keys.*input::kKeyFileOrder[i] = static_cast<int16_t>(101 + i);
        const std::string message = input::getKeys(home.path() + "omkeys.cfg", keys);
        EXPECT_EQ(message.empty(), row.complete) << message;
        EXPECT_EQ(inFileOrder(keys), row.expected);
    }
}

TEST(KeyMapTest, WritesOneLineOfThirteenCodesAndReadsItBack)
{
    test::TempHome home;
    platform::DiskFiles disk;
    KeyMap keys = test::cabinetKeys();
    const std::string path = home.path() + "omkeys.cfg";
    ASSERT_EQ(input::saveKeys(disk, path, keys), "");
    EXPECT_EQ(home.read("omkeys.cfg"), "38,40,34,33,116,9,39,37,13,27,53,77,49\r\n");
    KeyMap back;
    EXPECT_EQ(input::getKeys(path, back), "");
    EXPECT_EQ(back, keys);

    // A cabinet without a key map saves what it has, and reads the same back.
    KeyMap bare;
    bare.keyConfig = 9;
    ASSERT_EQ(input::saveKeys(disk, path, bare), "");
    EXPECT_EQ(home.read("omkeys.cfg"), ",,,,,9,,,,,,,\r\n");
    KeyMap bareBack;
    EXPECT_EQ(input::getKeys(path, bareBack), "");
    EXPECT_EQ(bareBack, bare);
}

} // namespace
