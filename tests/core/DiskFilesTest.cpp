// Tests of the real file system's look-up of names written in another case or with '\'.
#include "platform/Files.h"

#include "TempHome.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

namespace ombrel::platform {
namespace {

class DiskFilesTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_home.write("Mame/Snap/PacMan.PNG", "p");
        m_home.write("Mame/Snap/galaga.png", "g");
        m_home.write("Art/one.png", "1");
        m_home.write("art/two.png", "2");
        m_home.write("roms/x.zip", "x");
    }
    std::string home() const { return m_home.path(); }

    test::TempHome m_home;
    DiskFiles m_files;
};

TEST_F(DiskFilesTest, FindsNamesInAnyCase)
{
    struct Case
    {
        const char* asked;
        std::optional<std::string> found; // below the home folder
    };
    const Case cases[] = {
        { "Mame/Snap/PacMan.PNG", "Mame/Snap/PacMan.PNG" },
        { "mame/snap/pacman.png", "Mame/Snap/PacMan.PNG" },
        { "MAME\\SNAP\\GALAGA.PNG", "Mame/Snap/galaga.png" },
        { "mame\\snap\\", "Mame/Snap/" },
        { "Mame/./snap/../Snap/galaga.png", "Mame/./Snap/../Snap/galaga.png" },
        { "ART/two.png", "art/two.png" }, // the first folder of that name has no such file
        { "art/two.png", "art/two.png" },
        { "ART/one.png", "Art/one.png" },
        { "mame/snap/digdug.png", std::nullopt },
        { "nope/x.zip", std::nullopt },
        { "roms/x.zip/more", std::nullopt },
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.asked);
        auto found = m_files.resolve(home() + row.asked);
        if (row.found)
            EXPECT_EQ(found, home() + *row.found);
        else
            EXPECT_EQ(found, std::nullopt);
    }
    EXPECT_EQ(m_files.resolve(""), std::nullopt);
    EXPECT_TRUE(m_files.exists(home() + "ROMS\\X.ZIP"));
}

TEST_F(DiskFilesTest, PrefersTheNameAsWritten)
{
    m_home.write("Roms/y.zip", "y");
    EXPECT_EQ(m_files.resolve(home() + "roms/x.zip"), home() + "roms/x.zip");
    EXPECT_EQ(m_files.resolve(home() + "Roms/y.zip"), home() + "Roms/y.zip");
}

TEST_F(DiskFilesTest, AFileLookUpFindsFilesOnly)
{
    m_home.write("roms/galaga.zip/inner", "");
    m_home.write("roms/Dkong.zip/inner", "");
    m_home.write("roms/DKONG.ZIP", "d");
    std::filesystem::create_symlink("x.zip", m_home.root() / "roms/link.zip");
    std::filesystem::create_symlink("galaga.zip", m_home.root() / "roms/linkdir.zip");
    std::filesystem::create_symlink("gone.zip", m_home.root() / "roms/dangling.zip");
    const std::pair<const char*, std::optional<std::string>> rows[] = {
        { "roms/x.zip", "roms/x.zip" },
        { "roms/galaga.zip", std::nullopt }, // a folder in a file's place
        { "roms/dkong.zip", "roms/DKONG.ZIP" }, // the folder Dkong.zip/ is passed over
        { "roms/link.zip", "roms/link.zip" },
        { "roms/linkdir.zip", std::nullopt },
        { "roms/dangling.zip", std::nullopt },
        { "roms/x.zip/", std::nullopt },
        { "roms", std::nullopt },
    };
    for (const auto& [asked, found] : rows) {
        SCOPED_TRACE(asked);
        EXPECT_EQ(m_files.resolveFile(home() + asked), found ? std::optional(home() + *found) : std::nullopt);
    }
    EXPECT_TRUE(m_files.exists(home() + "roms/galaga.zip"));
    const std::vector<std::string> files { "DKONG.ZIP", "link.zip", "x.zip" };
    EXPECT_EQ(m_files.listFiles(home() + "ROMS"), files);
    EXPECT_EQ(m_files.listFiles(home() + "missing"), std::vector<std::string> {});
}

TEST_F(DiskFilesTest, ListsAFolderInNameOrder)
{
    const std::vector<std::string> names { "PacMan.PNG", "galaga.png" };
    EXPECT_EQ(m_files.list(home() + "MAME\\snap\\"), names);
    EXPECT_TRUE(m_files.list(home() + "missing").empty());
    EXPECT_TRUE(m_files.list(home() + "roms/x.zip").empty());
}

} // namespace
} // namespace ombrel::platform
