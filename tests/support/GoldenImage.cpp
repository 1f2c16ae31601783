// GoldenImage: PNG comparison with a tolerance, through SDL_image.
#include "GoldenImage.h"

#include <SDL.h>
#include <SDL_image.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace ombrel::test {

namespace {

struct SurfaceFree
{
    void operator()(SDL_Surface* s) const { SDL_FreeSurface(s); }
};
using Surface = std::unique_ptr<SDL_Surface, SurfaceFree>;

// Loads a picture as 8-bit R, G, B, A bytes in that order.
Surface loadRgba(const std::string& path)
{
    Surface loaded(IMG_Load(path.c_str()));
    if (!loaded)
        return nullptr;
    return Surface(SDL_ConvertSurfaceFormat(loaded.get(), SDL_PIXELFORMAT_RGBA32, 0));
}

uint8_t* pixel(const SDL_Surface* s, int x, int y)
{
    return static_cast<uint8_t*>(s->pixels) + y * s->pitch + x * 4;
}

std::string sizeText(const SDL_Surface* s)
{
    return std::to_string(s->w) + "x" + std::to_string(s->h);
}

} // namespace

bool GoldenImage::updating()
{
    const char* value = std::getenv("OMBREL_UPDATE_GOLDEN");
    return value && std::string(value) == "1";
}

std::string GoldenImage::compare(
    const std::string& expectedPng, const std::string& actualPng, const std::string& diffPng)
{
    const Surface expected = loadRgba(expectedPng), actual = expected ? loadRgba(actualPng) : nullptr;
    if (!actual)
        return (expected ? actualPng : expectedPng) + ": cannot be read (" + IMG_GetError() + ")";
    if (expected->w != actual->w || expected->h != actual->h)
        return actualPng + " is " + sizeText(actual.get()) + ", expected " + sizeText(expected.get());

    Surface diff(SDL_CreateRGBSurfaceWithFormat(0, expected->w, expected->h, 32, SDL_PIXELFORMAT_RGBA32));
    long differing = 0;
    int worst = 0;
    for (int y = 0; y < expected->h; ++y) {
        for (int x = 0; x < expected->w; ++x) {
            const uint8_t *e = pixel(expected.get(), x, y), *a = pixel(actual.get(), x, y);
            int distance = 0;
            for (int c = 0; c < 3; ++c)
                distance += (e[c] - a[c]) * (e[c] - a[c]);
            const bool differs = distance > kPixelTolerance;
            differing += differs ? 1 : 0;
            worst = std::max(worst, distance);
            for (int c = 0; diff && c < 4; ++c)
                pixel(diff.get(), x, y)[c] = uint8_t(c == 3 ? 255 : differs ? (c == 0 ? 255 : 0) : e[c] / 3);
        }
    }
    const long total = long(expected->w) * expected->h;
    if (double(differing) <= kMaxDifferingShare * double(total))
        return {};
    if (diff && !diffPng.empty())
        IMG_SavePNG(diff.get(), diffPng.c_str());
    return actualPng + ": " + std::to_string(differing) + " of " + std::to_string(total)
        + " pixels differ from " + expectedPng + " (largest squared distance " + std::to_string(worst) + ")";
}

std::string GoldenImage::check(const std::string& expectedPng, const std::string& actualPng)
{
    namespace fs = std::filesystem;
    std::error_code ec;
    if (updating()) {
        fs::copy_file(actualPng, expectedPng, fs::copy_options::overwrite_existing, ec);
        return ec ? "cannot update " + expectedPng + ": " + ec.message() : std::string();
    }
    const fs::path expected(expectedPng);
    std::string name = expected.stem().string();
    if (name.starts_with("expected-"))
        name.erase(0, 9);
    const std::string actualCopy = (expected.parent_path() / (name + ".actual.png")).string(),
                      diff = (expected.parent_path() / (name + ".diff.png")).string();
    fs::remove(actualCopy, ec);
    fs::remove(diff, ec);

    std::string problem = compare(expectedPng, actualPng, diff);
    if (!problem.empty())
        fs::copy_file(actualPng, actualCopy, fs::copy_options::overwrite_existing, ec);
    return problem;
}

} // namespace ombrel::test
