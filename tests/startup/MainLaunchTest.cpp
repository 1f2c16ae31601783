// A timed start whose program cannot be started: the browser goes on as after a timed start. (A plain
// start that fails is the scenario launch-failed.)
#include "CabinetFixture.h"

#include <gtest/gtest.h>

using namespace ombrel;
using namespace ombrel::test::vk;

namespace {

TEST(MainLaunchTest, ATimedProgramThatCannotStartStillHoldsTheBrowserForItsTime)
{
    test::CabinetFixture fx;
    fx.boot({ .muted = true }); // the game starts at the key itself
    auto& cabinet = fx.cabinet();
    cabinet.settings.modelerDir = "emus/modeler/";
    cabinet.catalogue.games[22].set(1, 1, "vf");
    cabinet.run.curPath = 22;
    fx.main().nav.populateList();
    fx.processes.setStartSucceeds(false);

    fx.mark();
    fx.tap(kEnter);
    EXPECT_EQ(fx.countSinceMark("launch emus/modeler/modeler.exe | in emus/modeler/ failed"), 1);
    EXPECT_NE(fx.home.read("ombrel.log")
                  .find("launch \"emus/modeler/modeler.exe\" in \"emus/modeler/\": could not be started ("),
        std::string::npos);
    auto& main = fx.main();
    EXPECT_TRUE(fx.active("Main"));
    EXPECT_FALSE(main.enabled());
    // The timers are armed all the same: the keys go to whatever has the focus, and the browser takes
    // input again after five seconds.
    fx.runFor(1200);
    EXPECT_EQ(fx.countSinceMark("inject down 9"), 8);
    fx.runFor(3799);
    EXPECT_FALSE(main.enabled());
    fx.runFor(1);
    EXPECT_TRUE(main.enabled());
}

} // namespace
