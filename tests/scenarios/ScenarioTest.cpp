// ScenarioTest: runs the real program over each scenario folder with its replay script, then compares
// the trace and the screenshots with the expected ones. OMBREL_UPDATE_GOLDEN=1 rewrites them instead.
//
// A scenario folder holds script.replay, expected.trace, expected-<name>.png for each screenshot
// <name>.png the script takes, and the cabinet to run in: a folder home/, or a file uses-demo for the
// demo cabinet. A program that must end on an error names its exit code in expected.exit (else 0). The cabinet is copied before the run, since the program writes into its folder. The run
// is left in the build folder (runs/<scenario>/: actual.trace, screenshots, standard output and error).
#include "GoldenImage.h"
#include "TempHome.h"
#include "TraceDiff.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace ombrel::test {
namespace {

namespace fs = std::filesystem;

// A scenario whose program neither ends nor is ended by its script fails instead of hanging the suite.
constexpr int kRunLimitSeconds = 100;

std::vector<std::string> scenarioNames()
{
    std::vector<std::string> names;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(OMBREL_SCENARIO_DIR, ec)) {
        if (entry.is_directory() && fs::exists(entry.path() / "script.replay"))
            names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string shellQuoted(const std::string& text)
{
    std::string out = "'";
    for (char c : text)
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

std::string readFile(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// The screenshots of a run: the PNG files at the top of its folder.
std::vector<std::string> screenshotsIn(const fs::path& run)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(run)) {
        if (entry.is_regular_file() && entry.path().extension() == ".png")
            names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> expectedScreenshots(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with("expected-") && entry.path().extension() == ".png")
            names.push_back(name.substr(9));
    }
    std::sort(names.begin(), names.end());
    return names;
}

class ScenarioTest : public ::testing::TestWithParam<std::string> {
protected:
    fs::path folder() const { return fs::path(OMBREL_SCENARIO_DIR) / GetParam(); }
    fs::path run() const { return fs::path(OMBREL_SCENARIO_RUN_DIR) / GetParam(); }

    // Copies the scenario's cabinet into the run folder; returns its path.
    fs::path prepareHome() const
    {
        const fs::path home = run() / "home";
        const fs::path source = fs::exists(folder() / "uses-demo") ? fs::path(sourceDir()) / "demo" : folder() / "home";
        if (fs::is_directory(source))
            fs::copy(source, home, fs::copy_options::recursive);
        else
            fs::create_directories(home);
        return home;
    }

    void compareTrace()
    {
        const fs::path expected = folder() / "expected.trace";
        const fs::path actual = run() / "actual.trace";
        if (GoldenImage::updating()) {
            fs::copy_file(actual, expected, fs::copy_options::overwrite_existing);
            return;
        }
        if (!fs::exists(expected)) {
            ADD_FAILURE() << expected << " is missing; OMBREL_UPDATE_GOLDEN=1 writes it";
            return;
        }
        const std::string diff = TraceDiff::describe(TraceDiff::readLines(expected), TraceDiff::readLines(actual));
        EXPECT_TRUE(diff.empty()) << diff << "actual trace: " << actual.string();
    }

    void compareScreenshots()
    {
        const auto taken = screenshotsIn(run());
        if (GoldenImage::updating()) {
            for (const std::string& name : expectedScreenshots(folder())) {
                if (std::find(taken.begin(), taken.end(), name) == taken.end())
                    fs::remove(folder() / ("expected-" + name));
            }
            for (const std::string& name : taken)
                fs::copy_file(run() / name, folder() / ("expected-" + name), fs::copy_options::overwrite_existing);
            return;
        }
        const auto expected = expectedScreenshots(folder());
        for (const std::string& name : taken) {
            if (std::find(expected.begin(), expected.end(), name) == expected.end())
                ADD_FAILURE() << "screenshot " << name << " has no expected-" << name
                              << "; OMBREL_UPDATE_GOLDEN=1 writes it";
        }
        for (const std::string& name : expected) {
            SCOPED_TRACE(name);
            if (std::find(taken.begin(), taken.end(), name) == taken.end()) {
                ADD_FAILURE() << "the script took no screenshot " << name;
                continue;
            }
            const std::string problem = GoldenImage::check((folder() / ("expected-" + name)).string(),
                                                           (run() / name).string());
            EXPECT_TRUE(problem.empty()) << problem;
        }
    }
};

TEST_P(ScenarioTest, MatchesItsExpectedTraceAndScreenshots)
{
    fs::remove_all(run());
    fs::create_directories(run());
    const fs::path home = prepareHome();

    const std::string command = "cd " + shellQuoted(run().string()) + " && timeout " + std::to_string(kRunLimitSeconds)
        + " " + shellQuoted(OMBREL_BINARY) + " --home " + shellQuoted(home.string()) + " --replay "
        + shellQuoted((folder() / "script.replay").string()) + " --trace actual.trace >stdout.log 2>stderr.log";
    const int status = std::system(command.c_str());
    const int exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    const fs::path exitFile = folder() / "expected.exit";
    const int expectedExit = fs::exists(exitFile) ? std::stoi(readFile(exitFile)) : 0;
    ASSERT_EQ(exitCode, expectedExit) << "ombrel failed (124: it ran past " << kRunLimitSeconds << " s); standard error:\n"
                           << readFile(run() / "stderr.log");

    compareTrace();
    compareScreenshots();
}

std::string testName(const ::testing::TestParamInfo<std::string>& info)
{
    std::string name = info.param;
    for (char& c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c)))
            c = '_';
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Scenarios, ScenarioTest, ::testing::ValuesIn(scenarioNames()), testName);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ScenarioTest);

} // namespace
} // namespace ombrel::test
