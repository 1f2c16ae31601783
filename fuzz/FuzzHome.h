// FuzzHome: a private program folder for the fuzz targets whose readers take a path, made once per
// fuzzing process and removed when it ends.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ombrel::fuzz {

// A fresh folder below $OMBREL_FUZZ_TMP, else /dev/shm (memory, so a write per input stays cheap), else
// the system's temporary folder. Nothing else writes there, so whatever a reader leaves in it can be
// checked.
class FuzzHome
{
public:
    FuzzHome();
    ~FuzzHome();
    FuzzHome(const FuzzHome&) = delete;
    FuzzHome& operator=(const FuzzHome&) = delete;

    // The folder, with a trailing '/'.
    const std::string& path() const { return m_path; }
    // Replaces the file name in the folder with bytes; returns its full path.
    std::string write(const std::string& name, std::string_view bytes) const;
    // The names in the folder, sorted.
    std::vector<std::string> names() const;
    // Removes everything in the folder, so that the next input starts from an empty one.
    void clear() const;

private:
    std::string m_path;
};

// Stops the fuzzer with a message when a property of a reader does not hold; libFuzzer then saves the
// input that broke it.
void fuzzCheck(bool ok, const char* what);

} // namespace ombrel::fuzz
