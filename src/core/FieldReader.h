// FieldReader: the one reading rule shared by every text file of the cabinet (settings, saved
// state, lists, key map, skins): a file is a stream of fields, each ending at a comma or a line end.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace ombrel::core {

// Thrown when a read needs a field and the file has none left, or a number field holds no number.
class ReadError : public std::runtime_error {
public:
    ReadError(const std::string& what, int line)
        : std::runtime_error(what)
        , m_line(line)
    {
    }
    // 1-based line of the file where the failing read stood.
    int line() const { return m_line; }

private:
    int m_line;
};

class FieldReader {
public:
    // Takes the whole file's bytes. Text stays in bytes; nothing is decoded.
    explicit FieldReader(std::string bytes);
    // Reads the file; nullopt when it cannot be opened.
    static std::optional<FieldReader> open(const std::string& path);

    // True when nothing is left to read (the next readField would throw).
    bool atEnd() const;

    // One field by the rule: blanks and tabs skipped; a leading double quote takes the text up to the
    // next quote (commas and line ends included) and drops the rest up to the delimiter; otherwise up to
    // the next comma or line end (CR, LF, CR LF). The delimiter is consumed. Throws ReadError at the end.
    std::string readField();

    // A number field: like readField, but the field also ends at a blank. Throws ReadError if the text
    // is not a number (an empty field included).
    double readNumber();

    // A Boolean field in the forms #TRUE# / #FALSE# (case-insensitive); also accepts a number (non-zero
    // is true). Throws ReadError otherwise.
    bool readBool();

    // 1-based line number where the next field starts.
    int line() const { return m_line; }
    // 1-based line where the field most recently read began (0 before the first read), for messages
    // about a value that was read but did not make sense.
    int fieldLine() const { return m_fieldLine; }

    // Byte offset of the next field, and a jump back to one, so an index of a large file can return to
    // a place found earlier. The line given is the line of that offset.
    size_t offset() const { return m_pos; }
    void seek(size_t offset, int line);

private:
    // A field by the rule; with stopAtBlank, an unquoted field also ends at a blank or tab.
    std::string readRaw(bool stopAtBlank);
    void skipBlanks();
    void consumeDelimiter();
    size_t findDelimiter(size_t from, bool stopAtBlank) const;

    std::string m_data;
    size_t m_pos = 0;
    int m_line = 1;
    int m_fieldLine = 0;
    // A comma that ends the file still has an empty field behind it on its line.
    bool m_emptyFieldPending = false;
};

// The "skipping read": read fields while the text is empty or begins with '*', until the file ends;
// the end of the file ends the loop and the last text read (empty or a comment) is the result. It never
// throws: at the end of the file the result is simply empty (or the last comment read).
std::string readSkipping(FieldReader& reader);

// Value of a line from a 1-based column to its end; empty when the column is past the end.
std::string valueAt(std::string_view line, int column);

// Trim blanks and tabs at both ends.
std::string trimmed(std::string_view text);

// "YES test": trimmed, upper-cased, equal to "YES".
bool isYes(std::string_view value);

// "number" treatment: the trimmed value as a number; nullopt if it is not one (empty included).
// Accepts what a cabinet owner writes: optional sign, digits, an optional full stop and fraction,
// an optional exponent.
std::optional<double> parseNumber(std::string_view value);

// The leading number of the trimmed value, ignoring any rest; 0 when it does not begin with one.
double leadingNumber(std::string_view value);

} // namespace ombrel::core
