// Fuzz target of the reader of omkeys.cfg: any bytes as the key map.
#include "FuzzHome.h"

#include "core/FieldReader.h"
#include "input/KeyMap.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace ombrel;
using fuzz::fuzzCheck;

namespace {

input::KeyMap filledKeys()
{
    input::KeyMap keys;
    int16_t code = 200;
    for (input::KeyCode input::KeyMap::*key : input::kKeyFileOrder)
        keys.*key = code++;
    return keys;
}

bool read(const std::string& bytes, input::KeyMap& keys)
{
    core::FieldReader reader(bytes);
    const bool complete = input::readKeys(reader, keys).empty();
    // The menu must stay within reach: a map that could not be read whole falls back to Tab.
    fuzzCheck(complete || keys.keyConfig == input::kTabKey, "a damaged key map left the menu without Tab");
    return complete;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    input::KeyMap fresh;
    const bool complete = read(bytes, fresh);
    input::KeyMap reread = filledKeys();
    fuzzCheck(read(bytes, reread) == complete, "the same file read differently the second time");
    if (!complete)
        return 0;
    fuzzCheck(reread == fresh, "a complete read left a key of the earlier one");
    // What the program writes at exit, it reads back the same at the next start.
    input::KeyMap again = filledKeys();
    fuzzCheck(read(input::formatKeys(fresh), again), "the written key map cannot be read back");
    fuzzCheck(again == fresh, "the written key map reads back different keys");
    return 0;
}
