// Tests of the power-off request: its order of calls, and every error the player can be shown. (The error
// box's text, a refused permission and a refused power-off are the start-up's ProgramEndTest and the
// scenario power-off-refused.)
#include "system/Shutdown.h"

#include "RuntimeFixture.h"
#include "platform/fake/FakePower.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace ombrel::system {
namespace {

using Lines = std::vector<std::string>;

struct FailureRow
{
    const char* name;
    int32_t flags;
    int checkResult;
    int offResult;
    int systemError;
    int number; // 0: the machine is switched off
    const char* description;
    Lines trace;
};

TEST(ShutdownSystem, AsksPermissionThenPowersOffOrRaisesTheFailuresNumberAndText)
{
    const FailureRow rows[] = {
        { "no flags", 0, 0, 0, 0, 0, "", { "power check", "power off" } },
        { "flags 31", 31, 0, 0, 0, 0, "", { "power check", "power off" } },
        { "flags above 31", 32, 0, 0, 0, platform::kErrBadShutdownFlags,
            "Invalid parameter to ShutdownSystem: 32", {} },
        { "negative flags", -1, 0, 0, 0, platform::kErrBadShutdownFlags,
            "Invalid parameter to ShutdownSystem: -1", {} },
        { "an unnamed refusal counts as not allowed", 8, 5, 0, 0, platform::kErrNoPrivilege,
            "Can't enable shutdown: You do not have the privileges to shutdown this system. []",
            { "power check" } },
        { "power-off refused with a code that has no text", 8, 0, 1, 987654, platform::kErrShutdownFailed,
            "ShutdownSystem failed: ", { "power check", "power off" } },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        test::RecordingTrace trace;
        platform::fake::FakePower power(trace);
        power.setCheckResult(row.checkResult);
        power.setPowerOffResult(row.offResult);
        power.setSystemError(row.systemError);
        try {
            EXPECT_TRUE(ShutdownSystem(power, row.flags));
            EXPECT_EQ(row.number, 0);
        } catch (const ShutdownError& error) {
            EXPECT_EQ(error.number(), row.number);
            EXPECT_EQ(error.description(), row.description);
            EXPECT_EQ(error.source(), "ombrel.mShutDown");
        }
        EXPECT_EQ(trace.lines, row.trace);
    }
}

} // namespace
} // namespace ombrel::system
