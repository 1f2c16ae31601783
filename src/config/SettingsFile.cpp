// SettingsFile: the line table of ombrel.ini, its reading, and the defaults applied after it.
#include "config/SettingsFile.h"

#include "config/NumberText.h"
#include "core/FieldReader.h"
#include "core/VbMath.h"
#include "platform/FieldFile.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <optional>
#include <string_view>
#include <variant>

namespace ombrel::config {

namespace {

enum class Treatment {
    Trimmed, // blanks removed at both ends
    AsIs, // nothing removed
    Yes, // trimmed, upper case, equal to "YES"
    Number, // must be a number (a 32-bit float)
    WholeNumber, // the number the value begins with, else 0, rounded into 16 bits
};

using Target = std::variant<std::string*, bool*, int16_t*, float*>;

// One line of the file. The value starts right after the label: only the label's length matters, so
// any text of that length may stand there.
struct LineSpec
{
    bool skipping; // comments and blank lines before it are passed over
    std::string_view label;
    std::string_view name;
    Treatment treatment;
    Target (*target)(Settings&, int path);

    int column() const { return static_cast<int>(label.size()) + 1; }
};

using enum Treatment;

// NOTE: the columns are the same in all twenty blocks, so the labels carry no block number: "Roms1="
// would move the value by one column.
constexpr std::array<LineSpec, 8> kBlockLines { {
    { true, "Roms=", "romDir", Trimmed, [](Settings& s, int p) -> Target { return &s.romDir[p]; } },
    { false, "Exec=", "emuExe", Trimmed, [](Settings& s, int p) -> Target { return &s.emuExe[p]; } },
    { false, "FullPaths=", "fullPath", Yes, [](Settings& s, int p) -> Target { return &s.fullPath[p]; } },
    { false, "PathName=", "pathName", Trimmed, [](Settings& s, int p) -> Target { return &s.pathName[p]; } },
    { false, "Opts=", "emuOpts", AsIs, [](Settings& s, int p) -> Target { return &s.emuOpts[p]; } },
    { false, "Images=", "logoFile", Trimmed, [](Settings& s, int p) -> Target { return &s.logoFile[p]; } },
    { false, "EmuFolder=", "emuDir", Trimmed, [](Settings& s, int p) -> Target { return &s.emuDir[p]; } },
    { false, "ArtworkPath=", "artDir", Trimmed, [](Settings& s, int p) -> Target { return &s.artDir[p]; } },
} };

constexpr std::array<LineSpec, 22> kTailLines { {
    { true, "MameRoot=", "mameDir", Trimmed, [](Settings& s, int) -> Target { return &s.mameDir; } },
    { true, "ImpactDir=", "impactDir", Trimmed, [](Settings& s, int) -> Target { return &s.impactDir; } },
    { true, "NTImpact=", "impactNT", Yes, [](Settings& s, int) -> Target { return &s.impactNT; } },
    { true, "ModelerDir=", "modelerDir", Trimmed, [](Settings& s, int) -> Target { return &s.modelerDir; } },
    { true, "U64Dir=", "u64Dir", Trimmed, [](Settings& s, int) -> Target { return &s.u64Dir; } },
    { true, "U64Dir2=", "u64Dir2", Trimmed, [](Settings& s, int) -> Target { return &s.u64Dir2; } },
    { true, "VPinballDir=", "vpDir", Trimmed, [](Settings& s, int) -> Target { return &s.vpDir; } },
    { true, "S11Dir=", "s11Dir", Trimmed, [](Settings& s, int) -> Target { return &s.s11Dir; } },
    // The one line without a label: YES must stand alone on it.
    { false, "", "s11NewPlugins", Yes, [](Settings& s, int) -> Target { return &s.s11NewPlugins; } },
    { false, "S11Opt=", "s11Opts", Trimmed, [](Settings& s, int) -> Target { return &s.s11Opts; } },
    { true, "DaphDir=", "daphneDir", Trimmed, [](Settings& s, int) -> Target { return &s.daphneDir; } },
    { false, "DaphOpt=", "daphneOpts", Trimmed, [](Settings& s, int) -> Target { return &s.daphneOpts; } },
    { true, "ScrollRateKeys=", "scrollRate", WholeNumber,
        [](Settings& s, int) -> Target { return &s.scrollRate; } },
    { false, "ScrollRateJoys=", "scrollRate2", WholeNumber,
        [](Settings& s, int) -> Target { return &s.scrollRate2; } },
    { true, "TVOutSwitch=", "tvOut", Yes, [](Settings& s, int) -> Target { return &s.tvOut; } },
    { true, "ResX=", "scrW", Number, [](Settings& s, int) -> Target { return &s.scrW; } },
    { false, "ResY=", "scrH", Number, [](Settings& s, int) -> Target { return &s.scrH; } },
    { true, "Freq=", "deskFreq", Number, [](Settings& s, int) -> Target { return &s.deskFreq; } },
    { false, "Bits=", "deskBits", Number, [](Settings& s, int) -> Target { return &s.deskBits; } },
    { true, "Freq=", "frontFreq", Number, [](Settings& s, int) -> Target { return &s.frontFreq; } },
    { false, "Bits=", "frontBits", Number, [](Settings& s, int) -> Target { return &s.frontBits; } },
    // A file that ends before this line is still complete: the machine is then not switched off.
    { true, "ShutdownOnExit=", "powerOff", Yes, [](Settings& s, int) -> Target { return &s.powerOff; } },
} };

std::string describe(const LineSpec& spec, int path)
{
    std::string text = spec.label.empty() ? std::string("the plug-in switch (") + std::string(spec.name) + ")"
                                          : std::string(spec.label);
    if (path > 0)
        text += " of path " + std::to_string(path);
    return text;
}

// Walks the file's fields in the fixed order and stores each value as it is read.
class IniReader
{
public:
    IniReader(core::FieldReader& reader, Settings& settings, std::vector<SettingsLine>* lines)
        : m_reader(reader)
        , m_settings(settings)
        , m_lines(lines)
    {
    }

    void readLine(const LineSpec& spec, int path)
    {
        auto [raw, line] = spec.skipping ? skippingRead() : plainRead(spec, path);
        std::string value = core::valueAt(raw, spec.column());
        std::string taken = store(spec, path, line, value);
        if (m_lines)
            m_lines->push_back({ line, std::string(spec.label), nameOf(spec, path), std::move(taken),
                spec.skipping, std::move(raw), spec.column() });
    }

private:
    struct Field
    {
        std::string text;
        int line;
    };

    // Comments ('*') and blank lines are passed over. When the file ends first, the value is what was
    // read last (empty, or a comment): no error here, the next plain read or number will fail.
    Field skippingRead()
    {
        if (m_reader.atEnd())
            return { std::string(), lineAfterEnd() };
        std::string text = core::readSkipping(m_reader);
        return { std::move(text), m_reader.fieldLine() };
    }

    Field plainRead(const LineSpec& spec, int path)
    {
        if (m_reader.atEnd()) {
            int line = lineAfterEnd();
            throw SettingsError(
                prefix(line) + "the file ends where " + describe(spec, path) + " should stand", line,
                std::string(spec.label));
        }
        std::string text = m_reader.readField();
        return { std::move(text), m_reader.fieldLine() };
    }

    // The line a read past the end stands on; a last line without a line end still counts as read.
    int lineAfterEnd() const { return std::max(m_reader.line(), m_reader.fieldLine() + 1); }

    static std::string prefix(int line)
    {
        return std::string(kSettingsFileName) + " line " + std::to_string(line) + ": ";
    }

    std::string nameOf(const LineSpec& spec, int path) const
    {
        std::string name(spec.name);
        if (path > 0)
            name.append("(").append(std::to_string(path)).append(")");
        return name;
    }

    // Applies the line's treatment, stores the result and returns it as text for the record.
    std::string store(const LineSpec& spec, int path, int line, const std::string& value)
    {
        Target target = spec.target(m_settings, path);
        auto fail = [&](const std::string& why) {
            return SettingsError(
                prefix(line) + describe(spec, path) + " " + why, line, std::string(spec.label));
        };
        switch (spec.treatment) {
        case Trimmed:
        case AsIs: {
            std::string& out = *std::get<std::string*>(target);
            out = spec.treatment == Trimmed ? core::trimmed(value) : value;
            return m_lines ? out : std::string();
        }
        case Yes: {
            bool& out = *std::get<bool*>(target);
            out = core::isYes(value);
            return out ? "True" : "False";
        }
        case Number: {
            std::optional<double> number = core::parseNumber(value);
            if (!number)
                throw fail("needs a number");
            if (!std::isfinite(*number) || std::fabs(*number) > FLT_MAX)
                throw fail("holds a number too large");
            float& out = *std::get<float*>(target);
            out = static_cast<float>(*number);
            return m_lines ? numberText(out) : std::string();
        }
        case WholeNumber: {
            double number = core::leadingNumber(value);
            std::optional<int16_t> whole;
            if (std::isfinite(number))
                whole = core::toInteger(number);
            if (!whole)
                throw fail("must lie between -32768 and 32767");
            int16_t& out = *std::get<int16_t*>(target);
            out = *whole;
            return m_lines ? std::to_string(out) : std::string();
        }
        }
        return std::string();
    }

    core::FieldReader& m_reader;
    Settings& m_settings;
    std::vector<SettingsLine>* m_lines;
};

void applyDefaults(Settings& s)
{
    // A display mode needs both its rate and its depth; a half-given one is taken from the other mode.
    if (!(s.deskBits > 0 && s.deskFreq > 0)) {
        s.deskBits = s.frontBits;
        s.deskFreq = s.frontFreq;
    }
    if (!(s.frontBits > 0 && s.frontFreq > 0)) {
        s.frontBits = s.deskBits;
        s.frontFreq = s.deskFreq;
    }
    if (s.artDir[1].empty())
        s.artDir[1] = s.mameDir;

    s.artDir[kImpactPath] = s.impactDir;
    s.artDir[kModelerPath] = s.modelerDir;
    s.artDir[kU64Path] = s.u64Dir;
    s.artDir[kVpPath] = s.vpDir;
    s.artDir[kS11Path] = s.s11Dir;
    s.artDir[kDaphnePath] = s.daphneDir;

    s.logoFile[kImpactPath] = "impact.gif";
    s.logoFile[kModelerPath] = "modeler.gif";
    s.logoFile[kU64Path] = "u64.gif";
    s.logoFile[kVpPath] = "vp.gif";
    s.logoFile[kS11Path] = "s11.gif";
    s.logoFile[kDaphnePath] = "daphne.gif";
    s.logoFile[kExtrasPath] = "extras.gif";

    if (s.emuExe[1].empty())
        s.emuExe[1] = "mame.exe";
    if (s.emuDir[1].empty())
        s.emuDir[1] = s.mameDir;

    // Paths 2 to 20 borrow what they leave out from path 1; the ROM folder, the full-path switch and the
    // options are theirs alone.
    for (int p = 2; p <= kUserPaths; ++p) {
        for (auto* values : { &s.pathName, &s.emuExe, &s.emuDir }) {
            if ((*values)[p].empty())
                (*values)[p] = (*values)[1];
        }
        if (s.artDir[p].empty())
            s.artDir[p] = s.artDir[1];
        if (s.logoFile[p].empty())
            s.logoFile[p] = s.logoFile[1];
    }
}

} // namespace

std::string settingsPath(const std::string& home)
{
    if (home.empty() || home.back() == '/')
        return home + kSettingsFileName;
    return home + "/" + kSettingsFileName;
}

bool endsInSeparator(const std::string& folder)
{
    return !folder.empty() && (folder.back() == '\\' || folder.back() == '/');
}

void OpenINI(const std::string& home, Settings& settings, std::vector<SettingsLine>* lines)
{
    if (lines)
        lines->clear();
    std::string path = settingsPath(home);
    std::optional<core::FieldReader> reader = platform::openFieldFile(path);
    if (!reader)
        throw SettingsError(std::string(kSettingsFileName) + ": cannot open " + path, 0, std::string());
    readSettings(*reader, settings, lines);
}

void readSettings(core::FieldReader& reader, Settings& settings, std::vector<SettingsLine>* lines)
{
    if (lines)
        lines->clear();
    IniReader ini(reader, settings, lines);
    for (int p = 1; p <= kUserPaths; ++p) {
        for (const LineSpec& spec : kBlockLines)
            ini.readLine(spec, p);
    }
    for (const LineSpec& spec : kTailLines)
        ini.readLine(spec, 0);
    applyDefaults(settings);
}

} // namespace ombrel::config
