// NumberText: numbers written the way the cabinet's text files hold them: "300", "-1", "0.5".
#pragma once

#include <string>

namespace ombrel::config {

// The shortest text that reads back as the same value, in plain decimal notation (never an exponent),
// with a full stop for the decimal point and a leading minus when negative. -0 is written "0"; a value
// that is not finite, which no file can hold, is written "0".
std::string numberText(double value);
// The same for a 32-bit value, shortest for its own precision (0.1f is "0.1", not "0.100000001").
std::string numberText(float value);

} // namespace ombrel::config
