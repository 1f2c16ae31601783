// Tests of the replay script reader: what each kind of line becomes, and that mistakes name their line.
#include "replay/ReplayScript.h"

#include <gtest/gtest.h>

namespace ombrel::replay {
namespace {

using Action = ScriptStep::Action;
using runtime::InputKind;

ScriptStep only(std::string_view text)
{
    std::string error;
    auto script = ReplayScript::parse(text, "t.replay", error);
    EXPECT_TRUE(script) << error;
    if (!script || script->steps().size() != 1) {
        ADD_FAILURE() << "expected one step";
        return {};
    }
    return script->steps()[0];
}

// The scenario scripts pin the lines they use (keys, clicks on names, joy x y buttons, focus, faults,
// dump, screenshot, end); these are the forms they do not.
TEST(ReplayScript, LinesTheScenariosDoNotUse)
{
    struct Row
    {
        const char* text;
        InputKind kind;
        int shift, button, x, y;
        const char* target;
    };
    const Row rows[] = {
        { "at 5 dblclick Main.lblPath shift 1", InputKind::DblClick, 1, 1, 0, 0, "Main.lblPath" },
        { "at 5 mousedown right Info", InputKind::MouseDown, 0, 2, 0, 0, "Info" },
        { "at 5 mouseup left 7 8", InputKind::MouseUp, 0, 1, 7, 8, "" },
        { "at 5 mousemove 100 200", InputKind::MouseMove, 0, 0, 100, 200, "" },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const ScriptStep step = only(row.text);
        EXPECT_EQ(step.action, Action::Input);
        EXPECT_EQ(step.input.kind, row.kind);
        EXPECT_EQ(step.input.shift, row.shift);
        EXPECT_EQ(step.input.button, row.button);
        EXPECT_EQ(step.input.x, row.x);
        EXPECT_EQ(step.input.y, row.y);
        EXPECT_EQ(step.input.target, row.target);
        EXPECT_EQ(step.hasPosition, row.x != 0);
    }
    ScriptStep step = only("at 500 joy buttons 4294967295 y 10000 x 32768 r 2");
    EXPECT_EQ(step.joy.x, 32768u);
    EXPECT_EQ(step.joy.z, 32767u);
    EXPECT_EQ(step.joy.r, 2u);
    EXPECT_EQ(step.joy.buttons, 4294967295u);
    step = only("\xEF\xBB\xBF\r\n  at 1000\twrite fail l\t 1.lst  # a list file\r\n");
    EXPECT_EQ(step.file, "l 1.lst");
    EXPECT_EQ(step.line, 2);
    step = only("at 0 power refuse 8004062e errno 13");
    EXPECT_EQ(static_cast<uint32_t>(step.errorNumber), 0x8004062Eu);
    EXPECT_EQ(step.systemError, 13);
}

TEST(ReplayScript, MistakesAreReportedWithTheirLine)
{
    struct Row {
        const char* text;
        const char* message;
    };
    const Row rows[] = {
        { "at 0 key down 40\nkey down 40", "t.replay line 2: a line starts with \"at <milliseconds>\"" },
        { "at x key down 40", "t.replay line 1: \"x\" is not a number (time)" },
        { "at -5 dump", "t.replay line 1: time -5 is out of range" },
        { "at 10\n", "t.replay line 1: missing directive after the time" },
        { "at 10 dump\n\nat 9 dump", "t.replay line 3: time 9 is earlier than the line before (10)" },
        { "at 0 jump", "t.replay line 1: unknown directive \"jump\"" },
        { "at 0 key down 40 shift 8", "shift mask 8 is out of range 0..7" },
        { "at 0 joy x 1 y 2", "a joy line needs x, y and buttons" },
        { "at 0 click", "missing target" },
        { "at 0 mousedown middle Main", "expected left or right, not \"middle\"" },
        { "at 0 power refuse 8004062F", "\"8004062F\" is not a refusal of the power service" },
        { "at 0 power refuse 0x8004062B", "is not a refusal of the power service" },
        { "at 0 end\nat 0 dump", "t.replay line 2: nothing may follow end" },
        { "at 99999999999999999999 dump", "is not a number (time)" },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        std::string error;
        EXPECT_FALSE(ReplayScript::parse(row.text, "t.replay", error));
        EXPECT_NE(error.find(row.message), std::string::npos) << error;
    }
}

TEST(ReplayScript, LoadNamesTheFileInItsMessages)
{
    std::string error;
    EXPECT_FALSE(ReplayScript::load("/nonexistent/x.replay", error));
    EXPECT_EQ(error, "/nonexistent/x.replay: cannot be read");
}

} // namespace
} // namespace ombrel::replay
