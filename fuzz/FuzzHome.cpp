// FuzzHome: the fuzz targets' private folder, and their property check.
#include "FuzzHome.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace ombrel::fuzz {

namespace {

std::string baseFolder()
{
    if (const char* chosen = std::getenv("OMBREL_FUZZ_TMP"); chosen && *chosen)
        return chosen;
    if (::access("/dev/shm", W_OK) == 0)
        return "/dev/shm";
    return std::filesystem::temp_directory_path().string();
}

} // namespace

FuzzHome::FuzzHome()
{
    std::string pattern = baseFolder() + "/ombrel-fuzz-XXXXXX";
    if (!::mkdtemp(pattern.data())) {
        std::perror(pattern.c_str());
        std::abort();
    }
    m_path = pattern + "/";
}

FuzzHome::~FuzzHome()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string FuzzHome::write(const std::string& name, std::string_view bytes) const
{
    std::string full = m_path + name;
    std::ofstream out(full, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    fuzzCheck(static_cast<bool>(out), "cannot write the fuzz input into the private folder");
    return full;
}

std::vector<std::string> FuzzHome::names() const
{
    std::vector<std::string> out;
    for (const auto& entry : std::filesystem::directory_iterator(m_path))
        out.push_back(entry.path().filename().string());
    std::sort(out.begin(), out.end());
    return out;
}

void FuzzHome::clear() const
{
    for (const auto& entry : std::filesystem::directory_iterator(m_path))
        std::filesystem::remove_all(entry.path());
}

void fuzzCheck(bool ok, const char* what)
{
    if (ok)
        return;
    std::fprintf(stderr, "fuzz check failed: %s\n", what);
    std::abort();
}

} // namespace ombrel::fuzz
