// KeyMap: reading and writing omkeys.cfg.
#include "input/KeyMap.h"

#include "core/FieldReader.h"
#include "core/VbMath.h"
#include "platform/FieldFile.h"
#include "platform/Files.h"

namespace ombrel::input {

namespace {

// Why a value of the file cannot be taken; ends the reading.
struct Stop
{
    std::string message;
};

// One value of the file; throws Stop when it cannot be taken as a key.
KeyCode readKey(core::FieldReader& reader, int field)
{
    const std::string where = std::string(kKeyMapFileName) + " value " + std::to_string(field);
    if (reader.atEnd())
        throw Stop { where + " is missing: the file ends before it" };
    const std::string text = core::trimmed(reader.readField());
    if (text.empty())
        return std::nullopt;
    std::optional<double> number = core::parseNumber(text);
    if (!number)
        throw Stop { where + " \"" + text + "\" is not a number" };
    std::optional<int16_t> code = core::toInteger(*number);
    if (!code)
        throw Stop { where + " \"" + text + "\" is not a key code" };
    return code;
}

} // namespace

std::string getKeys(const std::string& path, KeyMap& keys)
{
    std::optional<core::FieldReader> file = platform::openFieldFile(path);
    if (!file) {
        keys.keyConfig = kTabKey;
        return std::string(kKeyMapFileName) + ": cannot open " + path;
    }
    return readKeys(*file, keys);
}

std::string readKeys(core::FieldReader& file, KeyMap& keys)
{
    int field = 1;
    try {
        for (KeyCode KeyMap::*key : kKeyFileOrder) {
            keys.*key = readKey(file, field);
            ++field;
        }
    } catch (const Stop& stop) {
        keys.keyConfig = kTabKey;
        return stop.message;
    }
    return std::string();
}

std::string formatKeys(const KeyMap& keys)
{
    std::string line;
    for (size_t i = 0; i < kKeyFileOrder.size(); ++i) {
        if (i > 0)
            line += ',';
        if (const KeyCode& code = keys.*kKeyFileOrder[i])
            line += std::to_string(*code);
    }
    return line + "\r\n";
}

std::string saveKeys(platform::Files& files, const std::string& path, const KeyMap& keys)
{
    return files.write(path, formatKeys(keys));
}

} // namespace ombrel::input
