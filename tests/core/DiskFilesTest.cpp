// Tests of the real file system's look-up of names written in another case or with '\'.
#include "platform/Files.h"

#include "TempHome.h"

#include <gtest/gtest.h>

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

TEST_F(DiskFilesTest, ListsAFolderInNameOrder)
{
    const std::vector<std::string> names { "PacMan.PNG", "galaga.png" };
    EXPECT_EQ(m_files.list(home() + "MAME\\snap\\"), names);
    EXPECT_TRUE(m_files.list(home() + "missing").empty());
    EXPECT_TRUE(m_files.list(home() + "roms/x.zip").empty());
}

} // namespace
} // namespace ombrel::platform
