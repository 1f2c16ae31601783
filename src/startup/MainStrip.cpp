// MainStrip: the browser form's handlers for the text strip: the pulse of the middle row and the mouse
// on the rows.
#include "startup/MainForm.h"

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

} // namespace ombrel::startup
