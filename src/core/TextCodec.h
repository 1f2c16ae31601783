// TextCodec: files are bytes; what is shown is UTF-8 when the bytes are valid UTF-8, else Windows-1252.
#pragma once

#include <string>
#include <string_view>

namespace ombrel::core {

bool isValidUtf8(std::string_view bytes);

// Bytes as text to show, in UTF-8: unchanged when valid UTF-8, else decoded from Windows-1252
// (the five undefined bytes 0x81 0x8D 0x8F 0x90 0x9D map to the C1 controls of the same number).
std::string toDisplayText(std::string_view bytes);

// Appends text so that it stays on one line of a log: line feeds, carriage returns and tabs as \n, \r
// and \t, any other control character as \xHH. quoted also writes '"' and '\' as \" and \\, so text
// between double quotes reads back exactly; highBytes writes every byte from 0x80 up as \xHH too.
void appendEscaped(std::string& out, std::string_view text, bool quoted = false, bool highBytes = false);

// Upper case of ASCII letters only, as the cabinet's comparisons of names and keys need.
std::string asciiUpper(std::string_view text);
std::string asciiLower(std::string_view text);

} // namespace ombrel::core
