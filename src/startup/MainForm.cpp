// MainForm: the browser form's controls, timers, and its handlers for the foreground and the mouse.
#include "startup/MainForm.h"

#include "runtime/EventLoop.h"
#include "runtime/FormStack.h"
#include "runtime/controls/MediaView.h"
#include "startup/Cabinet.h"

namespace ombrel::startup {

namespace {

    catalogue::CatalogueContext catalogueContext(Cabinet& cabinet)
    {
        return { cabinet.settings, cabinet.run, cabinet.catalogue, cabinet.platform.files, cabinet.home };
    }

} // namespace

MainForm::MainForm(runtime::FormStack& stack, Cabinet& cabinet)
    : Form(stack, "Main")
    , c(*this)
    , nav(catalogueContext(cabinet),
          catalogue::NavigationControls {
              *this,
              c.List1,
              c.lblPath,
              c.xlogo,
              c.ll,
              c.lblNav,
              [&stack] {
                  auto* blanker = stack.existing("blanker");
                  if (!blanker || !blanker->visible())
                      return true;
                  auto* film = dynamic_cast<runtime::MediaView*>(blanker->find("mpIntro"));
                  return film && film->player().playState() == platform::kStopped;
              },
              [this](int path, const std::string& fallback) { shootScreens(path, fallback); } })
    , scan(catalogueContext(cabinet), nav, catalogue::ScanControls { *this, c.List1, c.lblPath, c.ll })
    , Timer1(addTimer("Timer1", 10, true, [this] { Timer1_Timer(); }))
    , timScr(addTimer("timScr", 1000, false))
    , timjoy(addTimer("timjoy", 75, true, [this] { timjoy_Timer(); }))
    , timhigh(addTimer("timhigh", 150, true, [this] { timhigh_Timer(); }))
    , timWfExit(addTimer("timWfExit", 5, false))
    , timRefreshit(addTimer("timRefreshit", 400, false, [this] { timRefreshit_Timer(); }))
    , mpFX(add<runtime::MediaView>("mpFX", cabinet.platform.media.create("mpFX", platform::MediaKind::Effect)))
    , timUp(addTimer("timUp", 75, false, [this] { timUp_Timer(); }))
    , timdown(addTimer("timdown", 75, false, [this] { timdown_Timer(); }))
    , timleft(addTimer("timleft", 75, false, [this] { timleft_Timer(); }))
    , timright(addTimer("timright", 75, false, [this] { timright_Timer(); }))
    , timNp(addTimer("timNp", 75, false, [this] { timNp_Timer(); }))
    , timPp(addTimer("timPp", 75, false, [this] { timPp_Timer(); }))
    , timfx(addTimer("timfx", 1000, false, [this] { timfx_Timer(); }))
    , timscroller(addTimer("timscroller", 150, false, [this] { InputCheck(); }))
    , timscroller2(addTimer("timscroller2", 150, false, [this] { InputCheck2(); }))
    , timkey(addTimer("timkey", 1200, false, [this] { timkey_Timer(); }))
    , timLock(addTimer("timLock", 5000, false, [this] { timLock_Timer(); }))
    , timfullscreen(addTimer("timfullscreen", 2000, false, [this] { timfullscreen_Timer(); }))
    , timescape(addTimer("timescape", 200, false, [this] { timescape_Timer(); }))
    , m_cabinet(cabinet)
{
    scaler.setSourceForm(*this);
    setCaption("Ombrel");
    setBackColor(0);
    move(0, 0, browser::kDesignWidth, browser::kDesignHeight);
    // The list box's Click does nothing but let other events run.
    c.List1.onClick = [this] {
        this->stack().trace("select " + std::to_string(m_cabinet.run.curPath) + " " + std::to_string(c.List1.listIndex())
            + " \"" + c.List1.text() + "\"");
        loop().doEvents();
    };
    nav.wireMouse();
    wireKeys();
    wireLaunch();
    wireStrip();
}

void MainForm::Form_Load()
{
    m_cabinet.run.curPath = 1;
    Timer1.setEnabled(true);
    setMousePointer(99);
    scaleOn = true;
}

void MainForm::Form_Resize()
{
    if (scaleOn)
        scaler.ScaleControls();
}

void MainForm::Form_Deactivate()
{
    auto& run = m_cabinet.run;
    run.saverAuto = false;
    timScr.setEnabled(false);
    run.saverCount = m_cabinet.saved.saverDelay;
    timjoy.setEnabled(false);
    timWfExit.setEnabled(true);
    timhigh.setEnabled(false);
}

void MainForm::Form_Activate()
{
    timjoy.setEnabled(true);
    timWfExit.setEnabled(false);
    runtime::PictureControl* pictures[] = { &c.xScreen, &c.xFlyer, &c.xCabinet, &c.xMarquee, &c.xlist(0) };
    for (auto* picture : pictures)
        picture->setProperty(4, 4);
    for (auto* picture : pictures)
        picture->setProperty(124, 0);
    m_cabinet.run.themesDir = m_cabinet.home + "omthemes";
    highStep = 0;
    setMousePointer(99);
    timhigh.setEnabled(true);
}

void MainForm::frmMenuFocus()
{
    if (auto* menu = stack().existing("frmMenu"); menu && menu->visible())
        menu->setFocus();
}

void MainForm::Form_GotFocus()
{
    frmMenuFocus();
    auto& run = m_cabinet.run;
    run.saverAuto = true;
    timScr.setEnabled(true);
    run.saverCount = m_cabinet.saved.saverDelay;
    timhigh.setEnabled(true);
}

void MainForm::Form_LostFocus() { timhigh.setEnabled(false); }

void MainForm::Form_Click() { frmMenuFocus(); }

void MainForm::Form_MouseMove(int, int, double, double) { setMousePointer(0); }

void MainForm::timRefreshit_Timer()
{
    timRefreshit.setEnabled(false);
    scan.refreshAll();
}

} // namespace ombrel::startup
