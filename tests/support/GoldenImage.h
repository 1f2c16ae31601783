// GoldenImage: compares a screenshot with its reference picture, allowing for the small differences of
// font rasterisation, and keeps the evidence of a mismatch.
#pragma once

#include <string>

namespace ombrel::test {

class GoldenImage {
public:
    // Pixels this close (squared distance of red, green and blue) count as equal...
    static constexpr int kPixelTolerance = 3 * 16 * 16;
    // ...and this share of the pixels may differ by more.
    static constexpr double kMaxDifferingShare = 0.005;

    // Empty when the PNG at actualPng matches the one at expectedPng, else what differs. On a mismatch,
    // <name>.actual.png and <name>.diff.png are written beside the expected file (name: the expected
    // file's name without "expected-" and ".png"); the diff shows differing pixels in red over the
    // expected picture, dimmed. With OMBREL_UPDATE_GOLDEN=1 the actual picture becomes the expected one.
    static std::string check(const std::string& expectedPng, const std::string& actualPng);

    // Empty when the pictures match within the tolerances, else what differs. diffPng: where to write
    // the picture of the differences on a mismatch (empty: nowhere).
    static std::string compare(const std::string& expectedPng, const std::string& actualPng,
                               const std::string& diffPng = {});

    // OMBREL_UPDATE_GOLDEN=1: tests rewrite their expected files instead of comparing.
    static bool updating();
};

} // namespace ombrel::test
