// FieldReader: the field-by-field reading of the cabinet's text files, and the value treatments
// (trim, YES test, numbers) that the readers apply to what they read.
#include "core/FieldReader.h"

#include "core/AtomicFile.h"
#include "core/TextCodec.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>
#include <utility>

namespace ombrel::core {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}
bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
bool isLineEnd(char c)
{
    return c == '\r' || c == '\n';
}

// Line ends inside a stretch of text: CR, LF and CR LF each count once.
int countLineEnds(std::string_view text)
{
    int count = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r') {
            ++count;
            if (i + 1 < text.size() && text[i + 1] == '\n')
                ++i;
        } else if (text[i] == '\n') {
            ++count;
        }
    }
    return count;
}

// What a number scan found at the start of a text: its length (0 when the text does not begin with a
// number) and enough about its digits to tell, if the value is out of range, whether it was too large
// or too small.
struct NumberScan
{
    size_t length = 0;
    long long magnitude = 0; // roughly the power of ten of the value
    bool allZero = true;
};

// Optional sign, digits with an optional full stop and fraction (at least one digit in all), an
// optional exponent. Nothing else: no "inf", "nan" or hexadecimal, which no cabinet owner means.
NumberScan scanNumber(std::string_view s)
{
    NumberScan scan;
    size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-'))
        ++i;
    long long intDigits = 0; // significant digits before the point
    long long leadingFractionZeros = 0;
    bool seenDigit = false;
    for (; i < s.size() && isDigit(s[i]); ++i) {
        seenDigit = true;
        if (s[i] != '0' || intDigits > 0) {
            ++intDigits;
            scan.allZero = false;
        }
    }
    if (i < s.size() && s[i] == '.') {
        size_t j = i + 1;
        bool fractionDigit = false;
        for (; j < s.size() && isDigit(s[j]); ++j) {
            fractionDigit = true;
            if (s[j] != '0')
                scan.allZero = false;
            else if (scan.allZero)
                ++leadingFractionZeros;
        }
        if (seenDigit || fractionDigit) {
            seenDigit = true;
            i = j;
        }
    }
    if (!seenDigit)
        return {};
    long long exponent = 0;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        size_t j = i + 1;
        bool negative = false;
        if (j < s.size() && (s[j] == '+' || s[j] == '-'))
            negative = s[j++] == '-';
        size_t k = j;
        for (; k < s.size() && isDigit(s[k]); ++k) {
            if (exponent < 1'000'000'000)
                exponent = exponent * 10 + (s[k] - '0');
        }
        if (k > j) {
            i = k;
            if (negative)
                exponent = -exponent;
        }
    }
    scan.length = i;
    scan.magnitude = intDigits > 0 ? exponent + intDigits - 1 : exponent - leadingFractionZeros - 1;
    return scan;
}

// The value of a text that scanNumber accepted in full. Out of range gives an infinity or zero, like
// the conversions of the language do.
double convertNumber(std::string_view text, const NumberScan& scan)
{
    bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '+' || text.front() == '-'))
        text.remove_prefix(1);
    double value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    (void)end;
    if (error == std::errc::result_out_of_range)
        value = (scan.allZero || scan.magnitude < 0) ? 0.0 : std::numeric_limits<double>::infinity();
    else if (error != std::errc())
        value = 0;
    return negative ? -value : value;
}

} // namespace

FieldReader::FieldReader(std::string bytes)
    : m_data(std::move(bytes))
{
}

std::optional<FieldReader> FieldReader::open(const std::string& path)
{
    std::string bytes;
    if (!readFile(path, bytes))
        return std::nullopt;
    return FieldReader(std::move(bytes));
}

bool FieldReader::atEnd() const
{
    return m_pos >= m_data.size() && !m_emptyFieldPending;
}

void FieldReader::seek(size_t offset, int line)
{
    m_pos = offset < m_data.size() ? offset : m_data.size();
    m_line = line;
    m_emptyFieldPending = false;
}

void FieldReader::skipBlanks()
{
    while (m_pos < m_data.size() && isBlank(m_data[m_pos]))
        ++m_pos;
}

size_t FieldReader::findDelimiter(size_t from, bool stopAtBlank) const
{
    size_t i = from;
    while (i < m_data.size()) {
        char c = m_data[i];
        if (c == ',' || isLineEnd(c) || (stopAtBlank && isBlank(c)))
            break;
        ++i;
    }
    return i;
}

void FieldReader::consumeDelimiter()
{
    if (m_pos >= m_data.size())
        return;
    char c = m_data[m_pos];
    if (c == ',') {
        ++m_pos;
        m_emptyFieldPending = m_pos >= m_data.size();
    } else if (c == '\r') {
        ++m_pos;
        if (m_pos < m_data.size() && m_data[m_pos] == '\n')
            ++m_pos;
        ++m_line;
    } else if (c == '\n') {
        ++m_pos;
        ++m_line;
    }
}

std::string FieldReader::readRaw(bool stopAtBlank)
{
    if (atEnd())
        throw ReadError("the file ends too early", m_line);
    m_fieldLine = m_line;
    if (m_emptyFieldPending) {
        m_emptyFieldPending = false;
        return {};
    }
    skipBlanks();
    std::string field;
    if (m_pos < m_data.size() && m_data[m_pos] == '"') {
        size_t start = m_pos + 1;
        size_t close = m_data.find('"', start);
        size_t end = close == std::string::npos ? m_data.size() : close;
        field.assign(m_data, start, end - start);
        m_line += countLineEnds(field);
        // Whatever follows the closing quote on its line is not part of any field.
        m_pos = findDelimiter(close == std::string::npos ? end : close + 1, false);
    } else {
        size_t end = findDelimiter(m_pos, stopAtBlank);
        field.assign(m_data, m_pos, end - m_pos);
        m_pos = end;
        // A number is followed by blanks only up to its comma or line end; those belong to the delimiter,
        // so a trailing blank does not turn into an extra empty field.
        if (stopAtBlank) {
            skipBlanks();
            if (m_pos < m_data.size() && m_data[m_pos] != ',' && !isLineEnd(m_data[m_pos]))
                return field;
        }
    }
    consumeDelimiter();
    return field;
}

std::string FieldReader::readField()
{
    return readRaw(false);
}

double FieldReader::readNumber()
{
    std::string text = readRaw(true);
    if (auto value = parseNumber(text))
        return *value;
    throw ReadError("\"" + text + "\" is not a number", m_fieldLine);
}

bool FieldReader::readBool()
{
    std::string text = readRaw(true);
    std::string upper = asciiUpper(trimmed(text));
    if (upper == "#TRUE#")
        return true;
    if (upper == "#FALSE#")
        return false;
    if (auto value = parseNumber(text))
        return *value != 0;
    throw ReadError("\"" + text + "\" is not #TRUE# or #FALSE#", m_fieldLine);
}

std::string readSkipping(FieldReader& reader)
{
    std::string text;
    while ((text.empty() || text.front() == '*') && !reader.atEnd())
        text = reader.readField();
    return text;
}

std::string valueAt(std::string_view line, int column)
{
    size_t start = column > 1 ? static_cast<size_t>(column - 1) : 0;
    if (start >= line.size())
        return {};
    return std::string(line.substr(start));
}

std::string trimmed(std::string_view text)
{
    size_t first = 0;
    while (first < text.size() && isBlank(text[first]))
        ++first;
    size_t last = text.size();
    while (last > first && isBlank(text[last - 1]))
        --last;
    return std::string(text.substr(first, last - first));
}

bool isYes(std::string_view value)
{
    return asciiUpper(trimmed(value)) == "YES";
}

std::optional<double> parseNumber(std::string_view value)
{
    std::string text = trimmed(value);
    NumberScan scan = scanNumber(text);
    if (scan.length == 0 || scan.length != text.size())
        return std::nullopt;
    return convertNumber(text, scan);
}

double leadingNumber(std::string_view value)
{
    std::string text = trimmed(value);
    NumberScan scan = scanNumber(text);
    if (scan.length == 0)
        return 0;
    return convertNumber(std::string_view(text).substr(0, scan.length), scan);
}

} // namespace ombrel::core
