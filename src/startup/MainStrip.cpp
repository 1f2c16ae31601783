// MainStrip: the browser form's handlers for the two strips: the pulse of the middle row, the fill of the
// picture cells, and the mouse on the rows and the cells.
#include "startup/MainForm.h"

#include "browser/PictureStrip.h"
#include "core/PassOver.h"
#include "runtime/EventLoop.h"
#include "startup/Cabinet.h"

namespace ombrel::startup {

void MainForm::wireStrip()
{
    c.ll.setHandlers({
        .click = [this](int index) { ll_Click(index); },
        .dblClick = [this](int index) { ll_DblClick(index); },
        .mouseDown = [this](int index, int button, int shift, double x, double y) {
            ll_MouseDown(index, button, shift, x, y);
        },
        .mouseUp = [this](int index, int button, int shift, double x, double y) {
            ll_MouseUp(index, button, shift, x, y);
        },
    });
    // The picture strip has no handler for the release: its scrolling runs from one right click to the next.
    c.xlist.setHandlers({
        .click = [this](int index) { xlist_Click(index); },
        .dblClick = [this](int index) { xlist_DblClick(index); },
        .mouseDown = [this](int index, int button, int shift, double x, double y) {
            xlist_MouseDown(index, button, shift, x, y);
        },
        .mouseUp = nullptr,
    });
}

void MainForm::timhigh_Timer()
{
    // A key's redraw may be waiting; the pulse comes after it.
    loop().doEvents();
    browser::pulseHighlight(c, m_cabinet.run.midRow, m_cabinet.scheme.schemeFore, highStep);
}

void MainForm::ll_Click(int index)
{
    // The rows stay as they are until the next redraw, so the second click of a double click lands on
    // the same name and starts the game the first one chose.
    core::passOver(failures(), [&] {
        if (c.ll(index).caption().empty())
            return; // a blank row stands before the first or after the last game
        const int midRow = m_cabinet.run.midRow;
        if (index < midRow)
            c.List1.setListIndex(c.List1.listIndex() - (midRow - index));
        if (index > midRow)
            c.List1.setListIndex(c.List1.listIndex() + (index - midRow));
    });
}

void MainForm::ll_DblClick(int) { runEmu(); }

void MainForm::ll_MouseDown(int, int button, int, double, double)
{
    // The saver countdown stands still while a button is held.
    timScr.setEnabled(false);
    loop().doEvents();
    // Held right, the mouse steps by pages; held left, by games. A second button adds its scroller.
    runtime::Timer& scroller = button == 2 ? timscroller : timscroller2;
    scroller.setEnabled(!scroller.enabled());
}

void MainForm::ll_MouseUp(int, int, int, double, double)
{
    timScr.setEnabled(true);
    timscroller.setEnabled(false);
    timscroller2.setEnabled(false);
}

void MainForm::shootScreens(int path, const std::string& fallback)
{
    const catalogue::Table* games = m_cabinet.catalogue.list(path);
    if (!games)
        return;
    const browser::PictureStripContext context {
        m_cabinet.platform.files, m_cabinet.home, m_cabinet.run, m_cabinet.saved, m_cabinet.scheme
    };
    browser::shootScreens(c, context, *games, fallback);
}

void MainForm::xlist_Click(int index)
{
    // Unlike a text row, the clicked game comes to the middle at once.
    core::passOver(failures(), [&] {
        const int target = c.List1.listIndex() + (index - m_cabinet.run.midRow);
        // The cells before the middle show even when the list is empty, and lead nowhere.
        if (target >= 0 && target < c.List1.listCount())
            c.List1.setListIndex(target);
    });
    readAhead.stepped(0); // a click says nothing of where the next one goes
    core::passOver(failures(), [&] { nav.RefreshList(); });
    core::passOver(failures(), [&] { cabRefresh(); });
}

void MainForm::xlist_DblClick(int) { runEmu(); }

void MainForm::xlist_MouseDown(int, int button, int, double, double)
{
    if (button == 2)
        timscroller.setEnabled(!timscroller.enabled());
}

} // namespace ombrel::startup
