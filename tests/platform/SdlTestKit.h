// SdlTestKit: small pictures and sounds that the SDL backend tests write for themselves, and a real
// event loop for the media players.
#pragma once

#include "platform/MediaPlayer.h"
#include "platform/sdl/RealClock.h"
#include "platform/sdl/SdlEventSource.h"

#include "RuntimeFixture.h"

#include <SDL.h>
#include <SDL_image.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace ombrel::platform::sdl::test {

// A PNG of w x h pixels: left half in colour left, right half in colour right (0xRRGGBB).
inline bool writeTwoColourPng(const std::string& path, int w, int h, uint32_t left, uint32_t right)
{
    SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormat(0, w, h, 32, SDL_PIXELFORMAT_RGB888);
    if (!surface)
        return false;
    SDL_Rect l { 0, 0, w / 2, h };
    SDL_Rect r { w / 2, 0, w - w / 2, h };
    SDL_FillRect(surface, &l, SDL_MapRGB(surface->format, Uint8(left >> 16), Uint8(left >> 8), Uint8(left)));
    SDL_FillRect(
        surface, &r, SDL_MapRGB(surface->format, Uint8(right >> 16), Uint8(right >> 8), Uint8(right)));
    const bool ok = IMG_SavePNG(surface, path.c_str()) == 0;
    SDL_FreeSurface(surface);
    return ok;
}

// A WAV file of silence: 16-bit mono at 22050 Hz.
inline void writeSilentWav(const std::string& path, double seconds)
{
    const uint32_t rate = 22050;
    const uint32_t frames = static_cast<uint32_t>(seconds * rate);
    const uint32_t dataBytes = frames * 2;
    std::vector<char> bytes;
    auto put
        = [&](const void* p, size_t n) { bytes.insert(bytes.end(), (const char*)p, (const char*)p + n); };
    auto u32 = [&](uint32_t v) { put(&v, 4); };
    auto u16 = [&](uint16_t v) { put(&v, 2); };
    put("RIFF", 4);
    u32(36 + dataBytes);
    put("WAVEfmt ", 8);
    u32(16);
    u16(1); // PCM
    u16(1); // mono
    u32(rate);
    u32(rate * 2);
    u16(2);
    u16(16);
    put("data", 4);
    u32(dataBytes);
    bytes.resize(bytes.size() + dataBytes, 0);
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// The colour of a pixel of a 32-bit surface as 0xRRGGBB.
inline uint32_t pixelAt(SDL_Surface* surface, int x, int y)
{
    SDL_LockSurface(surface);
    const auto* row
        = static_cast<const uint8_t*>(surface->pixels) + static_cast<ptrdiff_t>(y) * surface->pitch;
    uint32_t raw = 0;
    SDL_memcpy(&raw, row + x * 4, 4);
    SDL_UnlockSurface(surface);
    Uint8 r = 0;
    Uint8 g = 0;
    Uint8 b = 0;
    SDL_GetRGB(raw, surface->format, &r, &g, &b);
    return (uint32_t(r) << 16) | (uint32_t(g) << 8) | b;
}

// A real clock and SDL's event queue under the loop, the way players report their ends in a real run.
class RealLoopTest : public ::testing::Test
{
protected:
    RealLoopTest() { loop.setSource(&source); }

    // Records each play-state change, serving the loop until one to state or until ms have passed.
    void runUntilChangeTo(MediaPlayer& player, int state, int ms = 5000)
    {
        recordChanges(player, state);
        loop.runFor(ms);
    }
    void recordChanges(MediaPlayer& player, int quitOn = -1)
    {
        player.onPlayStateChange = [this, quitOn](int oldState, int newState) {
            changes.emplace_back(oldState, newState);
            if (newState == quitOn)
                loop.quit();
        };
    }

    using Changes = std::vector<std::pair<int, int>>;
    RealClock clock;
    runtime::EventLoop loop { clock };
    SdlEventSource source;
    ombrel::test::RecordingTrace trace;
    Changes changes;
};

} // namespace ombrel::platform::sdl::test
