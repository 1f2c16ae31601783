// PictureCacheBench: what the loop's thread pays to show a flyer of real size (1200 x 1600) in a preview
// panel of a 1920x1080 skin: decoded and fitted there and then, or fitted ahead by the decoders and only
// handed over; and what a missing picture's look-up costs in an art folder of 4000 files, with the
// folder's listing kept or listed again each time.
#include "platform/Files.h"
#include "platform/sdl/SdlHandles.h"
#include "platform/sdl/SdlImages.h"

#include <SDL.h>
#include <SDL_image.h>
#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

using namespace ombrel;
namespace fs = std::filesystem;

namespace {

constexpr int kFlyers = 8;
constexpr runtime::PixelSize kFlyer { 1200, 1600 };
constexpr runtime::PixelSize kPanel { 420, 560 }; // a flyer panel of a 1920x1080 skin

// A temporary folder with flyers (a gradient with noise, so the decoder has real work) and an art
// folder of 4000 snaps, made once for the whole run.
class BenchArt
{
public:
    BenchArt()
        : m_root(fs::temp_directory_path() / ("ombrel-bench-pictures-" + std::to_string(::getpid())))
    {
        fs::create_directories(m_root / "snap");
        platform::sdl::SurfacePtr surface(
            SDL_CreateRGBSurfaceWithFormat(0, kFlyer.w, kFlyer.h, 32, SDL_PIXELFORMAT_ARGB8888));
        uint32_t seed = 1;
        auto* pixels = static_cast<uint32_t*>(surface->pixels);
        for (int i = 0; i < kFlyer.w * kFlyer.h; ++i) {
            seed = seed * 1103515245 + 12345;
            pixels[i] = 0xFF000000u | static_cast<uint32_t>((i % kFlyer.w) * 255 / kFlyer.w) << 16
                | ((seed >> 16) & 0x3F);
        }
        for (int i = 0; i < kFlyers; ++i) {
            flyers.push_back((m_root / ("flyer" + std::to_string(i) + ".jpg")).string());
            IMG_SaveJPG(surface.get(), flyers.back().c_str(), 90);
        }
        for (int i = 0; i < 4000; ++i)
            std::ofstream(m_root / "snap" / ("game" + std::to_string(i) + ".png")) << "x";
        snap = (m_root / "snap").string();
    }
    ~BenchArt() { fs::remove_all(m_root); }

    std::vector<std::string> flyers;
    std::string snap;

private:
    fs::path m_root;
};

BenchArt& art()
{
    static BenchArt made;
    return made;
}

// Nobody wished for the flyers: each is decoded and fitted on the loop's thread when shown.
void BM_FlyerDecodedWhenShown(benchmark::State& state)
{
    const auto& flyers = art().flyers;
    std::optional<platform::sdl::SdlImages> images;
    size_t i = 0;
    for (auto _ : state) {
        state.PauseTiming();
        // A fresh cache each time, so every flyer is new to it.
        images.reset();
        images.emplace(platform::sdl::SdlImages::Limits {}, 0);
        const std::string& path = flyers[i++ % flyers.size()];
        state.ResumeTiming();
        const auto facts = images->facts(path);
        benchmark::DoNotOptimize(
            images->fitted(path, platform::sdl::SdlImages::fitInto(facts->size, kPanel)));
    }
}
BENCHMARK(BM_FlyerDecodedWhenShown)->Unit(benchmark::kMillisecond);

// The flyers were wished for with their panel's box: the decoders fitted them, the loop takes them.
void BM_FlyerFittedAhead(benchmark::State& state)
{
    const auto& flyers = art().flyers;
    platform::sdl::SdlImages images;
    std::vector<platform::PictureWish> wishes;
    for (const auto& path : flyers)
        wishes.push_back({ path, kPanel });
    images.expect(wishes);
    images.waitIdle();
    size_t i = 0;
    for (auto _ : state) {
        const std::string& path = flyers[i++ % flyers.size()];
        const auto facts = images.facts(path);
        benchmark::DoNotOptimize(images.fitted(path, platform::sdl::SdlImages::fitInto(facts->size, kPanel)));
    }
    state.counters["heldMB"] = static_cast<double>(images.heldBytes()) / (1 << 20);
    state.counters["waited"] = static_cast<double>(images.served().waited);
}
BENCHMARK(BM_FlyerFittedAhead)->Unit(benchmark::kMicrosecond);

// A snap that is not there, looked for in any case in a folder of 4000 files. Arg 1: the folder has not
// changed for a while, so its listing is kept; arg 0: it changes all the time (its time is in the
// future), so it is listed for every look-up, as every look-up once did.
void BM_MissingSnapLookUp(benchmark::State& state)
{
    const std::string snap = art().snap;
    const auto now = fs::file_time_type::clock::now();
    fs::last_write_time(snap, state.range(0) ? now - std::chrono::minutes(5) : now + std::chrono::hours(1));
    platform::DiskFiles files;
    int i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(files.resolveFile(snap + "/missing" + std::to_string(i++ % 100) + ".png"));
}
BENCHMARK(BM_MissingSnapLookUp)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
