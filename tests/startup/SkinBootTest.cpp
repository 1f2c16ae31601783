// The skin through a whole boot: the skin's layout spread over the screen by the form scaler, and the
// browser taken down and rebuilt when its skin has gone.
#include "CabinetFixture.h"

#include "browser/SkinLayout.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace ombrel::test {
namespace {

// Panels, strip, cell, path, navigation, gap, alignment, logo (top, left, height, width) and flags.
const char* const kSkin
    = "1152,2856,1848,1332\r\n#TRUE#\r\n720,120,2124,2880\r\n#FALSE#\r\n"
      "696,5424,2124,2880\r\n#TRUE#\r\n348,2748,2040,504\r\n#FALSE#\r\n3960,120,7428,1632\r\n"
      "2\r\nlist\r\n1812,1572\r\n12,3504\r\n#TRUE#\r\n3720,3366\r\n#TRUE#\r\n60\r\n1\r\n"
      "2640,3360,1092,1452\r\n#TRUE#\r\n";

// The fake desktop is 640 by 480 pixels, 9600 by 7200 twips: the design form grows by 1.25 each way.
// (Every control and the strip's values spread over two screen sizes are the skin scenarios.)
TEST(SkinBootTest, TheSkinsLayoutIsSpreadOverTheScreen)
{
    CabinetFixture fx;
    fx.boot({ .skin = kSkin });
    auto& c = fx.main().c;
    const auto scaled = [](double left, double top, double width, double height) {
        return Box { left * 1.25, top * 1.25, width * 1.25, height * 1.25 };
    };
    EXPECT_EQ(boxOf(c.xScreen), scaled(2856, 1152, 1848, 1332));
    EXPECT_EQ(fx.failureEcho.str().find("skin.ini"), std::string::npos) << fx.failureEcho.str();

    // Taken down for a new skin that has no skin.ini, the browser comes back 2000 ms later where the last
    // skin put it.
    std::filesystem::remove(fx.home.root() / "omthemes/Skin/skin.ini");
    browser::KillDisplay(c, fx.cabinet().run);
    fx.runFor(1999);
    EXPECT_FALSE(fx.showing("Main"));
    fx.runFor(100);
    ASSERT_TRUE(fx.showing("Main"));
    EXPECT_EQ(boxOf(fx.main().c.xScreen), scaled(2856, 1152, 1848, 1332));
    const std::string log = fx.failureEcho.str();
    EXPECT_NE(log.find("omthemes/Skin/skin.ini cannot be opened"), std::string::npos) << log;
    browser::KillDisplay(fx.main().c, fx.cabinet().run);
    fx.runFor(2100);
    EXPECT_TRUE(fx.showing("Main"));
    EXPECT_EQ(fx.failureEcho.str(), log) << "the same cause is written once";
}

} // namespace
} // namespace ombrel::test
