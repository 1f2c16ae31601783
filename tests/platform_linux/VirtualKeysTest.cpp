// Tests of the virtual-key table shared by the X11 and uinput backends.
#include "platform/linux/VirtualKeys.h"

#include <gtest/gtest.h>

namespace ombrel::platform::linux {
namespace {

TEST(VirtualKeys, KeysOfTheLaunchesExistAndBothColumnsNameTheSameKey)
{
    // Two rows with one Linux key must have one keysym, and the other way round: a slip in the table
    // would press one key under X11 and another under uinput.
    const auto keys = virtualKeys();
    for (const auto& a : keys) {
        for (const auto& b : keys) {
            if (a.code == b.code || a.keysym == b.keysym) {
                SCOPED_TRACE(testing::Message() << "codes " << a.vk << " and " << b.vk);
                EXPECT_EQ(a.code, b.code);
                EXPECT_EQ(a.keysym, b.keysym);
            }
        }
    }
    // Tab, Enter, Esc, Down, Alt, F, Q, X of the emulator sequences; Ctrl, A, D of the TV-out chords.
    for (const int vk : { 9, 13, 27, 40, 18, 70, 81, 88, 17, 65, 68 }) {
        const VirtualKey* key = findVirtualKey(vk);
        ASSERT_NE(key, nullptr) << vk;
        EXPECT_TRUE(key->keysym != 0 && key->code != 0) << vk;
    }
    EXPECT_EQ(findVirtualKey(0), nullptr);
}

} // namespace
} // namespace ombrel::platform::linux
