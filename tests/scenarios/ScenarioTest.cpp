// ScenarioTest: runs the real program over each scenario folder with its replay script, then compares
// the trace and the screenshots with the expected ones. OMBREL_UPDATE_GOLDEN=1 rewrites them instead.
//
// A scenario folder holds script.replay, expected.trace, expected-<name>.png for each screenshot
// <name>.png the script takes, and the cabinet to run in: a folder home/, or a file uses-demo for the
// demo cabinet. Optional: expected-files/, files the cabinet must hold after the run; expected-exit-code,
// when the program is to end with another code than 0; args, more words for the program's command line
// (--screen 1280x1024); overlay/, files laid over the copied cabinet, so that a scenario can run the demo
// with a few files of its own. The cabinet is copied before the run, since the program writes into its
// folder. The run is left in the build folder (runs/<scenario>/: actual.trace, screenshots, standard
// output and error).
#include "GoldenImage.h"
#include "TempHome.h"
#include "TraceDiff.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
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
    for (const auto& entry : fs::directory_iterator(OMBREL_SCENARIO_DIR, ec))
        if (fs::exists(entry.path() / "script.replay"))
            names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string quoted(const std::string& text)
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

// The PNG files at the top of a folder whose names start with prefix, without it.
std::set<std::string> pngsIn(const fs::path& folder, const std::string& prefix = {})
{
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with(prefix) && entry.path().extension() == ".png")
            names.insert(name.substr(prefix.size()));
    }
    return names;
}

class ScenarioTest : public ::testing::TestWithParam<std::string>
{
protected:
    fs::path folder() const { return fs::path(OMBREL_SCENARIO_DIR) / GetParam(); }
    fs::path run() const { return fs::path(OMBREL_SCENARIO_RUN_DIR) / GetParam(); }

    // Compares a file of the run with the expected one, or makes the run's the expected one.
    void compareFile(const fs::path& actual, const fs::path& expected)
    {
        if (!fs::is_regular_file(actual))
            ADD_FAILURE() << "the run left no file " << actual;
        else if (GoldenImage::updating())
            fs::copy_file(actual, expected, fs::copy_options::overwrite_existing);
        else if (!fs::exists(expected))
            ADD_FAILURE() << expected << " is missing; OMBREL_UPDATE_GOLDEN=1 writes it";
        else if (expected.extension() == ".trace") {
            const auto diff
                = TraceDiff::describe(TraceDiff::readLines(expected), TraceDiff::readLines(actual));
            EXPECT_TRUE(diff.empty()) << diff << "actual trace: " << actual.string();
        } else
            EXPECT_TRUE(readFile(actual) == readFile(expected)) << actual << " differs from " << expected;
    }

    void compareScreenshots()
    {
        const auto taken = pngsIn(run()), expected = pngsIn(folder(), "expected-");
        for (const std::string& name : expected) {
            if (!taken.count(name) && GoldenImage::updating())
                fs::remove(folder() / ("expected-" + name));
            else if (!taken.count(name))
                ADD_FAILURE() << "the script took no screenshot " << name;
        }
        for (const std::string& name : taken) {
            if (!expected.count(name) && !GoldenImage::updating())
                ADD_FAILURE() << "screenshot " << name << " has no expected-" << name
                              << "; OMBREL_UPDATE_GOLDEN=1 writes it";
            else // in an update, the check makes the screenshot the expected picture
                EXPECT_EQ(
                    GoldenImage::check((folder() / ("expected-" + name)).string(), (run() / name).string()),
                    "");
        }
    }
};

TEST_P(ScenarioTest, MatchesItsExpectedTraceAndScreenshots)
{
    fs::remove_all(run());
    fs::create_directories(run());
    const fs::path home = run() / "home";
    const fs::path cabinet
        = fs::exists(folder() / "uses-demo") ? fs::path(sourceDir()) / "demo" : folder() / "home";
    if (fs::is_directory(cabinet))
        fs::copy(cabinet, home, fs::copy_options::recursive);
    else
        fs::create_directories(home);
    if (fs::is_directory(folder() / "overlay"))
        fs::copy(folder() / "overlay", home,
            fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    std::istringstream argsFile(readFile(folder() / "args"));
    std::string args;
    for (std::string word; argsFile >> word;)
        args += " " + test::quoted(word); // qualified: std::quoted would win by argument lookup

    const std::string command = "cd " + quoted(run().string()) + " && timeout "
        + std::to_string(kRunLimitSeconds) + " " + quoted(OMBREL_BINARY) + " --home " + quoted(home.string())
        + " --replay " + quoted((folder() / "script.replay").string()) + args
        + " --trace actual.trace >stdout.log 2>stderr.log";
    const int status = std::system(command.c_str());
    const fs::path exitCodeFile = folder() / "expected-exit-code";
    ASSERT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1,
        fs::exists(exitCodeFile) ? std::atoi(readFile(exitCodeFile).c_str()) : 0)
        << "ombrel failed (124: it ran past " << kRunLimitSeconds << " s); standard error:\n"
        << readFile(run() / "stderr.log");

    compareFile(run() / "actual.trace", folder() / "expected.trace");
    compareScreenshots();
    // Each file of expected-files/ must be in the cabinet after the run, with the same bytes.
    const fs::path files = folder() / "expected-files";
    std::error_code ec;
    for (const auto& entry : fs::recursive_directory_iterator(files, ec))
        if (entry.is_regular_file())
            compareFile(home / fs::relative(entry.path(), files), entry.path());
}

std::string testName(const ::testing::TestParamInfo<std::string>& info)
{
    std::string name = info.param;
    for (char& c : name)
        c = std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Scenarios, ScenarioTest, ::testing::ValuesIn(scenarioNames()), testName);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ScenarioTest);

} // namespace
} // namespace ombrel::test
