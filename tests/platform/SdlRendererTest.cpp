// Tests of painting a DrawList offscreen and in a window, and of screenshots.
#include "platform/sdl/SdlRenderer.h"

#include "SdlTestKit.h"
#include "TempHome.h"

#include <gtest/gtest.h>

#include <climits>
#include <tuple>
#include <vector>

namespace ombrel::platform::sdl {
namespace {

using runtime::DrawCommand;
using runtime::DrawList;
using runtime::ImageFit;
using runtime::PixelRect;
using test::pixelAt;

constexpr uint32_t kRed = 0x0000FF; // the system's numbers: blue*65536 + green*256 + red
constexpr uint32_t kGreen = 0x00FF00;
constexpr uint32_t kBlue = 0xFF0000;
constexpr PixelRect kScreen { 0, 0, 64, 48 };
using Pixel = std::tuple<int, int, uint32_t>; // x, y, 0xRRGGBB

DrawCommand fill(PixelRect rect, uint32_t colour, PixelRect clip = kScreen)
{
    DrawCommand cmd;
    cmd.kind = DrawCommand::Kind::Fill;
    cmd.rect = rect;
    cmd.clip = clip;
    cmd.colour = colour;
    return cmd;
}

DrawCommand image(const std::string& path, PixelRect rect, ImageFit fit)
{
    DrawCommand cmd;
    cmd.kind = DrawCommand::Kind::Image;
    cmd.rect = rect;
    cmd.clip = kScreen;
    cmd.path = path;
    cmd.fit = fit;
    return cmd;
}

DrawCommand text(const std::string& words, PixelRect rect, runtime::TextAlign align, PixelRect clip = kScreen)
{
    DrawCommand cmd;
    cmd.kind = DrawCommand::Kind::Text;
    cmd.rect = rect;
    cmd.clip = clip;
    cmd.colour = 0xFFFFFF;
    cmd.text = words;
    cmd.font = { "DejaVu Sans", 12, true };
    cmd.align = align;
    return cmd;
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

class SdlRendererTest : public ::testing::Test
{
protected:
    SdlFonts fonts;
    SdlImages images;
    std::unique_ptr<SdlRenderer> renderer = SdlRenderer::offscreen({ kScreen.w, kScreen.h }, fonts, images);
    ombrel::test::TempHome home;

    uint32_t at(int x, int y) { return pixelAt(renderer->surface(), x, y); }
    void expectPixels(const std::vector<Pixel>& pixels)
    {
        for (const auto& [x, y, colour] : pixels)
            EXPECT_EQ(at(x, y), colour) << "at " << x << "," << y;
    }
};

TEST_F(SdlRendererTest, FillsInOrderWithinTheirClip)
{
    ASSERT_TRUE(renderer);
    EXPECT_EQ(renderer->screenSize(), (runtime::PixelSize { 64, 48 }));
    renderer->present({
        fill({ 0, 0, 64, 48 }, kBlue),
        fill({ 10, 10, 20, 10 }, kRed),
        fill({ 20, 0, 40, 48 }, kGreen, { 25, 0, 5, 48 }),
    });
    // The system's colour numbers keep red in the low byte; a later command paints over an earlier one,
    // but not left or right of its clip.
    expectPixels({ { 0, 0, 0x0000FF }, { 10, 10, 0xFF0000 }, { 29, 19, 0x00FF00 }, { 24, 19, 0xFF0000 },
        { 30, 19, 0x0000FF }, { 10, 20, 0x0000FF } });

    renderer->present({ fill({ 0, 0, 10, 10 }, kRed) });
    EXPECT_EQ(at(30, 30), 0u) << "each frame starts black";
}

TEST_F(SdlRendererTest, FramesDrawInsideTheirRectangle)
{
    DrawCommand frame = fill({ 10, 10, 20, 16 }, kGreen);
    frame.kind = DrawCommand::Kind::Frame;
    frame.lineWidth = 2;
    DrawCommand thick = frame;
    thick.rect = { 40, 10, 6, 6 };
    thick.lineWidth = 9;
    renderer->present({ frame, thick });
    // Border, inside it, the bottom right corner and outside; a border wider than half the box fills it,
    // and even one wider than the whole box stays in it.
    expectPixels({ { 10, 10, 0x00FF00 }, { 11, 11, 0x00FF00 }, { 12, 12, 0 }, { 29, 25, 0x00FF00 },
        { 30, 25, 0 }, { 20, 24, 0x00FF00 }, { 20, 23, 0 }, { 43, 13, 0x00FF00 }, { 43, 16, 0 } });
}

TEST_F(SdlRendererTest, PicturesFitTheirBox)
{
    // 8 x 4: left half red, right half blue.
    const std::string path = home.path() + "pic.png";
    ASSERT_TRUE(test::writeTwoColourPng(path, 8, 4, 0xFF0000, 0x0000FF));

    constexpr uint32_t R = 0xFF0000, B = 0x0000FF;
    // Points away from the seam between the halves, where scaling blends the two colours.
    const struct
    {
        ImageFit fit;
        PixelRect box;
        std::vector<Pixel> pixels;
    } rows[] = {
        // Contain: 32 x 16 centred vertically at y 8..23.
        { ImageFit::Contain, { 0, 0, 32, 32 },
            { { 0, 7, 0 }, { 0, 8, R }, { 12, 23, R }, { 19, 12, B }, { 31, 23, B }, { 31, 24, 0 } } },
        { ImageFit::Stretch, { 0, 0, 32, 32 },
            { { 0, 0, R }, { 12, 31, R }, { 19, 0, B }, { 31, 31, B }, { 32, 31, 0 } } },
        { ImageFit::Natural, { 40, 40, 20, 20 },
            { { 40, 40, R }, { 47, 43, B }, { 48, 43, 0 }, { 40, 44, 0 } } },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(static_cast<int>(row.fit));
        renderer->present({ image(path, row.box, row.fit) });
        expectPixels(row.pixels);
    }

    // A picture that cannot be shown leaves what is below it.
    renderer->present(
        { fill({ 0, 0, 8, 8 }, kGreen), image(home.path() + "none.png", { 0, 0, 8, 8 }, ImageFit::Stretch) });
    EXPECT_EQ(at(4, 4), 0x00FF00u);
}

TEST_F(SdlRendererTest, ContainPlacement)
{
    const struct
    {
        const char* name;
        runtime::PixelSize picture;
        PixelRect box;
        PixelRect expected;
    } rows[] = {
        { "wideInSquare", { 200, 100 }, { 0, 0, 100, 100 }, { 0, 25, 100, 50 } },
        { "tallInSquare", { 100, 400 }, { 10, 10, 100, 100 }, { 47, 10, 25, 100 } },
        { "smallGrowsToFit", { 10, 10 }, { 0, 0, 50, 30 }, { 10, 0, 30, 30 } },
        { "sameShape", { 64, 48 }, { 5, 5, 32, 24 }, { 5, 5, 32, 24 } },
        { "emptyPicture", { 0, 10 }, { 5, 5, 32, 24 }, { 5, 5, 0, 0 } },
        { "emptyBox", { 10, 10 }, { 5, 5, 0, 24 }, { 5, 5, 0, 0 } },
        { "thinPictureKeepsAPixel", { 1000, 1 }, { 0, 0, 10, 10 }, { 0, 4, 10, 1 } },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(DrawListPainter::placeImage(ImageFit::Contain, row.box, row.picture), row.expected);
    }
}

TEST_F(SdlRendererTest, TextAlignsInItsBoxAndIsClipped)
{
    const PixelRect box { 0, 10, 64, 20 };
    renderer->present({ text("Hi", box, runtime::TextAlign::Left) });
    const int left = inkIn(renderer->surface(), { 0, 10, 21, 20 });
    EXPECT_GT(left, 10);
    EXPECT_EQ(inkIn(renderer->surface(), { 43, 0, 21, 48 }), 0);
    EXPECT_EQ(inkIn(renderer->surface(), { 0, 0, 64, 10 }), 0) << "text hangs from the top of its box";

    renderer->present({ text("Hi", box, runtime::TextAlign::Right) });
    EXPECT_EQ(inkIn(renderer->surface(), { 0, 0, 21, 48 }), 0);
    EXPECT_GT(inkIn(renderer->surface(), { 43, 10, 21, 20 }), 10);

    renderer->present({ text("Hi", box, runtime::TextAlign::Center) });
    EXPECT_EQ(inkIn(renderer->surface(), { 0, 0, 16, 48 }), 0);
    EXPECT_EQ(inkIn(renderer->surface(), { 48, 0, 16, 48 }), 0);
    EXPECT_GT(inkIn(renderer->surface(), { 16, 10, 32, 20 }), 10);

    renderer->present({ text("Hi", box, runtime::TextAlign::Left, { 0, 10, 5, 20 }) });
    EXPECT_EQ(inkIn(renderer->surface(), { 5, 0, 59, 48 }), 0);
}

TEST_F(SdlRendererTest, WrappedTextBreaksAtBlanks)
{
    DrawCommand cmd = text("Dig Dug Dig Dug", { 0, 0, 40, 48 }, runtime::TextAlign::Left);
    renderer->present({ cmd });
    const int oneLine = fonts.lineHeight(cmd.font);
    EXPECT_EQ(inkIn(renderer->surface(), { 0, oneLine, 64, 48 - oneLine }), 0);
    cmd.wrap = true;
    renderer->present({ cmd });
    EXPECT_GT(inkIn(renderer->surface(), { 0, oneLine, 64, 48 - oneLine }), 10);
}

TEST_F(SdlRendererTest, DamagedCommandsPaintNothingAndDoNotCrash)
{
    DrawCommand huge
        = fill({ INT_MAX - 5, INT_MIN + 5, INT_MAX, INT_MAX }, kRed, { INT_MIN, INT_MIN, INT_MAX, INT_MAX });
    DrawCommand negative = fill({ 10, 10, -20, -20 }, kRed);
    DrawCommand noClip = fill({ 0, 0, 64, 48 }, kRed, {});
    DrawCommand frame = fill({ 0, 0, 64, 48 }, kRed);
    frame.kind = DrawCommand::Kind::Frame;
    frame.lineWidth = INT_MAX;
    frame.clip = { 0, 0, 1, 1 };
    DrawCommand bigText
        = text(std::string(5000, 'W') + "\n\n\r\n", { -1000, 0, 10, 48 }, runtime::TextAlign::Right);
    bigText.wrap = true;
    renderer->present({ huge, negative, noClip, frame, bigText });
    EXPECT_EQ(at(30, 30), 0u);
    EXPECT_EQ(at(0, 0), 0xFF0000u) << "the over-wide border, within its clip";
}

TEST_F(SdlRendererTest, ScreenshotWritesAPngOfTheScreen)
{
    renderer->setScreenSize({ 40, 30 });
    const std::string path = home.path() + "shot.png";
    EXPECT_EQ(
        renderer->screenshot({ fill({ 0, 0, 40, 30 }, kBlue), fill({ 39, 29, 1, 1 }, kRed) }, path), "");
    SurfacePtr shot(IMG_Load(path.c_str()));
    ASSERT_TRUE(shot);
    EXPECT_EQ(shot->w, 40);
    EXPECT_EQ(shot->h, 30);
    SurfacePtr rgb(SDL_ConvertSurfaceFormat(shot.get(), SDL_PIXELFORMAT_RGB888, 0));
    EXPECT_EQ(pixelAt(rgb.get(), 0, 0), 0x0000FFu);
    EXPECT_EQ(pixelAt(rgb.get(), 39, 29), 0xFF0000u);
    EXPECT_FALSE(home.exists("shot.png.part"));

    EXPECT_NE(renderer->screenshot({}, home.path() + "no/such/folder/shot.png"), "");
}

// The window draws through the same painter; with SDL's dummy video its pixels can be read back.
TEST(SdlRendererWindow, PaintsLikeOffscreen)
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
    EXPECT_EQ(window->surface(), nullptr);
    window->setPointerVisible(false);
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_DISABLE) << "the pointer is hidden in the window itself";

    const DrawList frame { fill({ 0, 0, 64, 48 }, kBlue), fill({ 8, 8, 16, 16 }, kGreen),
        text("Hi", { 0, 20, 64, 20 }, runtime::TextAlign::Center) };
    window->present(frame);
    SDL_Renderer* sdlRenderer = SDL_GetRenderer(window->window());
    ASSERT_TRUE(sdlRenderer);
    SurfacePtr shown(SDL_CreateRGBSurfaceWithFormat(0, 64, 48, 32, SDL_PIXELFORMAT_RGB888));
    ASSERT_EQ(
        SDL_RenderReadPixels(sdlRenderer, nullptr, SDL_PIXELFORMAT_RGB888, shown->pixels, shown->pitch), 0);

    auto offscreen = SdlRenderer::offscreen({ 64, 48 }, fonts, images);
    offscreen->present(frame);
    int differing = 0;
    for (int y = 0; y < 48; ++y)
        for (int x = 0; x < 64; ++x)
            differing += pixelAt(shown.get(), x, y) != pixelAt(offscreen->surface(), x, y) ? 1 : 0;
    EXPECT_EQ(differing, 0);
}

} // namespace
} // namespace ombrel::platform::sdl
