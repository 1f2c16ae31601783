// FakeImages: tells a picture's size from the header of a PNG, GIF or JPEG file without decoding it.
#pragma once

#include "platform/Images.h"

namespace ombrel::platform::fake {

class FakeImages final : public Images {
public:
    std::optional<runtime::PixelSize> probe(const std::string& path) override;
    // Keeps the wishes, for tests of what the browser asks to have decoded ahead.
    void expect(const std::vector<PictureWish>& wishes) override { this->wishes = wishes; }

    std::vector<PictureWish> wishes; // of the last expect()
};

} // namespace ombrel::platform::fake
