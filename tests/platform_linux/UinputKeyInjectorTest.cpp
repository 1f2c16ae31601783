// Tests of the records the uinput keyboard writes, read back from a plain file.
#include "platform/linux/MakeKeyInjector.h"
#include "platform/linux/UinputKeyInjector.h"

#include "RuntimeFixture.h"
#include "TempHome.h"

#include <gtest/gtest.h>
#include <linux/input.h>

#include <cstring>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace ombrel::platform::linux {
namespace {

using namespace std::chrono_literals;
using Record = std::tuple<int, int, int>; // type, code, value

std::vector<Record> records(const std::string& bytes)
{
    std::vector<Record> out;
    input_event event {};
    for (std::size_t at = 0; at + sizeof event <= bytes.size(); at += sizeof event) {
        std::memcpy(&event, bytes.data() + at, sizeof event);
        out.emplace_back(event.type, event.code, event.value);
    }
    return out;
}

TEST(UinputKeyInjector, WritesAKeyRecordAndAReportPerEventInOrder)
{
    test::TempHome home;
    test::RecordingTrace trace;
    const std::string path = home.write("uinput", "");
    {
        KeyPacing noGap;
        noGap.gap = 0ms;
        auto keys = UinputKeyInjector::open(trace, path, noGap);
        ASSERT_NE(keys, nullptr);
        keys->keyEvent(65, false);
        keys->keyEvent(65, true);
        keys->keyEvent(7, false); // no key has this code: nothing written
        keys->keyEvent(7, true);
        keys->keyEvent(18, false);
        keys->keyEvent(13, false);
        keys->releaseAll();
        keys->keyEvent(16, false); // still down when the injector goes
        keys->waitIdle();
    }
    // Each key record is followed by a report of its own.
    std::vector<Record> expected;
    for (auto [code, value] : { std::pair { KEY_A, 1 }, { KEY_A, 0 }, { KEY_LEFTALT, 1 }, { KEY_ENTER, 1 },
             { KEY_ENTER, 0 }, { KEY_LEFTALT, 0 }, { KEY_LEFTSHIFT, 1 }, { KEY_LEFTSHIFT, 0 } }) {
        expected.emplace_back(EV_KEY, code, value);
        expected.emplace_back(EV_SYN, SYN_REPORT, 0);
    }
    EXPECT_EQ(records(home.read("uinput")), expected);
    EXPECT_EQ(trace.lines,
        (std::vector<std::string> { "inject down 65", "inject up 65", "inject down 7", "inject up 7",
            "inject down 18", "inject down 13", "inject release-all", "inject down 16" }));
}

// Without the device there is no injector, and no file is made in its place; once the device can be
// written, it is chosen over XTEST.
TEST(UinputKeyInjector, OpensOnlyAnExistingDeviceWhichIsThenPreferred)
{
    test::TempHome home;
    test::RecordingTrace trace;
    EXPECT_EQ(UinputKeyInjector::open(trace, home.path() + "uinput"), nullptr);
    EXPECT_FALSE(home.exists("uinput"));
    auto keys = makeKeyInjector(trace, nullptr, home.write("uinput", ""));
    EXPECT_NE(dynamic_cast<UinputKeyInjector*>(keys.get()), nullptr);
}

} // namespace
} // namespace ombrel::platform::linux
