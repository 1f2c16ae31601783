// DumpLine: one line of a replay dump, built as a kind, an optional name, and "key value" pairs.
#pragma once

#include <concepts>
#include <optional>
#include <string>
#include <string_view>

namespace ombrel::startup {

// A value is a number, a word, or text in double quotes. Quoted text is escaped so that any bytes read
// back exactly from their one line: \" and \\ for a quote and a backslash, \n \r \t and \xHH for other
// control characters, and \xHH for every byte of 0x80 and above when the text is not valid UTF-8 (a
// Windows-1252 caption), so the dump stays UTF-8.
class DumpLine
{
public:
    explicit DumpLine(std::string_view kind)
        : m_text(kind)
    {
    }
    DumpLine(std::string_view kind, std::string_view name);

    DumpLine& text(std::string_view key, std::string_view value);
    DumpLine& word(std::string_view key, std::string_view value);
    DumpLine& flag(std::string_view key, bool value) { return word(key, value ? "1" : "0"); }
    template <class T>
    requires std::integral<T> || std::floating_point<T> DumpLine& number(std::string_view key, T value)
    {
        if constexpr (std::same_as<T, bool>)
            return flag(key, value);
        else if constexpr (std::integral<T>)
            return word(key, numberText(static_cast<long long>(value)));
        else
            return word(key, numberText(value));
    }
    // An Integer that may hold no value yet: the word "empty" then.
    template <class T> DumpLine& number(std::string_view key, const std::optional<T>& value)
    {
        return value ? number(key, *value) : word(key, "empty");
    }

    const std::string& str() const { return m_text; }
    operator std::string() const { return m_text; }

private:
    static std::string numberText(long long value);
    static std::string numberText(double value);
    static std::string numberText(float value);

    std::string m_text;
};

// Text in double quotes, escaped as above.
std::string quotedDumpText(std::string_view text);

} // namespace ombrel::startup
