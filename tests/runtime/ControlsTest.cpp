// Controls: label sizing and wrapping, the picture control's failed load, control arrays, and when a
// form paints. (The list box's rules are on every scenario's trace.)
#include "RuntimeFixture.h"
#include "TempHome.h"

#include "runtime/controls/ControlArray.h"
#include "runtime/controls/Label.h"
#include "runtime/controls/PictureControl.h"
#include "runtime/controls/Shape.h"
#include "runtime/controls/TextLayout.h"

#include <gtest/gtest.h>

using namespace ombrel;
using runtime::pixelsToTwips;

namespace {

class ControlsTest : public ::testing::Test {
protected:
    ControlsTest()
    {
        fx.forms.define("F", [](runtime::FormStack& s) { return std::make_unique<runtime::Form>(s, "F"); });
        form = &fx.forms.form("F");
        form->show();
    }
    test::RuntimeFixture fx;
    runtime::Form* form = nullptr;
};

TEST_F(ControlsTest, LabelLaysOutWhatItsBoxShows)
{
    const runtime::FontSpec font = form->add<runtime::Label>("probe").font();
    auto px = [&](const std::string& text) { return fx.fonts.measure(font, text).w; };
    const int lineHeight = fx.fonts.lineHeight(font);
    const std::string huge(5'000'000, 'x');
    std::string words;
    for (int i = 0; i < 1'000'000; ++i)
        words += "word ";
    struct Row
    {
        const char* name;
        bool autoSize;
        bool wordWrap;
        int align;
        int boxPx; // the width of a box that does not grow across; its height is 20 pixels
        std::string caption;
        std::vector<std::string> lines;
    };
    const Row rows[] = {
        { "wordWrapKeepsTheWidth", true, true, 0, px("one two"), "one two three", { "one two", "three" } },
        { "windows1252", true, false, 0, 0, "Pok\xe9mon", { "Pok\xc3\xa9mon" } },
        // issue "very long lines": a 50 MB caption costs what its box shows, and shows the same.
        { "linesBelowTheBoxAreLeftOut", false, false, 0, 100, "a\nb\nc\nd", { "a", "b" } },
        { "hugeWordShowsItsStart", false, false, 0, 40, huge + "y", { std::string(40, 'x') } },
        { "rightAlignedShowsItsEnd", false, false, 1, 40, huge + "y", { std::string(39, 'x') + "y" } },
        { "centredShowsItsMiddle", false, false, 2, 40, "a" + huge + "b", { std::string(40, 'x') } },
        { "hugeWrappedCaption", false, false, 0, px("word word"), words, { "word word", "word word" } },
        { "growingBoxStopsAtTheWidestScreen", true, false, 0, 0, huge,
            { std::string(runtime::Label::kMaxShownPixels, 'x') } },
    };
    int next = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto& label = form->add<runtime::Label>("lbl" + std::to_string(next++));
        label.move(0, 0, pixelsToTwips(row.boxPx), 300);
        label.setAlignment(row.align);
        label.setWordWrap(row.wordWrap);
        label.setAutoSize(row.autoSize);
        label.setCaption(row.caption);
        EXPECT_EQ(label.lines(), row.lines);
        int widest = 0;
        for (const std::string& line : row.lines)
            widest = std::max(widest, px(line));
        EXPECT_EQ(label.width(), pixelsToTwips(row.autoSize && !row.wordWrap ? widest : row.boxPx));
        EXPECT_EQ(label.height(),
            row.autoSize ? pixelsToTwips(lineHeight * static_cast<int>(row.lines.size())) : 300);
    }
    EXPECT_EQ(static_cast<runtime::Label*>(form->findByFullName("lbl1"))->caption(), "Pok\xe9mon")
        << "the caption keeps its bytes";
}

// Measures as the fake fonts do, counting the bytes it is asked to measure.
class CountingFonts final : public platform::Fonts
{
public:
    runtime::PixelSize measure(const runtime::FontSpec& font, std::string_view utf8) override
    {
        measured += utf8.size();
        return m_fake.measure(font, utf8);
    }
    int lineHeight(const runtime::FontSpec& font) override { return m_fake.lineHeight(font); }
    std::string fileOf(const runtime::FontSpec& font) override { return m_fake.fileOf(font); }
    size_t measured = 0;

private:
    platform::fake::FakeFonts m_fake;
};

TEST(TextLayout, MeasuresOnlyWhatTheViewShowsAndShowsWhatAFullLayoutWould)
{
    CountingFonts fonts;
    const runtime::FontSpec font { "Arial", 12, false };
    std::string text;
    for (int i = 0; i < 2'000'000; ++i)
        text += i % 7 == 0 ? "\xc3\xa9t\xc3\xa9 " : "word ";
    const int width = fonts.measure(font, "word word word").w;
    auto full = runtime::layoutLines(fonts, font, std::string_view(text).substr(0, 2000), width);
    full.resize(3);
    fonts.measured = 0;
    runtime::TextView view;
    view.maxLines = 3;
    view.maxChars = 200;
    EXPECT_EQ(runtime::layoutLines(fonts, font, text, width, view), full);
    EXPECT_LT(fonts.measured, 2000u);
    EXPECT_EQ(runtime::layoutLines(fonts, font, text, -1, view).at(0).size(), 212u) << "200 characters, 12 of two bytes";

    // Cuts fall between characters, never inside one.
    struct Row
    {
        runtime::TextAlign align;
        std::string_view line;
        size_t chars;
        std::string_view shown;
    };
    const Row rows[] = {
        { runtime::TextAlign::Left, "\xc3\xa9\xe2\x82\xac" "abc", 2, "\xc3\xa9\xe2\x82\xac" },
        { runtime::TextAlign::Right, "abc\xc3\xa9\xe2\x82\xac", 3, "c\xc3\xa9\xe2\x82\xac" },
        { runtime::TextAlign::Center, "ab\xc3\xa9\xe2\x82\xac" "cd", 2, "\xc3\xa9\xe2\x82\xac" },
    };
    for (const Row& row : rows)
        EXPECT_EQ(runtime::visiblePart(row.line, row.chars, row.align), row.shown) << row.line;
}

TEST_F(ControlsTest, APictureControlKeepsItsOldPictureAfterAFailedLoad)
{
    test::TempHome home;
    std::string good = home.write("snap/pacman.png", test::pngHeader(4, 2));
    home.write("snap/broken.png", "not a picture");
    auto& picture = form->add<runtime::PictureControl>("xScreen");
    ASSERT_TRUE(picture.setFileName(good));
    EXPECT_FALSE(picture.setFileName(home.path() + "snap/missing.png"));
    EXPECT_FALSE(picture.setFileName(home.path() + "snap/broken.png"));
    EXPECT_EQ(picture.fileName(), good);
}

TEST_F(ControlsTest, ControlArraysLoadHiddenCopiesOnceAndUnload)
{
    runtime::ControlArray<runtime::Label> ll(*form, "ll");
    ll.create(0).setForeColor(0x00FF00);
    auto& second = ll.load(1);
    EXPECT_FALSE(second.visible());
    EXPECT_EQ(second.foreColor(), 0x00FF00u);
    EXPECT_THROW(ll.load(1), std::invalid_argument);
    ll.unload(1);
    EXPECT_EQ(form->findByFullName("ll(1)"), nullptr);
    EXPECT_THROW(ll(1), std::out_of_range);
}

// The order forms paint in is on every scenario's screenshots; an idle screen is not painted again.
TEST_F(ControlsTest, FormsPaintOnlyWhenSomethingChanged)
{
    fx.settle();
    int painted = fx.renderer.presentCount();
    fx.runFor(500);
    EXPECT_EQ(fx.renderer.presentCount(), painted);
    form->setBackColor(0x333333);
    fx.settle();
    EXPECT_EQ(fx.renderer.presentCount(), painted + 1);
}

} // namespace
