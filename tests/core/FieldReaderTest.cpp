// Tests of the field-by-field reading of text files: delimiters, quotes, line ends, the end of the file,
// number and Boolean fields, and the skipping read.
#include "core/FieldReader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ombrel::core {
namespace {

std::vector<std::string> allFields(FieldReader& reader)
{
    std::vector<std::string> fields;
    while (!reader.atEnd() && fields.size() < 100)
        fields.push_back(reader.readField());
    return fields;
}

TEST(FieldReader, SplitsFieldsByTheRule)
{
    const std::pair<std::string, std::vector<std::string>> rows[] = {
        { "a\r\nb\r\n", { "a", "b" } }, // CR LF is one line end, and none follows the last
        { "a\rb\r", { "a", "b" } },
        { "a\n\rb", { "a", "", "b" } }, // LF CR is two
        { "  \t\r\nx", { "", "x" } }, // a line of blanks is an empty field
        { "", {} },
        { " \t a b  ,  c\r\n", { "a b  ", "c" } }, // leading blanks skipped, trailing kept
        { "\"a,b\",c\r\n", { "a,b", "c" } },
        { "\"a\r\nb\"\r\nc", { "a\r\nb", "c" } },
        { "\"a\" junk,b\r\n", { "a", "b" } }, // text after the closing quote dropped
        { "\"abc\r\ndef", { "abc\r\ndef" } }, // an unclosed quote runs to the end
        { "ab\"c,d", { "ab\"c", "d" } },
    };
    for (const auto& [input, fields] : rows) {
        SCOPED_TRACE(input);
        FieldReader reader(input);
        EXPECT_EQ(allFields(reader), fields);
        EXPECT_THROW(reader.readField(), ReadError);
    }
}

TEST(FieldReader, CountsLinesForMessages)
{
    // Each field and the line it begins on; a quoted field carries its line ends with it.
    FieldReader reader("a\r\n\"b\r\nc\"\r\nd,e\rf\n\ng\r\n");
    for (const auto& [field, line] : { std::pair<std::string, int> { "a", 1 }, { "b\r\nc", 2 }, { "d", 4 },
             { "e", 4 }, { "f", 5 }, { "", 6 }, { "g", 7 } }) {
        EXPECT_EQ(reader.readField(), field);
        EXPECT_EQ(reader.fieldLine(), line) << field;
    }
    try {
        reader.readField();
        FAIL() << "read past the end";
    } catch (const ReadError& error) {
        EXPECT_EQ(error.line(), 8);
    }
}

TEST(FieldReader, ReadsNumberAndBooleanFields)
{
    // A blank ends a number, trailing blanks are no extra field, a number may be quoted.
    FieldReader numbers("1 2,3\r\n1.5  \r\n\"42\" \r\n");
    for (double number : { 1.0, 2.0, 3.0, 1.5, 42.0 })
        EXPECT_EQ(numbers.readNumber(), number);
    EXPECT_TRUE(numbers.atEnd());
    // What is not a number is an error on its own line.
    for (const std::string input : { "abc\r\n", ",5", "\r\n", "#TRUE#", "12px", "" }) {
        SCOPED_TRACE(input);
        FieldReader reader("1\r\n" + input);
        reader.readNumber();
        try {
            reader.readNumber();
            FAIL() << "no error";
        } catch (const ReadError& error) {
            EXPECT_EQ(error.line(), 2);
        }
    }

    FieldReader booleans("#TRUE#\r\n#false#\r\n#FALSE# \r\n-1,0\r\nyes\r\n");
    for (bool value : { true, false, false, true, false })
        EXPECT_EQ(booleans.readBool(), value);
    EXPECT_THROW(booleans.readBool(), ReadError);
}

TEST(FieldReader, SkippingReadPassesCommentsAndBlankLines)
{
    // The input, what the skipping read gives, and whether the file is then at its end.
    const std::tuple<std::string, std::string, bool> rows[] = {
        { "* one\r\n\r\n*two\r\n  *three\r\nRoms=x\r\nnext", "Roms=x", false },
        { "* a\r\n* b\r\n", "* b", true },
        { "", "", true },
        { "* a, b\r\nv", "b", false },
    };
    for (const auto& [input, value, atEnd] : rows) {
        FieldReader reader(input);
        EXPECT_EQ(readSkipping(reader), value) << input;
        EXPECT_EQ(reader.atEnd(), atEnd) << input;
    }
}

} // namespace
} // namespace ombrel::core
