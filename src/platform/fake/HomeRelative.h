// homeRelative: how trace lines show paths, relative to the program's folder, so a trace reads the same
// wherever the program's folder lies.
#pragma once

#include <string>
#include <string_view>

namespace ombrel::platform::fake {

// Drops the program's folder (home, with its trailing '/') where it begins a path inside text: at the
// start, or after a blank, a quote or '='. A text that names the folder itself becomes ".".
std::string homeRelative(std::string_view text, std::string_view home);

} // namespace ombrel::platform::fake
