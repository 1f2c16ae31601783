// MainControls: the browser form's controls at their design positions.
#include "browser/MainControls.h"

namespace ombrel::browser {

namespace {

    template <class T> T& placed(T& control, double left, double top, double width, double height, bool visible = true)
    {
        control.move(left, top, width, height);
        control.setVisible(visible);
        return control;
    }

    runtime::Label& navLabel(runtime::ControlArray<runtime::Label>& array, int index, double left, double width,
        const char* caption)
    {
        auto& label = placed(array.create(index), left, 3720, width, 192);
        label.setCaption(caption);
        label.setBackStyle(0);
        label.setForeColor(0xFFFFFF);
        return label;
    }

} // namespace

MainControls::MainControls(runtime::Form& form)
    : xScreen(placed(form.add<runtime::PictureControl>("xScreen"), 2856, 1152, 1848, 1332, false))
    , xMarquee(placed(form.add<runtime::PictureControl>("xMarquee"), 2748, 348, 2040, 504, false))
    , xFlyer(placed(form.add<runtime::PictureControl>("xFlyer"), 5424, 696, 2124, 2880, false))
    , xCabinet(placed(form.add<runtime::PictureControl>("xCabinet"), 120, 720, 2124, 2880, false))
    , xlist(form, "xlist")
    , Shape1(placed(form.add<runtime::Shape>("Shape1"), 120, 3960, 7428, 1632))
    , shphigh(placed(form.add<runtime::PictureBox>("shphigh"), 120, 3840, 1932, 1812))
    , picf(placed(form.add<runtime::PictureBox>("picf"), 240, 840, 12, 12))
    , ll(form, "ll")
    , lblPath(placed(form.add<runtime::Label>("lblPath"), 3504, 0, 600, 240))
    , lblNav(form, "lblNav")
    , xlogo(placed(form.add<runtime::Image>("xlogo"), 3360, 2640, 1452, 1092, false))
    , List1(form.add<runtime::ListBox>("List1"))
{
    placed(xlist.create(0), 120, 3960, 1812, 1572, false);
    Shape1.setBorderWidth(0);
    shphigh.setVisible(false);
    picf.setVisible(false);

    auto& row = placed(ll.create(0), 2880, 4080, 492, 12);
    row.setCaption("Label1");
    row.setBackStyle(0);
    row.setForeColor(0xFFFFFF);
    lblPath.setCaption("Label1");
    lblPath.setBackStyle(0);
    lblPath.setForeColor(0xFFFFFF);
    lblPath.setAutoSize(true);

    navLabel(lblNav, 0, 3366, 204, "<< ");
    navLabel(lblNav, 1, 3558, 192, "  < ");
    navLabel(lblNav, 2, 3744, 108, "   ");
    navLabel(lblNav, 3, 3918, 192, " >  ");
    navLabel(lblNav, 4, 4110, 204, " >>");
    xlogo.setStretch(true);
}

} // namespace ombrel::browser
