// Tests of XTEST injection and the global key state against a private X server.
#include "platform/linux/MakeKeyInjector.h"
#include "platform/linux/X11KeyState.h"
#include "platform/linux/XTestKeyInjector.h"

#include "RuntimeFixture.h"
#include "TempHome.h"
#include "XvfbServer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <thread>

namespace ombrel::platform::linux {
namespace {

using namespace std::chrono_literals;

class X11KeysTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        server = test::XvfbServer::start();
        if (!server)
            GTEST_SKIP() << "Xvfb cannot be started here";
        KeyPacing pacing;
        pacing.gap = 0ms;
        keys = XTestKeyInjector::open(trace, server->name().c_str(), pacing);
        state = X11KeyState::open(server->name().c_str());
        ASSERT_NE(keys, nullptr);
        ASSERT_NE(state, nullptr);
    }
    // The server takes a fake event into its keyboard when it next serves input, so look a few times.
    bool becomes(bool down, int vk)
    {
        for (int i = 0; i < 200; ++i) {
            if (state->isDown(vk) == down)
                return true;
            std::this_thread::sleep_for(10ms);
        }
        return false;
    }

    test::RecordingTrace trace;
    std::unique_ptr<test::XvfbServer> server;
    std::unique_ptr<XTestKeyInjector> keys;
    std::unique_ptr<X11KeyState> state;
};

TEST_F(X11KeysTest, InjectedKeyIsSeenHeldUntilReleased)
{
    struct Row
    {
        const char* name;
        int pressed;
        int read; // the code the key is read back as
    };
    const Row rows[] = {
        { "letter", 65, 65 },
        { "escape", 27, 27 },
        { "arrow", 40, 40 },
        { "enter", 13, 13 },
        { "functionKey", 112, 112 },
        { "leftShiftIsShift", 160, 16 },
        { "rightCtrlIsCtrl", 163, 17 },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_FALSE(state->isDown(row.read));
        keys->keyEvent(row.pressed, false);
        keys->waitIdle();
        EXPECT_TRUE(becomes(true, row.read));
        keys->keyEvent(row.pressed, true);
        keys->waitIdle();
        EXPECT_TRUE(becomes(false, row.read));
    }
}

TEST_F(X11KeysTest, ReleaseAllLetsGoOfEveryKeyHeld)
{
    for (int vk : { 17, 18 })
        keys->keyEvent(vk, false);
    keys->waitIdle();
    ASSERT_TRUE(becomes(true, 17) && becomes(true, 18));
    keys->releaseAll();
    keys->waitIdle();
    EXPECT_TRUE(becomes(false, 17) && becomes(false, 18));
    EXPECT_FALSE(state->isDown(0));
}

TEST_F(X11KeysTest, XTestIsChosenWhereThereIsNoUinput)
{
    test::TempHome home;
    auto chosen = makeKeyInjector(trace, server->name().c_str(), home.path() + "uinput");
    EXPECT_NE(dynamic_cast<XTestKeyInjector*>(chosen.get()), nullptr);
}

} // namespace
} // namespace ombrel::platform::linux
