// DrawListPainter: fills, frames, pictures and text through an SDL_Renderer, with texture caches.
#include "platform/sdl/DrawListPainter.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace ombrel::platform::sdl {
namespace {

using runtime::DrawCommand;
using runtime::PixelRect;
using runtime::PixelSize;

constexpr size_t kMaxPictureTextures = 160;
constexpr size_t kMaxLineTextures = 512;
// Coordinates beyond this are damage, not layout; keeping within it keeps every sum below in range.
constexpr int kMaxCoordinate = 1 << 24;
// Lines are rasterised in white and tinted when copied: white times the tint is the tint exactly.
constexpr uint32_t kWhite = 0xFFFFFF;

bool sane(const PixelRect& r)
{
    return r.x >= -kMaxCoordinate && r.x <= kMaxCoordinate && r.y >= -kMaxCoordinate && r.y <= kMaxCoordinate
        && r.w <= kMaxCoordinate && r.h <= kMaxCoordinate;
}

PixelRect intersect(const PixelRect& a, const PixelRect& b)
{
    const int x0 = std::max(a.x, b.x);
    const int y0 = std::max(a.y, b.y);
    const int x1 = std::min(a.x + a.w, b.x + b.w);
    const int y1 = std::min(a.y + a.h, b.y + b.h);
    if (x1 <= x0 || y1 <= y0)
        return {};
    return { x0, y0, x1 - x0, y1 - y0 };
}

// Whether every pixel of a 32-bit ARGB picture has full alpha.
bool opaquePixels(SDL_Surface* surface)
{
    if (surface->format->BytesPerPixel != 4 || surface->format->Amask == 0)
        return !SDL_ISPIXELFORMAT_ALPHA(surface->format->format) && !SDL_HasColorKey(surface);
    const Uint32 amask = surface->format->Amask;
    SDL_LockSurface(surface);
    bool opaque = true;
    for (int y = 0; y < surface->h && opaque; ++y) {
        const auto* row = reinterpret_cast<const Uint32*>(static_cast<const Uint8*>(surface->pixels)
            + static_cast<ptrdiff_t>(y) * surface->pitch);
        for (int x = 0; x < surface->w; ++x) {
            if ((row[x] & amask) != amask) {
                opaque = false;
                break;
            }
        }
    }
    SDL_UnlockSurface(surface);
    return opaque;
}

SDL_Rect toSdl(const PixelRect& r)
{
    return SDL_Rect { r.x, r.y, r.w, r.h };
}

// Lines of a text: its own line breaks, and with wrap, breaks at blanks so each line fits width.
std::vector<std::string> splitLines(SdlFonts& fonts, const DrawCommand& cmd)
{
    std::vector<std::string> lines;
    std::string current;
    auto flush = [&] {
        if (!current.empty() && current.back() == '\r')
            current.pop_back();
        lines.push_back(std::move(current));
        current.clear();
    };
    for (char c : cmd.text) {
        if (c == '\n')
            flush();
        else
            current.push_back(c);
    }
    flush();
    if (!cmd.wrap)
        return lines;

    std::vector<std::string> wrapped;
    for (const std::string& line : lines) {
        std::string out;
        size_t pos = 0;
        while (pos <= line.size()) {
            size_t blank = line.find(' ', pos);
            if (blank == std::string::npos)
                blank = line.size();
            std::string word = line.substr(pos, blank - pos);
            std::string candidate = out.empty() ? word : out + " " + word;
            // A word wider than the box stays whole on a line of its own.
            if (!out.empty() && fonts.measure(cmd.font, candidate).w > cmd.rect.w) {
                wrapped.push_back(std::move(out));
                out = std::move(word);
            } else {
                out = std::move(candidate);
            }
            pos = blank + 1;
        }
        wrapped.push_back(std::move(out));
    }
    return wrapped;
}

} // namespace

DrawListPainter::Texture* DrawListPainter::TextureCache::find(const std::string& key)
{
    auto it = entries.find(key);
    if (it == entries.end())
        return nullptr;
    lru.splice(lru.begin(), lru, it->second.lru);
    return &it->second;
}

DrawListPainter::Texture& DrawListPainter::TextureCache::insert(const std::string& key, Texture texture)
{
    if (auto it = entries.find(key); it != entries.end()) {
        lru.erase(it->second.lru);
        entries.erase(it);
    }
    while (entries.size() >= maxEntries && !lru.empty()) {
        entries.erase(lru.back());
        lru.pop_back();
    }
    lru.push_front(key);
    texture.lru = lru.begin();
    return entries.emplace(key, std::move(texture)).first->second;
}

DrawListPainter::DrawListPainter(SDL_Renderer* renderer, SdlFonts& fonts, SdlImages& images)
    : m_renderer(renderer)
    , m_fonts(fonts)
    , m_images(images)
{
    m_pictures.maxEntries = kMaxPictureTextures;
    m_lines.maxEntries = kMaxLineTextures;
}

PixelRect DrawListPainter::placeImage(runtime::ImageFit fit, const PixelRect& rect, PixelSize picture)
{
    switch (fit) {
    case runtime::ImageFit::Stretch:
        return rect;
    case runtime::ImageFit::Natural:
        return { rect.x, rect.y, picture.w, picture.h };
    case runtime::ImageFit::Contain:
        break;
    }
    // The same size the decoders fit a wished picture to, so the loop's thread finds it made.
    const PixelSize size = SdlImages::fitInto(picture, { rect.w, rect.h });
    if (size.w <= 0 || size.h <= 0)
        return { rect.x, rect.y, 0, 0 };
    return { rect.x + (rect.w - size.w) / 2, rect.y + (rect.h - size.h) / 2, size.w, size.h };
}

std::optional<size_t> DrawListPainter::firstVisible(const runtime::DrawList& frame, const PixelRect& area)
{
    for (size_t i = frame.size(); i-- > 0;) {
        const DrawCommand& cmd = frame[i];
        if (!sane(cmd.rect) || !sane(cmd.clip) || !(intersect(intersect(cmd.rect, cmd.clip), area) == area))
            continue;
        if (cmd.kind == DrawCommand::Kind::Fill)
            return i;
        if (cmd.kind == DrawCommand::Kind::Image && cmd.fit == runtime::ImageFit::Stretch) {
            const auto facts = m_images.facts(cmd.path);
            const Texture* texture = facts ? pictureTexture(cmd.path, *facts, { cmd.rect.w, cmd.rect.h }) : nullptr;
            if (texture && texture->opaque)
                return i;
        }
    }
    return std::nullopt;
}

std::optional<PixelRect> DrawListPainter::damage(
    const runtime::DrawList& before, const runtime::DrawList& after, PixelSize screen)
{
    const PixelRect whole { 0, 0, screen.w, screen.h };
    std::optional<PixelRect> bounds;
    auto add = [&](const DrawCommand& cmd) {
        if (!sane(cmd.rect) || !sane(cmd.clip))
            return;
        // Text and a picture at its own size may reach past their rectangle, never past their clip.
        PixelRect extent = intersect(cmd.clip, whole);
        const bool overhangs = cmd.kind == DrawCommand::Kind::Text
            || (cmd.kind == DrawCommand::Kind::Image && cmd.fit == runtime::ImageFit::Natural);
        if (!overhangs)
            extent = intersect(extent, cmd.rect);
        if (extent.w <= 0 || extent.h <= 0)
            return;
        if (!bounds) {
            bounds = extent;
            return;
        }
        const int x0 = std::min(bounds->x, extent.x);
        const int y0 = std::min(bounds->y, extent.y);
        const int x1 = std::max(bounds->x + bounds->w, extent.x + extent.w);
        const int y1 = std::max(bounds->y + bounds->h, extent.y + extent.h);
        bounds = PixelRect { x0, y0, x1 - x0, y1 - y0 };
    };
    for (size_t i = 0; i < std::max(before.size(), after.size()); ++i) {
        const DrawCommand* was = i < before.size() ? &before[i] : nullptr;
        const DrawCommand* is = i < after.size() ? &after[i] : nullptr;
        if (was && is && *was == *is) {
            if (is->kind == DrawCommand::Kind::Film)
                add(*is);
            continue;
        }
        if (was)
            add(*was);
        if (is)
            add(*is);
    }
    return bounds;
}

void DrawListPainter::paint(const runtime::DrawList& frame, PixelSize screen, std::optional<PixelRect> area)
{
    const PixelRect whole { 0, 0, screen.w, screen.h };
    const PixelRect region = area ? intersect(*area, whole) : whole;
    if (region.w <= 0 || region.h <= 0)
        return;
    SDL_SetRenderDrawBlendMode(m_renderer, SDL_BLENDMODE_NONE);
    // Clearing and painting what a full-screen picture or fill then covers whole would only cost: at
    // 1920x1080 each such layer is as dear as the rest of the frame.
    const std::optional<size_t> cover = firstVisible(frame, region);
    if (!cover) {
        const SDL_Rect r = toSdl(region);
        SDL_RenderSetClipRect(m_renderer, &r);
        SDL_SetRenderDrawColor(m_renderer, 0, 0, 0, 255);
        SDL_RenderFillRect(m_renderer, &r);
    }
    for (size_t i = cover.value_or(0); i < frame.size(); ++i) {
        const DrawCommand& cmd = frame[i];
        if (!sane(cmd.rect) || !sane(cmd.clip))
            continue;
        const PixelRect clip = intersect(cmd.clip, region);
        if (clip.w <= 0)
            continue;
        const SDL_Rect sdlClip = toSdl(clip);
        SDL_RenderSetClipRect(m_renderer, &sdlClip);
        switch (cmd.kind) {
        case DrawCommand::Kind::Fill:
            fill(cmd);
            break;
        case DrawCommand::Kind::Frame:
            this->frame(cmd);
            break;
        case DrawCommand::Kind::Image:
            image(cmd);
            break;
        case DrawCommand::Kind::Text:
            text(cmd);
            break;
        case DrawCommand::Kind::Film:
            film(cmd);
            break;
        }
    }
    SDL_RenderSetClipRect(m_renderer, nullptr);
}

void DrawListPainter::film(const DrawCommand& cmd)
{
    if (!m_films)
        return;
    FilmTexture& shown = m_filmTextures[cmd.text];
    FilmFrames::Frame frame;
    if (m_films->newer(cmd.text, shown.serial, frame) && frame.size.w > 0 && frame.size.h > 0) {
        if (!shown.texture || !(shown.size == frame.size)) {
            shown.texture.reset(SDL_CreateTexture(m_renderer, SDL_PIXELFORMAT_RGBA32, SDL_TEXTUREACCESS_STREAMING,
                frame.size.w, frame.size.h));
            shown.size = frame.size;
        }
        if (shown.texture)
            SDL_UpdateTexture(shown.texture.get(), nullptr, frame.rgba.data(), frame.size.w * 4);
        shown.serial = frame.serial;
    }
    if (!shown.texture || !m_films->has(cmd.text))
        return;
    const SDL_Rect dst = toSdl(placeImage(runtime::ImageFit::Contain, cmd.rect, shown.size));
    SDL_RenderCopy(m_renderer, shown.texture.get(), nullptr, &dst);
}

void DrawListPainter::fill(const DrawCommand& cmd)
{
    if (cmd.rect.w <= 0 || cmd.rect.h <= 0)
        return;
    const SDL_Color c = sdlColour(cmd.colour);
    SDL_SetRenderDrawBlendMode(m_renderer, SDL_BLENDMODE_NONE);
    SDL_SetRenderDrawColor(m_renderer, c.r, c.g, c.b, 255);
    const SDL_Rect r = toSdl(cmd.rect);
    SDL_RenderFillRect(m_renderer, &r);
}

void DrawListPainter::frame(const DrawCommand& cmd)
{
    const PixelRect& r = cmd.rect;
    if (r.w <= 0 || r.h <= 0)
        return;
    // The border lies inside the rectangle; one wider than half of it fills it.
    const int lw = std::clamp(cmd.lineWidth, 1, kMaxCoordinate);
    const SDL_Color c = sdlColour(cmd.colour);
    SDL_SetRenderDrawBlendMode(m_renderer, SDL_BLENDMODE_NONE);
    SDL_SetRenderDrawColor(m_renderer, c.r, c.g, c.b, 255);
    if (lw * 2 >= r.w || lw * 2 >= r.h) {
        const SDL_Rect all = toSdl(r);
        SDL_RenderFillRect(m_renderer, &all);
        return;
    }
    const SDL_Rect sides[4] = {
        { r.x, r.y, r.w, lw },
        { r.x, r.y + r.h - lw, r.w, lw },
        { r.x, r.y + lw, lw, r.h - 2 * lw },
        { r.x + r.w - lw, r.y + lw, lw, r.h - 2 * lw },
    };
    SDL_RenderFillRects(m_renderer, sides, 4);
}

DrawListPainter::Texture* DrawListPainter::pictureTexture(
    const std::string& path, const SdlImages::Facts& facts, PixelSize size)
{
    if (size.w <= 0 || size.h <= 0)
        return nullptr;
    const std::string key = std::to_string(size.w) + "x" + std::to_string(size.h) + '\x1f' + path;
    if (Texture* cached = m_pictures.find(key); cached && cached->version == facts.version)
        return cached;
    // The cache hands the picture at the size it is shown, made ahead by a decoder when it was wished
    // for; here it only becomes a texture.
    SharedSurface shown = m_images.fitted(path, size);
    if (!shown)
        return nullptr;
    TexturePtr texture(SDL_CreateTextureFromSurface(m_renderer, shown.get()));
    if (!texture)
        return nullptr;
    const bool opaque = opaquePixels(shown.get());
    SDL_SetTextureScaleMode(texture.get(), SDL_ScaleModeLinear);
    // An opaque picture is copied, not blended: the same pixels at a fraction of the cost.
    SDL_SetTextureBlendMode(texture.get(), opaque ? SDL_BLENDMODE_NONE : SDL_BLENDMODE_BLEND);
    Texture entry;
    entry.texture = std::move(texture);
    entry.size = { shown->w, shown->h };
    entry.version = facts.version;
    entry.opaque = opaque;
    return &m_pictures.insert(key, std::move(entry));
}

void DrawListPainter::image(const DrawCommand& cmd)
{
    const auto facts = m_images.facts(cmd.path);
    if (!facts)
        return;
    const PixelRect place = placeImage(cmd.fit, cmd.rect, facts->size);
    if (place.w <= 0 || place.h <= 0)
        return;
    Texture* texture = pictureTexture(cmd.path, *facts, { place.w, place.h });
    if (!texture)
        return;
    const SDL_Rect dst = toSdl(place);
    SDL_RenderCopy(m_renderer, texture->texture.get(), nullptr, &dst);
}

void DrawListPainter::text(const DrawCommand& cmd)
{
    if (cmd.text.empty())
        return;
    const int step = std::max(m_fonts.lineHeight(cmd.font), 1);
    const int bottom = cmd.clip.y + cmd.clip.h;
    int y = cmd.rect.y;
    for (const std::string& line : splitLines(m_fonts, cmd)) {
        // Lines below the box are clipped away; drawing them would only cost.
        if (y >= bottom)
            break;
        textLine(cmd, line, y);
        y += step;
    }
}

void DrawListPainter::textLine(const DrawCommand& cmd, const std::string& line, int y)
{
    if (line.empty())
        return;
    std::string key = cmd.font.name;
    key += '\x1f';
    key += std::to_string(SdlFonts::pixelSize(cmd.font.sizePt));
    key += cmd.font.bold ? 'b' : 'r';
    key += '\x1f';
    key += line;
    Texture* texture = m_lines.find(key);
    if (!texture) {
        SurfacePtr surface = m_fonts.renderLine(cmd.font, line, kWhite);
        if (!surface)
            return;
        ++m_linesRendered;
        TexturePtr made(SDL_CreateTextureFromSurface(m_renderer, surface.get()));
        if (!made)
            return;
        SDL_SetTextureBlendMode(made.get(), SDL_BLENDMODE_BLEND);
        Texture entry;
        entry.texture = std::move(made);
        entry.size = { surface->w, surface->h };
        texture = &m_lines.insert(key, std::move(entry));
    }
    int x = cmd.rect.x;
    if (cmd.align == runtime::TextAlign::Right)
        x = cmd.rect.x + cmd.rect.w - texture->size.w;
    else if (cmd.align == runtime::TextAlign::Center)
        x = cmd.rect.x + (cmd.rect.w - texture->size.w) / 2;
    const SDL_Color c = sdlColour(cmd.colour);
    SDL_SetTextureColorMod(texture->texture.get(), c.r, c.g, c.b);
    const SDL_Rect dst { x, y, texture->size.w, texture->size.h };
    SDL_RenderCopy(m_renderer, texture->texture.get(), nullptr, &dst);
}

} // namespace ombrel::platform::sdl
