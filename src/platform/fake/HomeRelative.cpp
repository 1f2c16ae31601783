// homeRelative: the program's folder taken out of paths and command lines for trace lines.
#include "platform/fake/HomeRelative.h"

namespace ombrel::platform::fake {

namespace {

bool startsPath(std::string_view text, size_t at)
{
    if (at == 0)
        return true;
    const char before = text[at - 1];
    return before == ' ' || before == '"' || before == '\'' || before == '=';
}

} // namespace

std::string homeRelative(std::string_view text, std::string_view home)
{
    if (home.empty())
        return std::string(text);
    std::string_view bare = home;
    if (bare.size() > 1 && bare.back() == '/')
        bare.remove_suffix(1);
    if (text == bare || text == home)
        return ".";

    std::string out;
    out.reserve(text.size());
    size_t i = 0;
    while (i < text.size()) {
        if (text.compare(i, home.size(), home) == 0 && startsPath(text, i)) {
            i += home.size();
            continue;
        }
        out += text[i++];
    }
    return out;
}

} // namespace ombrel::platform::fake
