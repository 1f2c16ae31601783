// KeyMap: the thirteen command keys of the cabinet and omkeys.cfg, the file that keeps them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace ombrel::core {
class FieldReader;
}

namespace ombrel::platform {
class Files;
}

namespace ombrel::input {

// A Windows virtual-key code, as the key events and omkeys.cfg carry it; empty while the command has
// no key (no key map was read, or the file ended before it).
using KeyCode = std::optional<int16_t>;

// The keys of the thirteen commands, shared by the browser, the joystick's exit watch and the forms
// that compare keys of their own.
struct KeyMap
{
    KeyCode keyUp;
    KeyCode keyDown;
    KeyCode keyNextPage;
    KeyCode keyPrevPage;
    KeyCode keyRefresh;
    KeyCode keyConfig;
    KeyCode keyNextPath;
    KeyCode keyPrevPath;
    KeyCode keySelect;
    KeyCode keyExit;
    KeyCode keySaver;
    KeyCode keyMute;
    KeyCode keyInfo;

    bool operator==(const KeyMap&) const = default;
};

// The fields of omkeys.cfg, in the file's order.
inline constexpr std::array<KeyCode KeyMap::*, 13> kKeyFileOrder {
    &KeyMap::keyUp,
    &KeyMap::keyDown,
    &KeyMap::keyNextPage,
    &KeyMap::keyPrevPage,
    &KeyMap::keyRefresh,
    &KeyMap::keyConfig,
    &KeyMap::keyNextPath,
    &KeyMap::keyPrevPath,
    &KeyMap::keySelect,
    &KeyMap::keyExit,
    &KeyMap::keySaver,
    &KeyMap::keyMute,
    &KeyMap::keyInfo,
};

inline constexpr const char* kKeyMapFileName = "omkeys.cfg";

// The key that opens the configuration menu on a cabinet whose key map cannot be read, so that the
// keys can always be defined again from there.
inline constexpr int16_t kTabKey = 9;

// Reads omkeys.cfg into keys, field by field in file order; commas and line ends both separate, blanks
// around a value do not matter, and an empty field leaves its key empty. When the file is missing, ends
// before the thirteenth value, or holds something that is not a 16-bit whole number (a fraction is
// rounded), the reading stops there: the keys read so far stand, the others keep what they held, and
// keyConfig becomes Tab, even over a value just read. Returns an empty string, or why the reading
// stopped.
std::string getKeys(const std::string& path, KeyMap& keys);

// The same on a file already opened, from the reader's place.
std::string readKeys(core::FieldReader& file, KeyMap& keys);

// The file's one line: the thirteen codes in file order, separated by commas, closed by CR LF. An
// empty key is an empty field.
std::string formatKeys(const KeyMap& keys);

// Replaces the file as a whole with formatKeys(keys). Returns an empty string, or why it could not be
// written (the old file is then untouched).
std::string saveKeys(platform::Files& files, const std::string& path, const KeyMap& keys);

} // namespace ombrel::input
