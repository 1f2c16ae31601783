// PictureBench: Down held through 500 games of a 4000-game cabinet whose games all have the four kinds
// of picture at the sizes real art comes in (snaps 640 x 480, marquees 1024 x 256, flyers and cabinets
// 1200 x 1600, PNG). A step comes every 75 ms of real time, as the repeat timer makes them, so the
// decoding workers get the time they would get at the cabinet. Reported for each run:
//   - the loop's time per step (the turn that moves the selection: its handlers and its paint), p50,
//     p99 and the slowest, with the CPU time of the loop's thread;
//   - the share of steps that found every picture they drew decoded already (Images::served().waited
//     unchanged over the step);
//   - resident memory (VmRSS) after the boot, at the end and the most seen during the run.
// A run whose last screen, painted a changed part at a time, differs from the same frame painted whole
// fails.
// Runs: a skin with the four preview panels, and the same skin with a 3 x 3 strip of snaps; each with
// the read-ahead (the cache's decode workers) and without it (no workers: every picture is decoded on
// the loop's thread when it is drawn). Each run is a child process of its own, so that the memory one
// run leaves behind does not count in the next.
// Usage: ombrel_bench_pictures [--steps N] [--skin panels|strip] [--ahead on|off] [--workers N]
//                              [--variants N] [--keep DIR]
#include "core/FailureLog.h"
#include "platform/Files.h"
#include "platform/Platform.h"
#include "platform/fake/FakeCursor.h"
#include "platform/fake/FakeDisplayMode.h"
#include "platform/fake/FakeJoystick.h"
#include "platform/fake/FakeKeyInjector.h"
#include "platform/fake/FakeKeyState.h"
#include "platform/fake/FakeMediaPlayers.h"
#include "platform/fake/FakePower.h"
#include "platform/fake/FakeProcesses.h"
#include "platform/sdl/SdlFonts.h"
#include "platform/sdl/SdlImages.h"
#include "platform/sdl/SdlRenderer.h"
#include "runtime/Clock.h"
#include "runtime/EventLoop.h"
#include "runtime/EventSource.h"
#include "runtime/FormStack.h"
#include "runtime/Trace.h"
#include "startup/Application.h"
#include "startup/MainForm.h"

#include <SDL.h>
#include <SDL_image.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace ombrel;
namespace fs = std::filesystem;
using Steady = std::chrono::steady_clock;

namespace {

constexpr runtime::PixelSize kScreen { 1920, 1080 };
constexpr int kGames = 4000;
constexpr int kVkDown = 40;
constexpr int kRepeatMs = 75; // the repeat timers' interval of a cabinet without scrollRate

struct Options
{
    int steps = 500;
    std::vector<std::string> skins { "panels", "strip" };
    std::vector<bool> ahead { true, false };
    int workers = -1; // -1: the cache's own default
    int variants = 24; // distinct pictures of each kind, linked under the 4000 names
    std::string keep; // build the cabinet here and leave it
};

// The four kinds as the art folders hold them, at the sizes the cabinets' art comes in.
struct ArtKind
{
    const char* folder;
    int w;
    int h;
};
constexpr ArtKind kArt[] = { { "marquees", 1024, 256 }, { "snap", 640, 480 }, { "flyers", 1200, 1600 },
    { "cabinets", 1200, 1600 } };

double threadCpuMs()
{
    timespec now {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1000.0 + static_cast<double>(now.tv_nsec) / 1e6;
}

double residentMb()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:"))
            return std::strtod(line.c_str() + 6, nullptr) / 1024.0;
    return 0;
}

std::string gameName(int game)
{
    char name[16];
    std::snprintf(name, sizeof name, "g%04d", game);
    return name;
}

// A picture that compresses about as well as scanned art: smooth shading with grain over it. Noise
// alone would make every file as big as its pixels, flat colour would make it nearly free to decode.
void writePicture(const fs::path& file, int w, int h, int variant)
{
    SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormat(0, w, h, 24, SDL_PIXELFORMAT_RGB24);
    if (!surface)
        throw std::runtime_error(std::string("no surface: ") + SDL_GetError());
    uint32_t seed = 2463534242u + static_cast<uint32_t>(variant) * 7919u;
    for (int y = 0; y < h; ++y) {
        auto* row = static_cast<uint8_t*>(surface->pixels) + static_cast<ptrdiff_t>(y) * surface->pitch;
        for (int x = 0; x < w; ++x) {
            seed ^= seed << 13;
            seed ^= seed >> 17;
            seed ^= seed << 5;
            const int grain = static_cast<int>(seed & 15u);
            row[3 * x] = static_cast<uint8_t>((x * 255 / w + variant * 37 + grain) & 0xFF);
            row[3 * x + 1] = static_cast<uint8_t>((y * 255 / h + variant * 11 + grain) & 0xFF);
            row[3 * x + 2] = static_cast<uint8_t>((((x / 40) ^ (y / 40)) * 29 + grain) & 0xFF);
        }
    }
    const int saved = IMG_SavePNG(surface, file.c_str());
    SDL_FreeSurface(surface);
    if (saved != 0)
        throw std::runtime_error("cannot write " + file.string() + ": " + IMG_GetError());
}

// Line n (from 1) of a skin file, replaced; the file keeps its CRLF line ends.
void setSkinLine(const fs::path& file, int n, const std::string& value)
{
    std::ifstream in(file, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    if (static_cast<int>(lines.size()) < n)
        throw std::runtime_error(file.string() + " has fewer than " + std::to_string(n) + " lines");
    lines[static_cast<size_t>(n - 1)] = value + "\r";
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    for (const std::string& line : lines)
        out << line << "\n";
}

// The demo cabinet with 4000 games in its first list, each with all four pictures, and two skins:
// the demo's own with four panels, and "Strip", the same with a 3 x 3 strip of snaps below the panels.
class BenchCabinet
{
public:
    explicit BenchCabinet(const Options& options)
        : m_root(options.keep.empty()
                  ? fs::temp_directory_path() / ("ombrel-bench-pictures-" + std::to_string(::getpid()))
                  : fs::path(options.keep))
        , m_remove(options.keep.empty())
    {
        const char* source = std::getenv("OMBREL_SOURCE_DIR");
        const fs::path demo = fs::path(source && *source ? source : OMBREL_SOURCE_DIR) / "demo";
        fs::remove_all(m_root);
        fs::copy(demo, m_root, fs::copy_options::recursive);
        fs::remove(m_root / "intro.mpeg");

        std::ofstream master(m_root / "gamelist.lst", std::ios::binary | std::ios::trunc);
        fs::remove_all(m_root / "roms" / "mame");
        fs::create_directories(m_root / "roms" / "mame");
        for (int game = 1; game <= kGames; ++game) {
            master << '"' << gameName(game) << "\",\"Game " << game << "\"\r\n";
            std::ofstream(m_root / "roms" / "mame" / (gameName(game) + ".zip"));
        }

        fs::remove_all(m_root / "art");
        for (const ArtKind& kind : kArt) {
            const fs::path folder = m_root / "art" / kind.folder;
            const fs::path originals = m_root / "art-originals" / kind.folder;
            fs::create_directories(folder);
            fs::create_directories(originals);
            for (int v = 0; v < options.variants; ++v)
                writePicture(originals / (std::to_string(v) + ".png"), kind.w, kind.h, v);
            for (int game = 1; game <= kGames; ++game)
                fs::create_hard_link(originals / (std::to_string(game % options.variants) + ".png"),
                    folder / (gameName(game) + ".png"));
        }

        const fs::path strip = m_root / "omthemes" / "Strip";
        fs::copy(m_root / "omthemes" / "Ombrel", strip, fs::copy_options::recursive);
        // Nine cells of 2360 x 840 in a rectangle of 7200 x 2640 below the snap panel (design twips).
        setSkinLine(strip / "skin.ini", 9, "3000,240,7200,2640");
        setSkinLine(strip / "skin.ini", 11, "snap");
        setSkinLine(strip / "skin.ini", 12, "2360,840");
        setSkinLine(strip / "skin.ini", 17, "60");
        path = m_root.string() + "/";
    }
    ~BenchCabinet()
    {
        std::error_code ec;
        if (m_remove)
            fs::remove_all(m_root, ec);
    }
    BenchCabinet(const BenchCabinet&) = delete;
    BenchCabinet& operator=(const BenchCabinet&) = delete;

    // The skin the next start uses: line 1 of ombrel.cfg.
    void useSkin(const std::string& skin) const
    {
        setSkinLine(m_root / "ombrel.cfg", 1, "\"\\" + skin + "\\\"");
    }

    std::string path;

private:
    fs::path m_root;
    bool m_remove;
};

// Counts the selection's moves, which is all the bench needs to know of the trace.
class SelectCounter final : public runtime::Trace
{
public:
    void effect(std::string_view line) override
    {
        if (line.starts_with("select "))
            ++selects;
    }
    long selects = 0;
};

// The clock follows real time: waiting sleeps until the deadline, and a turn that ran late finds the
// clock moved on by as much, as the real clock of the program would be.
class RealTimeSource final : public runtime::EventSource
{
public:
    explicit RealTimeSource(runtime::VirtualClock& clock)
        : m_clock(clock)
        , m_start(Steady::now())
        , m_startMs(clock.nowMs())
    {
    }
    void poll(runtime::EventLoop&) override { }
    bool wait(runtime::EventLoop&, std::optional<int64_t> deadline) override
    {
        if (!deadline)
            return false;
        if (*deadline > nowMs())
            std::this_thread::sleep_until(m_start + std::chrono::milliseconds(*deadline - m_startMs));
        catchUp();
        return true;
    }
    // Brings the clock up to real time.
    void catchUp() { m_clock.advanceTo(std::max(m_clock.nowMs(), nowMs())); }

private:
    int64_t nowMs() const
    {
        return m_startMs
            + std::chrono::duration_cast<std::chrono::milliseconds>(Steady::now() - m_start).count();
    }

    runtime::VirtualClock& m_clock;
    Steady::time_point m_start;
    int64_t m_startMs;
};

// The program on the bench cabinet: fakes for everything but the disk, the fonts, the pictures and
// the renderer, which are the real ones.
class BenchProgram
{
public:
    BenchProgram(const std::string& home, std::unique_ptr<platform::sdl::SdlImages> images)
        : m_home(home)
        , m_loop(m_clock)
        , m_source(m_clock)
        , m_media(m_loop, m_trace, [](const std::string&) { return 1.0; }, m_home)
        , m_processes(m_trace, m_home)
        , m_keys(m_trace)
        , m_cursor(m_trace)
        , m_display(m_trace, kScreen)
        , m_power(m_trace)
        , m_images(std::move(images))
        , m_failures(m_home + "ombrel.log", m_discard)
    {
        m_renderer = platform::sdl::SdlRenderer::offscreen(kScreen, m_fonts, *m_images);
        if (!m_renderer)
            throw std::runtime_error("no off-screen surface of 1920x1080");
        m_loop.setSource(&m_source);
        m_platform = std::make_unique<platform::Platform>(platform::Platform { m_loop, m_clock, m_trace, m_files,
            m_media, m_processes, m_keys, m_keyState, m_joystick, m_cursor, m_display, m_power, *m_renderer,
            m_fonts, *m_images, m_home });
        m_app = std::make_unique<startup::Application>(*m_platform, m_failures);
        m_app->start();
        // The blanker without its film, the boot, the scan that writes the list files.
        m_loop.runFor(4000);
        runtime::Form* main = m_app->forms().existing("Main");
        if (!main || !main->visible())
            throw std::runtime_error("the browser did not come up");
    }

    startup::MainForm& main() { return m_app->forms().form<startup::MainForm>("Main"); }

    // How many pixels of the screen, painted a part at a time through the run, differ from the same
    // frame painted whole: none, or the damage missed something.
    int pixelsPaintedAmiss()
    {
        SDL_Surface* screen = m_renderer->surface();
        platform::sdl::SurfacePtr byParts(SDL_DuplicateSurface(screen));
        if (!byParts)
            throw std::runtime_error("no copy of the screen");
        m_renderer->repaint();
        int amiss = 0;
        for (int y = 0; y < screen->h; ++y) {
            const auto* a
                = static_cast<const uint8_t*>(screen->pixels) + static_cast<ptrdiff_t>(y) * screen->pitch;
            const auto* b
                = static_cast<const uint8_t*>(byParts->pixels) + static_cast<ptrdiff_t>(y) * byParts->pitch;
            for (int x = 0; x < screen->w * 4; x += 4)
                amiss += std::memcmp(a + x, b + x, 3) != 0 ? 1 : 0;
        }
        return amiss;
    }
    platform::sdl::SdlImages& images() { return *m_images; }

    void key(runtime::InputKind kind, int vk)
    {
        runtime::InputEvent event;
        event.kind = kind;
        event.vk = vk;
        m_loop.postInput(event);
        m_loop.doEvents();
    }

    struct Took
    {
        double wallMs = 0;
        double cpuMs = 0;
        bool waited = false; // some picture of the step had to be decoded or waited for
    };

    // Runs the loop in real time until the selection moves, and returns the turn that moved it;
    // nullopt when a repeat's worth of time moved nothing (the end of the list). The turns of the
    // other timers (the pulse, the joystick poll) run too but are not counted.
    std::optional<Took> step()
    {
        const long before = m_trace.selects;
        for (int turns = 0; turns < 20; ++turns) {
            auto due = m_loop.nextTimerDue();
            if (!due)
                return std::nullopt;
            m_source.wait(m_loop, due);
            const uint64_t waitedBefore = m_images->served().waited;
            const auto begin = Steady::now();
            const double cpuBegin = threadCpuMs();
            m_loop.doEvents();
            const Took took { std::chrono::duration<double, std::milli>(Steady::now() - begin).count(),
                threadCpuMs() - cpuBegin, m_images->served().waited != waitedBefore };
            if (m_trace.selects != before)
                return took;
        }
        return std::nullopt;
    }

private:
    std::string m_home;
    runtime::VirtualClock m_clock;
    SelectCounter m_trace;
    runtime::EventLoop m_loop;
    RealTimeSource m_source;
    platform::DiskFiles m_files;
    platform::fake::FakeMediaPlayers m_media;
    platform::fake::FakeProcesses m_processes;
    platform::fake::FakeKeyInjector m_keys;
    platform::fake::FakeKeyState m_keyState;
    platform::fake::FakeJoystick m_joystick;
    platform::fake::FakeCursor m_cursor;
    platform::fake::FakeDisplayMode m_display;
    platform::fake::FakePower m_power;
    platform::sdl::SdlFonts m_fonts;
    std::unique_ptr<platform::sdl::SdlImages> m_images;
    std::unique_ptr<platform::sdl::SdlRenderer> m_renderer;
    std::ostringstream m_discard;
    core::FailureLog m_failures;
    std::unique_ptr<platform::Platform> m_platform;
    std::unique_ptr<startup::Application> m_app;
};

double percentile(std::vector<double> values, double p)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[std::min(values.size() - 1, static_cast<size_t>(p * static_cast<double>(values.size())))];
}

// One run, in the child process: prints its line of the table.
int runOne(const Options& options, const std::string& home, const std::string& skin, bool ahead)
{
    platform::sdl::SdlImages::Limits limits;
    const size_t cacheMb = limits.maxBytes / (1024 * 1024);
    auto images = !ahead ? std::make_unique<platform::sdl::SdlImages>(limits, 0)
        : options.workers >= 0 ? std::make_unique<platform::sdl::SdlImages>(limits, options.workers)
                               : std::make_unique<platform::sdl::SdlImages>();
    BenchProgram program(home, std::move(images));
    runtime::ListBox& list = program.main().c.List1;
    if (list.listCount() < options.steps + 1)
        throw std::runtime_error("the list has " + std::to_string(list.listCount()) + " games");
    list.setListIndex(0);
    program.key(runtime::InputKind::KeyUp, kVkDown); // the pictures of the first game, as after a key

    const double rssStart = residentMb();
    double rssMax = rssStart;
    const platform::Images::Served servedBefore = program.images().served();
    std::vector<double> wall;
    std::vector<double> cpu;
    int servedSteps = 0;
    program.key(runtime::InputKind::KeyDown, kVkDown);
    while (static_cast<int>(wall.size()) < options.steps) {
        const auto took = program.step();
        if (!took)
            break;
        wall.push_back(took->wallMs);
        cpu.push_back(took->cpuMs);
        servedSteps += took->waited ? 0 : 1;
        rssMax = std::max(rssMax, residentMb());
    }
    program.key(runtime::InputKind::KeyUp, kVkDown);
    const double rssEnd = residentMb();
    const platform::Images::Served served = program.images().served();
    const bool counted = served.ready + served.waited > servedBefore.ready + servedBefore.waited;

    char share[16] = "n/a"; // an Images that counts nothing tells nothing
    if (counted)
        std::snprintf(share, sizeof share, "%.1f%%",
            100.0 * servedSteps / static_cast<double>(std::max<size_t>(1, wall.size())));
    char line[256];
    std::snprintf(line, sizeof line, "%-7s %-5s %5zu %7.2f %7.2f %7.2f %7.2f %7.2f %8s %6.0f %6.0f %6.0f %6zu",
        skin.c_str(), ahead ? "on" : "off", wall.size(), percentile(wall, 0.5), percentile(wall, 0.99),
        percentile(wall, 1.0), percentile(cpu, 0.5), percentile(cpu, 0.99), share, rssStart, rssEnd, rssMax,
        cacheMb);
    std::cout << line << std::endl;
    if (const int amiss = program.pixelsPaintedAmiss(); amiss != 0) {
        std::cerr << skin << " " << (ahead ? "on" : "off") << ": " << amiss
                  << " pixels of the last frame differ from a whole repaint\n";
        return 1;
    }
    return 0;
}

Options parse(int argc, char** argv)
{
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
        if (!value)
            throw std::invalid_argument(arg + " needs a value");
        ++i;
        if (arg == "--steps")
            options.steps = std::max(1, std::atoi(value));
        else if (arg == "--skin" && (std::string(value) == "panels" || std::string(value) == "strip"))
            options.skins = { value };
        else if (arg == "--ahead" && (std::string(value) == "on" || std::string(value) == "off"))
            options.ahead = { std::string(value) == "on" };
        else if (arg == "--workers")
            options.workers = std::max(0, std::atoi(value));
        else if (arg == "--variants")
            options.variants = std::clamp(std::atoi(value), 1, kGames);
        else if (arg == "--keep")
            options.keep = value;
        else
            throw std::invalid_argument("unknown option " + arg + " " + value);
    }
    return options;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const Options options = parse(argc, argv);
        // As the program does; the runs fork from here and keep it.
        platform::sdl::returnPicturesToTheSystem();
        const auto made = Steady::now();
        // Made before the runs fork, and by this thread alone: the children start from a process with
        // no other threads.
        BenchCabinet cabinet(options);
        std::cout << "cabinet: " << kGames << " games, " << options.variants
                  << " pictures of each kind, made in "
                  << std::chrono::duration_cast<std::chrono::seconds>(Steady::now() - made).count() << " s\n"
                  << "Down held at " << kRepeatMs << " ms for " << options.steps
                  << " steps; times in ms, memory in MB (cache = the cache's bound)\n"
                  << "skin    ahead steps     p50     p99     max cpu_p50 cpu_p99   served  rss_0  rss_1 rss_max  cache"
                  << std::endl;
        int failed = 0;
        for (const std::string& skin : options.skins) {
            cabinet.useSkin(skin == "strip" ? "Strip" : "Ombrel");
            for (bool ahead : options.ahead) {
                const pid_t child = fork();
                if (child < 0)
                    throw std::runtime_error("fork failed");
                if (child == 0) {
                    try {
                        std::_Exit(runOne(options, cabinet.path, skin, ahead));
                    } catch (const std::exception& error) {
                        std::cerr << skin << " " << (ahead ? "on" : "off") << ": " << error.what() << "\n";
                        std::_Exit(1);
                    }
                }
                int status = 0;
                waitpid(child, &status, 0);
                failed += WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 0 : 1;
            }
        }
        return failed == 0 ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << "ombrel_bench_pictures: " << error.what() << "\n";
        return 2;
    }
}
