// TraceDiff: compares two traces line by line and says where they part, as -/+ lines.
#pragma once

#include <string>
#include <vector>

namespace ombrel::test {

class TraceDiff {
public:
    // Empty when the lines are equal. Otherwise the first differing line's number, a few lines before it
    // for context, then the differing stretch (up to the lines both end with, at most shown lines of
    // each) with the expected lines as "-" and the actual ones as "+".
    static std::string describe(const std::vector<std::string>& expected, const std::vector<std::string>& actual,
                                size_t shown = 8);
    // The lines of a file ('\r' before '\n' dropped); empty when it cannot be read.
    static std::vector<std::string> readLines(const std::string& path);
};

} // namespace ombrel::test
