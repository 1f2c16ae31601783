// Fuzz target of the picture header reader: any bytes as a picture file, before any decoder sees them.
#include "FuzzHome.h"

#include "platform/sdl/PictureHeader.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace ombrel;
using fuzz::fuzzCheck;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const auto header = platform::sdl::readPictureHeader(bytes);
    const auto checked = platform::sdl::checkPicture(bytes);
    const auto* claimed = std::get_if<platform::sdl::PictureSize>(&header);
    if (const auto* shown = std::get_if<platform::sdl::PictureSize>(&checked)) {
        fuzzCheck(claimed && *claimed == *shown, "a picture passed the check with another size");
        fuzzCheck(shown->width > 0 && shown->height > 0 && shown->width <= platform::sdl::kMaxPictureSide
                && shown->height <= platform::sdl::kMaxPictureSide
                && shown->width * shown->height <= platform::sdl::kMaxPicturePixels,
            "a picture past the bounds passed the check");
    }
    // The header stands before the data: what follows it cannot change the size it claims.
    if (claimed) {
        const auto longer = platform::sdl::readPictureHeader(bytes + std::string(64, '\xFF'));
        const auto* size2 = std::get_if<platform::sdl::PictureSize>(&longer);
        fuzzCheck(size2 && *size2 == *claimed, "bytes after the header changed its size");
    }
    return 0;
}
