// Navigator: moving among the game lists and through one list (populateList, the path walk, pages),
// and the text strip's drawing (RefreshList).
#pragma once

#include "catalogue/ListFiles.h"
#include "runtime/Form.h"
#include "runtime/controls/ControlArray.h"
#include "runtime/controls/Image.h"
#include "runtime/controls/Label.h"
#include "runtime/controls/ListBox.h"

#include <functional>
#include <string>

namespace ombrel::catalogue {

// The controls of the browser that the navigation reads and writes, and the two things it needs from
// the rest of the browser.
struct NavigationControls
{
    runtime::Form& Main;
    runtime::ListBox& List1; // never seen; its items are the current list, Visible flags a list on hand
    runtime::Label& lblPath;
    runtime::Image& xlogo;
    runtime::ControlArray<runtime::Label>& ll;
    runtime::ControlArray<runtime::Label>& lblNav;
    // Whether loading the lists may give Main the focus: the start-up form is hidden or its film stopped.
    std::function<bool()> mayFocusMain;
    // Fills the picture strip for list `path`, with `fallback` for a game without a picture.
    std::function<void(int path, const std::string& fallback)> shootScreens;
};

// The message in the strip's middle row when none of the lists that count has a game.
inline constexpr const char* kNoRomsMessage = "No Roms Found, check your Ombrel.ini";

// Works on run.curPath and List1; none of the operations but RefreshList draws, so callers follow a
// move with RefreshList and the previews. The mouse handlers that wireMouse installs point at this
// object, so it must stay where it is while the controls live.
class Navigator
{
public:
    Navigator(CatalogueContext context, NavigationControls controls);
    Navigator(const Navigator&) = delete;
    Navigator& operator=(const Navigator&) = delete;

    // Reads every list file, shows a list, then walks on to the first list with games after the last
    // one loaded.
    void loadLists();
    // Shows the list of curPath: caption, logo, List1 filled and the first game selected.
    void populateList();
    // To the next (previous) list that has games; a full circle without any leaves everything as it was.
    void gNextPath();
    void gPrevPath();
    // Half a strip down (up), stopping at the list's ends.
    void gNextPage();
    void gPrevPage();
    // Writes the strip around the selection (text), or hands the picture strip its folder and fallback.
    void RefreshList();
    // The mouse: lblNav(0..4) for path and page, lblPath and xlogo for the next path.
    void wireMouse();

private:
    bool anyGamesToShow() const;
    void walk(int direction);

    CatalogueContext m_ctx;
    NavigationControls m_ui;
};

} // namespace ombrel::catalogue
