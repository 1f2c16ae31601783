// SdlFonts: fontconfig look-up, SDL_ttf fonts kept by file and size, measuring and drawing lines.
#include "platform/sdl/SdlFonts.h"

#include "core/TextCodec.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <string_view>

namespace ombrel::platform::sdl {
namespace {

constexpr const char* kFallbackRegular = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr const char* kFallbackBold = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf";
constexpr const char* kFallbackFamily = "DejaVu Sans";
// A handful of names and sizes are in use at a time; a skin change brings a new handful.
constexpr size_t kMaxOpenFonts = 48;

struct PatternDeleter
{
    void operator()(FcPattern* p) const { FcPatternDestroy(p); }
};
using PatternPtr = std::unique_ptr<FcPattern, PatternDeleter>;

bool isFile(const std::string& path)
{
    std::error_code ec;
    return !path.empty() && std::filesystem::is_regular_file(path, ec);
}

// Names that DejaVu Sans answers by right: no font is missing when they get it. "MS Sans Serif" is
// the design font of every label, which no Linux machine has; DejaVu Sans is meant to stand in for it.
bool isGenericOrFallback(const std::string& name)
{
    const std::string lower = core::asciiLower(name);
    return lower.empty() || lower == "dejavu sans" || lower == "sans-serif" || lower == "sans"
        || lower == "ms sans serif";
}

} // namespace

SdlFonts::SdlFonts()
    : m_ttfReady(TTF_Init() == 0)
    , m_config(FcInitLoadConfigAndFonts())
{
}

SdlFonts::~SdlFonts()
{
    m_fonts.clear();
    if (m_config)
        FcConfigDestroy(m_config);
    if (m_ttfReady)
        TTF_Quit();
}

int SdlFonts::pixelSize(double sizePt)
{
    if (!std::isfinite(sizePt) || sizePt <= 0)
        return 11;
    double px = std::nearbyint(sizePt * 96.0 / 72.0);
    if (px < 1)
        return 1;
    if (px > 1000)
        return 1000;
    return static_cast<int>(px);
}

std::string SdlFonts::fontFile(const std::string& name, bool bold)
{
    auto key = std::make_pair(name, bold);
    if (auto it = m_files.find(key); it != m_files.end())
        return it->second;

    std::string file;
    bool standIn = false; // the name found nothing and DejaVu Sans stands in for it
    if (m_config) {
        PatternPtr pattern(FcPatternCreate());
        const auto* family = reinterpret_cast<const FcChar8*>(name.c_str());
        if (!name.empty())
            FcPatternAddString(pattern.get(), FC_FAMILY, family);
        // NOTE: DejaVu Sans follows the asked-for name in the family list, so a name the machine does
        // not know gets DejaVu Sans rather than whatever font sorts first, while the aliases the
        // machine's configuration inserts after the name (Arial -> Liberation Sans) still win.
        FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(kFallbackFamily));
        FcPatternAddInteger(pattern.get(), FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
        FcPatternAddInteger(pattern.get(), FC_SLANT, FC_SLANT_ROMAN);
        FcConfigSubstitute(m_config, pattern.get(), FcMatchPattern);
        FcDefaultSubstitute(pattern.get());
        FcResult result = FcResultNoMatch;
        PatternPtr match(FcFontMatch(m_config, pattern.get(), &result));
        FcChar8* path = nullptr;
        if (match && result == FcResultMatch
            && FcPatternGetString(match.get(), FC_FILE, 0, &path) == FcResultMatch && path)
            file = reinterpret_cast<const char*>(path);
        FcChar8* found = nullptr;
        if (file.empty()
            || (match && FcPatternGetString(match.get(), FC_FAMILY, 0, &found) == FcResultMatch && found
                && reinterpret_cast<const char*>(found) == std::string_view(kFallbackFamily)))
            standIn = !isGenericOrFallback(name);
    }
    if (!isFile(file)) {
        file = bold ? kFallbackBold : kFallbackRegular;
        standIn = !isGenericOrFallback(name);
    }
    if (standIn && onUnmatched)
        onUnmatched(name);
    m_files.emplace(key, file);
    return file;
}

TTF_Font* SdlFonts::open(const runtime::FontSpec& font)
{
    if (!m_ttfReady)
        return nullptr;
    const int px = pixelSize(font.sizePt);
    std::string file = fontFile(font.name, font.bold);
    auto key = std::make_pair(file, px);
    if (auto it = m_fonts.find(key); it != m_fonts.end())
        return it->second.get();

    // At 72 DPI a point is a pixel, so this opens the font at exactly px pixels to the em.
    FontPtr opened(TTF_OpenFontDPI(file.c_str(), px, 72, 72));
    if (!opened) {
        file = font.bold ? kFallbackBold : kFallbackRegular;
        key.first = file;
        if (auto it = m_fonts.find(key); it != m_fonts.end())
            return it->second.get();
        opened.reset(TTF_OpenFontDPI(file.c_str(), px, 72, 72));
        if (!opened)
            return nullptr;
    }
    if (m_fonts.size() >= kMaxOpenFonts)
        m_fonts.clear();
    return m_fonts.emplace(key, std::move(opened)).first->second.get();
}

runtime::PixelSize SdlFonts::measure(const runtime::FontSpec& font, std::string_view utf8)
{
    TTF_Font* ttf = open(font);
    if (!ttf) {
        // No font at all on this machine: a rough width keeps the layout going.
        const int px = pixelSize(font.sizePt);
        const int chars = static_cast<int>(std::min<size_t>(utf8.size(), 100000));
        return { static_cast<int>(static_cast<int64_t>(chars) * px * 3 / 5), px * 6 / 5 };
    }
    const int height = TTF_FontHeight(ttf);
    if (utf8.empty())
        return { 0, height };
    int w = 0;
    int h = 0;
    if (TTF_SizeUTF8(ttf, std::string(utf8).c_str(), &w, &h) != 0)
        return { 0, height };
    return { w, height };
}

int SdlFonts::lineHeight(const runtime::FontSpec& font)
{
    if (TTF_Font* ttf = open(font))
        return TTF_FontHeight(ttf);
    return pixelSize(font.sizePt) * 6 / 5;
}

SurfacePtr SdlFonts::renderLine(const runtime::FontSpec& font, std::string_view utf8, uint32_t colour)
{
    if (utf8.empty())
        return nullptr;
    TTF_Font* ttf = open(font);
    if (!ttf)
        return nullptr;
    return SurfacePtr(TTF_RenderUTF8_Blended(ttf, std::string(utf8).c_str(), sdlColour(colour)));
}

} // namespace ombrel::platform::sdl
