// SkinCheck: the part of `ombrel --check` about the skin the cabinet starts in.
#pragma once

#include <string>
#include <vector>

namespace ombrel::platform {
class Files;
class Fonts;
}

namespace ombrel::browser {

// Which skin ombrel.cfg names (without ombrel.cfg: none, so the skins' folder itself), then each value
// of its skin.ini and scheme.cfg with the line it came from, and the font file its font name resolves to.
std::vector<std::string> skinCheck(const std::string& home, platform::Files& files, platform::Fonts& fonts);

} // namespace ombrel::browser
