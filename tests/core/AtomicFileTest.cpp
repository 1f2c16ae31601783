// Tests of whole-file replacement and reading.
#include "core/AtomicFile.h"

#include "TempHome.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace ombrel::core {
namespace {

namespace fs = std::filesystem;

size_t entryCount(const fs::path& folder)
{
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

TEST(AtomicFile, WritesAndReplacesWholeFiles)
{
    test::TempHome home;
    std::string path = home.path() + "ombrel.cfg";
    using namespace std::string_literals;
    const std::string bytes = "\"\\Ombrel\\\"\r\n300\r\n\0end\r\n"s;

    EXPECT_EQ(writeFileAtomic(path, "old content that is longer than the new one"), "");
    EXPECT_EQ(writeFileAtomic(path, bytes), "");
    std::string read;
    ASSERT_TRUE(readFile(path, read));
    EXPECT_EQ(read, bytes);
    EXPECT_EQ(entryCount(home.root()), 1u); // no temporary file left beside it

    EXPECT_EQ(writeFileAtomic(path, ""), "");
    ASSERT_TRUE(readFile(path, read));
    EXPECT_EQ(read, "");
}

TEST(AtomicFile, KeepsTheOldFilesPermissions)
{
    test::TempHome home;
    std::string path = home.write("omkeys.cfg", "1");
    ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
    EXPECT_EQ(writeFileAtomic(path, "2"), "");
    struct stat info
    {
    };
    ASSERT_EQ(::stat(path.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
}

TEST(AtomicFile, FailureReportsAndLeavesNothingBehind)
{
    test::TempHome home;
    std::string missing = home.path() + "nofolder/ombrel.cfg";
    std::string message = writeFileAtomic(missing, "x");
    EXPECT_NE(message.find(missing), std::string::npos) << message;
    EXPECT_NE(message.find("No such file"), std::string::npos) << message;
    EXPECT_EQ(entryCount(home.root()), 0u);

    // A folder in the place of the file: the rename fails, the folder and its content stay.
    std::string folder = home.path() + "l 1.lst";
    home.write("l 1.lst/keep", "k");
    message = writeFileAtomic(folder, "x");
    EXPECT_NE(message.find(folder), std::string::npos) << message;
    EXPECT_EQ(home.read("l 1.lst/keep"), "k");
    EXPECT_EQ(entryCount(home.root()), 1u);
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
