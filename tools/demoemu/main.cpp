// main: the demo emulator, a stand-in game program that shows what it was started with and logs every key.
#include "DemoEmulator.h"

#include <SDL.h>
#include <SDL_ttf.h>
#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace {

using namespace ombrel::demoemu;

constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr int kUsageError = 2; // a headless run that would never end
constexpr int kStartError = 1; // no SDL or no window

template <auto Release> struct Deleter
{
    template <typename T> void operator()(T* handle) const { Release(handle); }
};

// Appends one line per record and flushes it at once, so the log is complete up to the last key even
// when the program is killed. Appending keeps all the runs of a test or a session in one file.
class LogFile
{
public:
    explicit LogFile(const std::string& path)
        : m_out(path, std::ios::app)
    {
        if (!m_out)
            std::fprintf(stderr, "demoemu: cannot write the log %s\n", path.c_str());
    }

    void line(std::string text)
    {
        // An argument with a line break in it must not split its record.
        std::replace(text.begin(), text.end(), '\n', ' ');
        std::replace(text.begin(), text.end(), '\r', ' ');
        m_out << text << std::endl;
    }

private:
    std::ofstream m_out;
};

// The file of a plain sans-serif face; empty when fontconfig knows none.
std::string findFontFile()
{
    std::string file;
    FcConfig* config = FcInitLoadConfigAndFonts();
    FcPattern* pattern = FcNameParse(reinterpret_cast<const FcChar8*>("DejaVu Sans"));
    FcResult result = FcResultNoMatch;
    if (config && pattern && FcConfigSubstitute(config, pattern, FcMatchPattern)) {
        FcDefaultSubstitute(pattern);
        if (FcPattern* match = FcFontMatch(config, pattern, &result)) {
            FcChar8* path = nullptr;
            if (FcPatternGetString(match, FC_FILE, 0, &path) == FcResultMatch && path)
                file = reinterpret_cast<const char*>(path);
            FcPatternDestroy(match);
        }
    }
    if (pattern)
        FcPatternDestroy(pattern);
    if (config)
        FcConfigDestroy(config);
    return file;
}

// The window and what is drawn in it. Without a font it still runs and logs, and draws no text.
class Screen
{
public:
    bool open(bool fullscreen)
    {
        SDL_Rect area { SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, kWidth, kHeight };
        Uint32 flags = 0;
        SDL_DisplayMode desktop;
        if (fullscreen && SDL_GetDesktopDisplayMode(0, &desktop) == 0) {
            // Made at the desktop's size, so that it covers the screen also where no window manager
            // acts on the full-screen request.
            area = { 0, 0, desktop.w, desktop.h };
            flags = SDL_WINDOW_FULLSCREEN_DESKTOP | SDL_WINDOW_BORDERLESS;
        }
        m_window.reset(SDL_CreateWindow("demoemu", area.x, area.y, area.w, area.h, flags));
        if (m_window)
            m_renderer.reset(SDL_CreateRenderer(m_window.get(), -1, 0));
        if (!m_renderer)
            return false;
        SDL_RenderSetLogicalSize(m_renderer.get(), kWidth, kHeight);
        // A front end presses keys into whatever has the focus, so take it at once.
        SDL_RaiseWindow(m_window.get());
        const std::string file = findFontFile();
        if (!file.empty())
            m_font.reset(TTF_OpenFont(file.c_str(), 20));
        if (!m_font)
            std::fprintf(stderr, "demoemu: no font found, drawing without text\n");
        return true;
    }

    void draw(const Options& options, const GameMenu& menu)
    {
        SDL_Renderer* r = m_renderer.get();
        SDL_SetRenderDrawColor(r, 16, 20, 48, 255);
        SDL_RenderClear(r);
        text(24, 16, "demoemu", { 255, 200, 64, 255 });
        text(24, 52, "Game: " + (options.game.empty() ? std::string("(none)") : options.game));
        std::string args = "Arguments:";
        for (const std::string& arg : options.args)
            args += " " + arg;
        text(24, 80, args);

        constexpr int listTop = 124;
        constexpr int rowHeight = 34;
        for (int i = 0; i < GameMenu::kRows; ++i) {
            const int y = listTop + i * rowHeight;
            if (i == menu.row()) {
                const SDL_Rect bar { 16, y - 2, kWidth - 32, rowHeight - 4 };
                SDL_SetRenderDrawColor(r, menu.playing() ? 40 : 60, menu.playing() ? 140 : 90, 200, 255);
                SDL_RenderFillRect(r, &bar);
            }
            text(40, y, std::string(GameMenu::kGames[static_cast<std::size_t>(i)]));
        }
        const std::string status = menu.playing() ? "Playing " + std::string(menu.current())
                                                  : "Down, Tab, Up choose   Enter plays   Esc quits";
        text(24, kHeight - 40, status, { 160, 255, 160, 255 });
        SDL_RenderPresent(r);
    }

private:
    void text(int x, int y, const std::string& line, SDL_Color colour = { 230, 230, 230, 255 })
    {
        if (!m_font || line.empty())
            return;
        // What is past the screen's edge is cut first: a long argument list would make a huge surface.
        std::unique_ptr<SDL_Surface, Deleter<SDL_FreeSurface>> surface(
            TTF_RenderUTF8_Blended(m_font.get(), line.substr(0, 120).c_str(), colour));
        if (!surface)
            return;
        std::unique_ptr<SDL_Texture, Deleter<SDL_DestroyTexture>> texture(
            SDL_CreateTextureFromSurface(m_renderer.get(), surface.get()));
        const SDL_Rect where { x, y, surface->w, surface->h };
        if (texture)
            SDL_RenderCopy(m_renderer.get(), texture.get(), nullptr, &where);
    }

    std::unique_ptr<SDL_Window, Deleter<SDL_DestroyWindow>> m_window;
    std::unique_ptr<SDL_Renderer, Deleter<SDL_DestroyRenderer>> m_renderer;
    std::unique_ptr<TTF_Font, Deleter<TTF_CloseFont>> m_font;
};

// "key down|up|repeat <virtual-key code> <SDL's name of the key>"; the name comes last as it may hold blanks.
std::string keyLine(const SDL_KeyboardEvent& key)
{
    const char* verb = key.type == SDL_KEYUP ? "key up " : key.repeat ? "key repeat " : "key down ";
    std::string name = SDL_GetKeyName(key.keysym.sym);
    if (name.empty())
        name = SDL_GetScancodeName(key.keysym.scancode);
    return verb + std::to_string(vkFromScancode(key.keysym.scancode)) + " " + (name.empty() ? "?" : name);
}

// Runs until Esc, the window's close, a termination signal or the end of -seconds.
void run(const Options& options, Screen* screen, LogFile& log)
{
    GameMenu menu;
    const Uint64 start = SDL_GetTicks64();
    bool dirty = true;
    bool running = true;
    while (running) {
        int waitMs = 100;
        if (options.runMs) {
            const Uint64 elapsed = SDL_GetTicks64() - start;
            if (elapsed >= *options.runMs)
                break;
            waitMs = static_cast<int>(std::min<Uint64>(*options.runMs - elapsed, 100));
        }
        SDL_Event event;
        for (bool got = SDL_WaitEventTimeout(&event, waitMs) != 0; got && running;
             got = SDL_PollEvent(&event) != 0) {
            if (event.type == SDL_QUIT) {
                running = false;
            } else if (event.type == SDL_WINDOWEVENT) {
                running = event.window.event != SDL_WINDOWEVENT_CLOSE;
                dirty = true;
            } else if (event.type == SDL_KEYDOWN || event.type == SDL_KEYUP) {
                log.line(keyLine(event.key));
                if (event.type == SDL_KEYUP)
                    continue;
                const GameMenu::Outcome outcome = menu.press(vkFromScancode(event.key.keysym.scancode));
                if (outcome == GameMenu::Outcome::Started)
                    log.line("playing " + std::string(menu.current()));
                running = outcome != GameMenu::Outcome::Quit;
                dirty = true;
            }
        }
        if (dirty && screen) {
            screen->draw(options, menu);
            dirty = false;
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    const Options options = parseOptions(std::vector<std::string>(argv + 1, argv + argc));

    const char* logPath = std::getenv("DEMOEMU_LOG");
    LogFile log(logPath && *logPath ? logPath : "demoemu.log");
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::current_path(error);
    log.line("start");
    log.line("cwd " + (error ? std::string("?") : folder.string()));
    std::string args = "args";
    for (const std::string& arg : options.args)
        args += " [" + arg + "]";
    log.line(args);
    log.line(options.game.empty() ? std::string("no game") : "game " + options.game);

    int status = 0;
    if (options.headless && !options.runMs) {
        std::fprintf(stderr, "demoemu: -headless needs -seconds N (0 to %.0f), or it would never end\n",
            kMaxSeconds);
        status = kUsageError;
    } else {
        if (options.headless)
            SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
        if (SDL_Init(SDL_INIT_VIDEO) != 0 || TTF_Init() != 0) {
            std::fprintf(stderr, "demoemu: cannot start SDL: %s\n", SDL_GetError());
            status = kStartError;
        } else if (options.headless) {
            run(options, nullptr, log);
        } else {
            Screen screen;
            if (screen.open(options.fullscreen)) {
                run(options, &screen, log);
            } else {
                std::fprintf(stderr, "demoemu: cannot open a window: %s\n", SDL_GetError());
                status = kStartError;
            }
        }
        TTF_Quit();
        SDL_Quit();
    }
    log.line("exit");
    return status;
}
