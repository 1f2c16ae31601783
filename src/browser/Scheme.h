// Scheme: the skin's font and colours, which every form takes its look from.
#pragma once

#include <cstdint>
#include <string>

namespace ombrel::browser {

// The five values of scheme.cfg. Before any skin has been read they are empty: colours 0 (black),
// size 0 (which a label refuses, so it keeps its design size) and no font name. A read that stops
// early leaves the values it did not reach as they were, so a rebuilt browser keeps the last skin's.
// Colours are blue*65536 + green*256 + red.
struct Scheme
{
    std::string schemeFont; // font name
    double schemeSize = 0; // points
    uint32_t schemeBack = 0; // the forms' background, and the middle row's text in a built strip
    uint32_t schemeList = 0; // the list's text
    uint32_t schemeFore = 0; // captions, the selection and its pulse

    bool operator==(const Scheme&) const = default;
};

} // namespace ombrel::browser
