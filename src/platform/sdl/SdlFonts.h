// SdlFonts: fonts found by name through fontconfig, measured and drawn with SDL_ttf.
#pragma once

#include "platform/Fonts.h"
#include "platform/sdl/SdlHandles.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

struct _FcConfig;

namespace ombrel::platform::sdl {

// Turns a font name into a file with fontconfig (DejaVu Sans when nothing fits) and keeps the opened
// fonts. Point sizes are for a 96 DPI screen and become whole pixels as on Windows (8.25 pt is 11 px).
// Used on the loop's thread only.
class SdlFonts final : public Fonts
{
public:
    SdlFonts();
    ~SdlFonts() override;
    SdlFonts(const SdlFonts&) = delete;
    SdlFonts& operator=(const SdlFonts&) = delete;

    runtime::PixelSize measure(const runtime::FontSpec& font, std::string_view utf8) override;
    int lineHeight(const runtime::FontSpec& font) override;
    std::string fileOf(const runtime::FontSpec& font) override { return fontFile(font.name, font.bold); }

    // One line of text in the colour (blue*65536+green*256+red), on a transparent background. Null for
    // empty text or when no font can be opened.
    SurfacePtr renderLine(const runtime::FontSpec& font, std::string_view utf8, uint32_t colour);

    // Called once per name and weight that no installed font matches, so DejaVu Sans stands in for it:
    // a skin that names a font the cabinet lacks is drawn all the same, and its owner is told why it
    // looks different.
    std::function<void(const std::string& name)> onUnmatched;

    // The file that a font name and weight resolve to.
    std::string fontFile(const std::string& name, bool bold);

    // The whole pixel size a point size is drawn at, kept within what a screen can show.
    static int pixelSize(double sizePt);

private:
    TTF_Font* open(const runtime::FontSpec& font);

    bool m_ttfReady = false;
    _FcConfig* m_config = nullptr;
    std::map<std::pair<std::string, bool>, std::string> m_files;
    std::map<std::pair<std::string, int>, FontPtr> m_fonts;
};

} // namespace ombrel::platform::sdl
