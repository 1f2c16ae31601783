// SdlRenderer: window and offscreen targets, presenting frames, screenshots to PNG.
#include "platform/sdl/SdlRenderer.h"

#include <SDL_image.h>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace ombrel::platform::sdl {
namespace {

constexpr int kMaxSide = 16384;

runtime::PixelSize saneSize(runtime::PixelSize size)
{
    return { std::clamp(size.w, 1, kMaxSide), std::clamp(size.h, 1, kMaxSide) };
}

SurfacePtr makeSurface(runtime::PixelSize size)
{
    return SurfacePtr(SDL_CreateRGBSurfaceWithFormat(0, size.w, size.h, 32, SDL_PIXELFORMAT_RGB888));
}

} // namespace

SdlRenderer::SdlRenderer(SdlFonts& fonts, SdlImages& images)
    : m_fonts(fonts)
    , m_images(images)
{
}

SdlRenderer::~SdlRenderer() = default;

std::unique_ptr<SdlRenderer> SdlRenderer::openWindow(
    const WindowOptions& options, SdlFonts& fonts, SdlImages& images, std::string& error)
{
    std::unique_ptr<SdlRenderer> self(new SdlRenderer(fonts, images));
    self->m_video = std::make_unique<SdlSubsystems>(SDL_INIT_VIDEO);
    if (!self->m_video->ok()) {
        error = std::string("cannot start SDL video: ") + SDL_GetError();
        return nullptr;
    }
    runtime::PixelSize size = saneSize(options.size);
    Uint32 flags = SDL_WINDOW_SHOWN;
    if (!options.windowed) {
        SDL_DisplayMode desktop;
        if (SDL_GetDesktopDisplayMode(0, &desktop) == 0)
            size = saneSize({ desktop.w, desktop.h });
        flags |= SDL_WINDOW_FULLSCREEN_DESKTOP;
    }
    self->m_window.reset(SDL_CreateWindow(
        options.title.c_str(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, size.w, size.h, flags));
    if (!self->m_window) {
        error = std::string("cannot open a window: ") + SDL_GetError();
        return nullptr;
    }
    if (!self->attachWindowSurface()) {
        error = std::string("cannot draw in the window: ") + SDL_GetError();
        return nullptr;
    }
    return self;
}

bool SdlRenderer::attachWindowSurface()
{
    // Otherwise SDL may back the window's surface with a texture of a GPU renderer and show each
    // update as a new frame of the whole window, which costs as much as painting it whole; the
    // system's own framebuffer (shared memory on X11) takes just the changed rectangle.
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    SDL_Surface* surface = SDL_GetWindowSurface(m_window.get());
    if (!surface)
        return false;
    RendererPtr renderer(SDL_CreateSoftwareRenderer(surface));
    if (!renderer)
        return false;
    m_painter.reset();
    m_renderer = std::move(renderer);
    m_windowSurface = surface;
    m_size = saneSize({ surface->w, surface->h });
    m_painted = false;
    m_painter = std::make_unique<DrawListPainter>(m_renderer.get(), surface, m_fonts, m_images);
    m_painter->setFilms(m_films);
    return true;
}

std::unique_ptr<SdlRenderer> SdlRenderer::offscreen(
    runtime::PixelSize size, SdlFonts& fonts, SdlImages& images)
{
    std::unique_ptr<SdlRenderer> self(new SdlRenderer(fonts, images));
    if (!self->makeTarget(saneSize(size)))
        return nullptr;
    return self;
}

bool SdlRenderer::makeTarget(runtime::PixelSize size)
{
    SurfacePtr target = makeSurface(size);
    if (!target)
        return false;
    RendererPtr renderer(SDL_CreateSoftwareRenderer(target.get()));
    if (!renderer)
        return false;
    m_painter.reset();
    m_renderer = std::move(renderer);
    m_target = std::move(target);
    m_size = size;
    m_painted = false;
    m_painter = std::make_unique<DrawListPainter>(m_renderer.get(), m_target.get(), m_fonts, m_images);
    m_painter->setFilms(m_films);
    return true;
}

void SdlRenderer::setScreenSize(runtime::PixelSize size)
{
    size = saneSize(size);
    if (size == m_size)
        return;
    if (!m_window) {
        makeTarget(size);
        return;
    }
    // A full-screen window follows the desktop by itself; a plain one takes the new size.
    if (!(SDL_GetWindowFlags(m_window.get()) & SDL_WINDOW_FULLSCREEN_DESKTOP))
        SDL_SetWindowSize(m_window.get(), size.w, size.h);
    m_size = size;
    m_painted = false;
}

void SdlRenderer::present(const runtime::DrawList& frame)
{
    if (!m_painted) {
        m_lastFrame = frame;
        repaint();
        return;
    }
    const std::vector<runtime::PixelRect> changed = DrawListPainter::damage(m_lastFrame, frame, m_size);
    m_lastFrame = frame;
    if (!changed.empty())
        paint(changed);
}

void SdlRenderer::repaint()
{
    paint({ runtime::PixelRect { 0, 0, m_size.w, m_size.h } });
}

void SdlRenderer::paint(std::vector<runtime::PixelRect> areas)
{
    // A window whose size changed has a new surface; the old one is gone with what it held.
    if (m_window && SDL_GetWindowSurface(m_window.get()) != m_windowSurface) {
        if (!attachWindowSurface())
            return;
        areas.assign(1, runtime::PixelRect { 0, 0, m_size.w, m_size.h });
    }
    if (!m_painter)
        return;
    std::vector<SDL_Rect> shown;
    for (const runtime::PixelRect& area : areas) {
        m_painter->paint(m_lastFrame, m_size, area);
        shown.push_back(SDL_Rect { area.x, area.y, area.w, area.h });
    }
    SDL_RenderFlush(m_renderer.get());
    m_painted = true;
    if (m_window)
        SDL_UpdateWindowSurfaceRects(m_window.get(), shown.data(), static_cast<int>(shown.size()));
}

std::string SdlRenderer::screenshot(const runtime::DrawList& frame, const std::string& pngPath)
{
    SurfacePtr target = makeSurface(m_size);
    if (!target)
        return std::string("cannot make a picture of the screen: ") + SDL_GetError();
    {
        RendererPtr renderer(SDL_CreateSoftwareRenderer(target.get()));
        if (!renderer)
            return std::string("cannot make a picture of the screen: ") + SDL_GetError();
        DrawListPainter painter(renderer.get(), target.get(), m_fonts, m_images);
        painter.setFilms(m_films);
        painter.paint(frame, m_size);
        SDL_RenderFlush(renderer.get());
    }
    // Written beside the target and renamed over it, so no reader ever sees half a picture.
    const std::string temp = pngPath + ".part";
    if (IMG_SavePNG(target.get(), temp.c_str()) != 0) {
        std::string message = "cannot write " + pngPath + ": " + SDL_GetError();
        std::error_code ec;
        std::filesystem::remove(temp, ec);
        return message;
    }
    std::error_code ec;
    std::filesystem::rename(temp, pngPath, ec);
    if (ec) {
        std::filesystem::remove(temp, ec);
        return "cannot write " + pngPath + ": " + ec.message();
    }
    return {};
}

void SdlRenderer::setPointerVisible(bool visible)
{
    m_pointerVisible = visible;
    if (m_window)
        SDL_ShowCursor(visible ? SDL_ENABLE : SDL_DISABLE);
}

} // namespace ombrel::platform::sdl

namespace ombrel::platform::sdl {

void SdlRenderer::setFilms(FilmFrames* films)
{
    m_films = films;
    if (m_painter)
        m_painter->setFilms(films);
}

} // namespace ombrel::platform::sdl
