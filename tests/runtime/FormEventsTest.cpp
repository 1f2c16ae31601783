// The order of Windows' form events: load and show, one form over another, hide, unload, the
// window losing and regaining the system's focus; and where keys and clicks go.
#include "RuntimeFixture.h"

#include "runtime/controls/Label.h"

#include <gtest/gtest.h>

using namespace ombrel;

namespace {

// A form that writes every event it gets into a shared log.
class LoggingForm : public runtime::Form {
public:
    LoggingForm(runtime::FormStack& stack, std::string name, std::vector<std::string>& log)
        : Form(stack, std::move(name))
        , m_log(log)
    {
        auto& label = add<runtime::Label>("lbl");
        label.move(150, 150, 1500, 300);
        label.onMouseDown = [this](int b, int, double, double) { note("lbl_MouseDown " + std::to_string(b)); };
        label.onMouseUp = [this](int b, int, double, double) { note("lbl_MouseUp " + std::to_string(b)); };
        label.onClick = [this] { note("lbl_Click"); };
        label.onDblClick = [this] { note("lbl_DblClick"); };
    }
    void Form_Load() override { note("Load"); }
    void Form_Unload() override { note("Unload"); }
    void Form_Activate() override { note("Activate"); }
    void Form_Deactivate() override { note("Deactivate"); }
    void Form_GotFocus() override { note("GotFocus"); }
    void Form_LostFocus() override { note("LostFocus"); }
    void Form_KeyDown(int vk, int shift) override { note("KeyDown " + std::to_string(vk) + " " + std::to_string(shift)); }
    void Form_KeyUp(int vk, int) override { note("KeyUp " + std::to_string(vk)); }
    void Form_Click() override { note("Click"); }

private:
    void note(const std::string& what) { m_log.push_back(name() + "." + what); }
    std::vector<std::string>& m_log;
};

class FormEventsTest : public ::testing::Test {
protected:
    FormEventsTest()
    {
        for (const char* name : { "A", "B" })
            fx.forms.define(name, [this, name](runtime::FormStack& s) { return std::make_unique<LoggingForm>(s, name, log); });
    }
    // The log since the last call.
    std::vector<std::string> take()
    {
        auto out = log;
        log.clear();
        return out;
    }
    using Log = std::vector<std::string>;

    test::RuntimeFixture fx;
    std::vector<std::string> log;
};

TEST_F(FormEventsTest, AFormComingOverAnotherGoingAwayAndTakingTheFocus)
{
    auto& a = fx.forms.form("A");
    a.show();
    take();
    auto& b = fx.forms.form("B");
    b.show();
    EXPECT_EQ(take(), (Log { "B.Load", "A.LostFocus", "A.Deactivate", "B.Activate", "B.GotFocus" }));
    b.hide();
    EXPECT_EQ(take(), (Log { "B.LostFocus", "B.Deactivate", "A.Activate", "A.GotFocus" }));
    b.setFocus();
    EXPECT_TRUE(take().empty()) << "a hidden form takes no focus";
    b.show();
    a.setFocus();
    take();
    a.setFocus();
    EXPECT_TRUE(take().empty());
    b.setFocus();
    b.unload();
    // An unloaded form is not deactivated; the one below it is activated.
    EXPECT_EQ(take(), (Log { "A.LostFocus", "A.Deactivate", "B.Activate", "B.GotFocus", "B.Unload", "A.Activate",
                          "A.GotFocus" }));
}

TEST_F(FormEventsTest, TheWindowLosingAndRegainingTheSystemsFocus)
{
    fx.forms.form("A").show();
    take();
    fx.focusLost();
    fx.focusLost(); // no second loss
    EXPECT_EQ(take(), (Log { "A.LostFocus", "A.Deactivate" }));
    // A form shown while away is activated on return.
    fx.forms.form("B").show();
    EXPECT_EQ(take(), (Log { "B.Load" }));
    fx.focusGained();
    EXPECT_EQ(take(), (Log { "B.Activate", "B.GotFocus" }));
}

TEST_F(FormEventsTest, KeysGoToTheActiveEnabledFormOnly)
{
    auto& a = fx.forms.form("A");
    a.show();
    take();
    fx.keyDown(40, 1);
    EXPECT_EQ(take(), (Log { "A.KeyDown 40 1" }));
    a.setEnabled(false);
    fx.keyDown(40);
    EXPECT_TRUE(take().empty());
    a.setEnabled(true);
    fx.focusLost();
    take();
    fx.keyDown(40);
    EXPECT_TRUE(take().empty()) << "keys while a game has the focus never reach a form";
}

TEST_F(FormEventsTest, ClicksFindTheTopmostFormAndControlInWindowsOrder)
{
    auto& a = fx.forms.form("A");
    a.move(0, 0, 3000, 3000);
    a.show();
    auto& b = fx.forms.form("B");
    b.move(1500, 1500, 3000, 3000);
    b.show();
    take();
    auto press = [&](runtime::InputKind kind, int x, int y) {
        runtime::InputEvent e;
        e.kind = kind;
        e.x = x;
        e.y = y;
        fx.loop.postInput(e);
        fx.loop.doEvents();
    };
    // (15, 12) px lies on A's label, outside B.
    press(runtime::InputKind::MouseDown, 15, 12);
    press(runtime::InputKind::MouseUp, 15, 12);
    EXPECT_EQ(take(), (Log { "B.LostFocus", "B.Deactivate", "A.Activate", "A.GotFocus", "A.lbl_MouseDown 1",
                          "A.lbl_MouseUp 1", "A.lbl_Click" }));
    // Down on one control and up elsewhere is no click.
    press(runtime::InputKind::MouseDown, 15, 12);
    press(runtime::InputKind::MouseUp, 190, 190);
    auto rest = take();
    EXPECT_EQ(std::count(rest.begin(), rest.end(), "A.lbl_Click"), 0);
    fx.dblclick("A.lbl");
    EXPECT_EQ(take(), (Log { "A.lbl_MouseDown 1", "A.lbl_MouseUp 1", "A.lbl_Click", "A.lbl_DblClick",
                          "A.lbl_MouseUp 1" }));
    // A hidden control is not on the screen: a click aimed at it reaches nobody.
    a.find("lbl")->setVisible(false);
    fx.dblclick("A.lbl");
    EXPECT_EQ(take(), Log {});
}

TEST_F(FormEventsTest, AnUnloadedFormStopsItsTimersAndComesBackFreshInItsDesignState)
{
    auto& a = fx.forms.form("A");
    a.show();
    EXPECT_EQ(fx.trace.lines, (Log { "form load A", "form show A" }));
    int ticks = 0;
    a.addTimer("t", 10, true, [&] { ++ticks; });
    fx.runFor(25);
    static_cast<runtime::Label*>(a.find("lbl"))->setCaption("changed");
    a.unload();
    fx.runFor(100);
    EXPECT_EQ(ticks, 2) << "the timers stop at once";
    fx.settle();
    auto& again = fx.forms.form("A");
    again.show();
    EXPECT_EQ(static_cast<runtime::Label*>(again.find("lbl"))->caption(), "");
    EXPECT_EQ(take(), (Log { "A.Load", "A.Activate", "A.GotFocus", "A.Unload", "A.Load", "A.Activate",
                          "A.GotFocus" }));
}

} // namespace
