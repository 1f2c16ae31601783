// Tests of XrandrDisplayMode against a real X server (Xvfb), skipped where Xvfb cannot start. Xvfb
// lists one mode only, so the tests give its output more through XRandR, as a monitor would.
#include "platform/linux/XrandrDisplayMode.h"

#include "XvfbServer.h"

// NOTE: gtest comes before Xlib, whose None and Bool macros break gtest's declarations.
#include <gtest/gtest.h>

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

#include <cmath>
#include <string>
#include <utility>

namespace ombrel::platform::linux {
namespace {

// Gives the server's only output a mode it did not start with, as a monitor would list it (dotClock 0:
// a mode without timings, as Xvfb's own).
void addMode(const std::string& display, unsigned width, unsigned height, unsigned long dotClock = 0,
    unsigned hTotal = 0, unsigned vTotal = 0)
{
    Display* dpy = XOpenDisplay(display.c_str());
    ASSERT_NE(dpy, nullptr);
    Window root = DefaultRootWindow(dpy);
    XRRScreenResources* res = XRRGetScreenResources(dpy, root);
    ASSERT_TRUE(res && res->noutput >= 1);
    std::string name = std::to_string(width) + "x" + std::to_string(height) + "_" + std::to_string(dotClock)
        + "_" + std::to_string(hTotal) + "_" + std::to_string(vTotal);
    XRRModeInfo info {};
    info.width = width;
    info.height = height;
    info.dotClock = dotClock;
    info.hTotal = hTotal;
    info.vTotal = vTotal;
    info.name = name.data();
    info.nameLength = static_cast<unsigned>(name.size());
    XRRAddOutputMode(dpy, res->outputs[0], XRRCreateMode(dpy, root, &info));
    XSync(dpy, False);
    XRRFreeScreenResources(res);
    XCloseDisplay(dpy);
}

// The refresh rate of the mode the server shows now, to a tenth of a hertz (0 without timings).
int shownRefreshTenths(const std::string& display)
{
    Display* dpy = XOpenDisplay(display.c_str());
    if (!dpy)
        return -1;
    XRRScreenResources* res = XRRGetScreenResourcesCurrent(dpy, DefaultRootWindow(dpy));
    XRRCrtcInfo* crtc = XRRGetCrtcInfo(dpy, res, res->crtcs[0]);
    int tenths = -1;
    for (int i = 0; i < res->nmode; ++i) {
        const XRRModeInfo& m = res->modes[i];
        if (m.id == crtc->mode)
            tenths = m.hTotal && m.vTotal ? static_cast<int>(
                         std::lround(10.0 * static_cast<double>(m.dotClock) / (m.hTotal * m.vTotal)))
                                          : 0;
    }
    XRRFreeCrtcInfo(crtc);
    XRRFreeScreenResources(res);
    XCloseDisplay(dpy);
    return tenths;
}

class XrandrDisplayModeTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_server = test::XvfbServer::start("1024x768x24");
        if (!m_server)
            GTEST_SKIP() << "Xvfb could not start";
        m_display = XrandrDisplayMode::open(m_server->name().c_str());
        ASSERT_NE(m_display, nullptr);
    }
    std::unique_ptr<test::XvfbServer> m_server;
    std::unique_ptr<XrandrDisplayMode> m_display;
};

// The current mode is taken at any depth and impossible ones are refused; a listed mode is switched to
// for the whole server, and restore goes back to the desktop's.
TEST_F(XrandrDisplayModeTest, SwitchesToAListedModeAndBackAndRefusesImpossibleOnes)
{
    const runtime::PixelSize desktop { 1024, 768 }, small { 640, 480 };
    EXPECT_EQ(m_display->desktopSize(), desktop);
    // The depth is not the server's to change, so any depth is taken.
    EXPECT_EQ(m_display->change(1024, 768, 16, 0), 0);
    EXPECT_EQ(m_display->change(1024, 768, 32, 60), 0);
    for (auto [w, h] : { std::pair { 12345, 678 }, { 0, 768 }, { 1024, -768 }, { 640, 480 } })
        EXPECT_EQ(m_display->change(w, h, 32, 0), kModeBad) << w << "x" << h;
    EXPECT_EQ(m_display->desktopSize(), desktop);

    addMode(m_server->name(), 640, 480);
    // The mode was added after the display was opened: it is found all the same.
    ASSERT_EQ(m_display->change(640, 480, 32, 0), 0);
    EXPECT_EQ(m_display->desktopSize(), small);
    // A second connection sees the smaller screen too: the change is the server's, not ours.
    auto other = XrandrDisplayMode::open(m_server->name().c_str());
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(other->desktopSize(), small);
    EXPECT_EQ(m_display->restore(1024, 768, 24, 0), 0);
    EXPECT_EQ(m_display->desktopSize(), desktop);
    EXPECT_EQ(other->desktopSize(), desktop);
}

TEST_F(XrandrDisplayModeTest, RefreshRatesChooseAmongModesOfOneSize)
{
    const std::string& name = m_server->name();
    addMode(name, 640, 480, 25175000, 800, 525); // 59.94 Hz
    addMode(name, 640, 480, 31500000, 832, 520); // 72.8 Hz
    addMode(name, 640, 480, 31500000, 840, 500); // 75 Hz
    addMode(name, 800, 600, 40000000, 1056, 628); // 60.3 Hz
    addMode(name, 800, 600, 49500000, 1056, 625); // 75 Hz

    const struct
    {
        const char* name;
        int width, height, freq, result;
        int shownTenths; // what the server shows afterwards
    } steps[] = {
        { "no refresh and none to keep: the highest", 640, 480, 0, 0, 750 },
        { "a refresh within 1 Hz of a mode's", 640, 480, 60, 0, 599 },
        { "the nearest of two", 640, 480, 73, 0, 728 },
        { "no mode near enough", 640, 480, 50, kModeBad, 728 },
        { "a listed size that lacks the refresh", 800, 600, 85, kModeBad, 728 },
        { "back to 60 Hz", 640, 480, 60, 0, 599 },
        { "no refresh keeps the current one", 800, 600, 0, 0, 603 },
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.name);
        EXPECT_EQ(m_display->change(step.width, step.height, 32, step.freq), step.result);
        EXPECT_EQ(shownRefreshTenths(name), step.shownTenths);
    }
    EXPECT_EQ(m_display->desktopSize(), (runtime::PixelSize { 800, 600 }));
    EXPECT_EQ(m_display->restore(1024, 768, 24, 0), 0);
    EXPECT_EQ(m_display->desktopSize(), (runtime::PixelSize { 1024, 768 }));
}

TEST(XrandrDisplayModeOpen, NoServerGivesNothing)
{
    EXPECT_EQ(XrandrDisplayMode::open(":9731"), nullptr);
}

} // namespace
} // namespace ombrel::platform::linux
