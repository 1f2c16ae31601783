// Tests of whole-file replacement (through links too) and of reading.
#include "core/AtomicFile.h"

#include "TempHome.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace ombrel::core {
namespace {

namespace fs = std::filesystem;

size_t entryCount(const fs::path& folder)
{
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

bool mentions(const std::string& message, const std::string& text)
{
    return message.find(text) != std::string::npos;
}

TEST(AtomicFile, ReplacesWholeFilesKeepingTheirPermissions)
{
    test::TempHome home;
    std::string path = home.path() + "ombrel.cfg";
    using namespace std::string_literals;
    const std::string bytes = "\"\\Ombrel\\\"\r\n300\r\n\0end\r\n"s;

    EXPECT_EQ(writeFileAtomic(path, "old content that is longer than the new one"), "");
    ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
    EXPECT_EQ(writeFileAtomic(path, bytes), "");
    std::string read;
    ASSERT_TRUE(readFile(path, read));
    EXPECT_EQ(read, bytes);
    EXPECT_EQ(entryCount(home.root()), 1u); // no temporary file left beside it
    struct stat info { };
    ASSERT_EQ(::stat(path.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
}

TEST(AtomicFile, FailureReportsAndLeavesNothingBehind)
{
    test::TempHome home;
    std::string missing = home.path() + "nofolder/ombrel.cfg";
    std::string message = writeFileAtomic(missing, "x");
    EXPECT_TRUE(mentions(message, missing + ": No such file")) << message;
    EXPECT_EQ(entryCount(home.root()), 0u);

    // A folder in the place of the file: the rename fails, the folder and its content stay.
    std::string folder = home.path() + "l 1.lst";
    home.write("l 1.lst/keep", "k");
    message = writeFileAtomic(folder, "x");
    EXPECT_TRUE(mentions(message, folder)) << message;
    EXPECT_EQ(home.read("l 1.lst/keep"), "k");
    EXPECT_EQ(entryCount(home.root()), 1u);
}

// A file in a folder this process cannot make files in: one without write permission, or, for root,
// who may write anywhere on a normal file system, /proc.
std::string lockedFile(const test::TempHome& home)
{
    const std::string file = home.write("locked/omkeys.cfg", "old");
    ::chmod((home.path() + "locked").c_str(), 0555);
    return ::access((home.path() + "locked").c_str(), W_OK) != 0 ? file : "/proc/version";
}

TEST(AtomicFile, WritesThroughLinksAndKeepsThem)
{
    struct Case
    {
        const char* name;
        std::vector<std::pair<const char*, const char*>> links; // link below cabinet/ -> its target
        const char* lands; // the file below the home that gets the bytes; null: the write fails
        const char* says; // what the failure's message says
    };
    const Case cases[] = {
        { "link to a shared copy", { { "omkeys.cfg", "@/shared/omkeys.cfg" } }, "shared/omkeys.cfg", "" },
        { "chain of links", { { "ombrel.cfg", "mid.cfg" }, { "mid.cfg", "../shared/ombrel.cfg" } },
            "shared/ombrel.cfg", "" },
        { "link to a folder's link", { { "ombrel.cfg", "../dir/ombrel.cfg" }, { "../dir", "shared" } },
            "shared/ombrel.cfg", "" },
        { "dangling link", { { "omkeys.cfg", "../shared/gone.cfg" } }, nullptr,
            "gone.cfg, which does not exist" },
        { "loop", { { "omkeys.cfg", "a.cfg" }, { "a.cfg", "omkeys.cfg" } }, nullptr, "loop" },
        { "target's folder not writable", { { "omkeys.cfg", "@locked" } }, nullptr, "(a link to " },
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        test::TempHome home;
        home.write("shared/omkeys.cfg", "old");
        home.write("shared/ombrel.cfg", "old");
        fs::create_directories(home.root() / "cabinet");
        for (const auto& [link, to] : row.links) {
            std::string text = to;
            if (text == "@locked")
                text = lockedFile(home);
            else if (text.starts_with("@"))
                text = home.path() + text.substr(2);
            fs::create_symlink(text, home.root() / "cabinet" / link);
        }
        const std::string path = home.path() + "cabinet/" + row.links.front().first;
        const std::string message = writeFileAtomic(path, "new");

        for (const auto& [link, to] : row.links)
            EXPECT_TRUE(fs::is_symlink(home.root() / "cabinet" / link)) << link << " is no longer a link";
        EXPECT_EQ(entryCount(home.root() / "shared"), 2u) << "a temporary file is left";
        if (row.lands) {
            EXPECT_EQ(message, "");
            EXPECT_EQ(home.read(row.lands), "new");
        } else {
            EXPECT_TRUE(mentions(message, path) && mentions(message, row.says)) << message;
            EXPECT_EQ(home.read("shared/omkeys.cfg"), "old");
            EXPECT_EQ(home.read("locked/omkeys.cfg"), home.exists("locked") ? "old" : "");
        }
        ::chmod((home.path() + "locked").c_str(), 0755);
    }
}

TEST(AtomicFile, ReadsOnlyRegularFiles)
{
    test::TempHome home;
    std::string bytes = "keep";
    EXPECT_FALSE(readFile(home.path() + "missing.txt", bytes));
    EXPECT_FALSE(readFile(home.path(), bytes));
    std::string fifo = home.path() + "pipe";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_FALSE(readFile(fifo, bytes)); // would block forever if opened as a file
    EXPECT_EQ(bytes, "keep");
}

} // namespace
} // namespace ombrel::core
