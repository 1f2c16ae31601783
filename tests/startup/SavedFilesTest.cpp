// The program's own files around a start and an exit: temporary files that a killed write left are taken
// away before anything is read, and a key map that is a link leading nowhere is kept and told about.
#include "CabinetFixture.h"

#include "core/AtomicFile.h"

#include <gtest/gtest.h>

#include <climits>
#include <filesystem>

namespace ombrel::test {
namespace {

namespace fs = std::filesystem;

TEST(SavedFilesTest, LeftoversOfAKilledWriteGoBeforeTheStartReadsAnything)
{
    CabinetFixture fx;
    fx.write({});
    const auto left = [](const std::string& name) { return core::temporaryName(name, INT_MAX, 1); };
    for (const char* name : { "ombrel.cfg", "omkeys.cfg", "l 1.lst", "l26.lst", "gamelist.lst" })
        fx.home.write(left(name), "half");
    fx.home.write(left("l 2.lst") + "/inside", "a folder under that name cannot be removed");
    ::testing::internal::CaptureStderr();
    fx.boot();
    const std::string err = ::testing::internal::GetCapturedStderr();
    const std::vector<std::string> first(fx.trace.lines.begin(), fx.trace.lines.begin() + 6);
    EXPECT_EQ(first,
        (std::vector<std::string> { "file remove " + left("l 1.lst"), "file remove " + left("l26.lst"),
            "file remove " + left("ombrel.cfg"), "file remove " + left("omkeys.cfg"),
            "file remove " + left("l 2.lst") + " failed", "form load blanker" }));
    EXPECT_TRUE(fx.home.exists(left("gamelist.lst"))) << "the program never writes gamelist.lst";
    EXPECT_NE(err.find("cannot remove the left-over " + fx.home.path() + left("l 2.lst")), std::string::npos)
        << err;
    EXPECT_TRUE(fx.showing("Main")) << "what cannot be removed does not stop the start";
}

TEST(SavedFilesTest, AKeyMapLinkThatLeadsNowhereIsKeptAndTold)
{
    CabinetFixture fx;
    fx.write({ .muted = true });
    fs::remove(fx.home.root() / "omkeys.cfg");
    fs::create_symlink("shared/omkeys.cfg", fx.home.root() / "omkeys.cfg");
    fx.boot();
    fx.mark();
    fx.cabinet().keys.keyExit = vk::kEsc; // the key map could not be read: the player would define one
    fx.tap(vk::kEsc);
    EXPECT_EQ(fx.countSinceMark("file write omkeys.cfg failed"), 1);
    EXPECT_EQ(fx.countSinceMark("file write ombrel.cfg"), 1) << "the saved state is written all the same";
    EXPECT_TRUE(fs::is_symlink(fx.home.root() / "omkeys.cfg"));
    EXPECT_FALSE(fs::exists(fx.home.root() / "shared"));
    EXPECT_NE(fx.failureEcho.str().find("ombrel: cannot write " + fx.home.path() + "omkeys.cfg: it is a link to "
                  + fx.home.path() + "shared/omkeys.cfg, which does not exist"),
        std::string::npos)
        << fx.failureEcho.str();
}

} // namespace
} // namespace ombrel::test
