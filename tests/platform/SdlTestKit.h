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
    SDL_Rect halves[] = { { 0, 0, w / 2, h }, { w / 2, 0, w - w / 2, h } };
    const uint32_t colours[] = { left, right };
    for (int i = 0; i < 2; ++i) {
        const uint32_t c = colours[i];
        SDL_FillRect(
            surface, &halves[i], SDL_MapRGB(surface->format, Uint8(c >> 16), Uint8(c >> 8), Uint8(c)));
    }
    const bool ok = IMG_SavePNG(surface, path.c_str()) == 0;
    SDL_FreeSurface(surface);
    return ok;
}

// A WAV file of silence: 16-bit mono at 22050 Hz.
inline void writeSilentWav(const std::string& path, double seconds)
{
    const uint32_t rate = 22050, dataBytes = static_cast<uint32_t>(seconds * rate) * 2;
    // RIFF size, format size, PCM, mono, rate, bytes a second, bytes a frame, bits, data size.
    const uint32_t fields[]
        = { 36 + dataBytes, 16, 1 | (1 << 16), rate, rate * 2, 2 | (16 << 16), dataBytes };
    std::ofstream out(path, std::ios::binary);
    out.write("RIFF", 4).write(reinterpret_cast<const char*>(&fields[0]), 4).write("WAVEfmt ", 8);
    out.write(reinterpret_cast<const char*>(&fields[1]), 20).write("data", 4);
    out.write(reinterpret_cast<const char*>(&fields[6]), 4);
    out << std::string(dataBytes, '\0');
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
    Uint8 r = 0, g = 0, b = 0;
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
