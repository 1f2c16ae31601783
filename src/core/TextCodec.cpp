// TextCodec: telling UTF-8 from Windows-1252 text and turning either into UTF-8 for the screen.
#include "core/TextCodec.h"

#include <array>
#include <cstdint>

namespace ombrel::core {

namespace {

// Code points of the bytes 0x80 to 0x9F in Windows-1252. The five bytes it leaves undefined keep their
// own value, so no byte is ever lost from what is shown.
constexpr std::array<char32_t, 32> kCp1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, // 80-87
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F, // 88-8F
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, // 90-97
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178, // 98-9F
};

void appendUtf8(std::string& out, char32_t code)
{
    auto put = [&out](uint32_t byte) { out.push_back(static_cast<char>(static_cast<unsigned char>(byte))); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | (code >> 6));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xE0 | (code >> 12));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

} // namespace

bool isValidUtf8(std::string_view bytes)
{
    size_t i = 0;
    while (i < bytes.size()) {
        auto lead = static_cast<unsigned char>(bytes[i]);
        if (lead < 0x80) {
            ++i;
            continue;
        }
        size_t extra;
        // The allowed range of the second byte rules out overlong forms, surrogates and code points
        // above U+10FFFF in one place.
        unsigned char low = 0x80, high = 0xBF;
        if (lead >= 0xC2 && lead <= 0xDF) {
            extra = 1;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            extra = 2;
            if (lead == 0xE0)
                low = 0xA0;
            else if (lead == 0xED)
                high = 0x9F;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            extra = 3;
            if (lead == 0xF0)
                low = 0x90;
            else if (lead == 0xF4)
                high = 0x8F;
        } else {
            return false;
        }
        if (bytes.size() - i <= extra)
            return false;
        auto second = static_cast<unsigned char>(bytes[i + 1]);
        if (second < low || second > high)
            return false;
        for (size_t k = 2; k <= extra; ++k) {
            auto next = static_cast<unsigned char>(bytes[i + k]);
            if (next < 0x80 || next > 0xBF)
                return false;
        }
        i += extra + 1;
    }
    return true;
}

std::string toDisplayText(std::string_view bytes)
{
    if (isValidUtf8(bytes))
        return std::string(bytes);
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 2);
    for (char c : bytes) {
        auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80 && byte <= 0x9F)
            appendUtf8(out, kCp1252High[byte - 0x80u]);
        else
            appendUtf8(out, byte); // the rest of Windows-1252 is Latin-1
    }
    return out;
}

std::string asciiUpper(std::string_view text)
{
    std::string out(text);
    for (char& c : out) {
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    }
    return out;
}

std::string asciiLower(std::string_view text)
{
    std::string out(text);
    for (char& c : out) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return out;
}

void appendEscaped(std::string& out, std::string_view text, bool quoted, bool highBytes)
{
    constexpr char kHex[] = "0123456789ABCDEF";
    for (const char c : text) {
        const auto u = static_cast<unsigned char>(c);
        if (quoted && (c == '"' || c == '\\')) {
            out += '\\';
            out += c;
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\r') {
            out += "\\r";
        } else if (c == '\t') {
            out += "\\t";
        } else if (u < 0x20 || u == 0x7F || (u >= 0x80 && highBytes)) {
            out += "\\x";
            out += kHex[u >> 4];
            out += kHex[u & 15];
        } else {
            out += c;
        }
    }
}

} // namespace ombrel::core
