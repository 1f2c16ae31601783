// SavedState: reading and writing ombrel.cfg.
#include "config/SavedState.h"

#include "config/NumberText.h"
#include "core/FieldReader.h"
#include "core/VbMath.h"
#include "platform/FieldFile.h"
#include "platform/Files.h"

#include <cfloat>
#include <cmath>

namespace ombrel::config {

namespace {

// Why a value of the file could not be taken; ends the reading.
struct Stop
{
    std::string message;
};

// Reads the nine values in file order, each checked to be there and of its kind.
class CfgReader
{
public:
    explicit CfgReader(core::FieldReader& reader)
        : m_reader(reader)
    {
    }

    std::string text(const char* name)
    {
        return guarded(name, "cannot be read", [&] { return m_reader.readField(); });
    }

    bool boolean(const char* name)
    {
        return guarded(name, "is not #TRUE# or #FALSE#", [&] { return m_reader.readBool(); });
    }

    double number(const char* name)
    {
        int line = m_reader.line();
        double value = guarded(name, "is not a number", [&] { return m_reader.readNumber(); });
        if (!std::isfinite(value))
            throw stop(line, name, "is not a number");
        return value;
    }

    float single(const char* name)
    {
        int line = m_reader.line();
        double value = number(name);
        if (std::fabs(value) > FLT_MAX)
            throw stop(line, name, "is too large");
        return static_cast<float>(value);
    }

    int16_t integer(const char* name)
    {
        int line = m_reader.line();
        std::optional<int16_t> value = core::toInteger(number(name));
        if (!value)
            throw stop(line, name, "must lie between -32768 and 32767");
        return *value;
    }

private:
    template <typename Read>
    auto guarded(const char* name, const char* wrongKind, Read read) -> decltype(read())
    {
        int line = m_reader.line();
        if (m_reader.atEnd())
            throw stop(line, name, "is missing: the file ends before it");
        try {
            return read();
        } catch (const core::ReadError&) {
            throw stop(line, name, wrongKind);
        }
    }

    static Stop stop(int line, const char* name, const char* why)
    {
        return { std::string(kSavedStateFileName) + " line " + std::to_string(line) + ": " + name + " "
            + why };
    }

    core::FieldReader& m_reader;
};

std::string integerText(std::optional<int16_t> value)
{
    return std::to_string(value.value_or(0));
}

} // namespace

std::string openCfg(const std::string& path, SavedState& state, double& saverCount)
{
    std::optional<core::FieldReader> file = platform::openFieldFile(path);
    if (!file)
        return std::string(kSavedStateFileName) + ": cannot open " + path;
    return readCfg(*file, state, saverCount);
}

std::string readCfg(core::FieldReader& file, SavedState& state, double& saverCount)
{
    CfgReader read(file);
    try {
        state.curSkin = read.text("curSkin");
        saverCount = read.number("saverDelay");
        state.songMode = read.single("songMode");
        state.songVolume = read.single("songVolume");
        state.curSong = read.single("curSong");
        state.muted = read.boolean("muted");
        state.lastIndex = read.integer("lastIndex");
        state.lastPath = read.integer("lastPath");
        state.fontSize = read.integer("fontSize");
    } catch (const Stop& stop) {
        // NOTE: saverDelay keeps its old value here even when saverCount was read: the copy below is
        // the last step of a complete read.
        return stop.message;
    }
    state.saverDelay = saverCount;
    return std::string();
}

std::string formatCfg(const SavedState& state)
{
    const char* end = "\r\n";
    std::string text;
    text += '"' + state.curSkin + '"' + end;
    text += numberText(state.saverDelay) + end;
    text += numberText(state.songMode) + end;
    text += numberText(state.songVolume) + end;
    text += numberText(state.curSong) + end;
    text += std::string(state.muted ? "#TRUE#" : "#FALSE#") + end;
    text += integerText(state.lastIndex) + end;
    text += integerText(state.lastPath) + end;
    text += std::to_string(state.fontSize) + end;
    return text;
}

std::string saveCfg(platform::Files& files, const std::string& path, const SavedState& state)
{
    return files.write(path, formatCfg(state));
}

} // namespace ombrel::config
