// Tests of the start-up sweep of temporary files left by a killed write.
#include "core/LeftoverTemps.h"

#include "core/AtomicFile.h"

#include "TempHome.h"

#include <gtest/gtest.h>

#include <climits>
#include <csignal>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

namespace ombrel::core {
namespace {

namespace fs = std::filesystem;

// Another running copy of this program, until the test ends.
class RunningCopy
{
public:
    RunningCopy()
        : m_pid(::fork())
    {
        if (m_pid == 0) {
            ::pause();
            ::_exit(0);
        }
    }
    ~RunningCopy()
    {
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }
    long pid() const { return m_pid; }

private:
    pid_t m_pid;
};

TEST(LeftoverTemps, RemovesOnlyTheProgramsOwnWhoseWriterIsGone)
{
    test::TempHome home;
    RunningCopy copy;
    ASSERT_GT(copy.pid(), 0);
    const long gone = INT_MAX; // above any system's highest process id
    const auto temp = [](const std::string& name, long pid) { return temporaryName(name, pid, 1); };
    EXPECT_EQ(temp("a/l 1.lst", 812), "a/l 1.lst.ombrel-812-1.tmp");

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
        { temp("cabinet/ombrel.cfg", 1), true }, // the id now belongs to another program (init)
        { temp("cabinet/ombrel.cfg", copy.pid()), false }, // another copy of the program may be writing it
        { "cabinet/ombrel.cfg.tmp" + std::to_string(gone) + "-5", true }, // as earlier versions named them
        { temp("cabinet/l 1.lst", gone), true }, { temp("cabinet/L 1.LST", gone), true },
        { temp("cabinet/l 2.lst", gone), true }, // its file is not there (yet)
        { temp("shared/keys.cfg", gone), true }, // beside the end of the link
        { "cabinet/omkeys.cfg.tmp" + std::to_string(gone) + "-6",
            true }, // beside the link: an earlier version
        { temp("cabinet/gamelist.lst", gone), false }, // not a file the program writes
        { "cabinet/ombrel.cfg.bak", false }, { "cabinet/ombrel.cfg.tmp", false },
        { "cabinet/ombrel.cfg.ombrel-12.tmp", false },
        { "cabinet/ombrel.cfg.ombrel-2147483648-1.tmp", false }, // no process has such an id
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

} // namespace
} // namespace ombrel::core
