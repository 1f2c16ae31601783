// SdlRenderer: shows frames in an SDL window, or paints them into a surface when there is no window.
#pragma once

#include "platform/Renderer.h"
#include "platform/sdl/DrawListPainter.h"
#include "platform/sdl/SdlFonts.h"
#include "platform/sdl/SdlHandles.h"
#include "platform/sdl/SdlImages.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ombrel::platform::sdl {

// The screen of the program. A window mode for a real run, and an offscreen mode (a surface and
// SDL's software renderer, no display needed) for the replay harness and tests. Both modes, and
// screenshots, go through DrawListPainter with SDL's software renderer, so they paint alike: the window
// is painted through its own surface, which keeps what was painted, so a frame repaints only the part
// of the screen where it differs from the last one and hands only that part to the display. The
// selection's pulse thus costs one row, not the whole screen.
class SdlRenderer final : public Renderer
{
public:
    struct WindowOptions
    {
        bool windowed = false; // false: a borderless window over the whole desktop
        runtime::PixelSize size { 800, 600 }; // of a plain window
        std::string title = "Ombrel";
    };

    // Null, with the reason in error, when no window can be made.
    static std::unique_ptr<SdlRenderer> openWindow(
        const WindowOptions& options, SdlFonts& fonts, SdlImages& images, std::string& error);
    // Null only when SDL cannot make a surface of that size.
    static std::unique_ptr<SdlRenderer> offscreen(
        runtime::PixelSize size, SdlFonts& fonts, SdlImages& images);

    ~SdlRenderer() override;
    SdlRenderer(const SdlRenderer&) = delete;
    SdlRenderer& operator=(const SdlRenderer&) = delete;

    runtime::PixelSize screenSize() const override { return m_size; }
    void setScreenSize(runtime::PixelSize size) override;
    void present(const runtime::DrawList& frame) override;
    std::string screenshot(const runtime::DrawList& frame, const std::string& pngPath) override;
    void setPointerVisible(bool visible) override;

    // Shows the last frame again, whole: the window was uncovered or resized, or a film moved on.
    void repaint();
    // Where playing films' pictures come from.
    void setFilms(FilmFrames* films);

    bool pointerVisible() const { return m_pointerVisible; }
    // The window, or null offscreen.
    SDL_Window* window() const { return m_window.get(); }
    // Lines of text rasterised so far by the painter of the screen (not by screenshots).
    size_t linesRendered() const { return m_painter ? m_painter->linesRendered() : 0; }
    // Offscreen: what the last frame painted; null for a window.
    SDL_Surface* surface() const { return m_target.get(); }

private:
    SdlRenderer(SdlFonts& fonts, SdlImages& images);
    bool makeTarget(runtime::PixelSize size);
    // (Re)makes the renderer over the window's surface, which SDL replaces when the window's size
    // changes. False when the window has no surface.
    bool attachWindowSurface();
    // Paints the last frame within each of areas and shows those parts.
    void paint(std::vector<runtime::PixelRect> areas);

    SdlFonts& m_fonts;
    SdlImages& m_images;
    runtime::PixelSize m_size;
    bool m_pointerVisible = true;
    runtime::DrawList m_lastFrame;
    // Destroyed bottom up: the painter's textures before their renderer, the renderer before its
    // window or surface, the window before SDL's video.
    std::unique_ptr<SdlSubsystems> m_video;
    WindowPtr m_window;
    SDL_Surface* m_windowSurface = nullptr; // owned by the window
    bool m_painted = false; // the target holds the last frame, so a new one may paint only its changes
    SurfacePtr m_target;
    RendererPtr m_renderer;
    std::unique_ptr<DrawListPainter> m_painter;
    FilmFrames* m_films = nullptr;
};

} // namespace ombrel::platform::sdl
