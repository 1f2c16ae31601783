// The size a picture's header claims, for the four formats and their damaged forms, and the bounds
// above which a picture is refused.
#include "platform/sdl/PictureHeader.h"

#include <gtest/gtest.h>

#include <string>

namespace ombrel::platform::sdl {
namespace {

// clang-format off
std::string be16(int v) { return { char(v >> 8 & 0xFF), char(v & 0xFF) }; }
std::string le16(int v) { return { char(v & 0xFF), char(v >> 8 & 0xFF) }; }
std::string be32(int64_t v) { return be16(int(v >> 16 & 0xFFFF)) + be16(int(v & 0xFFFF)); }
std::string le32(int64_t v) { return le16(int(v & 0xFFFF)) + le16(int(v >> 16 & 0xFFFF)); }
// clang-format on

std::string png(int64_t w, int64_t h)
{
    return std::string("\x89PNG\r\n\x1a\n", 8) + be32(13) + "IHDR" + be32(w) + be32(h) + std::string(9, '\0');
}
// Start, an APP0 segment, a fill byte, then a frame header of the given kind.
std::string jpeg(int w, int h, char frame = '\xC0')
{
    return std::string("\xFF\xD8\xFF\xE0", 4) + be16(6) + "JFIF" + "\xFF\xFF" + frame + be16(11) + "\x08"
        + be16(h) + be16(w) + std::string(6, '\x01');
}
// A screen of w x h with a global colour table of 4 entries, a comment extension, then one frame.
std::string gif(int w, int h, int frameW, int frameH)
{
    return "GIF89a" + le16(w) + le16(h) + "\x81" + std::string(2, '\0') + std::string(12, '\x7F')
        + "\x21\xFE\x03" + "abc" + std::string(1, '\0') + "\x2C" + le16(0) + le16(0) + le16(frameW)
        + le16(frameH) + std::string(1, '\0');
}
std::string bmp(int32_t w, int32_t h)
{
    return "BM" + std::string(12, '\0') + le32(40) + le32(w) + le32(h) + le16(1);
}

TEST(PictureHeaderTest, HeadersOfTheFourFormatsTheirDamageAndTheBounds)
{
    struct Row
    {
        const char* name;
        std::string bytes;
        PictureSize size; // {0, 0}: refused
        const char* why = "";
    };
    const Row rows[] = {
        { "png", png(16384, 1), { 16384, 1 } },
        { "png, 64 Mpx", png(8192, 8192), { 8192, 8192 } },
        { "png, too wide", png(16385, 1), {}, "claims 16385 x 1 pixels" },
        { "png, past 64 Mpx", png(8192, 8193), {}, "claims 8192 x 8193" },
        { "png, 32-bit width", png(4294967295, 2), {}, "claims 4294967295 x 2" },
        { "png cut in its header", png(640, 480).substr(0, 20), {}, "PNG header is cut short" },
        { "png starting with another chunk", png(1, 1).replace(12, 4, "IDAT"), {}, "IHDR" },
        { "jpeg, baseline", jpeg(320, 240), { 320, 240 } },
        { "jpeg, progressive", jpeg(320, 240, '\xC2'), { 320, 240 } },
        { "jpeg cut in its frame", jpeg(320, 240).substr(0, 18), {}, "JPEG header is cut short" },
        { "jpeg, data before a frame", std::string("\xFF\xD8\xFF\xDA", 4) + be16(2), {}, "no frame header" },
        { "jpeg, zero length", std::string("\xFF\xD8\xFF\xE0", 4) + be16(0), {}, "length 0" },
        { "gif", gif(10, 20, 5, 5), { 10, 20 } },
        { "gif, frame larger than its screen", gif(10, 10, 40000, 5), {}, "claims 40000 x 10" },
        { "gif cut in its extension", gif(10, 10, 1, 1).substr(0, 30), {}, "GIF header is cut short" },
        { "gif ending before a frame", gif(10, 10, 1, 1).substr(0, 32) + ";", {}, "no picture" },
        { "bmp, top-down", bmp(800, -600), { 800, 600 } },
        { "bmp, old header", "BM" + std::string(12, '\0') + le32(12) + le16(20) + le16(30), { 20, 30 } },
        { "bmp cut", bmp(800, 600).substr(0, 20), {}, "BMP header is cut short" },
        { "empty", "", {}, "empty" },
        { "text", "hello, world", {}, "not a PNG, JPEG, GIF or BMP" },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto read = checkPicture(row.bytes);
        if (row.size == PictureSize {}) {
            ASSERT_TRUE(std::holds_alternative<PictureRefusal>(read));
            EXPECT_NE(std::get<PictureRefusal>(read).why.find(row.why), std::string::npos)
                << std::get<PictureRefusal>(read).why;
        } else {
            ASSERT_TRUE(std::holds_alternative<PictureSize>(read)) << std::get<PictureRefusal>(read).why;
            EXPECT_EQ(std::get<PictureSize>(read), row.size);
        }
    }
}

} // namespace
} // namespace ombrel::platform::sdl
