// DrawListPainter: paints a DrawList through an SDL_Renderer, the same way into a window or a surface.
#pragma once

#include "platform/sdl/FilmFrames.h"
#include "platform/sdl/SdlFonts.h"
#include "platform/sdl/SdlHandles.h"
#include "platform/sdl/SdlImages.h"
#include "runtime/DrawList.h"

#include <cstddef>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

namespace ombrel::platform::sdl {

// Paints frames with one SDL_Renderer. It keeps the textures it made (pictures by path at the size they
// are shown, lines of text by font and text) so that a frame like the last one costs little: a picture
// is scaled once, not on every frame, and a line is rasterised once in white and tinted to its colour,
// so a change of colour alone (the selection's pulse) rasterises nothing.
class DrawListPainter
{
public:
    DrawListPainter(SDL_Renderer* renderer, SdlFonts& fonts, SdlImages& images);
    DrawListPainter(const DrawListPainter&) = delete;
    DrawListPainter& operator=(const DrawListPainter&) = delete;

    // Where the pictures of playing films come from (none: films show as their black box).
    void setFilms(FilmFrames* films) { m_films = films; }

    // Paints the commands bottom to top over black, within area (the whole screen when none), leaving
    // the rest of the target as it was. Does not present.
    void paint(const runtime::DrawList& frame, runtime::PixelSize screen, std::optional<runtime::PixelRect> area = {});

    // The part of the screen where two frames can differ: the bounds of every command that is not the
    // same in both, and of every film, whose pictures change under the same command. nullopt when the
    // frames paint alike.
    static std::optional<runtime::PixelRect> damage(
        const runtime::DrawList& before, const runtime::DrawList& after, runtime::PixelSize screen);

    // How many lines of text were rasterised so far: the ones the line cache did not hold.
    size_t linesRendered() const { return m_linesRendered; }

    // Where a picture of the given size goes when fitted into rect.
    static runtime::PixelRect placeImage(
        runtime::ImageFit fit, const runtime::PixelRect& rect, runtime::PixelSize picture);

private:
    struct Texture
    {
        TexturePtr texture;
        runtime::PixelSize size;
        uint64_t version = 0; // of the picture file it was made from
        bool opaque = false; // no pixel lets what is below show through
        std::list<std::string>::iterator lru;
    };
    // Textures by key, the least recently used dropped past a count.
    struct TextureCache
    {
        std::unordered_map<std::string, Texture> entries;
        std::list<std::string> lru;
        size_t maxEntries = 0;
        Texture* find(const std::string& key);
        Texture& insert(const std::string& key, Texture texture);
    };

    void fill(const runtime::DrawCommand& cmd);
    void frame(const runtime::DrawCommand& cmd);
    void image(const runtime::DrawCommand& cmd);
    void text(const runtime::DrawCommand& cmd);
    void film(const runtime::DrawCommand& cmd);
    void textLine(const runtime::DrawCommand& cmd, const std::string& line, int y);
    // The picture at path, in the version facts names, as a texture of size (pixels of the screen), or
    // null. The caller has the facts already, so the file is looked at once per use.
    Texture* pictureTexture(const std::string& path, const SdlImages::Facts& facts, runtime::PixelSize size);
    // The index of the last command that paints every pixel of area opaquely: nothing before it can
    // show there; nullopt when there is none, and the area must be cleared first.
    std::optional<size_t> firstVisible(const runtime::DrawList& frame, const runtime::PixelRect& area);

    SDL_Renderer* m_renderer;
    SdlFonts& m_fonts;
    SdlImages& m_images;
    TextureCache m_pictures;
    TextureCache m_lines;
    FilmFrames* m_films = nullptr;
    size_t m_linesRendered = 0;
    struct FilmTexture {
        TexturePtr texture;
        runtime::PixelSize size;
        uint64_t serial = 0;
    };
    std::unordered_map<std::string, FilmTexture> m_filmTextures;
};

} // namespace ombrel::platform::sdl
