// Images: can a picture file be shown, and at what size. Decoding and caching stay behind it.
#pragma once

#include "runtime/Geometry.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ombrel::platform {

// A picture that is likely to be shown soon, and the box (screen pixels) it will be fitted into,
// proportions kept.
struct PictureWish
{
    std::string path;
    runtime::PixelSize box;
};

class Images {
public:
    virtual ~Images() = default;
    // The picture's size if the file can be decoded (PNG, JPEG, GIF, BMP), else nullopt.
    virtual std::optional<runtime::PixelSize> probe(const std::string& path) = 0;
    // Hint: these pictures are likely to be shown next, the most likely first. They replace the wishes
    // of the last call: a decode still waiting for one that is no longer wished for is dropped.
    virtual void expect(const std::vector<PictureWish>& wishes) { (void)wishes; }

    // How the pictures asked for on the caller's thread were served: ready (decoded before they were
    // needed), or only after the caller decoded one or waited for a worker to finish it.
    struct Served
    {
        uint64_t ready = 0;
        uint64_t waited = 0;
    };
    virtual Served served() const { return {}; }
};

} // namespace ombrel::platform
