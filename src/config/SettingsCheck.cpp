// SettingsCheck: walks ombrel.ini with the program's own reader and reports what it takes and what
// looks wrong, so an owner can fix the file without starting the cabinet.
#include "config/SettingsCheck.h"

#include "config/SettingsFile.h"
#include "core/AtomicFile.h"
#include "core/FieldReader.h"
#include "core/TextCodec.h"
#include "platform/Files.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <vector>

namespace ombrel::config {

namespace {

struct Finding
{
    enum Kind {
        Shift, // a comment, blank line or comma that moves every line after it
        Value, // a folder or program that looks wrong
        Error, // the read itself failed; text is the reader's whole message
    };
    int line;
    std::string text;
    Kind kind = Value;
};

constexpr std::array<std::string_view, 11> kFolderNames { "romDir", "emuDir", "artDir", "mameDir",
    "impactDir", "modelerDir", "u64Dir", "u64Dir2", "vpDir", "s11Dir", "daphneDir" };

std::string_view baseName(std::string_view name)
{
    return name.substr(0, name.find('('));
}

bool isFolderValue(const SettingsLine& entry)
{
    return std::find(kFolderNames.begin(), kFolderNames.end(), baseName(entry.name)) != kFolderNames.end();
}

// A value as the report shows it: in double quotes, with its line ends made visible, so that a quoted
// value that runs over several lines of the file still takes one line of the report.
std::string quoted(const std::string& value)
{
    std::string shown = "\"";
    for (char c : core::toDisplayText(value)) {
        if (c == '\r')
            shown += "<CR>";
        else if (c == '\n')
            shown += "<LF>";
        else
            shown += c;
    }
    shown += '"';
    return shown;
}

std::string padded(std::string text, size_t width)
{
    if (text.size() < width)
        text.append(width - text.size(), ' ');
    return text;
}

// Lines holding a comma that ends a field: the rest of such a line is read as the next line. Follows the
// reading rule, so a comma inside a field that begins with a double quote is harmless.
std::vector<int> linesWithCommas(std::string_view bytes)
{
    std::vector<int> lines;
    int line = 1;
    size_t i = 0;
    auto atLineEnd = [&] { return bytes[i] == '\r' || bytes[i] == '\n'; };
    auto passLineEnd = [&] {
        if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n')
            ++i;
        ++i;
        ++line;
    };
    while (i < bytes.size()) {
        while (i < bytes.size() && (bytes[i] == ' ' || bytes[i] == '\t'))
            ++i;
        if (i < bytes.size() && bytes[i] == '"') {
            ++i;
            while (i < bytes.size() && bytes[i] != '"') {
                if (atLineEnd())
                    passLineEnd();
                else
                    ++i;
            }
            if (i < bytes.size())
                ++i;
        }
        while (i < bytes.size() && bytes[i] != ',' && !atLineEnd())
            ++i;
        if (i >= bytes.size())
            break;
        if (bytes[i] == ',') {
            if (lines.empty() || lines.back() != line)
                lines.push_back(line);
            ++i;
        } else {
            passLineEnd();
        }
    }
    return lines;
}

bool isAbsolute(const std::string& path)
{
    return !path.empty() && (path.front() == '/' || path.front() == '\\');
}

// A folder value as the program will open it: relative ones below the program's folder.
std::optional<std::string> resolveFolder(platform::Files& files, const std::string& home, std::string folder)
{
    while (folder.size() > 1 && endsInSeparator(folder))
        folder.pop_back();
    return files.resolve(isAbsolute(folder) ? folder : home + folder);
}

bool endsInExe(const std::string& name)
{
    return name.size() > 4 && core::asciiLower(std::string_view(name).substr(name.size() - 4)) == ".exe";
}

// The program a path starts, looked for the way the launcher does: a name with a folder in it is taken
// from the program's folder when relative; a bare name is looked for there, then on the search path;
// "x.exe" that is not there is tried as "x".
bool programFound(platform::Files& files, const std::string& home, const std::string& program,
    const std::string& searchPath)
{
    std::vector<std::string> names { program };
    if (endsInExe(program))
        names.push_back(program.substr(0, program.size() - 4));

    std::vector<std::string> folders;
    if (isAbsolute(program)) {
        folders.push_back("");
    } else {
        folders.push_back(home);
        if (program.find_first_of("/\\") == std::string::npos) {
            size_t start = 0;
            while (start <= searchPath.size()) {
                size_t end = std::min(searchPath.find(':', start), searchPath.size());
                if (end > start)
                    folders.push_back(searchPath.substr(start, end - start) + "/");
                start = end + 1;
            }
        }
    }
    for (const std::string& folder : folders) {
        for (const std::string& name : names) {
            if (files.fileExists(folder + name))
                return true;
        }
    }
    return false;
}

std::string describeLine(const SettingsLine& entry)
{
    return entry.label.empty() ? entry.name : entry.label + " (" + entry.name + ")";
}

void checkEntries(const std::vector<SettingsLine>& lines, platform::Files& files, const std::string& home,
    std::vector<Finding>& findings)
{
    for (const SettingsLine& entry : lines) {
        if (!entry.skipping) {
            bool comment = !entry.raw.empty() && entry.raw.front() == '*';
            // The unlabelled plug-in line may well be blank: that is simply "no".
            bool blank = entry.raw.empty() && !entry.label.empty();
            if (comment || blank)
                findings.push_back({ entry.line,
                    std::string(comment ? "a comment" : "a blank line") + " stands where "
                        + describeLine(entry)
                        + " is read; it is taken as the value and every line after it moves one place",
                    Finding::Shift });
        }
        // A double quote that opens a value and closes it on a later line takes the lines between into
        // it, so the lines after it move as they do behind a comma.
        if (entry.raw.find_first_of("\r\n") != std::string::npos)
            findings.push_back({ entry.line,
                describeLine(entry) + " " + quoted(core::valueAt(entry.raw, entry.column))
                    + " runs on past its line inside double quotes; the lines it takes in are part of it"
                      " and every line after it moves" });
        if (!isFolderValue(entry) || entry.value.empty())
            continue;
        if (!endsInSeparator(entry.value))
            findings.push_back(
                { entry.line, entry.name + " " + quoted(entry.value) + " lacks its trailing '\\' or '/'" });
        if (!resolveFolder(files, home, entry.value))
            findings.push_back(
                { entry.line, entry.name + " " + quoted(entry.value) + " is not a folder that exists" });
    }
}

void checkPrograms(const Settings& settings, const std::vector<SettingsLine>& lines, platform::Files& files,
    const std::string& home, const std::string& searchPath, std::vector<Finding>& findings)
{
    for (int p = 1; p <= kUserPaths; ++p) {
        if (settings.romDir[p].empty())
            continue; // a path that is off starts nothing
        std::string program = settings.emuDir[p] + settings.emuExe[p];
        if (programFound(files, home, program, searchPath))
            continue;
        std::string name = "emuExe(" + std::to_string(p) + ")";
        auto at
            = std::find_if(lines.begin(), lines.end(), [&](const SettingsLine& l) { return l.name == name; });
        findings.push_back({ at == lines.end() ? 0 : at->line,
            "path " + std::to_string(p) + " starts " + quoted(program) + ", which cannot be found" });
    }
}

// The file read as the program reads it, with every finding in the order of its lines.
struct CheckedFile
{
    std::string shownPath; // the file as found, or as looked for
    std::vector<SettingsLine> lines;
    std::vector<Finding> findings;
};

CheckedFile readAndCheck(const std::string& home, platform::Files& files, const std::string* searchPath)
{
    CheckedFile checked;
    std::string path = settingsPath(home);
    std::string folder = path.substr(0, path.size() - std::string_view(kSettingsFileName).size());
    Settings settings;
    bool complete = false;
    try {
        OpenINI(home, settings, &checked.lines);
        complete = true;
    } catch (const SettingsError& error) {
        checked.findings.push_back({ error.line(), error.what(), Finding::Error });
    }

    std::string bytes;
    std::optional<std::string> found = files.resolveFile(path);
    if (found && core::readFile(*found, bytes)) {
        for (int line : linesWithCommas(bytes))
            checked.findings.push_back(
                { line, "a comma ends the value here; the rest of the line is read as the next line",
                    Finding::Shift });
    }
    checkEntries(checked.lines, files, folder, checked.findings);
    if (complete && searchPath)
        checkPrograms(settings, checked.lines, files, folder, *searchPath, checked.findings);
    std::stable_sort(checked.findings.begin(), checked.findings.end(),
        [](const Finding& a, const Finding& b) { return a.line < b.line; });
    checked.shownPath = found ? *found : path;
    return checked;
}

} // namespace

SettingsCheck checkSettings(const std::string& home, platform::Files& files, const std::string& searchPath)
{
    const CheckedFile checked = readAndCheck(home, files, &searchPath);
    std::string text = std::string(kSettingsFileName) + ": " + checked.shownPath + "\n";
    for (const SettingsLine& entry : checked.lines) {
        text += "line " + padded(std::to_string(entry.line), 5)
            + padded(entry.label.empty() ? "(no label)" : entry.label, 17) + padded(entry.name, 16)
            + quoted(entry.value) + "\n";
    }
    const auto& findings = checked.findings;
    for (const Finding& finding : findings) {
        if (finding.kind == Finding::Error)
            text += "error: " + finding.text + "\n";
        else
            text += "warning: line " + std::to_string(finding.line) + ": " + finding.text + "\n";
    }
    if (findings.empty())
        text += "no problems found\n";
    else
        text += std::to_string(findings.size()) + (findings.size() == 1 ? " problem" : " problems")
            + " found\n";
    return { text, findings.empty() };
}

std::string firstSettingsProblem(const std::string& home, platform::Files& files)
{
    const CheckedFile checked = readAndCheck(home, files, nullptr);
    const auto& findings = checked.findings;
    auto error = std::find_if(
        findings.begin(), findings.end(), [](const Finding& f) { return f.kind == Finding::Error; });
    if (error == findings.end())
        return std::string();
    // A missing folder or a wrong program is no reason for the break, so only what shifts counts.
    auto shift = std::find_if(findings.begin(), findings.end(),
        [&](const Finding& f) { return f.kind == Finding::Shift && f.line <= error->line; });
    if (shift == findings.end())
        return error->text;
    return std::string(kSettingsFileName) + " line " + std::to_string(shift->line) + ": " + shift->text;
}

SettingsCheck checkSettings(const std::string& home)
{
    platform::DiskFiles files;
    const char* searchPath = std::getenv("PATH");
    return checkSettings(home, files, searchPath ? searchPath : "");
}

} // namespace ombrel::config
