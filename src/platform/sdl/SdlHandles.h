// SdlHandles: owning smart pointers for the C handles of SDL and its satellite libraries.
#pragma once

#include <SDL.h>
#include <SDL_mixer.h>
#include <SDL_ttf.h>

#include <cstdint>
#include <memory>

namespace ombrel::platform::sdl {

struct SdlDeleter
{
    void operator()(SDL_Window* p) const { SDL_DestroyWindow(p); }
    void operator()(SDL_Renderer* p) const { SDL_DestroyRenderer(p); }
    void operator()(SDL_Texture* p) const { SDL_DestroyTexture(p); }
    void operator()(SDL_Surface* p) const { SDL_FreeSurface(p); }
    void operator()(TTF_Font* p) const { TTF_CloseFont(p); }
    void operator()(Mix_Chunk* p) const { Mix_FreeChunk(p); }
    void operator()(Mix_Music* p) const { Mix_FreeMusic(p); }
};

using WindowPtr = std::unique_ptr<SDL_Window, SdlDeleter>;
using RendererPtr = std::unique_ptr<SDL_Renderer, SdlDeleter>;
using TexturePtr = std::unique_ptr<SDL_Texture, SdlDeleter>;
using SurfacePtr = std::unique_ptr<SDL_Surface, SdlDeleter>;
using FontPtr = std::unique_ptr<TTF_Font, SdlDeleter>;
using ChunkPtr = std::unique_ptr<Mix_Chunk, SdlDeleter>;
using MusicPtr = std::unique_ptr<Mix_Music, SdlDeleter>;

// A decoded picture shared between the image cache, its decoding threads and the painters.
using SharedSurface = std::shared_ptr<SDL_Surface>;

inline SharedSurface shareSurface(SDL_Surface* surface)
{
    return SharedSurface(surface, SdlDeleter {});
}

// Holds SDL subsystems (SDL_INIT_VIDEO, SDL_INIT_AUDIO...) initialised for as long as it lives. SDL
// counts the users of each subsystem, so every backend can hold the ones it needs.
class SdlSubsystems
{
public:
    explicit SdlSubsystems(uint32_t flags)
        : m_flags(flags)
        , m_ok(SDL_InitSubSystem(flags) == 0)
    {
    }
    ~SdlSubsystems()
    {
        if (m_ok)
            SDL_QuitSubSystem(m_flags);
    }
    SdlSubsystems(const SdlSubsystems&) = delete;
    SdlSubsystems& operator=(const SdlSubsystems&) = delete;
    bool ok() const { return m_ok; }

private:
    uint32_t m_flags;
    bool m_ok;
};

// The system's colour number (blue*65536 + green*256 + red) as an opaque SDL colour. Bits above the
// 24 colour bits are ignored.
inline SDL_Color sdlColour(uint32_t colour)
{
    return SDL_Color { static_cast<Uint8>(colour & 0xFFu), static_cast<Uint8>((colour >> 8) & 0xFFu),
        static_cast<Uint8>((colour >> 16) & 0xFFu), 255 };
}

} // namespace ombrel::platform::sdl
