// Starting a game on a whole cabinet when the program cannot be started: the player sees nothing of
// it, and the browser goes on as after a game that ended at once, or as after a timed start.
#include "CabinetFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using namespace ombrel;
using namespace ombrel::test::vk;
using test::CabinetFixture;
using test::CabinetSetup;

namespace {

TEST(MainLaunchTest, ProgramThatCannotStart)
{
    struct Case
    {
        const char* name;
        int path;
        std::string launch; // the trace line of the start
        bool timed;
        std::string logged; // the failure log's line
    };
    const Case cases[] = {
        // Path 1's program is the settings' default, in no folder; the ROM and the empty options follow.
        { "user path", 1, "launch mame.exe g1_001  | in  failed", false,
            "launch \"mame.exe g1_001 \" in \"\": could not be started (" },
        { "modeler", 22, "launch emus/modeler/modeler.exe | in emus/modeler/ failed", true,
            "launch \"emus/modeler/modeler.exe\" in \"emus/modeler/\": could not be started (" },
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        CabinetFixture fx;
        CabinetSetup setup;
        setup.muted = true; // the game starts at the key itself
        fx.boot(setup);
        auto& cabinet = fx.cabinet();
        cabinet.settings.modelerDir = "emus/modeler/";
        cabinet.catalogue.games[22].set(1, 1, "vf");
        cabinet.run.curPath = row.path;
        fx.main().nav.populateList();
        fx.processes.setStartSucceeds(false);

        fx.mark();
        fx.press(kEnter);
        fx.release(kEnter);
        EXPECT_EQ(fx.countSinceMark(row.launch), 1);
        EXPECT_EQ(fx.countSinceMark("process exit 1"), 0);
        EXPECT_NE(fx.home.read("ombrel.log").find(row.logged), std::string::npos) << fx.home.read("ombrel.log");
        auto& main = fx.main();
        EXPECT_TRUE(fx.active("Main"));
        EXPECT_EQ(main.enabled(), !row.timed);
        // A timed start arms its timers all the same: the keys go to whatever has the focus, and the
        // browser takes input again after five seconds.
        fx.runFor(1200);
        EXPECT_EQ(fx.countSinceMark("inject down 9"), row.timed ? 8 : 0);
        fx.runFor(3799);
        EXPECT_EQ(main.enabled(), !row.timed);
        fx.runFor(1);
        EXPECT_TRUE(main.enabled());
        // The key map's Down reaches the browser again.
        const int before = fx.listIndex();
        fx.press(kDown);
        fx.runFor(80);
        fx.release(kDown);
        EXPECT_EQ(fx.listIndex(), std::min(before + 1, main.c.List1.listCount() - 1));
    }
}

} // namespace
