// SkinFile: the values of skin.ini in their order, and the report of them.
#include "browser/SkinFile.h"

#include "config/NumberText.h"
#include "core/VbMath.h"
#include "platform/FieldFile.h"
#include "platform/Files.h"

#include <cfloat>
#include <cmath>
#include <optional>

namespace ombrel::browser {

namespace {

// Takes the file's values one after another. After the first failure the file counts as closed:
// every later value is left as it was and only noted as unread.
class SkinReading
{
public:
    explicit SkinReading(core::FieldReader* file)
        : m_file(file)
    {
        if (!m_file)
            m_result.failure = std::string(kSkinFileName) + " cannot be opened";
    }

    void number(const char* name, int line, double& value)
    {
        take(name, line, [&] {
            const double read = m_file->readNumber();
            // The positions are single-precision numbers; a larger one is no position.
            if (!std::isfinite(read) || std::fabs(read) > FLT_MAX)
                throw core::ReadError("the number is too large", m_file->fieldLine());
            value = read;
            return config::numberText(read);
        });
    }

    void box(const char* top, const char* left, const char* width, const char* height, int line,
        config::SkinBox& value)
    {
        number(top, line, value.top);
        number(left, line, value.left);
        number(width, line, value.width);
        number(height, line, value.height);
    }

    // A whole number; with mayBeEmpty, an empty field is 0.
    void whole(const char* name, int line, int& value, bool mayBeEmpty = false)
    {
        take(name, line, [&] {
            const std::string field = core::trimmed(m_file->readField());
            std::optional<double> number = field.empty() && mayBeEmpty ? 0.0 : core::parseNumber(field);
            if (!number)
                throw core::ReadError("\"" + field + "\" is not a number", m_file->fieldLine());
            std::optional<int16_t> integer = core::toInteger(*number);
            if (!integer)
                throw core::ReadError(
                    "\"" + field + "\" is not between -32768 and 32767", m_file->fieldLine());
            value = *integer;
            return std::to_string(value);
        });
    }

    void flag(const char* name, int line, bool& value)
    {
        take(name, line, [&] {
            value = m_file->readBool();
            return std::string(value ? "#TRUE#" : "#FALSE#");
        });
    }

    void text(const char* name, int line, std::string& value)
    {
        take(name, line, [&] {
            value = m_file->readField();
            return "\"" + value + "\"";
        });
    }

    SkinRead result() && { return std::move(m_result); }

private:
    template <class Read> void take(const char* name, int line, Read read)
    {
        if (!m_result.failure.empty()) {
            m_result.unread.push_back(name);
            return;
        }
        const int startLine = m_file->line();
        try {
            if (m_file->atEnd())
                throw core::ReadError("the file ends before it", startLine);
            std::string shown = read();
            m_result.values.push_back({ name, line, m_file->fieldLine(), std::move(shown) });
        } catch (const core::ReadError& error) {
            m_result.failure = std::string(kSkinFileName) + " line " + std::to_string(error.line()) + ": "
                + name + ": " + error.what();
            m_result.unread.push_back(name);
        }
    }

    core::FieldReader* m_file;
    SkinRead m_result;
};

} // namespace

SkinRead readSkin(core::FieldReader* file, config::RunState& run)
{
    config::SkinValues& s = run.skin;
    SkinReading in(file);
    in.box("xScreen.Top", "xScreen.Left", "xScreen.Width", "xScreen.Height", 1, s.xScreen);
    in.flag("showSnap", 2, s.showSnap);
    in.box("xCabinet.Top", "xCabinet.Left", "xCabinet.Width", "xCabinet.Height", 3, s.xCabinet);
    in.flag("showCabinet", 4, s.showCabinet);
    in.box("xFlyer.Top", "xFlyer.Left", "xFlyer.Width", "xFlyer.Height", 5, s.xFlyer);
    in.flag("showFlyer", 6, s.showFlyer);
    in.box("xMarquee.Top", "xMarquee.Left", "xMarquee.Width", "xMarquee.Height", 7, s.xMarquee);
    in.flag("showMarquee", 8, s.showMarquee);
    in.box("Shape1.Top", "Shape1.Left", "Shape1.Width", "Shape1.Height", 9, s.Shape1);
    in.whole("listCols", 10, s.listCols, true);
    in.text("listType", 11, run.listType);
    in.number("xlist(0).Width", 12, s.xlistWidth);
    in.number("xlist(0).Height", 12, s.xlistHeight);
    in.number("lblPath.Top", 13, s.lblPathTop);
    in.number("lblPath.Left", 13, s.lblPathLeft);
    in.flag("showPath", 14, s.showPath);
    in.number("lblNav(0).Top", 15, s.lblNavTop);
    in.number("lblNav(0).Left", 15, s.lblNavLeft);
    in.flag("showNav", 16, s.showNav);
    in.whole("stripGap", 17, s.stripGap);
    in.whole("rowAlign", 18, s.rowAlign);
    // The logo's line gives its height before its width, unlike the panels' lines.
    in.number("xlogo.Top", 19, s.xlogo.top);
    in.number("xlogo.Left", 19, s.xlogo.left);
    in.number("xlogo.Height", 19, s.xlogo.height);
    in.number("xlogo.Width", 19, s.xlogo.width);
    in.flag("showLogo", 20, run.showLogo);
    return std::move(in).result();
}

SkinRead readSkin(std::string bytes, config::RunState& run)
{
    core::FieldReader file(std::move(bytes));
    return readSkin(&file, run);
}

std::vector<std::string> skinReport(platform::Files& files, const std::string& skinFolder)
{
    const std::string path = skinFolder + kSkinFileName;
    std::optional<core::FieldReader> file = platform::openFieldFile(files, path);
    config::RunState run;
    const SkinRead read = readSkin(file ? &*file : nullptr, run);

    std::vector<std::string> lines;
    for (const SkinValueRead& value : read.values) {
        std::string line = std::string(kSkinFileName) + " line " + std::to_string(value.fileLine) + ": "
            + value.name + " = " + value.text;
        if (value.fileLine != value.layoutLine)
            line += " (its place is line " + std::to_string(value.layoutLine) + ")";
        lines.push_back(std::move(line));
    }
    if (!file) {
        lines.push_back(std::string(kSkinFileName) + ": " + path + " cannot be opened; no value is read");
        return lines;
    }
    if (!read.failure.empty()) {
        std::string unread;
        for (const char* name : read.unread)
            unread += std::string(unread.empty() ? "" : ", ") + name;
        lines.push_back(read.failure + "; not read: " + unread);
    }
    return lines;
}

} // namespace ombrel::browser
