// PictureHeader: the header readers of the four picture formats.
#include "platform/sdl/PictureHeader.h"

#include <algorithm>
#include <cstdlib>

namespace ombrel::platform::sdl {

namespace {

using Result = std::variant<PictureSize, PictureRefusal>;

Result cutShort(const char* format)
{
    return PictureRefusal { std::string(format) + " header is cut short" };
}

// Bytes at an offset, each as 0..255; reads past the end are the caller's to prevent.
class Bytes
{
public:
    explicit Bytes(std::string_view data)
        : m_data(data)
    {
    }
    bool has(size_t offset, size_t count) const
    {
        return offset <= m_data.size() && count <= m_data.size() - offset;
    }
    uint32_t at(size_t offset) const { return static_cast<unsigned char>(m_data[offset]); }
    uint32_t be16(size_t offset) const { return at(offset) << 8 | at(offset + 1); }
    uint32_t le16(size_t offset) const { return at(offset) | at(offset + 1) << 8; }
    uint32_t be32(size_t offset) const { return be16(offset) << 16 | be16(offset + 2); }
    uint32_t le32(size_t offset) const { return le16(offset) | le16(offset + 2) << 16; }
    bool startsWith(std::string_view magic) const { return m_data.substr(0, magic.size()) == magic; }
    size_t size() const { return m_data.size(); }

private:
    std::string_view m_data;
};

Result png(const Bytes& b)
{
    // The signature, then the first chunk, which must be IHDR: length, type, width, height.
    if (!b.has(8, 16))
        return cutShort("PNG");
    if (b.be32(8) < 8 || b.at(12) != 'I' || b.at(13) != 'H' || b.at(14) != 'D' || b.at(15) != 'R')
        return PictureRefusal { "PNG file does not begin with its IHDR chunk" };
    return PictureSize { b.be32(16), b.be32(20) };
}

Result jpeg(const Bytes& b)
{
    // Segments follow the start marker: FF, a marker byte, then a 16-bit length that counts itself.
    // The frame header (a start-of-frame marker) holds the size; markers without a length carry none.
    size_t at = 2;
    for (;;) {
        if (!b.has(at, 2))
            return cutShort("JPEG");
        if (b.at(at) != 0xFF)
            return PictureRefusal { "JPEG file has no frame header where a segment should begin" };
        const uint32_t marker = b.at(at + 1);
        if (marker == 0xFF) { // fill byte
            ++at;
            continue;
        }
        if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7)) {
            at += 2;
            continue;
        }
        if (marker == 0xD9 || marker == 0xDA)
            return PictureRefusal { "JPEG file has no frame header before its picture data" };
        if (!b.has(at + 2, 2))
            return cutShort("JPEG");
        const size_t length = b.be16(at + 2);
        const bool frame
            = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame) {
            // Length, precision, height, width.
            if (length < 7 || !b.has(at + 4, 5))
                return cutShort("JPEG");
            return PictureSize { b.be16(at + 7), b.be16(at + 5) };
        }
        if (length < 2)
            return PictureRefusal { "JPEG file has a segment of length " + std::to_string(length) };
        at += 2 + length;
    }
}

Result gif(const Bytes& b)
{
    if (!b.has(6, 7))
        return cutShort("GIF");
    PictureSize size { b.le16(6), b.le16(8) };
    size_t at = 13;
    if (b.at(10) & 0x80) // a global colour table of 3 * 2^(n+1) bytes
        at += 3 * (size_t { 2 } << (b.at(10) & 7));
    // Extensions (0x21) come in sub-blocks ended by an empty one; the first image descriptor (0x2C)
    // gives the frame's size, which may pass the screen's.
    for (;;) {
        if (!b.has(at, 1))
            return cutShort("GIF");
        const uint32_t kind = b.at(at);
        if (kind == 0x2C) {
            if (!b.has(at, 10))
                return cutShort("GIF");
            size.width = std::max<int64_t>(size.width, b.le16(at + 5));
            size.height = std::max<int64_t>(size.height, b.le16(at + 7));
            return size;
        }
        if (kind != 0x21)
            return PictureRefusal { "GIF file has no picture before its end" };
        at += 2;
        for (;;) {
            if (!b.has(at, 1))
                return cutShort("GIF");
            const size_t block = b.at(at);
            at += 1 + block;
            if (block == 0)
                break;
        }
    }
}

Result bmp(const Bytes& b)
{
    if (!b.has(14, 4))
        return cutShort("BMP");
    const uint32_t infoSize = b.le32(14);
    if (infoSize == 12) { // the old OS/2 header: 16-bit sizes
        if (!b.has(18, 4))
            return cutShort("BMP");
        return PictureSize { b.le16(18), b.le16(20) };
    }
    if (!b.has(18, 8))
        return cutShort("BMP");
    // A negative height means rows from the top down; the size is the same.
    const auto width = static_cast<int32_t>(b.le32(18));
    const auto height = static_cast<int32_t>(b.le32(22));
    return PictureSize { std::abs(int64_t { width }), std::abs(int64_t { height }) };
}

} // namespace

std::variant<PictureSize, PictureRefusal> readPictureHeader(std::string_view bytes)
{
    const Bytes b(bytes);
    if (b.startsWith("\x89PNG\r\n\x1a\n"))
        return png(b);
    if (b.startsWith("\xFF\xD8"))
        return jpeg(b);
    if (b.startsWith("GIF87a") || b.startsWith("GIF89a"))
        return gif(b);
    if (b.startsWith("BM"))
        return bmp(b);
    if (b.size() == 0)
        return PictureRefusal { "the file is empty" };
    return PictureRefusal { "not a PNG, JPEG, GIF or BMP picture" };
}

std::variant<PictureSize, PictureRefusal> checkPicture(std::string_view bytes)
{
    if (static_cast<int64_t>(bytes.size()) > kMaxPictureFileBytes)
        return PictureRefusal { "the file is larger than " + std::to_string(kMaxPictureFileBytes >> 20)
            + " MB" };
    auto header = readPictureHeader(bytes);
    const auto* size = std::get_if<PictureSize>(&header);
    if (!size)
        return header;
    const std::string claimed = std::to_string(size->width) + " x " + std::to_string(size->height);
    if (size->width <= 0 || size->height <= 0)
        return PictureRefusal { "the picture claims a size of " + claimed + " pixels" };
    if (size->width > kMaxPictureSide || size->height > kMaxPictureSide
        || size->width * size->height > kMaxPicturePixels)
        return PictureRefusal { "the picture claims " + claimed + " pixels; at most "
            + std::to_string(kMaxPictureSide) + " a side and " + std::to_string(kMaxPicturePixels >> 20)
            + " Mpx in all are shown" };
    return header;
}

} // namespace ombrel::platform::sdl
