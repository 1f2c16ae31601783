// Controls: label sizing and wrapping, the picture control's failed load, the list box model,
// control arrays, and what a form paints.
#include "RuntimeFixture.h"
#include "TempHome.h"

#include "runtime/controls/ControlArray.h"
#include "runtime/controls/Label.h"
#include "runtime/controls/ListBox.h"
#include "runtime/controls/PictureControl.h"
#include "runtime/controls/Shape.h"

#include <gtest/gtest.h>

using namespace ombrel;
using runtime::pixelsToTwips;

namespace {

// A real 4 by 2 PNG.
const std::string kPng4x2("\x89\x50\x4e\x47\x0d\x0a\x1a\x0a\x00\x00\x00\x0d\x49\x48\x44\x52\x00\x00\x00\x04\x00\x00"
                          "\x00\x02\x08\x02\x00\x00\x00\xf0\xca\xea\x34\x00\x00\x00\x10\x49\x44\x41\x54\x78\x9c\x63"
                          "\xf8\xcf\xc0\x00\x47\x0c\xc8\x1c\x00\x6f\xaa\x07\xf9\x80\xdc\x00\x28\x00\x00\x00\x00\x49"
                          "\x45\x4e\x44\xae\x42\x60\x82",
    73);

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

TEST_F(ControlsTest, AutoSizeWithoutWordWrapFitsOneLinePerBreak)
{
    auto& label = form->add<runtime::Label>("lbl");
    label.setAutoSize(true);
    label.setCaption("Pac-Man\r\nGalaxian II");
    auto font = label.font();
    EXPECT_EQ(label.width(), pixelsToTwips(fx.fonts.measure(font, "Galaxian II").w));
    EXPECT_EQ(label.height(), pixelsToTwips(2 * fx.fonts.lineHeight(font)));
    EXPECT_EQ(label.lines(), (std::vector<std::string> { "Pac-Man", "Galaxian II" }));
}

TEST_F(ControlsTest, WordWrapKeepsTheWidthAndGrowsDown)
{
    auto& label = form->add<runtime::Label>("lbl");
    auto font = label.font();
    double width = pixelsToTwips(fx.fonts.measure(font, "one two").w);
    label.setWidth(width);
    label.setWordWrap(true);
    label.setAutoSize(true);
    label.setCaption("one two three");
    EXPECT_EQ(label.width(), width);
    EXPECT_EQ(label.lines(), (std::vector<std::string> { "one two", "three" }));
    EXPECT_EQ(label.height(), pixelsToTwips(2 * fx.fonts.lineHeight(font)));
}

TEST_F(ControlsTest, WithoutAutoSizeTheBoxStaysAndTextWrapsInsideIt)
{
    auto& label = form->add<runtime::Label>("lbl");
    label.move(0, 0, pixelsToTwips(fx.fonts.measure(label.font(), "abc").w), 300);
    label.setCaption("abc def");
    EXPECT_EQ(label.lines(), (std::vector<std::string> { "abc", "def" }));
    EXPECT_EQ(label.height(), 300);
}

TEST_F(ControlsTest, CaptionBytesThatAreNotUtf8AreShownAsWindows1252)
{
    auto& label = form->add<runtime::Label>("lbl");
    label.setAutoSize(true);
    label.setCaption("Pok\xe9mon");
    EXPECT_EQ(label.lines().at(0), "Pok\xc3\xa9mon");
    EXPECT_EQ(label.caption(), "Pok\xe9mon");
}

TEST_F(ControlsTest, LabelPaintsItsBackgroundOnlyWhenOpaque)
{
    auto& label = form->add<runtime::Label>("lbl");
    label.setCaption("x");
    label.setBackColor(0x0000FF);
    auto count = [&](uint32_t colour) {
        auto frame = fx.forms.frame();
        return std::count_if(frame.begin(), frame.end(), [&](const runtime::DrawCommand& c) {
            return c.kind == runtime::DrawCommand::Kind::Fill && c.colour == colour;
        });
    };
    EXPECT_EQ(count(0x0000FF), 1);
    label.setBackStyle(0);
    EXPECT_EQ(count(0x0000FF), 0);
}

TEST_F(ControlsTest, APictureControlKeepsItsOldPictureAfterAFailedLoad)
{
    test::TempHome home;
    std::string good = home.write("snap/pacman.png", kPng4x2);
    home.write("snap/broken.png", "not a picture");
    auto& picture = form->add<runtime::PictureControl>("xScreen");
    ASSERT_TRUE(picture.setFileName(good));
    EXPECT_EQ(picture.pictureSize(), (runtime::PixelSize { 4, 2 }));
    EXPECT_FALSE(picture.setFileName(home.path() + "snap/missing.png"));
    EXPECT_FALSE(picture.setFileName(home.path() + "snap/broken.png"));
    EXPECT_EQ(picture.fileName(), good);
    // A name in another case is found, as on the cabinet's old file system.
    EXPECT_TRUE(picture.setFileName(home.path() + "SNAP/PacMan.PNG"));
    EXPECT_EQ(picture.fileName(), good);
}

TEST_F(ControlsTest, ListBoxSelectionAndItems)
{
    auto& list = form->add<runtime::ListBox>("List1");
    int clicks = 0;
    list.onClick = [&] { ++clicks; };
    list.addItem("Pac-Man");
    list.addItem("Galaga");
    EXPECT_EQ(list.listCount(), 2);
    EXPECT_EQ(list.listIndex(), -1);
    EXPECT_EQ(list.text(), "");
    list.setListIndex(1);
    EXPECT_EQ(list.text(), "Galaga");
    list.setListIndex(1);
    EXPECT_EQ(clicks, 1) << "only a change raises Click";
    EXPECT_THROW(list.setListIndex(2), runtime::InvalidValue);
    EXPECT_THROW(list.setListIndex(-2), runtime::InvalidValue);
    EXPECT_EQ(list.listIndex(), 1);
    EXPECT_EQ(list.list(-1), "");
    EXPECT_EQ(list.list(2), "");
    list.clear();
    EXPECT_EQ(list.listIndex(), -1);
    EXPECT_EQ(clicks, 1);
}

TEST_F(ControlsTest, ControlArraysLoadHiddenCopiesAndUnload)
{
    runtime::ControlArray<runtime::Label> ll(*form, "ll");
    auto& first = ll.create(0);
    first.move(100, 200, 3000, 250);
    first.setCaption("row");
    first.setForeColor(0x00FF00);
    auto& second = ll.load(1);
    EXPECT_FALSE(second.visible());
    EXPECT_EQ(second.top(), 200);
    EXPECT_EQ(second.foreColor(), 0x00FF00u);
    EXPECT_EQ(ll.count(), 2);
    EXPECT_EQ(form->findByFullName("ll(1)"), &second);
    EXPECT_THROW(ll.load(1), std::invalid_argument);
    ll.unload(1);
    EXPECT_EQ(ll.count(), 1);
    EXPECT_EQ(form->findByFullName("ll(1)"), nullptr);
    EXPECT_THROW(ll(1), std::out_of_range);
}

TEST_F(ControlsTest, FormsPaintBottomToTopAndOnlyWhenSomethingChanged)
{
    fx.forms.define("G", [](runtime::FormStack& s) { return std::make_unique<runtime::Form>(s, "G"); });
    form->setBackColor(0x111111);
    auto& g = fx.forms.form("G");
    g.setBackColor(0x222222);
    g.show();
    auto frame = fx.forms.frame();
    ASSERT_GE(frame.size(), 2u);
    EXPECT_EQ(frame.front().colour, 0x111111u);
    EXPECT_EQ(frame.back().colour, 0x222222u);

    fx.settle();
    int painted = fx.renderer.presentCount();
    fx.runFor(500);
    EXPECT_EQ(fx.renderer.presentCount(), painted) << "an idle screen is not painted again";
    g.setBackColor(0x333333);
    fx.settle();
    EXPECT_EQ(fx.renderer.presentCount(), painted + 1);
}

} // namespace
