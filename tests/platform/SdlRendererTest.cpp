// Tests of painting a DrawList offscreen and in a window, and of screenshots.
#include "platform/sdl/SdlRenderer.h"

#include "SdlTestKit.h"
#include "TempHome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <filesystem>
#include <utility>
#include <initializer_list>
#include <optional>
#include <tuple>

namespace ombrel::platform::sdl {
namespace {

using runtime::DrawCommand;
using runtime::PixelRect;
using test::pixelAt;

constexpr uint32_t kRed = 0x0000FF; // the system's numbers: blue*65536 + green*256 + red
constexpr PixelRect kScreen { 0, 0, 64, 48 };

DrawCommand command(DrawCommand::Kind kind, PixelRect rect, uint32_t colour, PixelRect clip = kScreen)
{
    DrawCommand cmd;
    cmd.kind = kind;
    cmd.rect = rect;
    cmd.clip = clip;
    cmd.colour = colour;
    cmd.font = { "DejaVu Sans", 12, true };
    return cmd;
}

DrawCommand fill(PixelRect rect, uint32_t colour, PixelRect clip = kScreen)
{
    return command(DrawCommand::Kind::Fill, rect, colour, clip);
}

// Pixels of the area that are not black.
int inkIn(SDL_Surface* surface, PixelRect area)
{
    int count = 0;
    for (int y = area.y; y < area.y + area.h; ++y)
        for (int x = area.x; x < area.x + area.w; ++x)
            count += pixelAt(surface, x, y) != 0 ? 1 : 0;
    return count;
}

// The scenario screenshots allow a small share of differing pixels and show only the demo skin's
// colours, so the colour order, clips, borders and text placement are pinned here.
TEST(SdlRenderer, FillsFramesAndTextLandInTheirBoxes)
{
    SdlFonts fonts;
    SdlImages images;
    auto renderer = SdlRenderer::offscreen({ kScreen.w, kScreen.h }, fonts, images);
    ASSERT_TRUE(renderer);
    auto expectPixels = [&](std::initializer_list<std::tuple<int, int, uint32_t>> pixels) {
        for (const auto& [x, y, colour] : pixels)
            EXPECT_EQ(pixelAt(renderer->surface(), x, y), colour) << "at " << x << "," << y;
    };
    // Red in the low byte; a later command paints over an earlier one, but not outside its clip.
    renderer->present({ fill(kScreen, 0xFF0000), fill({ 10, 10, 20, 10 }, kRed),
        fill({ 20, 0, 40, 48 }, 0x00FF00, { 25, 0, 5, 48 }) });
    expectPixels({ { 0, 0, 0x0000FF }, { 10, 10, 0xFF0000 }, { 29, 19, 0x00FF00 }, { 24, 19, 0xFF0000 },
        { 30, 19, 0x0000FF } });

    // A border inside its box; one wider than half the box fills it.
    DrawCommand frame = command(DrawCommand::Kind::Frame, { 10, 10, 20, 16 }, 0x00FF00);
    frame.lineWidth = 2;
    DrawCommand thick = frame;
    thick.rect = { 40, 10, 6, 6 };
    thick.lineWidth = 9;
    renderer->present({ frame, thick });
    expectPixels({ { 10, 10, 0x00FF00 }, { 11, 11, 0x00FF00 }, { 12, 12, 0 }, { 29, 25, 0x00FF00 },
        { 30, 25, 0 }, { 43, 13, 0x00FF00 }, { 43, 16, 0 } });

    // Text hangs from the top of its box, at the side it is aligned to, and stays in its clip.
    DrawCommand text = command(DrawCommand::Kind::Text, { 0, 10, 64, 20 }, 0xFFFFFF);
    text.text = "Hi";
    const struct
    {
        runtime::TextAlign align;
        PixelRect inked, blank;
    } rows[] = { { runtime::TextAlign::Left, { 0, 10, 21, 20 }, { 43, 0, 21, 48 } },
        { runtime::TextAlign::Right, { 43, 10, 21, 20 }, { 0, 0, 21, 48 } },
        { runtime::TextAlign::Center, { 16, 10, 32, 20 }, { 0, 0, 16, 48 } } };
    for (const auto& row : rows) {
        text.align = row.align;
        renderer->present({ text });
        EXPECT_GT(inkIn(renderer->surface(), row.inked), 10) << static_cast<int>(row.align);
        EXPECT_EQ(inkIn(renderer->surface(), row.blank) + inkIn(renderer->surface(), { 0, 0, 64, 10 }), 0);
    }
    text.align = runtime::TextAlign::Left;
    text.clip = { 0, 10, 5, 20 };
    renderer->present({ text });
    EXPECT_EQ(inkIn(renderer->surface(), { 5, 0, 59, 48 }), 0);
}

// Pictures are scaled once and kept at the size they are shown, opaque ones copied without blending,
// and nothing is painted under a full-screen opaque layer; lines are rasterised once and tinted. None
// of it may change a pixel against what the renderer itself gives.
TEST(SdlRenderer, PicturesAndLinesAreMadeOnceAndPaintAsTheRendererWould)
{
    ombrel::test::TempHome home;
    const std::string opaque = home.path() + "opaque.png";
    ASSERT_TRUE(test::writeTwoColourPng(opaque, 8, 6, 0xFF0000, 0x0000FF));
    // Left half see-through, right half half-transparent green.
    const std::string clear = home.path() + "clear.png";
    {
        SurfacePtr surface(SDL_CreateRGBSurfaceWithFormat(0, 8, 6, 32, SDL_PIXELFORMAT_ARGB8888));
        const SDL_Rect right { 4, 0, 4, 6 };
        SDL_FillRect(surface.get(), nullptr, 0);
        SDL_FillRect(surface.get(), &right, 0x8000FF00);
        ASSERT_EQ(IMG_SavePNG(surface.get(), clear.c_str()), 0);
    }
    SdlFonts fonts;
    SdlImages images;
    auto renderer = SdlRenderer::offscreen({ kScreen.w, kScreen.h }, fonts, images);
    ASSERT_TRUE(renderer);

    // What SDL's renderer paints for the same frame, scaling the picture itself.
    auto reference = [&](const std::string& path) {
        SurfacePtr target(SDL_CreateRGBSurfaceWithFormat(0, kScreen.w, kScreen.h, 32, SDL_PIXELFORMAT_RGB888));
        RendererPtr painter(SDL_CreateSoftwareRenderer(target.get()));
        SDL_SetRenderDrawColor(painter.get(), 0, 0xFF, 0xFF, 255);
        SDL_RenderClear(painter.get());
        SurfacePtr loaded(IMG_Load(path.c_str()));
        SurfacePtr argb(SDL_ConvertSurfaceFormat(loaded.get(), SDL_PIXELFORMAT_ARGB8888, 0));
        TexturePtr texture(SDL_CreateTextureFromSurface(painter.get(), argb.get()));
        SDL_SetTextureScaleMode(texture.get(), SDL_ScaleModeLinear);
        SDL_SetTextureBlendMode(texture.get(), SDL_BLENDMODE_BLEND);
        const SDL_Rect dst { 0, 0, kScreen.w, kScreen.h };
        SDL_RenderCopy(painter.get(), texture.get(), nullptr, &dst);
        SDL_RenderFlush(painter.get());
        return target;
    };
    for (const std::string& path : { opaque, clear }) {
        DrawCommand picture = command(DrawCommand::Kind::Image, kScreen, 0);
        picture.path = path;
        // Twice: the second frame comes from the kept texture. Under the picture a fill, which the
        // see-through picture must let show.
        for (int frame = 0; frame < 2; ++frame) {
            renderer->present({ fill(kScreen, 0xFF0000), fill(kScreen, 0xFFFF00), picture });
            SurfacePtr expected = reference(path);
            int differing = 0;
            for (int y = 0; y < kScreen.h; ++y)
                for (int x = 0; x < kScreen.w; ++x)
                    differing += pixelAt(renderer->surface(), x, y) != pixelAt(expected.get(), x, y) ? 1 : 0;
            EXPECT_EQ(differing, 0) << path << " frame " << frame;
        }
    }

    // One line in white, then red, then white again: rasterised once, and each time in its colour.
    DrawCommand text = command(DrawCommand::Kind::Text, { 0, 10, 64, 20 }, 0xFFFFFF);
    text.text = "Hi";
    const size_t before = renderer->linesRendered();
    for (uint32_t colour : { 0xFFFFFFu, kRed, 0xFFFFFFu }) {
        text.colour = colour;
        renderer->present({ text });
        int inked = 0, offColour = 0;
        for (int y = 10; y < 30; ++y) {
            for (int x = 0; x < 20; ++x) {
                const uint32_t pixel = pixelAt(renderer->surface(), x, y);
                inked += pixel != 0 ? 1 : 0;
                // A pixel of full ink is the colour itself; others are darker shades of it.
                offColour += (colour == kRed ? (pixel & 0x00FFFFu) : (pixel >> 16) - (pixel & 0xFFu)) != 0 ? 1 : 0;
            }
        }
        EXPECT_GT(inked, 10) << std::hex << colour;
        EXPECT_EQ(offColour, 0) << std::hex << colour;
    }
    EXPECT_EQ(renderer->linesRendered() - before, 1u);
}

// The painter copies the cache's own pixels; the ones it keeps for the next frame stay within their
// bound in bytes however many sizes are shown, and a file that changes shows its new pixels.
TEST(SdlRenderer, PicturesKeptStayWithinTheirBoundAndFollowTheirFile)
{
    ombrel::test::TempHome home;
    const std::string path = home.path() + "art.png";
    ASSERT_TRUE(test::writeTwoColourPng(path, 8, 6, 0xFF0000, 0x0000FF));
    SdlFonts fonts;
    SdlImages images({}, 0);
    SurfacePtr target(SDL_CreateRGBSurfaceWithFormat(0, kScreen.w, kScreen.h, 32, SDL_PIXELFORMAT_RGB888));
    RendererPtr renderer(SDL_CreateSoftwareRenderer(target.get()));
    constexpr size_t kBound = 3 * 20 * 16 * 4; // three of the largest pictures below
    DrawListPainter painter(renderer.get(), target.get(), fonts, images, kBound);
    auto show = [&](int width) {
        DrawCommand picture = command(DrawCommand::Kind::Image, { 0, 0, width, 16 }, 0);
        picture.path = path;
        painter.paint({ picture }, { kScreen.w, kScreen.h });
        return std::pair { pixelAt(target.get(), 0, 8), pixelAt(target.get(), width - 1, 8) };
    };
    for (int width = 11; width <= 20; ++width) {
        EXPECT_EQ(show(width), std::pair(0xFF0000u, 0x0000FFu)) << width;
        EXPECT_LE(painter.heldPictureBytes(), kBound) << width;
    }
    EXPECT_GE(painter.heldPictureBytes(), 2 * 11 * 16 * 4u) << "the last ones shown are kept";

    ASSERT_TRUE(test::writeTwoColourPng(path, 8, 6, 0x00FF00, 0xFFFFFF));
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + std::chrono::seconds(2));
    EXPECT_EQ(show(20), std::pair(0x00FF00u, 0xFFFFFFu));
}

TEST(SdlRenderer, ContainPlacementAtItsLimits)
{
    const struct
    {
        runtime::PixelSize picture;
        PixelRect box, expected;
    } rows[] = {
        { { 100, 400 }, { 10, 10, 100, 100 }, { 47, 10, 25, 100 } },
        { { 10, 10 }, { 0, 0, 50, 30 }, { 10, 0, 30, 30 } }, { { 0, 10 }, { 5, 5, 32, 24 }, { 5, 5, 0, 0 } },
        { { 10, 10 }, { 5, 5, 0, 24 }, { 5, 5, 0, 0 } },
        { { 1000, 1 }, { 0, 0, 10, 10 }, { 0, 4, 10, 1 } }, // a thin picture keeps a pixel
    };
    for (const auto& row : rows)
        EXPECT_EQ(DrawListPainter::placeImage(runtime::ImageFit::Contain, row.box, row.picture), row.expected)
            << row.picture.w << "x" << row.picture.h;
}

TEST(SdlRenderer, DamagedCommandsPaintNothingAndDoNotCrash)
{
    SdlFonts fonts;
    SdlImages images;
    auto renderer = SdlRenderer::offscreen({ kScreen.w, kScreen.h }, fonts, images);
    ASSERT_TRUE(renderer);
    ombrel::test::TempHome home;
    DrawCommand frame = command(DrawCommand::Kind::Frame, kScreen, kRed, { 0, 0, 1, 1 });
    frame.lineWidth = INT_MAX;
    DrawCommand bigText = command(DrawCommand::Kind::Text, { -1000, 0, 10, 48 }, 0xFFFFFF);
    bigText.text = std::string(5000, 'W') + "\n\n\r\n";
    bigText.wrap = true;
    DrawCommand missing = command(DrawCommand::Kind::Image, { 40, 40, 8, 8 }, 0);
    missing.path = home.path() + "none.png";
    renderer->present(
        { fill({ INT_MAX - 5, INT_MIN + 5, INT_MAX, INT_MAX }, kRed, { INT_MIN, INT_MIN, INT_MAX, INT_MAX }),
            fill({ 10, 10, -20, -20 }, kRed), fill(kScreen, kRed, {}), frame, bigText,
            fill({ 40, 40, 8, 8 }, kRed), missing });
    EXPECT_EQ(pixelAt(renderer->surface(), 30, 30), 0u);
    EXPECT_EQ(pixelAt(renderer->surface(), 0, 0), 0xFF0000u) << "the over-wide border, within its clip";
    EXPECT_EQ(pixelAt(renderer->surface(), 44, 44), 0xFF0000u) << "a missing picture leaves what is below";

    // The screenshot goes to its name whole, with no part file left; a folder that is missing fails.
    EXPECT_EQ(renderer->screenshot({ fill(kScreen, kRed) }, home.path() + "shot.png"), "");
    SurfacePtr shot(IMG_Load((home.path() + "shot.png").c_str()));
    ASSERT_TRUE(shot);
    EXPECT_EQ(shot->w, 64);
    EXPECT_FALSE(home.exists("shot.png.part"));
    EXPECT_NE(renderer->screenshot({}, home.path() + "no/such/folder/shot.png"), "");
}

// A changed frame repaints the commands that differ from the last one, and the films, whose pictures
// change under the same command: as a few rectangles, so changes far apart do not repaint the screen
// between them.
TEST(SdlRenderer, DamageListsWhatDiffersBetweenFrames)
{
    DrawCommand text = command(DrawCommand::Kind::Text, { 0, 20, 30, 10 }, 0xFFFFFF, { 2, 20, 20, 10 });
    text.text = "Hi";
    DrawCommand pulsed = text;
    pulsed.colour = kRed;
    DrawCommand film = command(DrawCommand::Kind::Film, { 40, 0, 10, 10 }, 0);
    film.text = "mpIntro";
    const runtime::DrawList base { fill(kScreen, 0xFF0000), text };
    // Four corners changed, and one more place for each of the rows that passes the limit.
    auto corners = [](int extra) {
        runtime::DrawList frame { fill({ 0, 0, 4, 4 }, kRed), fill({ 60, 0, 4, 4 }, kRed),
            fill({ 0, 44, 4, 4 }, kRed), fill({ 60, 44, 4, 4 }, kRed) };
        for (int i = 0; i < extra; ++i)
            frame.push_back(fill({ 8 + 6 * i, 20, 2, 2 }, kRed));
        return frame;
    };
    const struct
    {
        const char* name;
        runtime::DrawList before, after;
        std::vector<PixelRect> expected;
    } rows[] = {
        { "same", base, base, {} },
        { "colourWithinTheClip", base, { fill(kScreen, 0xFF0000), pulsed }, { { 2, 20, 20, 10 } } },
        { "movedFillEachPlace", { fill({ 0, 0, 4, 4 }, kRed) }, { fill({ 10, 10, 4, 4 }, kRed) },
            { { 0, 0, 4, 4 }, { 10, 10, 4, 4 } } },
        { "movedFillOverlapping", { fill({ 0, 0, 4, 4 }, kRed) }, { fill({ 2, 2, 4, 4 }, kRed) },
            { { 0, 0, 6, 6 } } },
        // The first two do not meet, the third meets both; touching edges are not overlap.
        { "mergedBoundsTakeInMore", {},
            { fill({ 0, 0, 4, 4 }, kRed), fill({ 10, 0, 4, 4 }, kRed), fill({ 3, 3, 8, 2 }, kRed),
                fill({ 14, 0, 2, 2 }, kRed) },
            { { 0, 0, 14, 5 }, { 14, 0, 2, 2 } } },
        { "addedAndRemoved", base, { fill(kScreen, 0xFF0000) }, { { 2, 20, 20, 10 } } },
        { "offScreenPartCut", {}, { fill({ 60, 40, 10, 10 }, kRed) }, { { 60, 40, 4, 8 } } },
        { "filmAlways", { film }, { film }, { { 40, 0, 10, 10 } } },
        { "fourCornersAndTheList", {}, corners(4),
            { { 0, 0, 4, 4 }, { 60, 0, 4, 4 }, { 0, 44, 4, 4 }, { 60, 44, 4, 4 }, { 8, 20, 2, 2 },
                { 14, 20, 2, 2 }, { 20, 20, 2, 2 }, { 26, 20, 2, 2 } } },
        { "pastTheLimitOneBound", {}, corners(5), { { 0, 0, 64, 48 } } },
    };
    auto sorted = [](std::vector<PixelRect> rects) {
        std::sort(rects.begin(), rects.end(),
            [](const PixelRect& a, const PixelRect& b) { return std::tie(a.y, a.x) < std::tie(b.y, b.x); });
        return rects;
    };
    for (const auto& row : rows)
        EXPECT_EQ(sorted(DrawListPainter::damage(row.before, row.after, { kScreen.w, kScreen.h })),
            sorted(row.expected))
            << row.name;
}

// The window draws through the same painter as offscreen, into its own surface, which SDL's dummy
// video lets the test read. A later frame repaints only where it differs, and still shows what a
// whole repaint would.
TEST(SdlRenderer, WindowPaintsLikeOffscreenAndRepaintsOnlyWhatChanged)
{
    SdlFonts fonts;
    SdlImages images;
    std::string error;
    SdlRenderer::WindowOptions options;
    options.windowed = true;
    options.size = { 64, 48 };
    auto window = SdlRenderer::openWindow(options, fonts, images, error);
    ASSERT_TRUE(window) << error;
    EXPECT_EQ(window->screenSize(), (runtime::PixelSize { 64, 48 }));
    window->setPointerVisible(false);
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_DISABLE);
    auto offscreen = SdlRenderer::offscreen({ 64, 48 }, fonts, images);
    auto differing = [&] {
        SDL_Surface* shown = SDL_GetWindowSurface(window->window());
        int count = 0;
        for (int y = 0; y < 48; ++y)
            for (int x = 0; x < 64; ++x)
                count += pixelAt(shown, x, y) != pixelAt(offscreen->surface(), x, y) ? 1 : 0;
        return count;
    };

    DrawCommand text = command(DrawCommand::Kind::Text, { 0, 20, 64, 20 }, 0xFFFFFF, { 0, 20, 64, 20 });
    text.text = "Hi";
    const runtime::DrawList first { fill(kScreen, 0xFF0000), fill({ 8, 8, 16, 16 }, 0x00FF00), text };
    window->present(first);
    offscreen->present(first);
    EXPECT_EQ(differing(), 0);

    // A mark outside what the next frame changes survives it: that part was not painted again.
    SDL_Surface* surface = SDL_GetWindowSurface(window->window());
    const SDL_Rect mark { 60, 2, 1, 1 };
    SDL_SetClipRect(surface, nullptr); // the renderer leaves its last clip on the surface
    SDL_FillRect(surface, &mark, SDL_MapRGB(surface->format, 1, 2, 3));
    DrawCommand pulsed = text;
    pulsed.colour = kRed;
    const runtime::DrawList second { fill(kScreen, 0xFF0000), fill({ 30, 8, 16, 16 }, 0x00FF00), pulsed };
    window->present(second);
    EXPECT_EQ(pixelAt(surface, 60, 2), 0x010203u);
    // Elsewhere the window shows what a whole repaint of the frame shows: the fill gone from its old
    // place, the text in its new colour.
    offscreen->present(second);
    EXPECT_EQ(differing(), 1);
    window->repaint();
    EXPECT_EQ(differing(), 0);
}

} // namespace
} // namespace ombrel::platform::sdl
