// PictureHeader: the size a picture file claims, read from its header before anything is decoded, and
// the bound above which the cabinet refuses to decode one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace ombrel::platform::sdl {

// A decoded picture takes 4 bytes a pixel; a file of a few bytes may claim 30000 x 30000 pixels and
// would cost 3.6 GB. No cabinet picture comes near these bounds: a 4K screen is 3840 x 2160.
inline constexpr int64_t kMaxPictureSide = 16384;
inline constexpr int64_t kMaxPicturePixels = int64_t { 64 } * 1024 * 1024; // 256 MB decoded
// Larger files are not read at all; the largest snaps and flyers are a few megabytes.
inline constexpr int64_t kMaxPictureFileBytes = int64_t { 64 } * 1024 * 1024;

struct PictureSize
{
    int64_t width = 0;
    int64_t height = 0;
    bool operator==(const PictureSize&) const = default;
};

// Why a picture is not decoded: a sentence for the failure log.
struct PictureRefusal
{
    std::string why;
};

// The size the header of a PNG, JPEG, GIF or BMP file claims (for a GIF, the larger of its screen and
// its first frame). Any other content, or a header cut short, is refused.
std::variant<PictureSize, PictureRefusal> readPictureHeader(std::string_view bytes);

// readPictureHeader, plus the bounds above: the size when the picture may be decoded.
std::variant<PictureSize, PictureRefusal> checkPicture(std::string_view bytes);

} // namespace ombrel::platform::sdl
