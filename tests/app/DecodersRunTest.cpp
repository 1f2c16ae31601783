// DecodersRunTest: the demo's walk replayed with no picture decoders, one and four leaves the same
// trace, screenshots and files, byte for byte, whatever the decoders' timing.
#include "TempHome.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

namespace ombrel::test {
namespace {

namespace fs = std::filesystem;

// Every file below folder by its path relative to it, with its bytes.
std::map<std::string, std::string> filesBelow(const TempHome& dir, const fs::path& folder)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            files[fs::relative(entry.path(), folder).string()]
                = dir.read(fs::relative(entry.path(), dir.root()).string());
    }
    return files;
}

TEST(DecodersRun, TheSameRunWhateverTheDecoders)
{
    TempHome dir;
    std::map<std::string, std::string> first;
    for (const char* decoders : { "0", "1", "4" }) {
        SCOPED_TRACE(std::string("--decoders ") + decoders);
        // Each run in a fresh copy of the demo cabinet, since a run saves its state there.
        const fs::path run = dir.root() / decoders;
        fs::create_directories(run);
        fs::copy(fs::path(sourceDir()) / "demo", run / "demo", fs::copy_options::recursive);
        const std::string command = "cd '" + run.string() + "' && timeout 60 '" + OMBREL_BINARY
            + "' --home demo --replay demo/walk.replay --trace walk.trace --decoders " + decoders
            + " >out 2>&1";
        const int status = std::system(command.c_str());
        ASSERT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, 0)
            << command << "\n"
            << dir.read(std::string(decoders) + "/out");
        auto files = filesBelow(dir, run);
        if (first.empty()) {
            first = std::move(files);
            EXPECT_TRUE(first.count("07-back.png")) << "the walk takes its screenshots";
            EXPECT_FALSE(first["walk.trace"].empty());
            continue;
        }
        for (const auto& [name, bytes] : first) {
            EXPECT_TRUE(files.count(name)) << name;
            EXPECT_TRUE(files[name] == bytes) << name << " differs";
        }
        EXPECT_EQ(files.size(), first.size());
    }
}

} // namespace
} // namespace ombrel::test
