// TempHome: a fresh program folder under the system's temporary folder, removed at the end of a test.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace ombrel::test {

class TempHome {
public:
    TempHome();
    ~TempHome();
    TempHome(const TempHome&) = delete;
    TempHome& operator=(const TempHome&) = delete;

    // The folder, with a trailing '/'.
    std::string path() const { return m_root.string() + "/"; }
    std::filesystem::path root() const { return m_root; }
    // Writes bytes to a file below the folder, making folders as needed; returns its full path.
    std::string write(const std::string& relative, std::string_view bytes) const;
    // Reads a file below the folder; empty when missing.
    std::string read(const std::string& relative) const;
    bool exists(const std::string& relative) const;

private:
    std::filesystem::path m_root;
};

// A PNG file's first bytes: enough for the fakes' picture loader, which reads the size from the header.
std::string pngHeader(int width, int height);

// The source tree's root (for demo/ and tests/data/), from OMBREL_SOURCE_DIR.
std::string sourceDir();

} // namespace ombrel::test
