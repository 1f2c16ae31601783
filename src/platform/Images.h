// Images: can a picture file be shown, and at what size. Decoding and caching stay behind it.
#pragma once

#include "runtime/Geometry.h"

#include <optional>
#include <string>

namespace ombrel::platform {

class Images {
public:
    virtual ~Images() = default;
    // The picture's size if the file can be decoded (PNG, JPEG, GIF, BMP), else nullopt.
    virtual std::optional<runtime::PixelSize> probe(const std::string& path) = 0;
    // Hint: the picture will likely be shown soon; decode it ahead if the backend can.
    virtual void prefetch(const std::string& path) { (void)path; }
};

} // namespace ombrel::platform
