// TraceDiff: the first difference of two traces, readable in a test log.
#include "TraceDiff.h"

#include <algorithm>
#include <fstream>

namespace ombrel::test {

std::string TraceDiff::describe(const std::vector<std::string>& expected, const std::vector<std::string>& actual,
                                size_t shown)
{
    size_t first = 0;
    while (first < expected.size() && first < actual.size() && expected[first] == actual[first])
        ++first;
    if (first == expected.size() && first == actual.size())
        return {};

    // The lines both traces end with are not part of the difference.
    size_t common = 0;
    while (common < expected.size() - first && common < actual.size() - first
           && expected[expected.size() - 1 - common] == actual[actual.size() - 1 - common])
        ++common;

    std::string out = "traces differ at line " + std::to_string(first + 1) + " (expected " +
        std::to_string(expected.size()) + " lines, got " + std::to_string(actual.size()) + ")\n";
    for (size_t i = first >= 3 ? first - 3 : 0; i < first; ++i)
        out += "  " + expected[i] + "\n";
    auto side = [&](const std::vector<std::string>& lines, const char* mark) {
        const size_t end = lines.size() - common;
        for (size_t i = first; i < std::min(end, first + shown); ++i)
            out += mark + lines[i] + "\n";
        if (end > first + shown)
            out += mark + std::string("... ") + std::to_string(end - first - shown) + " more\n";
    };
    side(expected, "- ");
    side(actual, "+ ");
    return out;
}

std::vector<std::string> TraceDiff::readLines(const std::string& path)
{
    std::vector<std::string> lines;
    std::ifstream in(path, std::ios::binary);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace ombrel::test
