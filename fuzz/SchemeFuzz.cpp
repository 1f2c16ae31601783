// Fuzz target of the reader of a skin's scheme.cfg: any bytes as the colour scheme.
#include "FuzzHome.h"

#include "browser/Theme.h"
#include "config/NumberText.h"
#include "core/FieldReader.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

using namespace ombrel;
using fuzz::fuzzCheck;

namespace {

browser::SchemeRead read(const std::string& bytes, browser::Scheme& scheme)
{
    core::FieldReader reader(bytes);
    browser::SchemeRead result = browser::readScheme(reader, scheme);
    for (uint32_t colour : { scheme.schemeBack, scheme.schemeList, scheme.schemeFore })
        fuzzCheck(colour <= 0xFFFFFF, "a colour with more than 24 bits");
    fuzzCheck(std::isfinite(scheme.schemeSize), "a font size that is no number");
    return result;
}

bool plainName(const std::string& name)
{
    return name.find_first_of("\",\r\n") == std::string::npos && !name.empty() && name.front() != ' '
        && name.front() != '\t';
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    browser::Scheme fresh;
    const browser::SchemeRead first = read(bytes, fresh);
    const browser::Scheme old { "Old", 9, 1, 2, 3 };
    browser::Scheme again = old;
    const browser::SchemeRead second = read(bytes, again);
    fuzzCheck(first.lines == second.lines && first.stop == second.stop, "the same file read differently");
    // What the read reached comes from the file; what it did not reach is what the scheme held.
    fuzzCheck((first.lines[0] ? fresh.schemeFont : old.schemeFont) == again.schemeFont, "font");
    fuzzCheck((first.lines[1] ? fresh.schemeSize : old.schemeSize) == again.schemeSize, "size");
    fuzzCheck((first.lines[2] ? fresh.schemeBack : old.schemeBack) == again.schemeBack, "back colour");
    fuzzCheck((first.lines[3] ? fresh.schemeList : old.schemeList) == again.schemeList, "list colour");
    fuzzCheck((first.lines[4] ? fresh.schemeFore : old.schemeFore) == again.schemeFore, "fore colour");
    fuzzCheck(first.stop.empty() == (first.lines[4] != 0), "a whole read with a stop, or a stop without one");

    // A complete scheme written back on one line reads the same.
    if (!first.stop.empty() || !plainName(fresh.schemeFont))
        return 0;
    const std::string line = fresh.schemeFont + "," + config::numberText(fresh.schemeSize) + ","
        + std::to_string(fresh.schemeBack) + "," + std::to_string(fresh.schemeList) + ","
        + std::to_string(fresh.schemeFore) + "\r\n";
    browser::Scheme back;
    fuzzCheck(read(line, back).stop.empty() && back == fresh, "a scheme written back reads differently");
    return 0;
}
