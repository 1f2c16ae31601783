// The REFRESH key without a master list: nothing is found, and lists that hold games are kept. (The
// scan of every folder is the scenarios demo-refresh and first-run-scan.)
#include "CabinetFixture.h"

#include "catalogue/Navigation.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace ombrel::test {
namespace {

TEST(RefreshTest, WithoutTheMasterListNothingIsFoundAndListsThatHoldGamesAreKept)
{
    CabinetFixture cab;
    cab.write({ .listSizes = { 3, 0 } });
    std::filesystem::remove(cab.home.root() / "gamelist.lst");
    const std::string held = cab.home.read("l 1.lst");
    cab.boot(); // nothing is loaded, so the scan starts by itself, and finds nothing
    cab.runFor(2000);
    EXPECT_EQ(cab.main().c.ll.get(cab.cabinet().run.midRow)->caption(), catalogue::kNoRomsMessage);
    cab.mark();
    cab.tap(116); // F5
    EXPECT_EQ(cab.home.read("l 1.lst"), held);
    EXPECT_EQ(cab.countSinceMark("file write l 1.lst"), 0);
    EXPECT_EQ(cab.countSinceMark("file write l 2.lst"), 1) << "an empty list loses nothing";
    EXPECT_EQ(cab.main().c.List1.listCount(), 0);
}

} // namespace
} // namespace ombrel::test
