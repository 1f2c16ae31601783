// StateDumpTest: the dump of a replay run, read back by a small parser as an outside checker would: one
// line per control of each visible form with its fields in their order, and captions back to the byte.
#include "TempHome.h"

#include "core/FailureLog.h"
#include "replay/ReplayPlatform.h"
#include "runtime/controls/Label.h"
#include "startup/Application.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>

namespace ombrel::test {
namespace {

namespace fs = std::filesystem;

// "dump <what> [<name>] (<key> <value>)*" after the time; a value is a word or escaped quoted text.
struct DumpLine {
    std::string what;
    std::string name;
    std::vector<std::pair<std::string, std::string>> fields;

    std::vector<std::string> keys() const
    {
        std::vector<std::string> out;
        for (const auto& field : fields)
            out.push_back(field.first);
        return out;
    }
    std::string operator[](const std::string& key) const
    {
        for (const auto& field : fields)
            if (field.first == key)
                return field.second;
        return "<missing " + key + ">";
    }
};

// nullopt when the line breaks the grammar (an unclosed quote, an unknown escape, a key without a value).
std::optional<DumpLine> parseDumpLine(std::string_view line)
{
    auto word = [&line]() {
        const size_t end = std::min(line.find(' '), line.size());
        std::string out(line.substr(0, end));
        line.remove_prefix(std::min(end + 1, line.size()));
        return out;
    };
    auto value = [&line]() -> std::optional<std::string> {
        if (line.empty() || line[0] != '"') {
            const size_t end = std::min(line.find(' '), line.size());
            std::string out(line.substr(0, end));
            line.remove_prefix(std::min(end + 1, line.size()));
            return out.empty() ? std::nullopt : std::optional(out);
        }
        std::string out;
        for (size_t i = 1; i < line.size(); ++i) {
            if (line[i] == '"') {
                line.remove_prefix(std::min(i + 2, line.size()));
                return out;
            }
            if (line[i] != '\\') {
                out += line[i];
                continue;
            }
            if (++i == line.size())
                return std::nullopt;
            const std::map<char, char> simple { { 'n', '\n' }, { 'r', '\r' }, { 't', '\t' }, { '"', '"' },
                { '\\', '\\' } };
            if (auto it = simple.find(line[i]); it != simple.end()) {
                out += it->second;
            } else if (line[i] == 'x' && i + 2 < line.size()) {
                out += static_cast<char>(std::stoi(std::string(line.substr(i + 1, 2)), nullptr, 16));
                i += 2;
            } else {
                return std::nullopt;
            }
        }
        return std::nullopt;
    };
    word(); // the time
    if (word() != "dump")
        return std::nullopt;
    DumpLine parsed;
    parsed.what = word();
    if (parsed.what == "form" || parsed.what == "control" || parsed.what == "timer" || parsed.what == "path")
        parsed.name = word();
    while (!line.empty()) {
        std::string key = word();
        auto text = value();
        if (!text)
            return std::nullopt;
        parsed.fields.emplace_back(std::move(key), std::move(*text));
    }
    return parsed;
}

struct Caption {
    const char* name;
    std::string text;
};

std::string longCaption()
{
    std::string text;
    for (int i = 0; text.size() < 10'000; ++i)
        text += "ab\\\"\n\x01"[i % 6];
    return text;
}

const std::vector<Caption> kCaptions {
    { "crlf", "Pac\r\nMan" },
    { "loneCr", "a\rb" },
    { "tab", "a\tb" },
    { "quote", "say \"hi\"" },
    { "backslash", "C:\\roms\\" }, // a trailing backslash must not swallow the closing quote
    { "windows1252", "caf\xE9 \x93q\x94" },
    { "controls", std::string("\x01\x1F\x7F", 3) },
    { "long", longCaption() },
};

// The demo cabinet on a 800 x 600 replay screen, dumped once the browser is up, with labels added to
// Main whose captions hold what a dump line must escape (the last one hidden).
class StateDumpTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        fs::copy(fs::path(sourceDir()) / "demo", home.root() / "demo", fs::copy_options::recursive);
        std::string error;
        auto script = replay::ReplayScript::parse("at 10000 dump\nat 10000 end\n", "t.replay", error);
        ASSERT_TRUE(script) << error;
        replay::ReplayPlatform replay(home.path() + "demo/", std::move(*script), home.path() + "trace",
            { 800, 600 });
        startup::Application app(replay.platform(), failures);
        replay.driver().setDumpSource([&app, this] {
            runtime::Form& main = app.forms().form("Main");
            for (size_t i = 0; i < kCaptions.size(); ++i)
                main.add<runtime::Label>("probe", static_cast<int>(i)).setCaption(kCaptions[i].text);
            main.controls().back()->setVisible(false);
            for (const runtime::Form* form : app.forms().zOrder())
                if (form->visible())
                    for (const runtime::Control* control : form->controls())
                        expectedControls.push_back(form->name() + "." + control->fullName());
            return app.dump();
        });
        app.start();
        replay.platform().loop.run();
        std::istringstream trace(home.read("trace"));
        for (std::string line; std::getline(trace, line);)
            lines.push_back(line);
    }

    std::vector<DumpLine> parsed(const std::string& what)
    {
        std::vector<DumpLine> out;
        for (const std::string& line : lines) {
            auto dump = parseDumpLine(line);
            if (line.starts_with("10000 dump ")) {
                EXPECT_TRUE(dump) << line.substr(0, 200);
                if (dump && dump->what == what)
                    out.push_back(*dump);
            }
        }
        return out;
    }

    TempHome home;
    core::FailureLog failures { "", std::cerr };
    std::vector<std::string> lines;
    std::vector<std::string> expectedControls;
};

TEST_F(StateDumpTest, EveryControlOfAVisibleFormHasOneLineWithItsFieldsInOrder)
{
    const std::vector<DumpLine> controls = parsed("control");
    std::vector<std::string> names;
    for (const DumpLine& control : controls) {
        names.push_back(control.name);
        SCOPED_TRACE(control.name);
        std::vector<std::string> keys { "kind", "visible", "x", "y", "w", "h" };
        if (control["kind"] == "label")
            keys.insert(keys.end(), { "fore", "back", "font", "file", "size", "bold", "caption" });
        else if (control["kind"] == "picture")
            keys.insert(keys.end(), { "back", "picture" });
        else if (control["kind"] == "image")
            keys.insert(keys.end(), { "picture" });
        else if (control["kind"] == "shape")
            keys.insert(keys.end(), { "border", "fill" });
        else if (control["kind"] == "box")
            keys.insert(keys.end(), { "back" });
        EXPECT_EQ(control.keys(), keys);
        if (control["kind"] == "label") {
            EXPECT_TRUE(control["file"].ends_with(".ttf")) << control["file"];
        }
    }
    ASSERT_FALSE(expectedControls.empty());
    EXPECT_EQ(names, expectedControls);
    EXPECT_EQ(controls.back()["visible"], "0"); // hidden controls are dumped too

    // The replay screen's size reaches the maximised forms and the desktop the program found.
    for (const DumpLine& form : parsed("form")) {
        if (form.name == "background") {
            EXPECT_EQ(form["w"] + "x" + form["h"], "800x600");
        }
    }
    const std::vector<DumpLine> state = parsed("state");
    std::map<std::string, std::string> values;
    for (const DumpLine& line : state)
        values[line.fields.at(0).first] = line.fields.at(0).second;
    EXPECT_EQ(values["deskW"] + "x" + values["deskH"], "800x600");
    EXPECT_EQ(values["curPath"], "1");
    EXPECT_EQ(parsed("path").size(), 27u);
}

TEST_F(StateDumpTest, EachCaptionReadsBackExactlyFromItsOneLine)
{
    for (const std::string& line : lines)
        EXPECT_TRUE(!line.empty() && std::isdigit(static_cast<unsigned char>(line[0]))) << line.substr(0, 80);
    std::map<std::string, std::string> captions;
    for (const DumpLine& control : parsed("control"))
        captions[control.name] = control["caption"];
    for (size_t i = 0; i < kCaptions.size(); ++i) {
        SCOPED_TRACE(kCaptions[i].name);
        EXPECT_EQ(captions["Main.probe(" + std::to_string(i) + ")"], kCaptions[i].text);
    }
}

} // namespace
} // namespace ombrel::test
