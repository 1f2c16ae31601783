// The scan in the running cabinet, on the REFRESH key: new finds, a ROM folder that is gone, and no
// master list. (The scan a first run starts by itself is the scenario first-run-scan.)
#include "CabinetFixture.h"

#include "catalogue/Navigation.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace ombrel::test {
namespace {

constexpr int kF5 = 116; // REFRESH in the cabinet's key map

class RefreshTest : public ::testing::Test {
protected:
    std::vector<std::string> listItems()
    {
        auto& list = cab.main().c.List1;
        std::vector<std::string> items;
        for (int i = 0; i < list.listCount(); ++i)
            items.push_back(list.list(i));
        return items;
    }

    CabinetFixture cab;
};

TEST_F(RefreshTest, RefreshKeyRescansAndAFolderThatIsGoneEmptiesItsList)
{
    cab.boot({ .listSizes = { 6, 3, 3 } });
    EXPECT_FALSE(cab.main().timRefreshit.enabled()) << "lists with games: no scan by itself";
    EXPECT_EQ(cab.main().c.List1.listCount(), 6);
    // List 1 has two of its games now, list 3 one; list 2's folder is not there at all.
    cab.home.write("roms/1/g1_005.zip", "");
    cab.home.write("roms/1/G1_002.Zip", "");
    cab.home.write("roms/1/stranger.zip", "");
    cab.home.write("roms/3/g3_003.zip", "");
    cab.mark();

    cab.tap(kF5);
    EXPECT_EQ(cab.home.read("l 1.lst"), "\"g1_002\",\"Game 1-2\"\r\n\"g1_005\",\"Game 1-5\"\r\n");
    EXPECT_EQ(cab.home.read("l 2.lst"), "");
    EXPECT_EQ(cab.home.read("l 3.lst"), "\"g3_003\",\"Game 3-3\"\r\n");
    EXPECT_EQ(cab.countSinceMark("file write l 2.lst"), 1);
    EXPECT_EQ(cab.curPath(), 1);
    EXPECT_EQ(listItems(), (std::vector<std::string> { "Game 1-2", "Game 1-5" }));
    EXPECT_TRUE(cab.cabinet().catalogue.games[2].at(1, 1).empty());

    // The browser goes on from the new lists.
    cab.main().nav.gNextPath();
    EXPECT_EQ(cab.curPath(), 3) << "the emptied list is passed by";
}

TEST_F(RefreshTest, WithoutTheMasterListNothingIsFoundAndListsThatHoldGamesAreKept)
{
    cab.write({ .listSizes = { 3, 0 } });
    std::filesystem::remove(cab.home.root() / "gamelist.lst");
    const std::string held = cab.home.read("l 1.lst");
    cab.boot(); // nothing is loaded, so the scan starts by itself, and finds nothing
    cab.runFor(2000);
    EXPECT_EQ(cab.main().c.ll.get(cab.cabinet().run.midRow)->caption(), catalogue::kNoRomsMessage);
    EXPECT_EQ(cab.home.read("l 1.lst"), held);
    cab.mark();
    cab.tap(kF5);
    EXPECT_EQ(cab.home.read("l 1.lst"), held);
    EXPECT_EQ(cab.countSinceMark("file write l 1.lst"), 0);
    EXPECT_EQ(cab.countSinceMark("file write l 2.lst"), 1) << "an empty list loses nothing";
    EXPECT_EQ(cab.main().c.List1.listCount(), 0);
}

} // namespace
} // namespace ombrel::test
