// Fuzz target of the `--check` report, which reads ombrel.ini from its folder and looks up the folders
// and programs it names: any bytes as the settings file.
#include "FuzzHome.h"

#include "config/SettingsCheck.h"
#include "config/SettingsFile.h"
#include "platform/Files.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

using namespace ombrel;
using fuzz::fuzzCheck;

namespace {

// The real disk, but only inside the private folder: a folder value such as "/" or "..\..\" must not
// send the fuzzer through the machine's folders, which would make runs slow and unrepeatable.
class FolderFiles final : public platform::Files
{
public:
    explicit FolderFiles(std::string home)
        : m_home(std::move(home))
    {
    }

    std::optional<std::string> resolve(const std::string& path) override
    {
        return inside(path) ? m_disk.resolve(path) : std::nullopt;
    }

    std::optional<std::string> resolveFile(const std::string& path) override
    {
        return inside(path) ? m_disk.resolveFile(path) : std::nullopt;
    }

    std::vector<std::string> list(const std::string& folder) override
    {
        return inside(folder) ? m_disk.list(folder) : std::vector<std::string>();
    }

    std::optional<std::vector<std::string>> listFiles(const std::string& folder) override
    {
        return inside(folder) ? m_disk.listFiles(folder) : std::vector<std::string>();
    }

    // Reading the settings writes nothing; a write here would be a fault of its own.
    std::string write(const std::string& path, std::string_view) override
    {
        __builtin_trap();
        return path;
    }

private:
    bool inside(const std::string& path) const
    {
        std::string native = platform::toNativePath(path);
        return native.compare(0, m_home.size(), m_home) == 0 && native.find("..") == std::string::npos;
    }

    std::string m_home;
    platform::DiskFiles m_disk;
};

// A folder and a program for the file's values to find (in any case of letters), beside the settings
// file itself.
const fuzz::FuzzHome& home()
{
    static const fuzz::FuzzHome folder;
    static const bool prepared = [] {
        std::filesystem::create_directory(folder.path() + "Roms");
        folder.write("mame", "#!/bin/sh\n");
        return true;
    }();
    (void)prepared;
    return folder;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const fuzz::FuzzHome& folder = home();
    folder.write(config::kSettingsFileName, std::string_view(reinterpret_cast<const char*>(data), size));
    FolderFiles files(folder.path());
    const std::vector<std::string> before = folder.names();

    config::SettingsCheck check = config::checkSettings(folder.path(), files, folder.path() + "bin");

    fuzzCheck(folder.names() == before, "the check changed the program's folder");
    // One line per value or finding, whatever the values hold, and the verdict last.
    const std::string& text = check.text;
    fuzzCheck(!text.empty() && text.back() == '\n', "the report does not end with a line");
    size_t start = text.find('\n') + 1; // the first line names the file
    std::string_view last;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        last = std::string_view(text).substr(start, end - start);
        fuzzCheck(last.starts_with("line ") || last.starts_with("warning: line ")
                || last.starts_with("error: ") || last.ends_with(" found"),
            "a value broke a line of the report");
        start = end + 1;
    }
    fuzzCheck(check.ok == (last == "no problems found"), "the report and its result disagree");
    // A value is quoted at most four times (its line, a line end, a separator, a missing folder), each
    // byte at most as four (a line end shown as <LF>), and a line of the file has at most one comma
    // warning: the report grows with the file, never faster.
    const auto lineEnds = static_cast<size_t>(
        std::count_if(data, data + size, [](uint8_t c) { return c == '\r' || c == '\n'; }));
    fuzzCheck(
        text.size() <= 16 * size + 128 * (lineEnds + 1) + 64 * 1024, "the report grows faster than the file");
    return 0;
}
