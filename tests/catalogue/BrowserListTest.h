// BrowserListTest: a browser form with the controls the list operations work on (List1, lblPath,
// xlogo, five strip rows and five navigation labels, the middle row 2) over the runtime's fakes, with
// the settings, run state and lists they read.
#pragma once

#include "RuntimeFixture.h"
#include "TempHome.h"

#include "catalogue/Catalogue.h"
#include "catalogue/ListFiles.h"
#include "config/RunState.h"
#include "config/Settings.h"
#include "runtime/controls/ControlArray.h"
#include "runtime/controls/Image.h"
#include "runtime/controls/Label.h"
#include "runtime/controls/ListBox.h"

#include <gtest/gtest.h>

#include <optional>

namespace ombrel::test {

class BrowserListTest : public ::testing::Test {
protected:
    BrowserListTest()
    {
        fx.forms.define("Main", [](runtime::FormStack& s) { return std::make_unique<runtime::Form>(s, "Main"); });
        main = &fx.forms.form("Main");
        main->show();
        list1 = &main->add<runtime::ListBox>("List1");
        lblPath = &main->add<runtime::Label>("lblPath");
        xlogo = &main->add<runtime::Image>("xlogo");
        ll.emplace(*main, "ll");
        lblNav.emplace(*main, "lblNav");
        // Rows of the strip as the browser lays them out, wide enough for the scan's message.
        for (int k = 0; k < 5; ++k) {
            ll->create(k).move(0, 240.0 * k, 7680, 240);
            lblNav->create(k);
        }
        run.midRow = 2;
    }

    catalogue::CatalogueContext context() { return { settings, run, cat, fx.files, home.path() }; }

    TempHome home;
    config::Settings settings;
    config::RunState run;
    catalogue::Catalogue cat;
    RuntimeFixture fx;
    runtime::Form* main = nullptr;
    runtime::ListBox* list1 = nullptr;
    runtime::Label* lblPath = nullptr;
    runtime::Image* xlogo = nullptr;
    std::optional<runtime::ControlArray<runtime::Label>> ll;
    std::optional<runtime::ControlArray<runtime::Label>> lblNav;
};

} // namespace ombrel::test
