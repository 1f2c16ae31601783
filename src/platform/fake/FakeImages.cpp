// FakeImages: picture sizes from file headers.
#include "platform/fake/FakeImages.h"

#include <cstdint>
#include <fstream>
#include <string>

namespace ombrel::platform::fake {

namespace {

// JPEG keeps its size in a frame header that may follow large blocks of metadata.
constexpr size_t kMaxHeaderBytes = 1 << 20;

uint32_t bigEndian(const std::string& b, size_t at, size_t n)
{
    uint32_t v = 0;
    for (size_t i = 0; i < n; ++i)
        v = (v << 8) | uint8_t(b[at + i]);
    return v;
}

std::optional<runtime::PixelSize> sized(uint32_t w, uint32_t h)
{
    if (w == 0 || h == 0 || w > 1000000 || h > 1000000)
        return std::nullopt;
    return runtime::PixelSize { int(w), int(h) };
}

std::optional<runtime::PixelSize> jpegSize(const std::string& b)
{
    size_t at = 2;
    while (at + 4 <= b.size()) {
        if (uint8_t(b[at]) != 0xFF)
            return std::nullopt;
        const uint8_t marker = uint8_t(b[at + 1]);
        if (marker == 0xFF) { // fill byte
            ++at;
            continue;
        }
        if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7)) { // markers without a length
            at += 2;
            continue;
        }
        const size_t length = bigEndian(b, at + 2, 2);
        if (length < 2)
            return std::nullopt;
        const bool frame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame) {
            if (at + 9 > b.size())
                return std::nullopt;
            return sized(bigEndian(b, at + 7, 2), bigEndian(b, at + 5, 2));
        }
        at += 2 + length;
    }
    return std::nullopt;
}

} // namespace

std::optional<runtime::PixelSize> FakeImages::probe(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return std::nullopt;
    std::string b(kMaxHeaderBytes, '\0');
    in.read(b.data(), std::streamsize(b.size()));
    b.resize(size_t(in.gcount()));

    if (b.size() >= 24 && b.compare(0, 8, "\x89PNG\r\n\x1a\n") == 0 && b.compare(12, 4, "IHDR") == 0)
        return sized(bigEndian(b, 16, 4), bigEndian(b, 20, 4));
    if (b.size() >= 10 && (b.compare(0, 6, "GIF87a") == 0 || b.compare(0, 6, "GIF89a") == 0))
        return sized(uint32_t(uint8_t(b[6]) | uint8_t(b[7]) << 8), uint32_t(uint8_t(b[8]) | uint8_t(b[9]) << 8));
    if (b.size() >= 4 && uint8_t(b[0]) == 0xFF && uint8_t(b[1]) == 0xD8)
        return jpegSize(b);
    return std::nullopt;
}

} // namespace ombrel::platform::fake
