// Tests of the picture cache: bad files and files that change, pictures fitted ahead by the workers as the
// caller would fit them, and the bound on the bytes held.
#include "platform/sdl/SdlImages.h"

#include "SdlTestKit.h"
#include "TempHome.h"

#include <gtest/gtest.h>

#include <SDL_image.h>

#include <unistd.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace ombrel::platform::sdl {
namespace {

namespace fs = std::filesystem;
using runtime::PixelSize;
using test::writeTwoColourPng;

class SdlImagesTest : public ::testing::Test
{
protected:
    // A picture of w x h pixels named name (".png" added when it has no extension); its path.
    std::string picture(const std::string& name, int w = 4, int h = 3)
    {
        const std::string path = home.path() + name + (fs::path(name).has_extension() ? "" : ".png");
        EXPECT_TRUE(writeTwoColourPng(path, w, h, 0xFF, 0xFF00));
        return path;
    }
    // Refusals said, as "file: why", each checked to come on the thread that asked.
    void listen(SdlImages& images)
    {
        images.onRefused = [this](const std::string& path, const std::string& why) {
            EXPECT_EQ(std::this_thread::get_id(), m_caller) << path;
            refused.push_back(fs::path(path).filename().string() + ": " + why);
        };
    }
    static std::string pixels(const SharedSurface& surface)
    {
        if (!surface)
            return {};
        return std::string(static_cast<const char*>(surface->pixels),
            static_cast<size_t>(surface->pitch) * static_cast<size_t>(surface->h));
    }

    ombrel::test::TempHome home;
    std::vector<std::string> refused;

private:
    std::thread::id m_caller = std::this_thread::get_id();
};

// Bad files of every kind: none crashes or hangs, none shows, a refusal is said once and only when the
// caller asks for that picture (whoever found it), nothing claimed by a header is allocated, a bad file
// wished for does not hold up the good one wished after it, and a file that changes is seen again.
TEST_F(SdlImagesTest, BadFilesAreRefusedWithoutHarm)
{
    SurfacePtr surface(SDL_CreateRGBSurfaceWithFormat(0, 64, 64, 32, SDL_PIXELFORMAT_ARGB8888));
    ASSERT_EQ(IMG_SaveJPG(surface.get(), (home.path() + "whole.jpg").c_str(), 90), 0) << IMG_GetError();
    const std::string jpeg = home.read("whole.jpg");
    picture("whole.png", 64, 64);
    const std::string png = home.read("whole.png");
    const bool root = geteuid() == 0;

    struct Row
    {
        const char* name;
        std::function<void()> make;
        const char* refusal; // "": none said
        bool decoded = false; // handed to the decoder, which fails on it
    };
    std::vector<Row> rows = {
        { "missing.png", [] {}, "" },
        { "truncated.png", [&] { home.write("truncated.png", png.substr(0, png.size() / 2)); }, "", true },
        { "cut.jpg", [&] { home.write("cut.jpg", jpeg.substr(0, 40)); }, "JPEG header is cut short" },
        { "empty.png", [&] { home.write("empty.png", ""); }, "the file is empty" },
        { "text.png", [&] { home.write("text.png", "not a picture at all\n"); },
            "not a PNG, JPEG, GIF or BMP picture" },
        // 30000 x 30000 pixels: 3.6 GB if decoded.
        { "giant.png",
            [&] {
                home.write("giant.png",
                    std::string("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\0\0\x75\x30\0\0\x75\x30\x08\x06\0\0\0", 29));
            },
            "the picture claims 30000 x 30000 pixels; at most 16384 a side and 64 Mpx in all are shown" },
        { "folder.png", [&] { fs::create_directories(home.root() / "folder.png"); }, "" },
    };
    if (!root) // root reads anything, whatever its mode says
        rows.push_back({ "locked.png",
            [&] {
                picture("locked");
                fs::permissions(home.root() / "locked.png", fs::perms::none);
            },
            "the file cannot be read" });
    for (const Row& row : rows)
        row.make();
    std::vector<std::string> expected;
    int decodes = 0;
    for (const Row& row : rows) {
        if (*row.refusal)
            expected.push_back(std::string(row.name) + ": " + row.refusal);
        decodes += row.decoded ? 1 : 0;
    }
    const std::string good = picture("good", 40, 30);

    for (const int workers : { 0, 1 }) {
        SCOPED_TRACE(workers ? "wished for first" : "asked for at once");
        refused.clear();
        SdlImages images(SdlImages::Limits {}, workers);
        listen(images);
        std::vector<PictureWish> wishes;
        for (const Row& row : rows)
            wishes.push_back({ home.path() + row.name, { 20, 20 } });
        wishes.push_back({ good, { 20, 15 } });
        images.expect(wishes);
        images.waitIdle();
        EXPECT_TRUE(refused.empty()) << "said before anyone asked";
        EXPECT_TRUE(images.fitted(good, { 20, 15 }));
        EXPECT_EQ(images.served().waited, workers ? 0u : 1u);

        for (int pass = 0; pass < 2; ++pass) {
            for (const Row& row : rows) {
                EXPECT_FALSE(images.probe(home.path() + row.name)) << row.name;
                EXPECT_FALSE(images.fitted(home.path() + row.name, { 20, 20 })) << row.name;
            }
        }
        EXPECT_FALSE(images.probe(""));
        EXPECT_EQ(refused, expected);
        EXPECT_EQ(images.decodeCount(), decodes + 1);
        EXPECT_EQ(images.heldCount(), 1u) << "the good picture as fitted, not its full size";
    }
    if (!root)
        fs::permissions(home.root() / "locked.png", fs::perms::owner_all);

    // A JPEG cut in its data is the decoder's business: it may show what it has, but must not crash.
    home.write("half.jpg", jpeg.substr(0, jpeg.size() / 2));
    SdlImages images(SdlImages::Limits {}, 0);
    if (images.probe(home.path() + "half.jpg")) {
        EXPECT_TRUE(images.fitted(home.path() + "half.jpg", { 10, 10 }));
    }

    // A file is known by its size and time: a bad one replaced is decoded again, and a picture replaced
    // never shows its old pixels.
    const std::string path = home.path() + "text.png";
    EXPECT_FALSE(images.probe(path));
    std::optional<SdlImages::Facts> last;
    for (const int w : { 8, 6 }) {
        picture("text", w, 3);
        // Make sure the replacement's time differs even on a coarse clock.
        fs::last_write_time(path, fs::last_write_time(path) + std::chrono::seconds(w));
        const auto facts = images.facts(path);
        ASSERT_TRUE(facts);
        EXPECT_EQ(facts->size, (PixelSize { w, 3 }));
        EXPECT_TRUE(!last || last->version != facts->version);
        EXPECT_EQ(images.fitted(path, { w, 3 })->w, w);
        last = facts;
    }
    fs::remove(path);
    EXPECT_FALSE(images.fitted(path, { 6, 3 })) << "a removed file no longer shows";
}

// What the workers make ahead is what the caller would have made itself, pixel for pixel, fitted to the
// box with the picture's proportions kept; the full-size pictures are not kept.
TEST_F(SdlImagesTest, WishedPicturesAreFittedAheadAsTheCallerWouldFitThem)
{
    struct Wish
    {
        const char* name;
        PixelSize size;
        PixelSize box;
        PixelSize fitted;
    };
    const Wish rows[] = {
        { "flyer", { 120, 160 }, { 60, 60 }, { 45, 60 } },
        { "snap", { 64, 48 }, { 100, 60 }, { 80, 60 } },
        { "marquee", { 102, 25 }, { 50, 50 }, { 50, 12 } },
        { "same", { 30, 20 }, { 30, 20 }, { 30, 20 } },
    };
    std::vector<PictureWish> wishes;
    for (const Wish& row : rows)
        wishes.push_back({ picture(row.name, row.size.w, row.size.h), row.box });

    SdlImages ahead(SdlImages::Limits {}, 4);
    SdlImages atOnce(SdlImages::Limits {}, 0);
    ahead.expect(wishes);
    atOnce.expect(wishes);
    ahead.waitIdle();
    EXPECT_EQ(ahead.decodeCount(), 4);
    EXPECT_EQ(ahead.heldCount(), 4u);
    EXPECT_EQ(atOnce.decodeCount(), 0) << "no workers: nothing is decoded before it is needed";
    for (size_t i = 0; i < wishes.size(); ++i) {
        SCOPED_TRACE(rows[i].name);
        const PixelSize fitted = SdlImages::fitInto(rows[i].size, rows[i].box);
        EXPECT_EQ(fitted, rows[i].fitted);
        EXPECT_EQ(ahead.probe(wishes[i].path), rows[i].size);
        const SharedSurface made = ahead.fitted(wishes[i].path, fitted);
        ASSERT_TRUE(made);
        EXPECT_EQ((PixelSize { made->w, made->h }), fitted);
        EXPECT_EQ(pixels(made), pixels(atOnce.fitted(wishes[i].path, fitted)));
    }
    EXPECT_EQ(ahead.decodeCount(), 4);
    EXPECT_EQ(ahead.served().ready, 8u);
    EXPECT_EQ(ahead.served().waited, 0u);
    EXPECT_EQ(atOnce.served().waited, 4u) << "each picture decoded when asked for";
}

// Whatever is asked for and however, the bytes held stay within the bound, the least recently used
// leaving first; one picture larger than the whole bound is handed out and not kept; wishes are taken
// only as far as they fit.
TEST_F(SdlImagesTest, TheBytesHeldStayWithinTheBound)
{
    SdlImages::Limits limits;
    // A 40 x 30 picture takes 4800 bytes, fitted to 20 x 15 1200: room for one of each, or five fitted.
    limits.maxBytes = 6000;
    std::vector<std::string> paths;
    for (int i = 0; i < 10; ++i)
        paths.push_back(picture(std::to_string(i), 40, 30));
    const std::string large = picture("large", 100, 100);

    for (const int workers : { 0, 2 }) {
        SCOPED_TRACE(workers);
        SdlImages images(limits, workers);
        for (const auto& path : paths) {
            images.expect({ { path, { 20, 20 } } });
            images.waitIdle();
            EXPECT_TRUE(images.fitted(path, { 20, 15 }));
            EXPECT_TRUE(images.probe(path));
            EXPECT_LE(images.heldBytes(), limits.maxBytes);
        }
        const int decodes = images.decodeCount();
        images.fitted(paths.back(), { 20, 15 });
        EXPECT_EQ(images.decodeCount(), decodes) << "the newest is still there";
        images.fitted(paths.front(), { 20, 15 });
        EXPECT_EQ(images.decodeCount(), decodes + 1) << "the oldest has gone";

        const size_t held = images.heldBytes();
        EXPECT_EQ(images.probe(large), (PixelSize { 100, 100 }));
        const SharedSurface whole = images.fitted(large, { 100, 100 });
        ASSERT_TRUE(whole);
        EXPECT_EQ(whole->w, 100);
        EXPECT_EQ(images.heldBytes(), held);
    }

    // Wished pictures that would not all fit would push one another out: only the most wanted are taken.
    SdlImages wishing(limits, 1);
    std::vector<PictureWish> wishes;
    for (const auto& path : paths)
        wishes.push_back({ path, { 20, 20 } });
    wishing.expect(wishes);
    wishing.waitIdle();
    EXPECT_EQ(wishing.decodeCount(), 1);
}

} // namespace
} // namespace ombrel::platform::sdl
