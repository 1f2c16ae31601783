// Tests of the start-up sweep of temporary files left by a killed write.
#include "core/LeftoverTemps.h"

#include "core/AtomicFile.h"

#include "TempHome.h"

#include <gtest/gtest.h>

#include <climits>
#include <csignal>
#include <filesystem>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace ombrel::core {
namespace {

namespace fs = std::filesystem;

// A process that runs until the test ends: a copy of this program (as another running copy of the
// cabinet's program would be), or another program that took over a writer's id.
class LiveProcess
{
public:
    explicit LiveProcess(bool sameProgram)
    {
        if (sameProgram) {
            m_pid = ::fork();
            if (m_pid == 0) {
                ::pause();
                ::_exit(0);
            }
        } else {
            char sleep[] = "sleep", seconds[] = "60";
            char* argv[] = { sleep, seconds, nullptr };
            ::posix_spawnp(&m_pid, "sleep", nullptr, nullptr, argv, environ);
        }
    }
    ~LiveProcess()
    {
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }
    long pid() const { return m_pid; }

private:
    pid_t m_pid = -1;
};

TEST(LeftoverTemps, RemovesOnlyTheProgramsOwnWhoseWriterIsGone)
{
    test::TempHome home;
    LiveProcess copy(true), other(false);
    ASSERT_GT(copy.pid(), 0);
    ASSERT_GT(other.pid(), 0);
    const long gone = INT_MAX; // above any system's highest process id
    const auto temp = [](const std::string& name, long pid) { return temporaryName(name, pid, 1); };

    home.write("cabinet/ombrel.cfg", "state");
    home.write("cabinet/L 1.LST", "list"); // found under another case than the program asks for
    home.write("shared/keys.cfg", "keys");
    fs::create_symlink("../shared/keys.cfg", home.root() / "cabinet/omkeys.cfg");
    const std::vector<std::string> files { home.path() + "cabinet/ombrel.cfg",
        home.path() + "cabinet/omkeys.cfg", home.path() + "cabinet/l 1.lst", home.path() + "cabinet/l 2.lst",
        home.path() + "nofolder/l 3.lst" };

    struct Entry
    {
        std::string name; // below the home
        bool removed;
    };
    const Entry entries[] = {
        { temp("cabinet/ombrel.cfg", gone), true },
        { temp("cabinet/ombrel.cfg", ::getpid()), true }, // the sweep runs before this process writes
        { temp("cabinet/ombrel.cfg", other.pid()), true }, // the id now belongs to another program
        { temp("cabinet/ombrel.cfg", copy.pid()), false }, // another copy of the program may be writing it
        { "cabinet/ombrel.cfg.tmp" + std::to_string(gone) + "-5", true }, // as earlier versions named them
        { temp("cabinet/l 1.lst", gone), true },
        { temp("cabinet/L 1.LST", gone), true },
        { temp("cabinet/l 2.lst", gone), true }, // its file is not there (yet)
        { temp("shared/keys.cfg", gone), true }, // beside the end of the link
        { temp("cabinet/omkeys.cfg", gone), false }, // the link's own name: writes never make it
        { temp("cabinet/gamelist.lst", gone), false }, // not a file the program writes
        { "cabinet/ombrel.cfg.bak", false },
        { "cabinet/ombrel.cfg.tmp", false },
    };
    for (const auto& entry : entries)
        home.write(entry.name, "half");
    // One that cannot be removed: a folder under such a name.
    const std::string stuck = temporaryName("shared/keys.cfg", gone, 2);
    home.write(stuck + "/inside", "x");

    LeftoverSweep sweep = removeLeftoverTemps(files);
    // Paths beside a link's end are told as the link leads there ("cabinet/../shared").
    for (auto* paths : { &sweep.removed, &sweep.notRemoved }) {
        for (auto& path : *paths)
            path = fs::weakly_canonical(path).string();
    }
    for (const auto& entry : entries) {
        SCOPED_TRACE(entry.name);
        EXPECT_EQ(home.exists(entry.name), !entry.removed);
        EXPECT_EQ(
            std::count(sweep.removed.begin(), sweep.removed.end(), home.path() + entry.name), entry.removed);
    }
    EXPECT_EQ(sweep.notRemoved, std::vector<std::string> { home.path() + stuck });
    ASSERT_EQ(sweep.problems.size(), 1u);
    EXPECT_NE(
        sweep.problems[0].find(fs::path(stuck).filename().string() + ": Is a directory"), std::string::npos)
        << sweep.problems[0];
    EXPECT_EQ(home.read("cabinet/ombrel.cfg"), "state");
    EXPECT_EQ(home.read("shared/keys.cfg"), "keys");
    EXPECT_TRUE(home.exists(stuck + "/inside"));
}

TEST(LeftoverTemps, AFolderThatCannotBeChangedIsToldAndPassedBy)
{
    test::TempHome home;
    home.write("locked/ombrel.cfg", "state");
    const std::string left = home.write(temporaryName("locked/ombrel.cfg", INT_MAX, 1), "half");
    ::chmod((home.path() + "locked").c_str(), 0555);
    if (::access((home.path() + "locked").c_str(), W_OK) == 0) {
        ::chmod((home.path() + "locked").c_str(), 0755);
        GTEST_SKIP() << "this user may write to a folder without write permission (root)";
    }
    const LeftoverSweep sweep = removeLeftoverTemps({ home.path() + "locked/ombrel.cfg" });
    ::chmod((home.path() + "locked").c_str(), 0755);
    EXPECT_TRUE(sweep.removed.empty());
    EXPECT_EQ(sweep.notRemoved, std::vector<std::string> { left });
    ASSERT_EQ(sweep.problems.size(), 1u);
    EXPECT_NE(sweep.problems[0].find("Permission denied"), std::string::npos) << sweep.problems[0];
}

} // namespace
} // namespace ombrel::core
