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

struct FieldCase
{
    const char* name;
    std::string input;
    std::vector<std::string> fields;
};

TEST(FieldReader, SplitsFieldsByTheRule)
{
    const FieldCase cases[] = {
        { "cr lf is one line end, none after the last", "a\r\nb\r\n", { "a", "b" } },
        { "lone cr line ends", "a\rb\r", { "a", "b" } },
        { "lf cr is two line ends", "a\n\rb", { "a", "", "b" } },
        { "empty line gives an empty field", "a\r\n\r\nb\r\n", { "a", "", "b" } },
        { "line of blanks gives an empty field", "  \t\r\nx", { "", "x" } },
        { "empty file", "", {} },
        { "commas split a line", "a,b,c\r\n", { "a", "b", "c" } },
        { "leading blanks and tabs skipped, trailing kept", " \t a b  ,  c\r\n", { "a b  ", "c" } },
        { "quoted field keeps commas", "\"a,b\",c\r\n", { "a,b", "c" } },
        { "quoted field spans a line end", "\"a\r\nb\"\r\nc", { "a\r\nb", "c" } },
        { "text after the closing quote dropped", "\"a\" junk,b\r\n", { "a", "b" } },
        { "unclosed quote runs to the end", "\"abc\r\ndef", { "abc\r\ndef" } },
        { "quote inside a field is text", "ab\"c,d", { "ab\"c", "d" } },
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        FieldReader reader(row.input);
        EXPECT_EQ(allFields(reader), row.fields);
        EXPECT_THROW(reader.readField(), ReadError);
    }
}

TEST(FieldReader, CountsLinesForMessagesAndSeeksBack)
{
    // Fields and the line each begins on; a quoted field carries its line ends with it.
    FieldReader reader("a\r\n\"b\r\nc\"\r\nd,e\rf\n\ng\r\n");
    const std::pair<std::string, int> expected[] = {
        { "a", 1 },
        { "b\r\nc", 2 },
        { "d", 4 },
        { "e", 4 },
        { "f", 5 },
        { "", 6 },
        { "g", 7 },
    };
    size_t offsetOfE = 0;
    for (const auto& [field, line] : expected) {
        SCOPED_TRACE(field);
        EXPECT_EQ(reader.line(), line);
        if (field == "e")
            offsetOfE = reader.offset();
        EXPECT_EQ(reader.readField(), field);
        EXPECT_EQ(reader.fieldLine(), line);
    }
    try {
        reader.readField();
        FAIL() << "read past the end";
    } catch (const ReadError& error) {
        EXPECT_EQ(error.line(), 8);
    }
    // An index of a large file returns to a place it found earlier.
    reader.seek(offsetOfE, 4);
    EXPECT_EQ(reader.readField(), "e");
    EXPECT_EQ(reader.readField(), "f");
    EXPECT_EQ(reader.fieldLine(), 5);
}

TEST(FieldReader, ReadsNumberAndBooleanFields)
{
    struct Case
    {
        const char* name;
        std::string input;
        std::vector<double> numbers; // read one after the other; then the reader is at the end
    };
    const Case cases[] = {
        { "blank ends a number", "1 2,3\r\n", { 1, 2, 3 } },
        { "trailing blanks are no extra field", "1.5  \r\n2 \r\n", { 1.5, 2 } },
        { "quoted number", "\"42\"\r\n", { 42 } },
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        FieldReader reader(row.input);
        for (double number : row.numbers)
            EXPECT_EQ(reader.readNumber(), number);
        EXPECT_TRUE(reader.atEnd());
    }
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
    struct Case
    {
        const char* name;
        std::string input;
        std::string value; // what the skipping read gives
        bool atEndAfter;
    };
    const Case cases[] = {
        { "comments and blank lines", "* one\r\n\r\n*two\r\n  *three\r\nRoms=x\r\nnext", "Roms=x", false },
        { "only comments: the last one", "* a\r\n* b\r\n", "* b", true },
        { "file already at its end", "", "", true },
        { "a comma ends a comment", "* a, b\r\nv", "b", false },
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        FieldReader reader(row.input);
        EXPECT_EQ(readSkipping(reader), row.value);
        EXPECT_EQ(reader.atEnd(), row.atEndAfter);
    }
}

} // namespace
} // namespace ombrel::core
