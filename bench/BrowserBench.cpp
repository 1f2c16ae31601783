// BrowserBench: the browser of a copy of the demo cabinet at 1920x1080, its strip in three columns,
// run by the real Application and painted by the real SDL renderer into an off-screen surface.
//   BM_SelectionStep: a held Down (then Up) key; each step is the repeat tick that moves the selection,
//     timed from the tick to the frame handed to SDL; p50 and p99 over every step.
//   BM_WholeScreenRepaint: the whole screen painted again as it stands (the window uncovered, a film).
//   BM_PulseOfOneRow: one row of the strip changing colour, as the selection's pulse makes it.
// The clock is virtual, so only the work is timed, never a wait for a timer.
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

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

using namespace ombrel;
namespace fs = std::filesystem;

namespace {

constexpr runtime::PixelSize kScreen { 1920, 1080 };
constexpr int kVkUp = 38;
constexpr int kVkDown = 40;
constexpr int kRepeatMs = 75; // the repeat timers' interval of a cabinet without scrollRate
constexpr int kColumns = 3;

double threadCpuMs()
{
    timespec now {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1000.0 + static_cast<double>(now.tv_nsec) / 1e6;
}

// Counts the selection's moves, which is all the benchmark needs to know of the trace.
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

// Moves the virtual clock to whatever deadline the loop waits for: nothing else ever comes.
class ClockSource final : public runtime::EventSource
{
public:
    explicit ClockSource(runtime::VirtualClock& clock)
        : m_clock(clock)
    {
    }
    void poll(runtime::EventLoop&) override { }
    bool wait(runtime::EventLoop&, std::optional<int64_t> deadline) override
    {
        if (deadline)
            m_clock.advanceTo(*deadline);
        return deadline.has_value();
    }

private:
    runtime::VirtualClock& m_clock;
};

// A copy of the demo cabinet in a temporary folder, with three columns in its skin and no film.
class BenchHome
{
public:
    BenchHome()
        : m_root(fs::temp_directory_path() / ("ombrel-bench-browser-" + std::to_string(::getpid())))
    {
        const char* source = std::getenv("OMBREL_SOURCE_DIR");
        const fs::path demo = fs::path(source && *source ? source : OMBREL_SOURCE_DIR) / "demo";
        fs::remove_all(m_root);
        fs::copy(demo, m_root, fs::copy_options::recursive);
        fs::remove(m_root / "intro.mpeg");
        setSkinLine(m_root / "omthemes" / "Ombrel" / "skin.ini", 10, std::to_string(kColumns));
        path = m_root.string() + "/";
    }
    ~BenchHome()
    {
        std::error_code ec;
        fs::remove_all(m_root, ec);
    }
    BenchHome(const BenchHome&) = delete;
    BenchHome& operator=(const BenchHome&) = delete;

    std::string path;

private:
    // Line n (from 1) of the file, replaced; the file keeps its CRLF line ends.
    static void setSkinLine(const fs::path& file, int n, const std::string& value)
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

    fs::path m_root;
};

// The program on the bench home: fakes for everything but the disk, the fonts, the pictures and the
// renderer, which are the real ones.
class BenchBrowser
{
public:
    BenchBrowser()
        : m_loop(m_clock)
        , m_source(m_clock)
        , m_media(m_loop, m_trace, [](const std::string&) { return 1.0; }, m_home.path)
        , m_processes(m_trace, m_home.path)
        , m_keys(m_trace)
        , m_cursor(m_trace)
        , m_display(m_trace, kScreen)
        , m_power(m_trace)
        , m_failures(m_home.path + "ombrel.log", m_discard)
    {
        m_renderer = platform::sdl::SdlRenderer::offscreen(kScreen, m_fonts, m_images);
        if (!m_renderer)
            throw std::runtime_error("no off-screen surface of 1920x1080");
        m_loop.setSource(&m_source);
        m_platform = std::make_unique<platform::Platform>(platform::Platform { m_loop, m_clock, m_trace, m_files,
            m_media, m_processes, m_keys, m_keyState, m_joystick, m_cursor, m_display, m_power, *m_renderer,
            m_fonts, m_images, m_home.path });
        m_app = std::make_unique<startup::Application>(*m_platform, m_failures);
        m_app->start();
        // The first start: the film-less blanker, the boot, the scan that writes the list files.
        m_loop.runFor(4000);
        if (!m_app->forms().existing("Main") || !m_app->forms().existing("Main")->visible())
            throw std::runtime_error("the browser did not come up");
    }

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
        double cpuMs = 0; // of this thread: what the step cost, whatever else the machine runs
    };

    // Runs the loop from timer to timer until the selection moves, and returns how long the turn that
    // moved it took (its handlers and its paint); nullopt when a repeat's worth of ticks moved nothing
    // (the end of the list). Other timers' turns (the pulse, the joystick poll) are not counted.
    std::optional<Took> step()
    {
        const int64_t giveUp = m_clock.nowMs() + 2 * kRepeatMs;
        const long before = m_trace.selects;
        while (m_clock.nowMs() <= giveUp) {
            auto due = m_loop.nextTimerDue();
            if (!due)
                return std::nullopt;
            m_clock.advanceTo(*due);
            const auto begin = std::chrono::steady_clock::now();
            const double cpuBegin = threadCpuMs();
            m_loop.doEvents();
            const Took took { std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count(),
                threadCpuMs() - cpuBegin };
            if (m_trace.selects != before)
                return took;
        }
        return std::nullopt;
    }

    void idle(int ms) { m_loop.runFor(ms); }
    runtime::FormStack& forms() { return m_app->forms(); }
    platform::sdl::SdlRenderer& renderer() { return *m_renderer; }

private:
    BenchHome m_home;
    runtime::VirtualClock m_clock;
    SelectCounter m_trace;
    runtime::EventLoop m_loop;
    ClockSource m_source;
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
    platform::sdl::SdlImages m_images;
    std::unique_ptr<platform::sdl::SdlRenderer> m_renderer;
    std::ostringstream m_discard;
    core::FailureLog m_failures;
    std::unique_ptr<platform::Platform> m_platform;
    std::unique_ptr<startup::Application> m_app;
};

double percentileMs(std::vector<double> ms, double p)
{
    if (ms.empty())
        return 0;
    std::sort(ms.begin(), ms.end());
    const size_t at = std::min(ms.size() - 1, static_cast<size_t>(p * static_cast<double>(ms.size())));
    return ms[at];
}

void BM_SelectionStep(benchmark::State& state)
{
    BenchBrowser browser;
    std::vector<double> steps;
    std::vector<double> cpu;
    int vk = kVkDown;
    browser.key(runtime::InputKind::KeyDown, vk);
    const size_t linesBefore = browser.renderer().linesRendered();
    for (auto _ : state) {
        auto took = browser.step();
        if (!took) {
            // The end of the list: let go, settle, and hold the other way.
            browser.key(runtime::InputKind::KeyUp, vk);
            browser.idle(500);
            vk = vk == kVkDown ? kVkUp : kVkDown;
            browser.key(runtime::InputKind::KeyDown, vk);
            took = browser.step();
        }
        if (took) {
            steps.push_back(took->wallMs);
            cpu.push_back(took->cpuMs);
        }
        state.SetIterationTime(took ? took->wallMs / 1000 : 0.0);
    }
    browser.key(runtime::InputKind::KeyUp, vk);
    state.counters["steps"] = static_cast<double>(steps.size());
    state.counters["p50_ms"] = percentileMs(steps, 0.50);
    state.counters["p99_ms"] = percentileMs(steps, 0.99);
    state.counters["max_ms"] = percentileMs(steps, 1.0);
    state.counters["cpu_p50_ms"] = percentileMs(cpu, 0.50);
    state.counters["cpu_p99_ms"] = percentileMs(cpu, 0.99);
    state.counters["lines_rasterised_per_step"] = steps.empty()
        ? 0
        : static_cast<double>(browser.renderer().linesRendered() - linesBefore) / static_cast<double>(steps.size());
}
BENCHMARK(BM_SelectionStep)->UseManualTime()->Iterations(600)->Unit(benchmark::kMillisecond);

void BM_WholeScreenRepaint(benchmark::State& state)
{
    BenchBrowser browser;
    browser.idle(1000);
    for (auto _ : state)
        browser.renderer().repaint();
}
BENCHMARK(BM_WholeScreenRepaint)->Unit(benchmark::kMillisecond);

void BM_PulseOfOneRow(benchmark::State& state)
{
    BenchBrowser browser;
    browser.idle(1000);
    runtime::DrawList frame = browser.forms().frame();
    // The middle one of the frame's lines of text stands for the selected row.
    std::vector<size_t> texts;
    for (size_t i = 0; i < frame.size(); ++i)
        if (frame[i].kind == runtime::DrawCommand::Kind::Text)
            texts.push_back(i);
    if (texts.empty()) {
        state.SkipWithError("no text on the screen");
        return;
    }
    runtime::DrawCommand& row = frame[texts[texts.size() / 2]];
    const uint32_t colours[2] = { row.colour, row.colour ^ 0xFFFFFFu };
    const size_t linesBefore = browser.renderer().linesRendered();
    int tick = 0;
    for (auto _ : state) {
        row.colour = colours[++tick % 2];
        browser.renderer().present(frame);
    }
    state.counters["lines_rasterised"] = static_cast<double>(browser.renderer().linesRendered() - linesBefore);
}
BENCHMARK(BM_PulseOfOneRow)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
