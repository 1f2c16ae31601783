// SkinCheck: the current skin's files as the browser will read them.
#include "browser/SkinCheck.h"

#include "browser/SkinFile.h"
#include "browser/Theme.h"
#include "config/SavedState.h"
#include "core/AtomicFile.h"
#include "platform/Files.h"

#include <optional>

namespace ombrel::browser {

namespace {

    std::optional<std::string> bytesOf(platform::Files& files, const std::string& path)
    {
        const std::optional<std::string> found = files.resolveFile(path);
        std::string bytes;
        if (!found || !core::readFile(*found, bytes))
            return std::nullopt;
        return bytes;
    }

} // namespace

std::vector<std::string> skinCheck(const std::string& home, platform::Files& files, platform::Fonts& fonts)
{
    config::SavedState saved;
    double saverCount = 0;
    // A missing or damaged ombrel.cfg leaves the skin the program starts in, as it does at boot.
    config::openCfg(home + config::kSavedStateFileName, saved, saverCount);
    const std::string folder = home + "omthemes" + saved.curSkin;
    std::vector<std::string> report { "skin " + platform::toNativePath(folder) + " (curSkin \"" + saved.curSkin
        + "\" of " + config::kSavedStateFileName + ")" };
    for (std::string& line : skinReport(files, folder))
        report.push_back(std::move(line));
    for (std::string& line : schemeReport(bytesOf(files, folder + kSchemeFileName), fonts))
        report.push_back(std::move(line));
    return report;
}

} // namespace ombrel::browser
