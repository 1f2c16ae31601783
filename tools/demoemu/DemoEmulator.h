// DemoEmulator: the demo emulator's command line, its own game list and the key codes it reports.
#pragma once

#include <SDL.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ombrel::demoemu {

// The longest self-timed run. It keeps the milliseconds far from overflow and a typo from leaving a
// headless run behind for years.
constexpr double kMaxSeconds = 86400.0;

// What the command line asks for. Options may stand before or after the game, since a front end
// puts the game first and the configured options behind it.
struct Options
{
    std::vector<std::string> args; // every argument as given, for the screen and the log
    std::string game; // the first argument that is not an option; empty when there is none
    bool fullscreen = false;
    bool headless = false;
    std::optional<std::uint64_t> runMs; // from -seconds: end by itself after this long
};

// Seconds as a plain decimal number, 0 up to kMaxSeconds (larger values are cut down to it).
inline std::optional<std::uint64_t> parseSeconds(std::string_view text)
{
    double seconds = 0.0;
    const char* end = text.data() + text.size();
    auto [next, error] = std::from_chars(text.data(), end, seconds, std::chars_format::fixed);
    if (text.empty() || error != std::errc() || next != end || !std::isfinite(seconds) || seconds < 0.0)
        return std::nullopt;
    if (seconds > kMaxSeconds)
        seconds = kMaxSeconds;
    return static_cast<std::uint64_t>(std::llround(seconds * 1000.0));
}

inline Options parseOptions(const std::vector<std::string>& args)
{
    Options options;
    options.args = args;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "-fullscreen" || arg == "-window")
            options.fullscreen = arg == "-fullscreen";
        else if (arg == "-headless")
            options.headless = true;
        else if (arg == "-seconds" && i + 1 < args.size())
            options.runMs = parseSeconds(args[++i]); // taken even when it is no number: never the game
        else if (!arg.empty() && arg[0] != '-' && options.game.empty())
            options.game = arg;
    }
    return options;
}

// The Windows virtual-key code of a key, by its position on a US keyboard; 0 when it has none.
// Shift, Ctrl and Alt give the codes that do not tell left from right, as a window's key message does.
inline int vkFromScancode(SDL_Scancode scancode)
{
    if (scancode >= SDL_SCANCODE_A && scancode <= SDL_SCANCODE_Z)
        return 'A' + (scancode - SDL_SCANCODE_A);
    if (scancode >= SDL_SCANCODE_1 && scancode <= SDL_SCANCODE_9)
        return '1' + (scancode - SDL_SCANCODE_1);
    if (scancode >= SDL_SCANCODE_F1 && scancode <= SDL_SCANCODE_F12)
        return 112 + (scancode - SDL_SCANCODE_F1);
    if (scancode >= SDL_SCANCODE_F13 && scancode <= SDL_SCANCODE_F24)
        return 124 + (scancode - SDL_SCANCODE_F13);
    if (scancode >= SDL_SCANCODE_KP_1 && scancode <= SDL_SCANCODE_KP_9)
        return 97 + (scancode - SDL_SCANCODE_KP_1);

    // clang-format off
    static constexpr std::pair<SDL_Scancode, int> kOthers[] = {
        { SDL_SCANCODE_0, '0' }, { SDL_SCANCODE_KP_0, 96 }, { SDL_SCANCODE_BACKSPACE, 8 },
        { SDL_SCANCODE_TAB, 9 }, { SDL_SCANCODE_RETURN, 13 }, { SDL_SCANCODE_KP_ENTER, 13 },
        { SDL_SCANCODE_LSHIFT, 16 }, { SDL_SCANCODE_RSHIFT, 16 }, { SDL_SCANCODE_LCTRL, 17 },
        { SDL_SCANCODE_RCTRL, 17 }, { SDL_SCANCODE_LALT, 18 }, { SDL_SCANCODE_RALT, 18 },
        { SDL_SCANCODE_PAUSE, 19 }, { SDL_SCANCODE_CAPSLOCK, 20 }, { SDL_SCANCODE_ESCAPE, 27 },
        { SDL_SCANCODE_SPACE, 32 }, { SDL_SCANCODE_PAGEUP, 33 }, { SDL_SCANCODE_PAGEDOWN, 34 },
        { SDL_SCANCODE_END, 35 }, { SDL_SCANCODE_HOME, 36 }, { SDL_SCANCODE_LEFT, 37 },
        { SDL_SCANCODE_UP, 38 }, { SDL_SCANCODE_RIGHT, 39 }, { SDL_SCANCODE_DOWN, 40 },
        { SDL_SCANCODE_PRINTSCREEN, 44 }, { SDL_SCANCODE_INSERT, 45 }, { SDL_SCANCODE_DELETE, 46 },
        { SDL_SCANCODE_LGUI, 91 }, { SDL_SCANCODE_RGUI, 92 }, { SDL_SCANCODE_APPLICATION, 93 },
        { SDL_SCANCODE_KP_MULTIPLY, 106 }, { SDL_SCANCODE_KP_PLUS, 107 }, { SDL_SCANCODE_KP_MINUS, 109 },
        { SDL_SCANCODE_KP_PERIOD, 110 }, { SDL_SCANCODE_KP_DIVIDE, 111 }, { SDL_SCANCODE_NUMLOCKCLEAR, 144 },
        { SDL_SCANCODE_SCROLLLOCK, 145 }, { SDL_SCANCODE_SEMICOLON, 186 }, { SDL_SCANCODE_EQUALS, 187 },
        { SDL_SCANCODE_COMMA, 188 }, { SDL_SCANCODE_MINUS, 189 }, { SDL_SCANCODE_PERIOD, 190 },
        { SDL_SCANCODE_SLASH, 191 }, { SDL_SCANCODE_GRAVE, 192 }, { SDL_SCANCODE_LEFTBRACKET, 219 },
        { SDL_SCANCODE_BACKSLASH, 220 }, { SDL_SCANCODE_RIGHTBRACKET, 221 }, { SDL_SCANCODE_APOSTROPHE, 222 },
    };
    // clang-format on
    for (const auto& [key, vk] : kOthers) {
        if (key == scancode)
            return vk;
    }
    return 0;
}

// The emulator's own game list, worked with the keys a front end presses into it: Down and Tab go
// to the next row, Up to the one before, both round the ends; Enter starts the highlighted game,
// and from then on the list stays as it is. Esc ends the program.
class GameMenu
{
public:
    static constexpr std::array<std::string_view, 8> kGames = {
        "Comet Courier", "Turbo Tadpole", "Brick Baron", "Lunar Laundry",
        "Neon Knights", "Pixel Prospector", "Robo Rodeo", "Sky Sardines",
    };
    static constexpr int kRows = static_cast<int>(kGames.size());

    enum class Outcome { Stay, Started, Quit };

    Outcome press(int vk)
    {
        if (vk == 27)
            return Outcome::Quit;
        if (m_playing)
            return Outcome::Stay;
        if (vk == 40 || vk == 9)
            m_row = (m_row + 1) % kRows;
        else if (vk == 38)
            m_row = (m_row + kRows - 1) % kRows;
        else if (vk == 13)
            m_playing = true;
        return m_playing ? Outcome::Started : Outcome::Stay;
    }

    int row() const { return m_row; }
    bool playing() const { return m_playing; }
    std::string_view current() const { return kGames[static_cast<std::size_t>(m_row)]; }

private:
    int m_row = 0;
    bool m_playing = false;
};

} // namespace ombrel::demoemu
