// Tests of the real file system's look-up of names written in another case or with '\'.
#include "platform/Files.h"

#include "TempHome.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

namespace ombrel::platform {
namespace {

TEST(DiskFiles, FindsNamesInAnyCaseAndListsFolders)
{
    test::TempHome home;
    for (const char* file : { "Mame/Snap/PacMan.PNG", "Mame/Snap/galaga.png", "Art/one.png", "art/two.png",
             "roms/x.zip", "Roms/y.zip" })
        home.write(file, "x");
    struct Case
    {
        const char* asked;
        std::optional<std::string> found; // below the home folder
    };
    const Case cases[] = {
        { "mame/snap/pacman.png", "Mame/Snap/PacMan.PNG" },
        { "mame\\snap\\", "Mame/Snap/" },
        { "Mame/./snap/../Snap/galaga.png", "Mame/./Snap/../Snap/galaga.png" },
        { "ART/two.png", "art/two.png" }, // the first folder of that name has no such file
        { "ART/one.png", "Art/one.png" },
        { "roms/x.zip", "roms/x.zip" }, // the name as written comes first
        { "ROMS\\X.ZIP", "roms/x.zip" },
        { "mame/snap/digdug.png", std::nullopt },
        { "roms/x.zip/more", std::nullopt },
    };
    DiskFiles files;
    for (const auto& row : cases) {
        SCOPED_TRACE(row.asked);
        const auto found = files.resolve(home.path() + row.asked);
        EXPECT_EQ(found, row.found ? std::optional(home.path() + *row.found) : std::nullopt);
    }
    EXPECT_EQ(files.resolve(""), std::nullopt);

    EXPECT_EQ(
        files.list(home.path() + "MAME\\snap\\"), (std::vector<std::string> { "PacMan.PNG", "galaga.png" }));
    EXPECT_TRUE(files.list(home.path() + "missing").empty());
    EXPECT_TRUE(files.list(home.path() + "roms/x.zip").empty());
}

TEST(DiskFiles, AFileLookUpFindsFilesOnly)
{
    test::TempHome home;
    for (const char* file : { "roms/x.zip", "roms/galaga.zip/inner", "roms/Dkong.zip/inner", "roms/DKONG.ZIP" })
        home.write(file, "x");
    std::filesystem::create_symlink("x.zip", home.root() / "roms/link.zip");
    std::filesystem::create_symlink("galaga.zip", home.root() / "roms/linkdir.zip");
    std::filesystem::create_symlink("gone.zip", home.root() / "roms/dangling.zip");
    const std::pair<const char*, std::optional<std::string>> rows[] = {
        { "roms/x.zip", "roms/x.zip" },
        { "roms/galaga.zip", std::nullopt }, // a folder in a file's place
        { "roms/dkong.zip", "roms/DKONG.ZIP" }, // the folder Dkong.zip/ is passed over
        { "roms/linkdir.zip", std::nullopt },
        { "roms/dangling.zip", std::nullopt },
        { "roms", std::nullopt },
    };
    DiskFiles files;
    for (const auto& [asked, found] : rows) {
        SCOPED_TRACE(asked);
        EXPECT_EQ(files.resolveFile(home.path() + asked), found ? std::optional(home.path() + *found) : std::nullopt);
    }
    EXPECT_TRUE(files.exists(home.path() + "roms/galaga.zip"));
    EXPECT_EQ(files.listFiles(home.path() + "ROMS"), (std::vector<std::string> { "DKONG.ZIP", "link.zip", "x.zip" }));
    EXPECT_EQ(files.listFiles(home.path() + "missing"), std::vector<std::string> {});
}

// Names not found as written are looked for in one listing per folder, kept while the folder's time stays
// the same: many missing pictures cost one listing, and a file added or removed in between is seen.
TEST(DiskFiles, KeptListingsFollowTheirFolder)
{
    namespace fs = std::filesystem;
    test::TempHome home;
    home.write("snap/PacMan.PNG", "x");
    const fs::path snap = home.root() / "snap";
    // A folder last changed a while ago: its listing may be kept.
    auto settle = [&] { fs::last_write_time(snap, fs::file_time_type::clock::now() - std::chrono::minutes(1)); };
    settle();
    DiskFiles files;
    auto found = [&](const char* name) { return files.resolveFile(home.path() + "snap/" + name); };
    auto listings = [&] { return files.folderNames().listings(); };
    EXPECT_EQ(found("pacman.png"), home.path() + "snap/PacMan.PNG");
    for (const char* missing : { "galaga.png", "dkong.png", "digdug.png" })
        EXPECT_EQ(found(missing), std::nullopt);
    EXPECT_EQ(listings(), 1);

    home.write("snap/Galaga.png", "x");
    EXPECT_EQ(found("galaga.png"), home.path() + "snap/Galaga.png");
    settle();
    EXPECT_EQ(found("galaga.png"), home.path() + "snap/Galaga.png");
    fs::remove(snap / "Galaga.png");
    EXPECT_EQ(found("galaga.png"), std::nullopt);
    // A folder changed just now is listed again on each look-up: a change within the same tick of its
    // time would not show in the time.
    const int before = listings();
    EXPECT_EQ(found("galaga.png"), std::nullopt);
    EXPECT_EQ(found("galaga.png"), std::nullopt);
    EXPECT_EQ(listings(), before + 2);
}

} // namespace
} // namespace ombrel::platform
