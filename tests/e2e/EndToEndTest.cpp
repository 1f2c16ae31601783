// End-to-end runs of the real program on a private X server: keys typed as a player types them, games
// started for real (the demo emulator, Debian's MAME), keys pressed into them, and the browser back in
// charge when they end.
#include "CabinetProcess.h"
#include "ScreenGrab.h"
#include "TempHome.h"
#include "TraceDiff.h"
#include "XvfbServer.h"

#include <SDL_image.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace ombrel::test {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

constexpr const char* kMame = "/usr/games/mame";
constexpr int kScreenW = 800;
constexpr int kScreenH = 600;

// Replaces a whole line of a CRLF file.
void replaceLine(TempHome& home, const std::string& file, const std::string& from, const std::string& to)
{
    std::string text = home.read(file);
    const size_t at = ("\n" + text).find("\n" + from + "\r\n");
    ASSERT_NE(at, std::string::npos) << from;
    text.replace(at, from.size(), to);
    home.write(file, text);
}

// The saved state of the demo cabinet, standing on one game of one list, sound on.
std::string savedState(int path, int index)
{
    return "\"\\Ombrel\\\"\r\n300\r\n0\r\n0\r\n1\r\n#FALSE#\r\n" + std::to_string(index) + "\r\n"
        + std::to_string(path) + "\r\n0\r\n";
}

// The lines of the demo emulator's log that tell which keys it received.
Lines keyLines(const std::string& log)
{
    Lines keys;
    for (const std::string& line : TraceDiff::readLines(log))
        if (line.starts_with("key "))
            keys.push_back(line);
    return keys;
}

// SELECT plays the skin's start sound, and the game starts when it has played: a game started twice
// plays it twice.
size_t startSounds(const Lines& effects)
{
    return std::count(effects.begin(), effects.end(), "media mpFX open omthemes/Ombrel/com.mp3");
}

class EndToEndTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (!onPath("Xvfb") || !onPath("xdotool"))
            GTEST_SKIP() << "needs Xvfb and xdotool";
        xvfb = XvfbServer::start(std::to_string(kScreenW) + "x" + std::to_string(kScreenH) + "x24");
        if (!xvfb)
            GTEST_SKIP() << "Xvfb did not come up";
        // The demo cabinet, without its film so the browser comes up at once.
        fs::copy(fs::path(sourceDir()) / "demo", home.root(), fs::copy_options::recursive);
        fs::remove(home.root() / "intro.mpeg");
        // The demo ships without list files; its first start scans for them. Let the program do that
        // once, headless, so each test starts from a cabinet as a returning player finds it.
        const std::string saved = home.read("ombrel.cfg");
        const std::string script = home.write("first-start.replay", "at 2000 end\n");
        const std::string command = std::string("'") + OMBREL_BINARY + "' --home '" + home.path()
            + "' --replay '" + script + "' > /dev/null 2>&1";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
        ASSERT_TRUE(home.exists("l 1.lst"));
        home.write("ombrel.cfg", saved);
    }

    // The built demo emulator, placed in the cabinet under the name a settings file gives it.
    void placeDemoEmulator(const std::string& relative)
    {
        const char* built = std::getenv("DEMOEMU");
        ASSERT_TRUE(built && *built) << "DEMOEMU does not name the built demo emulator";
        fs::create_directories((home.root() / relative).parent_path());
        fs::copy_file(built, home.root() / relative, fs::copy_options::overwrite_existing);
    }

    // Starts the program and waits for the browser, which takes the keyboard as it comes up.
    void start()
    {
        cabinet = std::make_unique<CabinetProcess>(OMBREL_BINARY, home.root().string(), xvfb->name(),
            std::vector<std::string> { "DEMOEMU_LOG=" + log(), "HOME=" + home.root().string() });
        ASSERT_TRUE(cabinet->started());
        ASSERT_TRUE(cabinet->waitForEffect("form hide blanker")) << cabinet->traceText() << cabinet->errors();
        window = windowNamed("^Ombrel$");
        ASSERT_FALSE(window.empty());
    }

    // The first window whose name matches, or empty after the usual wait. A search can fail while a
    // window it walks past goes away (an error of the X server ends xdotool), so it is tried again.
    std::string windowNamed(const std::string& pattern)
    {
        std::string found;
        eventually([&] {
            found = cabinet->xdotool({ "search", "--name", pattern }).value_or("");
            return !found.empty();
        });
        return found.substr(0, found.find('\n'));
    }

    // Leaves the front end with its exit key: the goodbye plays, then the program ends by itself.
    void exitFrontEnd()
    {
        ASSERT_TRUE(cabinet->xdotool({ "key", "Escape" }));
        EXPECT_EQ(cabinet->waitForExit(), 0) << cabinet->traceText() << cabinet->errors();
        EXPECT_EQ(cabinet->effects().back(), "program end");
    }

    // Enter on the selected game: the index of the launch line that follows, checked against line.
    std::optional<size_t> launchSelected(const std::string& line)
    {
        const size_t before = cabinet->effects().size();
        EXPECT_TRUE(cabinet->xdotool({ "key", "Return" }));
        const auto launched = cabinet->waitForEffect("launch ", before);
        EXPECT_EQ(launched ? cabinet->effects()[*launched] : cabinet->traceText(), line);
        return launched;
    }

    std::string log() const { return home.path() + "demoemu.log"; }

    TempHome home;
    // Made before the program and ended after it, so the program never loses its display.
    std::unique_ptr<XvfbServer> xvfb;
    std::unique_ptr<CabinetProcess> cabinet;
    std::string window; // the program's window, for xdotool
};

// A game of a user path: the program waits for it. The keys of the game go to the game, what reached
// the browser's window meanwhile is dropped, and after the game the same keys move the selection.
TEST_F(EndToEndTest, BlockingLaunchGivesTheKeyboardBackWithoutWhatWasTypedMeanwhile)
{
    placeDemoEmulator("emu/demoemu");
    home.write("ombrel.cfg", savedState(1, 3));
    start();

    const auto launched = launchSelected("launch emu\\demoemu alexkidd -window | in emu\\");
    ASSERT_TRUE(launched);
    ASSERT_FALSE(windowNamed("^demoemu$").empty());

    // The game has the keyboard. An Enter sent to the browser's own window all the same must not
    // start the game again when it ends.
    ASSERT_TRUE(cabinet->xdotool({ "key", "Down", "Down" }));
    ASSERT_TRUE(cabinet->xdotool({ "key", "--window", window, "Return" }));
    ASSERT_TRUE(cabinet->xdotool({ "key", "Escape" }));
    const auto exited = cabinet->waitForEffect("process exit ", *launched);
    ASSERT_TRUE(exited) << cabinet->traceText();
    EXPECT_EQ(keyLines(log()),
        (Lines { "key down 40 Down", "key up 40 Down", "key down 40 Down", "key up 40 Down",
            "key down 27 Escape" }));

    // The browser has its keys again, and stands where it stood: Up moves to the game above.
    const auto moved = cabinet->holdKeyUntil("Up", "select ", *exited);
    ASSERT_TRUE(moved) << cabinet->traceText();
    EXPECT_EQ(cabinet->effects()[*moved], "select 1 2 \"After Burner II\"");
    exitFrontEnd();
    EXPECT_EQ(startSounds(cabinet->effects()), 1u) << cabinet->traceText();
}

// A fixed emulator: nothing waits for it. After 1.2 s the program presses the keys that pick the game
// from the emulator's own list; the player leaves it with the exit key, and the browser takes its
// input back once its five seconds of refusal are over.
TEST_F(EndToEndTest, TimedLaunchPressesTheGamesKeysIntoTheEmulator)
{
    placeDemoEmulator("emu/impactemu");
    replaceLine(home, "ombrel.ini", "ImpactDir=", "ImpactDir=emu\\");
    home.write("l21.lst", "\"tgmj\",\"Tetris: The Grand Master\"\r\n\"sfex\",\"Street Fighter EX\"\r\n");
    home.write("ombrel.cfg", savedState(21, 1));
    start();

    const auto launched = launchSelected("launch emu\\impactemu.exe | in emu\\");
    ASSERT_TRUE(launched);
    // "sfex" stands fifth in the emulator's list: four times Down, then Enter.
    ASSERT_TRUE(cabinet->waitForEffect("inject up 13", *launched)) << cabinet->traceText();
    const Lines expected { "key down 40 Down", "key up 40 Down", "key down 40 Down", "key up 40 Down",
        "key down 40 Down", "key up 40 Down", "key down 40 Down", "key up 40 Down", "key down 13 Return",
        "key up 13 Return" };
    eventually([&] { return keyLines(log()).size() >= expected.size(); });
    EXPECT_EQ(keyLines(log()), expected);

    // The player leaves the game; nothing in the program is told.
    ASSERT_TRUE(cabinet->xdotool({ "key", "Escape" }));
    EXPECT_TRUE(eventually([&] {
        const Lines lines = TraceDiff::readLines(log());
        return !lines.empty() && lines.back() == "exit";
    }));
    // NOTE: a window manager gives the keyboard to the front end when the game's window goes; this X
    // server has none, so the test does it.
    ASSERT_TRUE(cabinet->xdotool({ "windowfocus", "--sync", window }));
    const auto moved = cabinet->holdKeyUntil("Up", "select ", cabinet->effects().size());
    ASSERT_TRUE(moved) << cabinet->traceText();
    EXPECT_EQ(cabinet->effects()[*moved], "select 21 0 \"Tetris: The Grand Master\"");
    exitFrontEnd();
}

// Debian's MAME on a user path: pong needs no ROM files. The program waits for it, then the browser
// comes back on the same list. Run without a window, MAME leaves the keyboard to the browser's window
// all along, like a game whose window is slow to come up: what is typed meanwhile waits in the
// window's queue, and must be dropped, or the Enter would start the game a second time.
TEST_F(EndToEndTest, MameRunsFromTheListAndTheBrowserComesBack)
{
    if (::access(kMame, X_OK) != 0)
        GTEST_SKIP() << "needs Debian's mame package";
    replaceLine(
        home, "ombrel.ini", "Opts=-window -skip_gameinfo", "Opts=-video none -sound none -seconds_to_run 2");
    home.write("ombrel.cfg", savedState(5, 1));
    start();

    const auto launched = launchSelected(
        "launch /usr/games/mame pong -video none -sound none -seconds_to_run 2 | in /usr/games/");
    ASSERT_TRUE(launched);
    ASSERT_TRUE(cabinet->xdotool({ "key", "Return" }));
    const auto exited = cabinet->waitForEffect("process exit ", *launched);
    ASSERT_TRUE(exited) << cabinet->traceText() << cabinet->errors();

    const auto moved = cabinet->holdKeyUntil("Down", "select ", *exited);
    ASSERT_TRUE(moved) << cabinet->traceText();
    EXPECT_EQ(cabinet->effects()[*moved], "select 5 2 \"Pong Doubles\"");
    exitFrontEnd();
    EXPECT_EQ(startSounds(cabinet->effects()), 1u) << cabinet->traceText();
}

// The skin on a real screen: the background picture shows wherever the skin places nothing, the strip
// shows its rows, and a held Down moves the selection, which redraws the strip's middle row. Every
// rectangle comes from the demo's skin.ini, scaled to the screen.
TEST_F(EndToEndTest, SkinIsDrawnAndTheStripFollowsTheSelection)
{
    home.write("ombrel.cfg", savedState(1, 3));
    start();
    const std::string skinFolder = home.path() + "omthemes/Ombrel/";
    const auto skin = readSkinRects(skinFolder + "skin.ini", kScreenW, kScreenH);
    ASSERT_TRUE(skin);
    std::unique_ptr<SDL_Surface, void (*)(SDL_Surface*)> loaded(
        IMG_Load((skinFolder + "background.jpg").c_str()), SDL_FreeSurface);
    ASSERT_TRUE(loaded) << IMG_GetError();
    std::unique_ptr<SDL_Surface, void (*)(SDL_Surface*)> picture(
        SDL_ConvertSurfaceFormat(loaded.get(), SDL_PIXELFORMAT_RGB888, 0), SDL_FreeSurface);
    ASSERT_TRUE(picture);
    // The background picture stretched over the screen, at a screen pixel.
    auto backgroundAt = [&](int x, int y) {
        const int px = x * picture->w / kScreenW;
        const int py = y * picture->h / kScreenH;
        const auto* row = static_cast<const uint8_t*>(picture->pixels) + static_cast<ptrdiff_t>(py) * picture->pitch;
        uint32_t pixel = 0;
        std::memcpy(&pixel, row + px * 4, 4);
        return pixel & 0xFFFFFFu;
    };
    // Drawn over the background: far from its colour there.
    auto inked = [&](const ScreenGrab& shown, int x, int y) {
        return colourDistance(shown.at(x, y), backgroundAt(x, y)) > 64;
    };
    // A point the skin leaves to the background: off every rectangle and every label's row.
    constexpr int kMargin = 8;
    auto free = [&](int x, int y) {
        std::vector<ScreenRect> taken = skin->panels;
        taken.push_back(skin->strip);
        taken.push_back(skin->logo);
        for (int top : skin->labelTops)
            taken.push_back({ 0, top, kScreenW, kScreenH / 20 });
        return std::none_of(taken.begin(), taken.end(), [&](const ScreenRect& r) {
            return ScreenRect { r.x - kMargin, r.y - kMargin, r.w + 2 * kMargin, r.h + 2 * kMargin }.contains(x, y);
        });
    };

    std::optional<ScreenGrab> shown;
    int sampled = 0, matching = 0;
    const bool background = eventually([&] {
        shown = ScreenGrab::take(xvfb->name());
        if (!shown)
            return false;
        sampled = matching = 0;
        for (int y = 0; y < kScreenH; y += 10) {
            for (int x = 0; x < kScreenW; x += 10) {
                if (!free(x, y))
                    continue;
                ++sampled;
                matching += colourDistance(shown->at(x, y), backgroundAt(x, y)) <= 24 ? 1 : 0;
            }
        }
        return sampled > 100 && matching * 10 >= sampled * 9;
    });
    ASSERT_TRUE(shown) << "cannot read the screen of " << xvfb->name();
    EXPECT_TRUE(background) << matching << " of " << sampled << " free points show the background";

    // Rows of text in the strip: pixels far from the background there.
    const ScreenRect strip = skin->strip;
    auto inkIn = [&](const ScreenGrab& grab, const ScreenRect& r) {
        int count = 0;
        for (int y = r.y; y < r.y + r.h; ++y)
            for (int x = r.x; x < r.x + r.w; ++x)
                count += inked(grab, x, y) ? 1 : 0;
        return count;
    };
    EXPECT_GT(inkIn(*shown, strip), 200) << "no rows in the strip at " << strip.x << "," << strip.y << " "
                                         << strip.w << "x" << strip.h;

    // The middle row: its text changes with the selection. Its ink, not its colour, is compared, since
    // the selection's pulse changes colours on its own.
    const ScreenRect middle { strip.x, strip.y + strip.h * 2 / 5, strip.w, strip.h / 5 };
    const ScreenGrab before = *shown;
    const size_t from = cabinet->effects().size();
    ASSERT_TRUE(cabinet->xdotool({ "keydown", "Down" }));
    std::this_thread::sleep_for(std::chrono::seconds(1));
    ASSERT_TRUE(cabinet->xdotool({ "keyup", "Down" }));
    ASSERT_TRUE(cabinet->waitForEffect("select ", from)) << cabinet->traceText();
    int changed = 0;
    eventually([&] {
        auto after = ScreenGrab::take(xvfb->name());
        if (!after)
            return false;
        changed = 0;
        for (int y = middle.y; y < middle.y + middle.h; ++y)
            for (int x = middle.x; x < middle.x + middle.w; ++x)
                changed += inked(before, x, y) != inked(*after, x, y) ? 1 : 0;
        return changed > 50;
    }, 5000);
    EXPECT_GT(changed, 50) << "the middle row did not change";
    exitFrontEnd();
}

} // namespace
} // namespace ombrel::test
