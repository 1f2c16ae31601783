// IniSample: the line layout of a settings file, written out for tests.
#include "IniSample.h"

#include <algorithm>
#include <array>

namespace ombrel::test {

namespace {

constexpr std::array<const char*, 8> kBlockLabels {
    "Roms=", "Exec=", "FullPaths=", "PathName=", "Opts=", "Images=", "EmuFolder=", "ArtworkPath="
};

constexpr std::array<const char*, 22> kTailLabels { "MameRoot=", "ImpactDir=", "NTImpact=", "ModelerDir=",
    "U64Dir=", "U64Dir2=", "VPinballDir=", "S11Dir=", "",
    "S11Opt=", "DaphDir=", "DaphOpt=", "ScrollRateKeys=", "ScrollRateJoys=", "TVOutSwitch=", "ResX=", "ResY=",
    "Freq=", "Bits=", "Freq=", "Bits=", "ShutdownOnExit=" };

std::string blockLabel(int line)
{
    return kBlockLabels.at(static_cast<size_t>(line - 1));
}

std::string tailLabel(int line)
{
    return kTailLabels.at(static_cast<size_t>(line - 1));
}

} // namespace

IniSample::IniSample()
{
    for (int path = 1; path <= 20; ++path)
        for (int line = 1; line <= 8; ++line)
            lines.push_back(blockLabel(line));
    const char* values[] = { "", "", "NO", "", "", "", "", "", "NO", "", "", "", "75", "75", "NO", "0", "0",
        "0", "0", "0", "0", "NO" };
    for (int line = 1; line <= 22; ++line)
        lines.push_back(tailLabel(line) + values[line - 1]);
}

IniSample& IniSample::setBlock(int path, int line, std::string_view value)
{
    lines.at(blockIndex(path, line)) = blockLabel(line) + std::string(value);
    return *this;
}

IniSample& IniSample::setTail(int line, std::string_view value)
{
    lines.at(tailIndex(line)) = tailLabel(line) + std::string(value);
    return *this;
}

IniSample& IniSample::insertBefore(size_t index, std::string_view line)
{
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(index), std::string(line));
    return *this;
}

IniSample& IniSample::truncate(size_t count)
{
    lines.resize(std::min(count, lines.size()));
    return *this;
}

std::string IniSample::text() const
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

} // namespace ombrel::test
