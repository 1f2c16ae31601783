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
#include <vector>

namespace ombrel::platform::sdl {

// Paints frames with one SDL_Renderer over its target surface. Lines of text become textures, kept by
// font and text: a line is rasterised once in white and tinted to its colour, so a change of colour
// alone (the selection's pulse) rasterises nothing. Pictures come from the image cache already scaled
// to where they are shown and are copied from its pixels straight to the target: no texture, so no
// second copy of each picture, and no copying on the loop's thread before the one to the screen.
class DrawListPainter
{
public:
    // NOTE: a screen's worth of pictures and some. The painter keeps the pictures it showed last so
    // that a frame like the last one asks the cache nothing; they are the cache's own pixels, but one
    // the cache let go stays alive while the painter holds it, so this counts beside the cache's bound.
    static constexpr size_t kDefaultMaxPictureBytes = size_t { 24 } * 1024 * 1024;

    // target: the surface renderer paints on (a software renderer's), where pictures are copied to.
    DrawListPainter(SDL_Renderer* renderer, SDL_Surface* target, SdlFonts& fonts, SdlImages& images,
        size_t maxPictureBytes = kDefaultMaxPictureBytes);
    DrawListPainter(const DrawListPainter&) = delete;
    DrawListPainter& operator=(const DrawListPainter&) = delete;

    // Where the pictures of playing films come from (none: films show as their black box).
    void setFilms(FilmFrames* films) { m_films = films; }

    // Paints the commands bottom to top over black, within area (the whole screen when none), leaving
    // the rest of the target as it was. Does not present.
    void paint(const runtime::DrawList& frame, runtime::PixelSize screen, std::optional<runtime::PixelRect> area = {});

    // The parts of the screen where two frames can differ, as a few rectangles that do not overlap:
    // the bounds of every command that is not the same in both, and of every film, whose pictures
    // change under the same command. Overlapping bounds are merged, and when there would be more than
    // kMaxDamageRects, those so far become one rectangle around them all. Empty when the frames paint
    // alike.
    static std::vector<runtime::PixelRect> damage(
        const runtime::DrawList& before, const runtime::DrawList& after, runtime::PixelSize screen);
    // Four panels in the corners and the list between them are five places; a few more cost little.
    static constexpr size_t kMaxDamageRects = 8;

    // How many lines of text were rasterised so far: the ones the line cache did not hold.
    size_t linesRendered() const { return m_linesRendered; }
    // The bytes of the pictures the painter holds now.
    size_t heldPictureBytes() const { return m_pictures.bytes; }

    // Where a picture of the given size goes when fitted into rect.
    static runtime::PixelRect placeImage(
        runtime::ImageFit fit, const runtime::PixelRect& rect, runtime::PixelSize picture);

private:
    struct Texture
    {
        TexturePtr texture;
        runtime::PixelSize size;
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
    // A picture of the cache at the size it is shown, and a surface over its pixels that only this
    // thread blits from: the cache's surface is read by its decoders, and a blit changes its source.
    struct Picture
    {
        SharedSurface pixels;
        SurfacePtr view;
        uint64_t version = 0; // of the picture file it was made from
        bool opaque = false; // no pixel lets what is below show through
        size_t bytes = 0;
        std::list<std::string>::iterator lru;
    };
    // Pictures by key, the least recently used dropped past a count of bytes.
    struct PictureCache
    {
        std::unordered_map<std::string, Picture> entries;
        std::list<std::string> lru;
        size_t bytes = 0;
        size_t maxBytes = 0;
        Picture* find(const std::string& key);
        Picture& insert(const std::string& key, Picture picture);
    };

    void fill(const runtime::DrawCommand& cmd);
    void frame(const runtime::DrawCommand& cmd);
    void image(const runtime::DrawCommand& cmd, const runtime::PixelRect& clip);
    void text(const runtime::DrawCommand& cmd);
    void film(const runtime::DrawCommand& cmd);
    void textLine(const runtime::DrawCommand& cmd, const std::string& line, int y);
    // The picture at path, in the version facts names, at size (pixels of the screen), or null. The
    // caller has the facts already, so the file is looked at once per use.
    Picture* picture(const std::string& path, const SdlImages::Facts& facts, runtime::PixelSize size);
    // The index of the last command that paints every pixel of area opaquely: nothing before it can
    // show there; nullopt when there is none, and the area must be cleared first.
    std::optional<size_t> firstVisible(const runtime::DrawList& frame, const runtime::PixelRect& area);

    SDL_Renderer* m_renderer;
    SDL_Surface* m_target;
    SdlFonts& m_fonts;
    SdlImages& m_images;
    PictureCache m_pictures;
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
