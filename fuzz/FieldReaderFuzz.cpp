// Fuzz target of the field reader and its value treatments: any bytes are a file that every reader
// of the cabinet may be given.
#include "FuzzHome.h"

#include "core/FieldReader.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

using namespace ombrel;
using fuzz::fuzzCheck;

namespace {

// The treatments the readers apply to a field, with what must hold between them.
void treat(const std::string& field)
{
    std::string trimmed = core::trimmed(field);
    fuzzCheck(trimmed.size() <= field.size(), "trimming made a field longer");
    fuzzCheck(core::trimmed(trimmed) == trimmed, "trimming twice changed the value");
    for (int column : { 1, 6, 16 }) {
        size_t skipped = static_cast<size_t>(column - 1);
        size_t expected = field.size() > skipped ? field.size() - skipped : 0;
        fuzzCheck(core::valueAt(field, column).size() == expected, "a value is not the rest of its line");
    }
    (void)core::isYes(field);
    double leading = core::leadingNumber(field);
    fuzzCheck(!std::isnan(leading), "a leading number came out as NaN");
    if (auto number = core::parseNumber(field)) {
        fuzzCheck(!std::isnan(*number), "a number came out as NaN");
        fuzzCheck(*number == leading, "a whole number and its leading number differ");
    }
}

struct Place
{
    size_t offset;
    int line;
    std::string field;
};

// Plain fields to the end. Each read must move on, so n bytes give at most n + 1 fields; the line
// count never goes back; and a jump back to a place read earlier gives the same field again.
void readAllFields(const std::string& bytes)
{
    core::FieldReader reader(bytes);
    std::vector<Place> places;
    int line = 1;
    while (!reader.atEnd()) {
        fuzzCheck(places.size() <= bytes.size(), "more fields than bytes: a read did not move on");
        Place place { reader.offset(), reader.line(), {} };
        place.field = reader.readField();
        fuzzCheck(place.field.size() <= bytes.size(), "a field longer than the file");
        fuzzCheck(reader.line() >= line && reader.fieldLine() >= place.line, "the line count went back");
        line = reader.line();
        treat(place.field);
        places.push_back(std::move(place));
    }
    bool threw = false;
    try {
        reader.readField();
    } catch (const core::ReadError&) {
        threw = true;
    }
    fuzzCheck(threw, "a read past the end did not fail");

    // A few places, not all: the check would otherwise cost a look at each byte per field.
    for (size_t i = 0; i < places.size(); i += 1 + places.size() / 8) {
        const Place& place = places[i];
        if (place.offset >= bytes.size())
            continue; // the empty field behind a final comma is not a place one can jump to
        reader.seek(place.offset, place.line);
        fuzzCheck(reader.readField() == place.field, "a jump back read a different field");
    }
}

// Numbers, Booleans, plain and skipping reads mixed, as ombrel.cfg and ombrel.ini read them; a value
// of the wrong kind fails that read only.
void readMixed(const std::string& bytes)
{
    core::FieldReader reader(bytes);
    size_t reads = 0;
    while (!reader.atEnd()) {
        fuzzCheck(++reads <= bytes.size() + 1, "more reads than bytes: a read did not move on");
        size_t before = reader.offset();
        try {
            switch (reads % 4) {
            case 0:
                fuzzCheck(!std::isnan(reader.readNumber()), "a number field came out as NaN");
                break;
            case 1:
                (void)reader.readBool();
                break;
            case 2:
                (void)core::readSkipping(reader);
                break;
            default:
                (void)reader.readField();
                break;
            }
        } catch (const core::ReadError& error) {
            fuzzCheck(error.line() >= 1, "a read error without its line");
        }
        fuzzCheck(reader.offset() >= before, "a read moved back");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    readAllFields(bytes);
    readMixed(bytes);
    return 0;
}
