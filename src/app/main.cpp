// main: reads the command line, builds the real or the replay platform, and runs the program on it.
#include "app/CabinetFailureLog.h"
#include "app/RealPlatform.h"
#include "browser/SkinCheck.h"
#include "config/SettingsCheck.h"
#include "platform/sdl/SdlFonts.h"
#include "platform/sdl/SdlImages.h"
#include "replay/ReplayPlatform.h"
#include "replay/ReplayScript.h"
#include "startup/Application.h"

#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace {

constexpr const char* kUsage
    = "usage: ombrel [--home DIR] [--replay SCRIPT [--screen WxH]] [--trace FILE] [--windowed] [--decoders N]\n"
      "              [--check]\n"
      "       ombrel --help | --version\n"
      "  --home DIR       the cabinet's folder (default: the folder of the program)\n"
      "  --replay SCRIPT  run headless on a virtual clock, driven by SCRIPT\n"
      "  --screen WxH     the screen and desktop size of a replay in pixels (default 640x480)\n"
      "  --trace FILE     write every observable effect to FILE (\"-\": standard output)\n"
      "  --windowed       a window instead of the whole screen\n"
      "  --decoders N     threads that decode pictures ahead of the selection, 0 to 16 (default 2; 0: each\n"
      "                   picture is decoded when it is shown)\n"
      "  --check          report how ombrel.ini is read, then stop\n"
      "  --help           this text\n"
      "  --version        the program's version\n";

// The bounds of --screen: a screen smaller than a few rows or larger than any display is a typing error.
constexpr int kMinScreenSide = 16;
constexpr int kMaxScreenSide = 8192;
// More decoders than this only take memory: a step wishes for a handful of pictures.
constexpr int kMaxDecoders = 16;

struct Options {
    std::string home;
    std::string replay;
    std::string trace;
    std::string screenText;
    std::string decodersText;
    int decoders = ombrel::platform::sdl::SdlImages::kDefaultDecoders;
    ombrel::runtime::PixelSize screen = ombrel::replay::ReplayPlatform::kScreen;
    bool windowed = false;
    bool check = false;
    bool help = false;
    bool version = false;
};

// Exit codes: 2 for a wrong command line or replay script, 1 when the program cannot start.
constexpr int kUsageError = 2;
constexpr int kStartError = 1;

// The options, or the reason they are wrong ("unknown option --foo").
struct ParsedArguments {
    Options options;
    std::string error;
};

// "800x600" as a size within the bounds, or nullopt.
std::optional<ombrel::runtime::PixelSize> parseScreen(const std::string& text)
{
    auto side = [](std::string_view digits) -> std::optional<int> {
        if (digits.empty() || digits.size() > 5 || digits.find_first_not_of("0123456789") != std::string_view::npos)
            return std::nullopt;
        const int value = std::stoi(std::string(digits));
        if (value < kMinScreenSide || value > kMaxScreenSide)
            return std::nullopt;
        return value;
    };
    const size_t x = text.find('x');
    if (x == std::string::npos)
        return std::nullopt;
    const auto w = side(std::string_view(text).substr(0, x));
    const auto h = side(std::string_view(text).substr(x + 1));
    if (!w || !h)
        return std::nullopt;
    return ombrel::runtime::PixelSize { *w, *h };
}

ParsedArguments parseArguments(int argc, char** argv)
{
    ParsedArguments parsed;
    Options& options = parsed.options;
    for (int i = 1; i < argc && parsed.error.empty(); ++i) {
        const std::string arg = argv[i];
        auto value = [&](std::string& out) {
            if (i + 1 < argc)
                out = argv[++i];
            if (out.empty())
                parsed.error = arg + " needs a value";
        };
        if (arg == "--home")
            value(options.home);
        else if (arg == "--replay")
            value(options.replay);
        else if (arg == "--trace")
            value(options.trace);
        else if (arg == "--screen")
            value(options.screenText);
        else if (arg == "--decoders")
            value(options.decodersText);
        else if (arg == "--windowed")
            options.windowed = true;
        else if (arg == "--check")
            options.check = true;
        else if (arg == "--help")
            options.help = true;
        else if (arg == "--version")
            options.version = true;
        else
            parsed.error = "unknown option " + arg;
    }
    if (parsed.error.empty() && !options.screenText.empty()) {
        if (options.replay.empty())
            parsed.error = "--screen is for replay runs; a real run uses the display's size";
        else if (auto screen = parseScreen(options.screenText))
            options.screen = *screen;
        else
            parsed.error = "--screen " + options.screenText + ": expected WIDTHxHEIGHT, each "
                + std::to_string(kMinScreenSide) + " to " + std::to_string(kMaxScreenSide) + " pixels";
    }
    if (parsed.error.empty() && !options.decodersText.empty()) {
        const std::string& text = options.decodersText;
        if (text.size() <= 2 && text.find_first_not_of("0123456789") == std::string::npos
            && std::stoi(text) <= kMaxDecoders)
            options.decoders = std::stoi(text);
        else
            parsed.error = "--decoders " + text + ": expected a number from 0 to " + std::to_string(kMaxDecoders);
    }
    return parsed;
}

// The folder of the running executable.
std::string programFolder()
{
    std::error_code ec;
    const auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    if (ec)
        return std::filesystem::current_path(ec).string();
    return exe.parent_path().string();
}

// The folder as an absolute path with a trailing '/', or nullopt when it is not a folder.
std::optional<std::string> homeFolder(const std::string& given)
{
    namespace fs = std::filesystem;
    std::error_code ec;
    fs::path path = fs::absolute(given.empty() ? programFolder() : given, ec).lexically_normal();
    if (ec || !fs::is_directory(path, ec))
        return std::nullopt;
    std::string text = path.string();
    if (text.empty() || text.back() != '/')
        text += '/';
    return text;
}

int runProgram(ombrel::app::RealPlatform& real)
{
    ombrel::platform::Platform& platform = real.platform();
    auto failures = ombrel::app::cabinetFailureLog(platform.home);
    real.setFailureLog(&failures);
    // The log goes before the platform does; a throw must not leave the platform pointing at it.
    struct Detach {
        ombrel::app::RealPlatform& real;
        ~Detach() { real.setFailureLog(nullptr); }
    } detach { real };
    ombrel::startup::Application app(platform, failures);
    app.start();
    return platform.loop.run();
}

int runReplay(const Options& options, const std::string& home)
{
    std::string error;
    auto script = ombrel::replay::ReplayScript::load(options.replay, error);
    if (!script) {
        std::cerr << error << "\n";
        return kUsageError;
    }
    ombrel::replay::ReplayPlatform replay(home, std::move(*script), options.trace, options.screen, options.decoders);
    auto failures = ombrel::app::cabinetFailureLog(home);
    ombrel::startup::Application app(replay.platform(), failures);
    replay.driver().setFrameSource([&app] { return app.forms().frame(); });
    replay.driver().setDumpSource([&app] { return app.dump(); });
    app.start();
    return replay.platform().loop.run();
}

} // namespace

int main(int argc, char** argv)
{
    ombrel::platform::sdl::returnPicturesToTheSystem();
    const ParsedArguments parsed = parseArguments(argc, argv);
    if (!parsed.error.empty()) {
        std::cerr << "ombrel: " << parsed.error << "\n" << kUsage;
        return kUsageError;
    }
    const Options& options = parsed.options;
    if (options.help) {
        std::cout << kUsage;
        return 0;
    }
    if (options.version) {
        std::cout << "ombrel " << OMBREL_VERSION << "\n";
        return 0;
    }
    const auto home = homeFolder(options.home);
    if (!home) {
        std::cerr << "ombrel: " << (options.home.empty() ? programFolder() : options.home)
                  << " is not a folder\n";
        return kUsageError;
    }
    if (options.check) {
        const auto report = ombrel::config::checkSettings(*home);
        std::cout << report.text;
        // The skin is the owner's too, but nothing of it is required: it is shown, and never fails the check.
        ombrel::platform::DiskFiles files;
        ombrel::platform::sdl::SdlFonts fonts;
        for (const std::string& line : ombrel::browser::skinCheck(*home, files, fonts))
            std::cout << line << "\n";
        return report.ok ? 0 : kStartError;
    }
    try {
        if (!options.replay.empty())
            return runReplay(options, *home);
        ombrel::app::RealPlatform real(*home, options.windowed, options.trace, options.decoders);
        return runProgram(real);
    } catch (const std::exception& e) {
        std::cerr << "ombrel: " << e.what() << "\n";
        return kStartError;
    }
}
