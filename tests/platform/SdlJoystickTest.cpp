// Tests of SdlJoystick through SDL's virtual joystick: mapping of axes and buttons, and sticks that come
// and go while the program runs.
#include "platform/sdl/SdlJoystick.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace ombrel::platform::sdl {
namespace {

// A stick plugged in by the test, and the test's own handle for moving it.
class VirtualStick
{
public:
    VirtualStick(int axes, int buttons, int hats)
    {
        m_index = SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_ARCADE_STICK, axes, buttons, hats);
        if (m_index >= 0)
            m_handle = SDL_JoystickOpen(m_index);
    }
    ~VirtualStick() { unplug(); }
    VirtualStick(const VirtualStick&) = delete;
    VirtualStick& operator=(const VirtualStick&) = delete;

    bool plugged() const { return m_handle != nullptr; }
    void axis(int axis, Sint16 value) { SDL_JoystickSetVirtualAxis(m_handle, axis, value); }
    void button(int button, bool down) { SDL_JoystickSetVirtualButton(m_handle, button, down ? 1 : 0); }
    void hat(Uint8 value) { SDL_JoystickSetVirtualHat(m_handle, 0, value); }
    void unplug()
    {
        if (!m_handle)
            return;
        SDL_JoystickClose(m_handle);
        SDL_JoystickDetachVirtual(m_index);
        m_handle = nullptr;
    }

private:
    int m_index = -1;
    SDL_Joystick* m_handle = nullptr;
};

class SdlJoystickTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_stick = std::make_unique<SdlJoystick>();
        if (SDL_NumJoysticks() > 0)
            GTEST_SKIP() << "a real joystick is plugged in; these tests need stick 0 to be theirs";
    }
    std::unique_ptr<SdlJoystick> m_stick;
};

// A game owns the focus while the exit button is watched: the stick is read without a focused window.
TEST_F(SdlJoystickTest, AxesAndButtonsMapToTheRecordWithoutTheWindowsFocus)
{
    SdlSubsystems video(SDL_INIT_VIDEO);
    ASSERT_TRUE(video.ok()) << SDL_GetError();
    WindowPtr window(SDL_CreateWindow("unfocused", 0, 0, 64, 64, SDL_WINDOW_HIDDEN));
    ASSERT_NE(window, nullptr) << SDL_GetError();
    ASSERT_EQ(SDL_GetKeyboardFocus(), nullptr);

    VirtualStick virt(6, 34, 0);
    ASSERT_TRUE(virt.plugged());
    const Sint16 axes[6] = { -32768, 32767, 0, -1, 1, -20000 };
    for (int i = 0; i < 6; ++i)
        virt.axis(i, axes[i]);
    for (int button : { 0, 11, 31, 32, 33 })
        virt.button(button, true);

    JoyInfo info;
    ASSERT_TRUE(m_stick->read(info));
    EXPECT_EQ((std::vector<uint32_t> { info.x, info.y, info.z, info.r, info.u, info.v }),
        (std::vector<uint32_t> { 0, 65535, 32768, 32767, 32769, 12768 }));
    EXPECT_EQ(info.buttons, 0x80000801u) << "buttons 1, 12 and 32; the 33rd and 34th have no bit";
    // The poll reads the state; nothing of the stick reaches SDL's queue to wake the loop's wait.
    SDL_PumpEvents();
    EXPECT_EQ(SDL_PeepEvents(nullptr, 0, SDL_PEEKEVENT, SDL_JOYAXISMOTION, SDL_CONTROLLERSENSORUPDATE), 0);
}

TEST_F(SdlJoystickTest, MissingAxesStayCentredAndAHatStandsInForNone)
{
    {
        VirtualStick twoAxes(2, 4, 1);
        twoAxes.axis(0, 32767);
        twoAxes.hat(SDL_HAT_LEFTUP); // the stick has axes, so its hat is not read
        JoyInfo info;
        info.z = info.r = info.u = info.v = 1;
        ASSERT_TRUE(m_stick->read(info));
        EXPECT_EQ((std::vector<uint32_t> { info.x, info.y, info.z, info.r, info.u, info.v }),
            (std::vector<uint32_t> { 65535, 32768, 32767, 32767, 32767, 32767 }));
    }
    VirtualStick pad(0, 4, 1);
    const struct
    {
        Uint8 hat;
        uint32_t x, y;
    } rows[] = { { SDL_HAT_CENTERED, 32767, 32767 }, { SDL_HAT_LEFTUP, 0, 0 },
        { SDL_HAT_RIGHTDOWN, 65535, 65535 }, { SDL_HAT_DOWN, 32767, 65535 } };
    for (const auto& row : rows) {
        SCOPED_TRACE(static_cast<int>(row.hat));
        pad.hat(row.hat);
        JoyInfo info;
        ASSERT_TRUE(m_stick->read(info));
        EXPECT_EQ(info.x, row.x);
        EXPECT_EQ(info.y, row.y);
    }
}

TEST_F(SdlJoystickTest, SticksComeAndGo)
{
    JoyInfo info;
    info.x = 7;
    info.buttons = 9;
    EXPECT_FALSE(m_stick->read(info));
    EXPECT_EQ(info.x + info.buttons, 16u) << "left as it was";

    auto first = std::make_unique<VirtualStick>(2, 2, 0);
    first->button(1, true);
    ASSERT_TRUE(m_stick->read(info));
    EXPECT_EQ(info.buttons, 2u);

    first->unplug();
    EXPECT_FALSE(m_stick->read(info));

    VirtualStick second(2, 2, 0);
    second.axis(1, -32768);
    ASSERT_TRUE(m_stick->read(info));
    EXPECT_EQ(info.y, 0u);
    EXPECT_EQ(info.buttons, 0u);
}

} // namespace
} // namespace ombrel::platform::sdl
