// IniSample: the line layout of a settings file, written out for tests.
#include "IniSample.h"

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

} // namespace

std::string IniSample::blockLabel(int line)
{
    return kBlockLabels.at(static_cast<size_t>(line - 1));
}

std::string IniSample::tailLabel(int line)
{
    return kTailLabels.at(static_cast<size_t>(line - 1));
}

IniSample::IniSample()
{
    for (int path = 1; path <= 20; ++path) {
        for (int line = 1; line <= 8; ++line)
            lines.push_back(blockLabel(line));
    }
    for (int line = 1; line <= 22; ++line)
        lines.push_back(tailLabel(line));
    setTail(3, "NO").setTail(9, "NO").setTail(13, "75").setTail(14, "75").setTail(15, "NO");
    for (int line = 16; line <= 21; ++line)
        setTail(line, "0");
    setTail(22, "NO");
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
    if (count < lines.size())
        lines.resize(count);
    return *this;
}

std::string IniSample::text(std::string_view lineEnd) const
{
    std::string text;
    for (const std::string& line : lines)
        text += line + std::string(lineEnd);
    return text;
}

std::string IniSample::writeTo(const TempHome& home, std::string_view lineEnd) const
{
    return home.write("ombrel.ini", text(lineEnd));
}

} // namespace ombrel::test
