// StateDumpTest: the dump of a replay run, read back by a small parser as an outside checker would: one
// line per control of each visible form with its fields in their order, and captions back to the byte.
#include "TempHome.h"

#include "core/FailureLog.h"
#include "core/TextCodec.h"
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

// "<ms> dump <what> [<name>] (<key> <value>)*": the keys in order, and the values by key.
struct DumpLine
{
    std::string what;
    std::string name;
    std::vector<std::string> keys;
    std::map<std::string, std::string> values;
};

// One word, or quoted text unescaped; nullopt for an unclosed quote or an unknown escape.
std::optional<std::string> token(std::string_view& line)
{
    std::string out;
    size_t i = 0;
    if (!line.starts_with('"')) {
        i = std::min(line.find(' '), line.size());
        out = line.substr(0, i);
    } else {
        const std::string_view escaped = "nrt\"\\", meant = "\n\r\t\"\\";
        for (i = 1; i < line.size() && line[i] != '"'; ++i) {
            if (line[i] != '\\') {
                out += line[i];
            } else if (i + 1 < line.size() && escaped.find(line[i + 1]) != escaped.npos) {
                out += meant[escaped.find(line[++i])];
            } else if (i + 3 < line.size() && line[i + 1] == 'x') {
                out += static_cast<char>(std::stoi(std::string(line.substr(i + 2, 2)), nullptr, 16));
                i += 3;
            } else {
                return std::nullopt;
            }
        }
        if (i++ == line.size())
            return std::nullopt;
    }
    line.remove_prefix(std::min(i + 1, line.size()));
    return out;
}

std::optional<DumpLine> parseDumpLine(std::string_view line)
{
    DumpLine parsed;
    if (!token(line) || token(line) != "dump")
        return std::nullopt;
    parsed.what = *token(line);
    if (parsed.what == "form" || parsed.what == "control" || parsed.what == "timer" || parsed.what == "path")
        parsed.name = *token(line);
    while (!line.empty()) {
        auto key = token(line), value = token(line);
        if (!key || !value)
            return std::nullopt;
        parsed.keys.push_back(*key);
        parsed.values[*key] = *value;
    }
    return parsed;
}

// Line ends, tab, quote, a trailing backslash (which must not swallow the closing quote), Windows-1252,
// other control bytes, and length.
const std::vector<std::string> kCaptions { "Pac\r\nMan", "a\rb", "a\tb", "say \"hi\"", "C:\\roms\\",
    "caf\xE9 \x93q\x94", std::string("\x01\x1F\x7F", 3), [] {
        std::string text;
        while (text.size() < 10'000)
            text += "ab\\\"\n\x01";
        return text;
    }() };

// The fields of each kind of control after the ones all have.
const std::map<std::string, std::vector<std::string>> kKindFields {
    { "label", { "fore", "back", "style", "align", "font", "file", "size", "bold", "caption" } },
    { "picture", { "back", "picture" } }, { "image", { "picture" } }, { "shape", { "border", "fill" } },
    { "box", { "back" } }
};

// The demo cabinet on a 800 x 600 replay screen, dumped once the browser is up, with labels added to
// Main whose captions hold what a dump line must escape (the last one hidden).
TEST(StateDumpTest, OneLinePerControlOfAVisibleFormWithItsFieldsAndCaptionsReadBackExactly)
{
    TempHome home;
    std::filesystem::copy(std::filesystem::path(sourceDir()) / "demo", home.root() / "demo",
        std::filesystem::copy_options::recursive);
    std::string error;
    auto script = replay::ReplayScript::parse("at 10000 dump\nat 10000 end\n", "t.replay", error);
    ASSERT_TRUE(script) << error;
    core::FailureLog failures { "", std::cerr };
    std::vector<std::string> expectedControls;
    {
        replay::ReplayPlatform replay(
            home.path() + "demo/", std::move(*script), home.path() + "trace", { 800, 600 });
        startup::Application app(replay.platform(), failures);
        replay.driver().setDumpSource([&] {
            runtime::Form& main = app.forms().form("Main");
            for (size_t i = 0; i < kCaptions.size(); ++i)
                main.add<runtime::Label>("probe", static_cast<int>(i)).setCaption(kCaptions[i]);
            main.controls().back()->setVisible(false);
            for (const runtime::Form* form : app.forms().zOrder())
                for (const runtime::Control* control : form->controls())
                    if (form->visible())
                        expectedControls.push_back(form->name() + "." + control->fullName());
            return app.dump();
        });
        app.start();
        replay.platform().loop.run();
    }
    const std::string trace = home.read("trace");
    EXPECT_TRUE(core::isValidUtf8(trace)); // Windows-1252 bytes are escaped too

    std::vector<std::string> controls;
    std::map<std::string, DumpLine> byName;
    std::istringstream in(trace);
    for (std::string line; std::getline(in, line);) {
        ASSERT_TRUE(!line.empty() && std::isdigit(static_cast<unsigned char>(line[0]))) << "cut: " << line;
        if (!line.starts_with("10000 dump "))
            continue;
        const auto dump = parseDumpLine(line);
        ASSERT_TRUE(dump) << line.substr(0, 200);
        byName[dump->what + " " + (dump->name.empty() ? dump->keys.at(0) : dump->name)] = *dump;
        if (dump->what != "control")
            continue;
        controls.push_back(dump->name);
        std::vector<std::string> keys { "kind", "visible", "x", "y", "w", "h" };
        const std::string kind = dump->values.at("kind");
        if (kKindFields.contains(kind))
            keys.insert(keys.end(), kKindFields.at(kind).begin(), kKindFields.at(kind).end());
        EXPECT_EQ(dump->keys, keys) << dump->name;
    }
    EXPECT_EQ(controls, expectedControls);
    for (size_t i = 0; i < kCaptions.size(); ++i)
        EXPECT_EQ(byName["control Main.probe(" + std::to_string(i) + ")"].values["caption"], kCaptions[i])
            << i;
    EXPECT_EQ(byName["control Main.probe(7)"].values["visible"], "0"); // hidden controls are dumped too
    EXPECT_TRUE(byName["control Main.ll(0)"].values["file"].ends_with(".ttf"));

    // The replay screen's size reaches the maximised forms (the desktop's: ProgramRunTest).
    EXPECT_EQ(byName["form background"].values["w"] + "x" + byName["form background"].values["h"], "800x600");
    EXPECT_EQ(byName["path 27"].keys, std::vector<std::string> { "logo" });
}

} // namespace
} // namespace ombrel::test
