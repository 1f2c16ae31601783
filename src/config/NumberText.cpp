// NumberText: plain, shortest decimal forms of numbers for the cabinet's text files.
#include "config/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace ombrel::config {

namespace {

template <typename T> std::string plainShortest(T value)
{
    if (!std::isfinite(value) || value == 0)
        return "0";
    // The longest fixed form of a double is about 330 characters (the smallest subnormal).
    std::array<char, 400> buffer {};
    auto [end, error]
        = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
    if (error != std::errc {})
        return "0";
    return std::string(buffer.data(), end);
}

} // namespace

std::string numberText(double value)
{
    return plainShortest(value);
}

std::string numberText(float value)
{
    return plainShortest(value);
}

} // namespace ombrel::config
