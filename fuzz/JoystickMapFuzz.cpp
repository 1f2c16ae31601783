// Fuzz target of the reader of joystick.ini: any bytes as the stick's bindings.
#include "FuzzHome.h"

#include "core/FieldReader.h"
#include "input/JoystickMap.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>

using namespace ombrel;
using fuzz::fuzzCheck;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    core::FieldReader reader(bytes);
    input::JoystickMap map;
    (void)input::readJoyKeys(reader, map);
    for (const std::string& word : map.joyKeys) {
        fuzzCheck(word.empty() || (word.front() != ' ' && word.back() != ' '), "a word kept its blanks");
        (void)input::joyCommand(word);
    }
    input::checkExitbut(map);
    const auto mask = static_cast<uint16_t>(map.exitButton);
    fuzzCheck(mask == 0 || (std::has_single_bit(mask) && mask < (1u << input::kJoyButtons)),
        "the exit button is not one of the twelve buttons");
    return 0;
}
