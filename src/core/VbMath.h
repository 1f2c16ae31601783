// VbMath: the numeric rules the cabinet's logic was written against: rounding half to even, Int as
// floor, 16-bit Integer conversion, and colours as blue*65536 + green*256 + red.
#pragma once

#include <cstdint>
#include <optional>

namespace ombrel::core {

// Nearest whole number, a tie to the even neighbour (2.5 -> 2, 3.5 -> 4, -2.5 -> -2).
double roundHalfEven(double value);

// Int(): the largest whole number not above the value (Int(-1.5) = -2).
double vbInt(double value);

// CInt(): round half to even into a signed 16-bit value; nullopt on overflow (outside -32768..32767).
std::optional<int16_t> toInteger(double value);

// CLng(): the same into 32 bits.
std::optional<int32_t> toLong(double value);

// Colours are whole numbers blue*65536 + green*256 + red.
constexpr uint32_t rgb(int red, int green, int blue)
{
    return static_cast<uint32_t>((blue & 0xFF) << 16 | (green & 0xFF) << 8 | (red & 0xFF));
}
constexpr int redOf(uint32_t colour) { return static_cast<int>(colour & 0xFF); }
constexpr int greenOf(uint32_t colour) { return static_cast<int>((colour >> 8) & 0xFF); }
constexpr int blueOf(uint32_t colour) { return static_cast<int>((colour >> 16) & 0xFF); }

// A colour times a factor as one number: the 24-bit value (blue*65536 + green*256 + red) multiplied
// by the factor, rounded half to even and kept within 0..0xFFFFFF. Not channel by channel: a colour
// with more than one channel set changes hue on its way, as the cabinet's pulses do.
uint32_t scaleColour(uint32_t colour, double factor);

} // namespace ombrel::core
