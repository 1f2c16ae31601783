// SkinValues: what the current skin's skin.ini says about the browser's layout, kept for the whole run.
#pragma once

namespace ombrel::config {

// A rectangle on the browser's design form, in twips.
struct SkinBox
{
    double top = 0;
    double left = 0;
    double width = 0;
    double height = 0;
    bool operator==(const SkinBox&) const = default;
};

// The values of skin.ini, by the names the program gives them. They outlive the browser form: a skin
// file that can be read only in part leaves the rest as the last skin gave them (on the first load, 0,
// false and empty). The list kind and the logo's flag are the run state's listType and showLogo.
struct SkinValues
{
    SkinBox xScreen;
    bool showSnap = false;
    SkinBox xCabinet;
    bool showCabinet = false;
    SkinBox xFlyer;
    bool showFlyer = false;
    SkinBox xMarquee;
    bool showMarquee = false;
    SkinBox Shape1; // the list strip's rectangle
    int listCols = 0; // columns of the text strip; 0 when the file leaves them empty
    double xlistWidth = 0; // a cell of the picture strip
    double xlistHeight = 0;
    double lblPathTop = 0;
    double lblPathLeft = 0;
    bool showPath = false;
    double lblNavTop = 0; // the first navigation label; the others follow it
    double lblNavLeft = 0;
    bool showNav = false;
    int stripGap = 0; // between the picture strip's cells, on the design scale
    int rowAlign = 0; // alignment of a one-column text strip's rows
    SkinBox xlogo;
    bool operator==(const SkinValues&) const = default;
};

} // namespace ombrel::config
