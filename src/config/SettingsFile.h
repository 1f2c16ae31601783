// SettingsFile: reading ombrel.ini, a file whose values are found by their place and column, not by key.
#pragma once

#include "config/Settings.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace ombrel::core {
class FieldReader;
}

namespace ombrel::config {

// Why ombrel.ini could not be read to its end. line is 0 when the file could not be opened; label is
// the label that belongs on the failing line ("ResY="), empty for the unlabelled plug-in line.
class SettingsError : public std::runtime_error
{
public:
    SettingsError(const std::string& message, int line, std::string label)
        : std::runtime_error(message)
        , m_line(line)
        , m_label(std::move(label))
    {
    }
    int line() const { return m_line; }
    const std::string& label() const { return m_label; }

private:
    int m_line;
    std::string m_label;
};

// Where one value of the file came from, kept for `ombrel --check`.
struct SettingsLine
{
    int line = 0; // 1-based line of the file the value was taken from
    std::string label; // the label this line is meant to carry ("Roms=")
    std::string name; // the value's name ("romDir(3)", "scrH")
    std::string value; // the value taken, as text (True/False for YES tests)
    bool skipping = false; // comments and blank lines may stand before this line
    std::string raw; // the whole field as read, label included
    int column = 1; // where the value starts in raw
};

// The file's name in the program's folder.
inline constexpr const char* kSettingsFileName = "ombrel.ini";

// Reads <home>ombrel.ini into settings and applies the defaults. Each value is overwritten as its line
// is read, so a successful call replaces everything a previous call left. On failure the values read
// before the failing line stand and the rest keep what they held; SettingsError says where and why.
// When lines is given it is cleared and receives one entry per value read.
void OpenINI(const std::string& home, Settings& settings, std::vector<SettingsLine>* lines = nullptr);

// The same on a file already opened: reads every line from the reader's place and applies the defaults.
void readSettings(core::FieldReader& reader, Settings& settings, std::vector<SettingsLine>* lines = nullptr);

// The settings file's path for a program folder (a missing trailing '/' is supplied).
std::string settingsPath(const std::string& home);

// True for a folder value that can be joined to a name: it ends in '\' or '/'.
bool endsInSeparator(const std::string& folder);

} // namespace ombrel::config
