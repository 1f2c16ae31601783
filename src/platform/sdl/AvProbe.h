// AvProbe: what FFmpeg can tell about a media file without playing it.
#pragma once

#include <string>

namespace ombrel::platform::sdl {

// Length of a sound or film file in seconds: 0 when the file opens but tells no length, -1 when it
// cannot be opened as media.
double mediaDurationSeconds(const std::string& path);

} // namespace ombrel::platform::sdl
