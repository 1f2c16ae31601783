// Fuzz target of the reader of ombrel.ini: any bytes as the settings file.
#include "FuzzHome.h"

#include "config/SettingsFile.h"
#include "core/FieldReader.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

using namespace ombrel;
using fuzz::fuzzCheck;

namespace {

// Settings as a different file would have left them, every value set, for the second read to replace.
// Index 0 of the per-path arrays stays empty, as every read leaves it.
config::Settings filledSettings()
{
    config::Settings s;
    for (size_t p = 1; p < s.romDir.size(); ++p) {
        s.romDir[p] = s.emuExe[p] = s.pathName[p] = s.emuOpts[p] = s.emuDir[p] = "old\\";
        s.fullPath[p] = true;
    }
    std::fill(s.logoFile.begin() + 1, s.logoFile.end(), "old.gif");
    std::fill(s.artDir.begin() + 1, s.artDir.end(), "old\\");
    s.mameDir = s.impactDir = s.modelerDir = s.u64Dir = s.u64Dir2 = s.vpDir = s.s11Dir = s.daphneDir
        = "old\\";
    s.s11Opts = s.daphneOpts = "-old";
    s.impactNT = s.s11NewPlugins = s.tvOut = s.powerOff = true;
    s.scrollRate = s.scrollRate2 = 99;
    s.scrW = s.scrH = s.deskFreq = s.deskBits = s.frontFreq = s.frontBits = 7;
    return s;
}

// Reads the file; true when it was read to its end. The record of lines must follow the file: one
// entry per value at most, in the file's order.
bool read(const std::string& bytes, config::Settings& settings)
{
    core::FieldReader reader(bytes);
    std::vector<config::SettingsLine> lines;
    bool complete = true;
    int errorLine = 0;
    try {
        config::readSettings(reader, settings, &lines);
    } catch (const config::SettingsError& error) {
        complete = false;
        errorLine = error.line();
        fuzzCheck(error.line() >= 1, "a read error of an open file without its line");
    }
    fuzzCheck(lines.size() <= 20 * 8 + 22, "more values recorded than the file has lines");
    int line = 1;
    for (const config::SettingsLine& entry : lines) {
        fuzzCheck(entry.line >= line, "the recorded lines go back");
        line = entry.line;
    }
    fuzzCheck(complete || errorLine >= line, "the read error stands before a line that was read");
    for (float value : { settings.scrW, settings.scrH, settings.deskFreq, settings.deskBits,
             settings.frontFreq, settings.frontBits })
        fuzzCheck(std::isfinite(value), "a display value is not a finite number");
    return complete;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    config::Settings fresh;
    bool complete = read(bytes, fresh);
    // A file read to its end replaces every value, whatever an earlier read left.
    config::Settings reread = filledSettings();
    fuzzCheck(read(bytes, reread) == complete, "the same file read differently the second time");
    if (complete)
        fuzzCheck(reread == fresh, "a complete read left a value of the earlier one");
    return 0;
}
