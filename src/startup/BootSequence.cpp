// BootSequence: Timer1 of the browser form, the thirty steps that bring the browser up, in their order.
// Any step that fails is passed over and the next one runs; nothing here stops the program.
#include "startup/MainForm.h"

#include "browser/PreviewPanels.h"
#include "browser/SkinLayout.h"
#include "browser/Theme.h"
#include "config/SavedState.h"
#include "config/SettingsFile.h"
#include "core/PassOver.h"
#include "core/VbMath.h"
#include "input/JoystickMap.h"
#include "input/KeyMap.h"
#include "runtime/FormStack.h"
#include "runtime/controls/MediaView.h"
#include "startup/Cabinet.h"

#include <exception>

namespace ombrel::startup {

namespace {

    // The eleven lists whose first entries decide whether the boot starts a scan by itself.
    bool noListHasAGame(const catalogue::Catalogue& catalogue)
    {
        for (int n : { 1, 2, 3, 4, 5, 6, 21, 22, 23, 24, 25 })
            if (!catalogue.list(n)->at(1, 1).empty())
                return false;
        return true;
    }

} // namespace

void MainForm::Timer1_Timer()
{
    auto& run = m_cabinet.run;
    auto& settings = m_cabinet.settings;
    auto& saved = m_cabinet.saved;

    core::passOver(failures(), [&] { Timer1.setEnabled(false); }); // 1
    core::passOver(failures(), [&] { // 2
        timScr.setEnabled(true);
        run.saverAuto = true;
    });
    core::passOver(failures(), [&] { // 3
        if (run.curPath >= 0 && run.curPath < static_cast<int>(settings.romDir.size()))
            c.lblPath.setCaption(settings.romDir[static_cast<size_t>(run.curPath)]);
    });
    core::passOver(failures(), [&] { run.curPath = 1; }); // 4
    core::passOver(failures(), [&] { config::OpenINI(m_cabinet.home, settings); }); // 5
    core::passOver(failures(), [&] { return config::openCfg(m_cabinet.homeFile(config::kSavedStateFileName), saved, run.saverCount); }); // 6
    core::passOver(failures(), [&] { // 7
        return browser::setRes(c, run, strip, run.themesDir + saved.curSkin, m_cabinet.platform.files);
    });
    core::passOver(failures(), [&] { // 8
        browser::SetTheme({ c, run, strip, saved, m_cabinet.platform.files, m_cabinet.scheme, failures() },
            mpFX.player(), timfx);
    });
    core::passOver(failures(), [&] { scaler.ReInitialize(); }); // 9
    core::passOver(failures(), [&] { // 10
        if (settings.scrH == 0) {
            settings.scrH = run.deskH;
            settings.scrW = run.deskW;
        }
    });
    core::passOver(failures(), [&] { // 11
        setHeight(runtime::pixelsToTwips(settings.scrH));
        setWidth(runtime::pixelsToTwips(settings.scrW));
    });
    core::passOver(failures(), [&] { strip.stripGap = core::roundHalfEven(strip.stripGap * width() / browser::kDesignWidth); }); // 12
    core::passOver(failures(), [&] { browser::SetListSize(c, run, strip, m_cabinet.scheme); }); // 13
    core::passOver(failures(), [&] { scaleOn = false; }); // 14
    core::passOver(failures(), [&] { setBackColor(m_cabinet.scheme.schemeBack); }); // 15
    core::passOver(failures(), [&] { // 16
        paintPicture(run.themesDir + saved.curSkin + "background.jpg", 0, 0, width(), height());
    });
    core::passOver(failures(), [&] { nav.loadLists(); }); // 17
    core::passOver(failures(), [&] { return input::getKeys(m_cabinet.homeFile(input::kKeyMapFileName), m_cabinet.keys); }); // 18
    core::passOver(failures(), [&] { run.curPath = saved.lastPath.value_or(0); }); // 19
    core::passOver(failures(), [&] { nav.populateList(); }); // 20
    core::passOver(failures(), [&] { // 21
        int lastIndex = saved.lastIndex.value_or(0);
        if (c.List1.listCount() >= lastIndex) {
            run.curPath = saved.lastPath.value_or(0);
            c.List1.setListIndex(lastIndex);
        }
    });
    core::passOver(failures(), [&] { // 22
        if (noListHasAGame(m_cabinet.catalogue))
            timRefreshit.setEnabled(true);
    });
    auto* blanker = stack().existing("blanker");
    auto* film = blanker ? dynamic_cast<runtime::MediaView*>(blanker->find("mpIntro")) : nullptr;
    core::passOver(failures(), [&] { // 23
        auto* timresize = blanker ? blanker->findTimer("timresize") : nullptr;
        if (blanker && film && timresize && !timresize->enabled() && film->player().playState() == platform::kStopped) {
            blanker->hide();
            setFocus();
            setMousePointer(99);
        }
    });
    core::passOver(failures(), [&] { // 24
        if (film)
            film->player().setFileName("");
        if (blanker)
            blanker->hide();
    });
    core::passOver(failures(), [&] { // 25
        c.List1.setTop(height() + c.List1.height() + 300);
        c.List1.setLeft(width() + c.List1.width() + 300);
    });
    core::passOver(failures(), [&] { return input::GetJoyKeys(m_cabinet.homeFile(input::kJoystickFileName), m_cabinet.joyMap); }); // 26
    core::passOver(failures(), [&] { browser::makeVis(c, run); }); // 27
    core::passOver(failures(), [&] { cabRefresh(); }); // 28
    core::passOver(failures(), [&] { setSRate(); }); // 29
    core::passOver(failures(), [&] { nav.RefreshList(); }); // 30
}

} // namespace ombrel::startup
