// FolderListing: a folder listed once must answer every name exactly as a test of that one file on disk
// does: mixed case, folders whose name is found without regard to case, folders and links in a file's
// place, names that reach into other folders; and it asks the disk name by name only where no listing
// can be had.
#include "TempHome.h"

#include "catalogue/FolderListing.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

using namespace ombrel;

namespace {

// The real disk, counting the look-ups by name, with folders that can be made to refuse a listing (a
// test run as root reads every folder).
class CountingFiles final : public platform::Files
{
public:
    std::optional<std::string> resolve(const std::string& path) override { return m_disk.resolve(path); }
    std::optional<std::string> resolveFile(const std::string& path) override
    {
        ++lookUps;
        return m_disk.resolveFile(path);
    }
    std::vector<std::string> list(const std::string& folder) override { return m_disk.list(folder); }
    std::optional<std::vector<std::string>> listFiles(const std::string& folder) override
    {
        if (unreadable.count(folder) != 0)
            return std::nullopt;
        return m_disk.listFiles(folder);
    }
    std::string write(const std::string& path, std::string_view bytes) override { return m_disk.write(path, bytes); }

    int lookUps = 0;
    std::set<std::string> unreadable;

private:
    platform::DiskFiles m_disk;
};

class FolderListingTest : public ::testing::Test
{
protected:
    FolderListingTest()
    {
        for (const char* file : { "roms/PacMan.zip", "roms/galaga.ZIP", "roms/dkong.zip", "roms/DKong.zip",
                 "roms/sub/inner.zip", "roms/dir.zip/keep", "roms/Mixed.zip/keep", "roms/MIXED.ZIP",
                 "ROMS/only-upper.zip", "Art/Snap/x.png" })
            home.write(file, "");
        const auto roms = home.root() / "roms";
        std::filesystem::create_symlink("nowhere.zip", roms / "broken.zip");
        std::filesystem::create_symlink("PacMan.zip", roms / "linkfile.zip");
        std::filesystem::create_symlink("sub", roms / "linkdir.zip");
        std::filesystem::create_directories(home.root() / "empty");
    }

    test::TempHome home;
    CountingFiles files;
};

TEST_F(FolderListingTest, AnswersAsTheDiskDoesForEveryName)
{
    const std::vector<std::string> folders { "roms/", "Roms/", "ROMS\\", "art\\SNAP\\", "missing/",
        "roms/PacMan.zip/", "roms/./", "empty/", "roms", std::string("roms\0x/", 8), "roms/" + std::string(300, 'x') };
    const std::vector<std::string> names { "PacMan.zip", "pacman.zip", "PACMAN.ZIP", "galaga.zip", "dkong.zip",
        "DKONG.ZIP", "dir.zip", "mixed.zip", "broken.zip", "nowhere.zip", "linkfile.zip", "LinkFile.zip",
        "linkdir.zip", "sub\\inner.zip", "sub/INNER.zip", "only-upper.zip", "x.png", "X.PNG", "missing.zip",
        "..", ".", "", "keep", std::string("PacMan.zip\0x", 12) };
    for (const std::string& folder : folders) {
        const std::string onDisk = home.path() + folder;
        catalogue::FolderListing listing(files, onDisk);
        for (const std::string& name : names) {
            SCOPED_TRACE(folder + " + " + name);
            EXPECT_EQ(listing.contains(name), files.fileExists(onDisk + name));
        }
    }
}

TEST_F(FolderListingTest, AsksTheDiskNameByNameOnlyWhereNoListingCanBeHad)
{
    // issue "empty ROM folders": a folder read without error that holds nothing is empty; it costs no
    // look-up per game.
    catalogue::FolderListing empty(files, home.path() + "empty/");
    catalogue::FolderListing roms(files, home.path() + "roms/");
    catalogue::FolderListing damaged(files, home.path() + std::string(100000, 'x') + "/");
    files.lookUps = 0;
    for (int i = 0; i < 50; ++i) {
        EXPECT_FALSE(empty.contains("game" + std::to_string(i) + ".zip"));
        EXPECT_FALSE(damaged.contains("game" + std::to_string(i) + ".zip"));
    }
    home.write("roms/later.zip", "");
    std::filesystem::remove(home.root() / "roms/PacMan.zip");
    EXPECT_FALSE(roms.contains("later.zip")) << "answered from the listing made before";
    EXPECT_TRUE(roms.contains("pacman.zip"));
    EXPECT_EQ(files.lookUps, 0);

    // A folder that refuses to be listed may still hand out its files by name.
    files.unreadable.insert(home.path() + "roms");
    catalogue::FolderListing unreadable(files, home.path() + "roms/");
    EXPECT_TRUE(unreadable.contains("later.zip"));
    EXPECT_FALSE(unreadable.contains("dir.zip"));
    EXPECT_EQ(files.lookUps, 2);
}

} // namespace
