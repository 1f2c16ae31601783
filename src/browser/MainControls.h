// MainControls: the controls of the browser form, made at their design positions. The skin moves
// them later; the strips and panels fill them.
#pragma once

#include "runtime/Form.h"
#include "runtime/controls/ControlArray.h"
#include "runtime/controls/Image.h"
#include "runtime/controls/Label.h"
#include "runtime/controls/ListBox.h"
#include "runtime/controls/PictureControl.h"
#include "runtime/controls/Shape.h"

namespace ombrel::browser {

// Design size of the browser form, in twips; the skin's coordinates are on this scale.
constexpr double kDesignWidth = 7680;
constexpr double kDesignHeight = 5760;

struct MainControls {
    explicit MainControls(runtime::Form& form);

    runtime::PictureControl& xScreen;
    runtime::PictureControl& xMarquee;
    runtime::PictureControl& xFlyer;
    runtime::PictureControl& xCabinet;
    runtime::ControlArray<runtime::PictureControl> xlist;
    runtime::Shape& Shape1; // the rectangle of the list strip
    runtime::PictureBox& shphigh; // highlight of the picture strip
    runtime::PictureBox& picf;
    runtime::ControlArray<runtime::Label> ll; // the rows of the text strip
    runtime::Label& lblPath;
    runtime::ControlArray<runtime::Label> lblNav;
    runtime::Image& xlogo;
    runtime::ListBox& List1; // the current list and the selection; never seen
};

} // namespace ombrel::browser
