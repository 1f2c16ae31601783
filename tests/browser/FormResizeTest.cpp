// The form scaler: scaling from the saved layout every time, the whole numbers it saves, the tags, the
// growth that keeps text readable, and the forms and controls it leaves alone.
#include "RuntimeFixture.h"

#include "browser/FormResize.h"
#include "runtime/Form.h"
#include "runtime/controls/Label.h"
#include "runtime/controls/ListBox.h"
#include "runtime/controls/PictureControl.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>

namespace ombrel::test {
namespace {

// A control of the line kind: two ends, X1, Y1, X2 and Y2, besides its box.
class Line final : public runtime::Control
{
public:
    using Control::Control;
    void paint(runtime::DrawList&, int, int, const runtime::PixelRect&) const override { }
    std::optional<runtime::PropertyValue> propertyByName(std::string_view name) const override
    {
        const size_t i = end(name);
        return i < 4 ? runtime::PropertyValue(ends[i]) : Control::propertyByName(name);
    }
    bool setPropertyByName(std::string_view name, const runtime::PropertyValue& value) override
    {
        const size_t i = end(name);
        return i < 4 ? (ends[i] = std::get<double>(value), true) : Control::setPropertyByName(name, value);
    }
    static size_t end(std::string_view name) // 4: not an end
    {
        const size_t i = name.size() == 2 ? std::string_view("X1Y1X2Y2").find(name) : 1;
        return i % 2 == 0 ? i / 2 : 4;
    }
    std::array<double, 4> ends {};
};

class FormResizeTest : public ::testing::Test
{
protected:
    FormResizeTest() { scaler.setSourceForm(form); }

    // The form at a new size in twips, then one scaling, as a resize event gives it.
    void resize(double width, double height)
    {
        form.setWidth(width);
        form.setHeight(height);
        scaler.ScaleControls();
    }
    template <class T> T& add(const std::string& name, Box box, const std::string& tag = "")
    {
        T& control = form.add<T>(name);
        control.move(box[0], box[1], box[2], box[3]);
        control.setTag(tag);
        return control;
    }

    RuntimeFixture fx;
    runtime::Form& form = fx.plainForm("F");
    browser::clsFormResize scaler;
};

// 1280 by 1024 pixels from the 7680 by 5760 design: ratios 2.5 and 8/3. The saved values are whole
// numbers, rounded half to even, so a half-twip position scales from its even neighbour. The tag, taken
// in upper case and only when it begins with "@", picks the values scaled.
TEST_F(FormResizeTest, ScalesWholeNumbersSavedAtTheDesignSizeAsTheTagsSay)
{
    const std::tuple<const char*, Box, Box> rows[] = {
        { "", { 2856, 1152, 1848, 1332 }, { 7140, 3072, 4620, 3552 } },
        { "", { 100.5, 4.5, 101.5, 7 }, { 250, 4 * 8.0 / 3, 255, 7 * 8.0 / 3 } },
        { "@lw", { 300, 600, 900, 1200 }, { 750, 600, 2250, 1200 } },
        { "x@H", { 300, 600, 900, 1200 }, { 750, 1600, 2250, 3200 } },
        { "@", { 300, 600, 900, 1200 }, { 300, 600, 900, 1200 } },
        { "@;T;;", { 300, 600, 900, 1200 }, { 300, 1600, 900, 1200 } },
    };
    std::vector<runtime::PictureControl*> controls;
    for (const auto& [tag, design, scaled] : rows)
        controls.push_back(&add<runtime::PictureControl>("p", design, tag));
    scaler.ScaleControls(); // the first call only takes stock
    EXPECT_EQ(boxOf(*controls[1]), std::get<1>(rows[1]));
    resize(19200, 15360);
    for (size_t i = 0; i < controls.size(); ++i)
        for (size_t side = 0; side < 4; ++side)
            EXPECT_DOUBLE_EQ(boxOf(*controls[i])[side], std::get<2>(rows[i])[side]) << i << " " << side;

    scaler.SizeFormToScreen(33); // of 640 by 480 pixels: the whole part of 3168 and 2376 twips
    EXPECT_EQ(form.width(), 3168);
    EXPECT_EQ(form.height(), 2376);
}

// Each scaling starts from the saved values, so twice the size and back lands exactly; a minimised form
// and a control unloaded since the saving are left alone; ReInitialize saves the present layout.
TEST_F(FormResizeTest, ScalingAndBackLandsExactly)
{
    auto& odd = add<runtime::PictureControl>("odd", { 333, 777, 1001, 99 });
    auto& line = form.add<Line>("line");
    line.ends = { 100, 200, 300, 401 };
    auto& gone = add<runtime::PictureControl>("gone", { 1, 1, 1, 1 });
    scaler.ReInitialize();
    form.remove(gone);
    form.collectGarbage();
    for (double factor : { 2.0, 1.0 / 3, 2.0, 1.0 })
        resize(7680 * factor, 5760 * factor);
    EXPECT_EQ(boxOf(odd), (Box { 333, 777, 1001, 99 }));
    EXPECT_EQ(line.ends, (std::array<double, 4> { 100, 200, 300, 401 }));

    resize(15360, 11520);
    EXPECT_EQ(line.ends, (std::array<double, 4> { 200, 400, 600, 802 }));
    form.setMinimised(true);
    resize(7680, 5760);
    EXPECT_EQ(boxOf(odd), (Box { 666, 1554, 2002, 198 }));
    form.setMinimised(false);
    resize(15360, 11520);

    scaler.ReInitialize(); // now at twice the design size
    resize(7680, 5760);
    EXPECT_EQ(boxOf(odd), (Box { 333, 777, 1001, 99 }));
}

// Fonts do not scale: a text box made lower than its text (195 twips in the form's font) grows to 1.2
// times the text; one still higher keeps its scaled height, and a box without text never grows.
TEST_F(FormResizeTest, TextBoxesGrowBackToTheirText)
{
    auto& low = add<runtime::Label>("low", { 0, 0, 500, 300 });
    low.setCaption("Sgj");
    auto& high = add<runtime::Label>("high", { 0, 0, 500, 1000 });
    high.setCaption("Sgj");
    auto& list = add<runtime::ListBox>("list", { 0, 0, 500, 300 });
    list.addItem("Galaga");
    list.setListIndex(0);
    auto& picture = add<runtime::PictureControl>("picture", { 0, 0, 500, 300 });
    const double text = form.textHeight("Sgj");
    ASSERT_EQ(text, 195);
    scaler.ReInitialize();
    resize(3840, 2880);
    EXPECT_DOUBLE_EQ(low.height(), text * 1.2);
    EXPECT_EQ(high.height(), 500);
    EXPECT_DOUBLE_EQ(list.height(), form.textHeight("Galaga") * 1.2);
    EXPECT_EQ(picture.height(), 150);
    EXPECT_EQ(low.width(), 250) << "only the height grows";
}

} // namespace
} // namespace ombrel::test
