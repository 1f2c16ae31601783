// FakeImages: tells a picture's size from the header of a PNG, GIF or JPEG file without decoding it.
#pragma once

#include "platform/Images.h"

namespace ombrel::platform::fake {

class FakeImages final : public Images {
public:
    std::optional<runtime::PixelSize> probe(const std::string& path) override;
};

} // namespace ombrel::platform::fake
