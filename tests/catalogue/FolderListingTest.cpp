// FolderListing: a folder listed once must answer every name exactly as a look-up of that one file on
// disk does: mixed case, folders whose name is found without regard to case, links to nothing, names
// that reach into other folders.
#include "TempHome.h"

#include "catalogue/FolderListing.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using namespace ombrel;

namespace {

class FolderListingTest : public ::testing::Test
{
protected:
    FolderListingTest()
    {
        for (const char* file : { "roms/PacMan.zip", "roms/galaga.ZIP", "roms/dkong.zip", "roms/DKong.zip",
                 "roms/sub/inner.zip", "roms/dir.zip/keep", "ROMS/only-upper.zip", "Art/Snap/x.png" })
            home.write(file, "");
        std::filesystem::create_symlink("nowhere.zip", home.root() / "roms/broken.zip");
        std::filesystem::create_directories(home.root() / "empty");
    }

    test::TempHome home;
    platform::DiskFiles files;
};

TEST_F(FolderListingTest, AnswersAsTheDiskDoesForEveryName)
{
    const std::vector<std::string> folders { "roms/", "Roms/", "ROMS\\", "art\\SNAP\\", "missing/",
        "roms/PacMan.zip/", "roms/./", "empty/", "roms", std::string("roms\0x/", 8) };
    const std::vector<std::string> names { "PacMan.zip", "pacman.zip", "PACMAN.ZIP", "galaga.zip", "dkong.zip",
        "DKONG.ZIP", "dir.zip", "broken.zip", "nowhere.zip", "sub\\inner.zip", "sub/INNER.zip", "only-upper.zip",
        "x.png", "X.PNG", "missing.zip", "..", ".", "", "keep", std::string("PacMan.zip\0x", 12) };
    for (const std::string& folder : folders) {
        const std::string onDisk = home.path() + folder;
        catalogue::FolderListing listing(files, onDisk);
        for (const std::string& name : names) {
            SCOPED_TRACE(folder + " + " + name);
            EXPECT_EQ(listing.contains(name), files.exists(onDisk + name));
        }
    }
}

TEST_F(FolderListingTest, FindsWhatTheFolderHolds)
{
    // The comparison above is only worth something if the look-up itself finds these.
    catalogue::FolderListing roms(files, home.path() + "roms/");
    EXPECT_TRUE(roms.contains("PACMAN.ZIP"));
    EXPECT_TRUE(roms.contains("Galaga.zip"));
    EXPECT_TRUE(roms.contains("dir.zip")) << "a folder is there as much as a file";
    EXPECT_FALSE(roms.contains("broken.zip")) << "a link to nothing is not a file";
    EXPECT_FALSE(roms.contains("only-upper.zip"));

    // Neither roms/ nor ROMS/ is written "Roms": both are looked in.
    catalogue::FolderListing either(files, home.path() + "Roms/");
    EXPECT_TRUE(either.contains("only-upper.zip"));
    EXPECT_TRUE(either.contains("pacman.zip"));

    catalogue::FolderListing nested(files, home.path() + "ART\\snap\\");
    EXPECT_TRUE(nested.contains("X.png"));
}

TEST_F(FolderListingTest, AnswersFromItsListingNotFromTheDisk)
{
    // Otherwise the comparison with the disk would hold for a listing that asks the disk every time.
    catalogue::FolderListing roms(files, home.path() + "roms/");
    home.write("roms/later.zip", "");
    std::filesystem::remove(home.root() / "roms/PacMan.zip");
    EXPECT_FALSE(roms.contains("later.zip"));
    EXPECT_TRUE(roms.contains("pacman.zip"));
}

} // namespace
