// TempHome: a fresh program folder for one test.
#include "TempHome.h"

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace ombrel::test {

TempHome::TempHome()
{
    static std::atomic<int> counter { 0 };
    auto base = std::filesystem::temp_directory_path();
    m_root = base / ("ombrel-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
    std::filesystem::remove_all(m_root);
    std::filesystem::create_directories(m_root);
}

TempHome::~TempHome()
{
    std::error_code ec;
    std::filesystem::remove_all(m_root, ec);
}

std::string TempHome::write(const std::string& relative, std::string_view bytes) const
{
    auto full = m_root / relative;
    std::filesystem::create_directories(full.parent_path());
    std::ofstream out(full, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return full.string();
}

std::string TempHome::read(const std::string& relative) const
{
    std::ifstream in(m_root / relative, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

bool TempHome::exists(const std::string& relative) const { return std::filesystem::exists(m_root / relative); }

std::string sourceDir()
{
    const char* dir = std::getenv("OMBREL_SOURCE_DIR");
    return dir ? dir : ".";
}

std::string pngHeader(int width, int height)
{
    std::string bytes("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR", 16);
    for (int value : { width, height })
        for (int shift : { 24, 16, 8, 0 })
            bytes += static_cast<char>((value >> shift) & 0xFF);
    return bytes + std::string("\x08\x06\0\0\0", 5);
}

} // namespace ombrel::test
