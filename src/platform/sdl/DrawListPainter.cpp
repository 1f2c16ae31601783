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

bool overlaps(const PixelRect& a, const PixelRect& b)
{
    return a.x < b.x + b.w && b.x < a.x + a.w && a.y < b.y + b.h && b.y < a.y + a.h;
}

PixelRect bounding(const PixelRect& a, const PixelRect& b)
{
    const int x0 = std::min(a.x, b.x);
    const int y0 = std::min(a.y, b.y);
    const int x1 = std::max(a.x + a.w, b.x + b.w);
    const int y1 = std::max(a.y + a.h, b.y + b.h);
    return { x0, y0, x1 - x0, y1 - y0 };
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

DrawListPainter::Picture* DrawListPainter::PictureCache::find(const std::string& key)
{
    auto it = entries.find(key);
    if (it == entries.end())
        return nullptr;
    lru.splice(lru.begin(), lru, it->second.lru);
    return &it->second;
}

DrawListPainter::Picture& DrawListPainter::PictureCache::insert(const std::string& key, Picture picture)
{
    if (auto it = entries.find(key); it != entries.end()) {
        bytes -= it->second.bytes;
        lru.erase(it->second.lru);
        entries.erase(it);
    }
    // The newest stays even when it alone is past the bound: it is on the screen.
    while (!lru.empty() && bytes + picture.bytes > maxBytes) {
        auto last = entries.find(lru.back());
        bytes -= last->second.bytes;
        entries.erase(last);
        lru.pop_back();
    }
    bytes += picture.bytes;
    lru.push_front(key);
    picture.lru = lru.begin();
    return entries.emplace(key, std::move(picture)).first->second;
}

DrawListPainter::DrawListPainter(
    SDL_Renderer* renderer, SDL_Surface* target, SdlFonts& fonts, SdlImages& images, size_t maxPictureBytes)
    : m_renderer(renderer)
    , m_target(target)
    , m_fonts(fonts)
    , m_images(images)
{
    m_pictures.maxBytes = maxPictureBytes;
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
            const Picture* shown = facts ? picture(cmd.path, *facts, { cmd.rect.w, cmd.rect.h }) : nullptr;
            if (shown && shown->opaque)
                return i;
        }
    }
    return std::nullopt;
}

std::vector<PixelRect> DrawListPainter::damage(
    const runtime::DrawList& before, const runtime::DrawList& after, PixelSize screen)
{
    const PixelRect whole { 0, 0, screen.w, screen.h };
    std::vector<PixelRect> rects;
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
        // A rectangle that overlaps others takes them in; the larger one may then overlap more.
        for (size_t j = 0; j < rects.size();) {
            if (overlaps(rects[j], extent)) {
                extent = bounding(rects[j], extent);
                rects.erase(rects.begin() + static_cast<ptrdiff_t>(j));
                j = 0;
            } else {
                ++j;
            }
        }
        rects.push_back(extent);
        if (rects.size() > kMaxDamageRects) {
            // Past a handful, painting each would cost more than the part between them.
            PixelRect all = rects.front();
            for (const PixelRect& r : rects)
                all = bounding(all, r);
            rects.assign(1, all);
        }
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
    return rects;
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
            image(cmd, clip);
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

DrawListPainter::Picture* DrawListPainter::picture(
    const std::string& path, const SdlImages::Facts& facts, PixelSize size)
{
    if (size.w <= 0 || size.h <= 0)
        return nullptr;
    const std::string key = std::to_string(size.w) + "x" + std::to_string(size.h) + '\x1f' + path;
    if (Picture* cached = m_pictures.find(key); cached && cached->version == facts.version)
        return cached;
    // The cache hands the picture at the size it is shown, made ahead by a decoder when it was wished
    // for, and says by its blend mode whether it is opaque.
    SharedSurface pixels = m_images.fitted(path, size);
    if (!pixels)
        return nullptr;
    SurfacePtr view(SDL_CreateRGBSurfaceWithFormatFrom(
        pixels->pixels, pixels->w, pixels->h, 32, pixels->pitch, pixels->format->format));
    if (!view)
        return nullptr;
    SDL_BlendMode blend = SDL_BLENDMODE_BLEND;
    SDL_GetSurfaceBlendMode(pixels.get(), &blend);
    // An opaque picture is copied, not blended: the same pixels at a fraction of the cost.
    SDL_SetSurfaceBlendMode(view.get(), blend);
    Picture entry;
    entry.bytes = static_cast<size_t>(pixels->pitch) * static_cast<size_t>(pixels->h);
    entry.pixels = std::move(pixels);
    entry.view = std::move(view);
    entry.version = facts.version;
    entry.opaque = blend == SDL_BLENDMODE_NONE;
    return &m_pictures.insert(key, std::move(entry));
}

void DrawListPainter::image(const DrawCommand& cmd, const PixelRect& clip)
{
    const auto facts = m_images.facts(cmd.path);
    if (!facts)
        return;
    const PixelRect place = placeImage(cmd.fit, cmd.rect, facts->size);
    if (place.w <= 0 || place.h <= 0)
        return;
    Picture* shown = picture(cmd.path, *facts, { place.w, place.h });
    if (!shown)
        return;
    SDL_Rect dst = toSdl(place);
    if (shown->view->w == place.w && shown->view->h == place.h) {
        // What the renderer was asked to paint before lands first; the copy is what the renderer
        // would do with a texture of these pixels, without making one.
        SDL_RenderFlush(m_renderer);
        const SDL_Rect within = toSdl(clip);
        SDL_SetClipRect(m_target, &within);
        SDL_BlitSurface(shown->view.get(), nullptr, m_target, &dst);
        return;
    }
    // Larger than the decoders scale pictures: the renderer scales it, through a texture made for this
    // frame alone, as such a picture is rare.
    TexturePtr texture(SDL_CreateTextureFromSurface(m_renderer, shown->view.get()));
    if (!texture)
        return;
    SDL_SetTextureScaleMode(texture.get(), SDL_ScaleModeLinear);
    SDL_SetTextureBlendMode(texture.get(), shown->opaque ? SDL_BLENDMODE_NONE : SDL_BLENDMODE_BLEND);
    SDL_RenderCopy(m_renderer, texture.get(), nullptr, &dst);
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
