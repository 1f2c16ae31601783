// Theme: the skin's colour scheme and font, which every form takes its look from.
#pragma once

#include <cstdint>
#include <string>

namespace ombrel::browser {

struct Scheme {
    std::string schemeFont = "Arial";
    double schemeSize = 12;
    uint32_t schemeBack = 0; // background of the forms
    uint32_t schemeList = 0xFFFFFF; // the list's text
    uint32_t schemeFore = 0x00FFFF; // the selection's pulse and captions
};

} // namespace ombrel::browser
