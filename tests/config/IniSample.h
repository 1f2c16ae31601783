// IniSample: builds ombrel.ini files for tests, line by line, from the labels a cabinet owner writes.
#pragma once

#include "TempHome.h"

#include <string>
#include <string_view>
#include <vector>

namespace ombrel::test {

// A complete settings file: 20 blocks of 8 lines, then the 22 closing lines. Every line starts as its
// label with an empty value, except the ones that must hold something (YES switches "NO", numbers).
class IniSample
{
public:
    IniSample();

    // Index into lines of line 1..8 of a path's block, and of closing line 1..22 (valid until a line
    // is inserted or removed before it).
    static size_t blockIndex(int path, int line) { return static_cast<size_t>((path - 1) * 8 + line - 1); }
    static size_t tailIndex(int line) { return static_cast<size_t>(160 + line - 1); }

    // The line as its label followed by value.
    IniSample& setBlock(int path, int line, std::string_view value);
    IniSample& setTail(int line, std::string_view value);
    IniSample& insertBefore(size_t index, std::string_view line);
    IniSample& truncate(size_t count);

    std::string text() const; // CR LF line ends
    std::string writeTo(const TempHome& home) const { return home.write("ombrel.ini", text()); }

    std::vector<std::string> lines;
};

} // namespace ombrel::test
