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
#include <utility>

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

// Each key is read back by the code the exit-key watch asks for; release-all lets go of all that are
// held; where there is no uinput, XTEST is the injector chosen.
TEST_F(X11KeysTest, InjectedKeysAreSeenHeldUntilReleased)
{
    // Pressed, and the code it is read back as.
    const std::pair<int, int> rows[]
        = { { 65, 65 }, { 27, 27 }, { 40, 40 }, { 13, 13 }, { 112, 112 }, { 160, 16 }, { 163, 17 } };
    for (const auto& [pressed, read] : rows) {
        SCOPED_TRACE(pressed);
        ASSERT_FALSE(state->isDown(read));
        for (bool up : { false, true }) {
            keys->keyEvent(pressed, up);
            keys->waitIdle();
            EXPECT_TRUE(becomes(!up, read));
        }
    }
    for (int vk : { 17, 18 })
        keys->keyEvent(vk, false);
    keys->waitIdle();
    ASSERT_TRUE(becomes(true, 17) && becomes(true, 18));
    keys->releaseAll();
    keys->waitIdle();
    EXPECT_TRUE(becomes(false, 17) && becomes(false, 18));
    EXPECT_FALSE(state->isDown(0));

    test::TempHome home;
    auto chosen = makeKeyInjector(trace, server->name().c_str(), home.path() + "uinput");
    EXPECT_NE(dynamic_cast<XTestKeyInjector*>(chosen.get()), nullptr);
}

} // namespace
} // namespace ombrel::platform::linux
