// ReplayScript: the line-by-line reader of replay scripts. Every mistake is reported with its line, and
// a script with a mistake is never run, so a test never passes on half a script.
#include "replay/ReplayScript.h"

#include "platform/Power.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

namespace ombrel::replay {

namespace {

// About thirty years: far beyond any run, and far from overflowing when times are added to.
constexpr int64_t kMaxTimeMs = 1'000'000'000'000;
constexpr int64_t kMaxPixel = 100'000;

struct ScriptError {
    std::string what;
};

std::string quoted(std::string_view word) { return "\"" + std::string(word) + "\""; }

bool isIdentifier(std::string_view s)
{
    if (s.empty() || (s[0] >= '0' && s[0] <= '9'))
        return false;
    for (char c : s) {
        const bool ok = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
        if (!ok)
            return false;
    }
    return true;
}

// "Form", "Form.control" or "Form.control(3)".
bool isTarget(std::string_view s)
{
    const size_t dot = s.find('.');
    if (dot == std::string_view::npos)
        return isIdentifier(s);
    if (!isIdentifier(s.substr(0, dot)))
        return false;
    std::string_view control = s.substr(dot + 1);
    const size_t open = control.find('(');
    if (open == std::string_view::npos)
        return isIdentifier(control);
    if (control.back() != ')' || !isIdentifier(control.substr(0, open)))
        return false;
    std::string_view index = control.substr(open + 1, control.size() - open - 2);
    if (index.empty() || index.size() > 5)
        return false;
    for (char c : index) {
        if (c < '0' || c > '9')
            return false;
    }
    return true;
}

// The words of one line, read from left to right.
class LineReader {
public:
    explicit LineReader(std::string_view text)
    {
        size_t i = 0;
        while (i < text.size()) {
            while (i < text.size() && (text[i] == ' ' || text[i] == '\t'))
                ++i;
            const size_t start = i;
            while (i < text.size() && text[i] != ' ' && text[i] != '\t')
                ++i;
            if (i > start)
                m_words.push_back(text.substr(start, i - start));
        }
    }

    bool empty() const { return m_words.empty(); }
    bool atEnd() const { return m_pos >= m_words.size(); }
    std::string_view peek() const { return atEnd() ? std::string_view() : m_words[m_pos]; }

    std::string_view next(const char* what)
    {
        if (atEnd())
            throw ScriptError { std::string("missing ") + what };
        return m_words[m_pos++];
    }

    int64_t number(const char* what, int64_t min, int64_t max)
    {
        const std::string_view word = next(what);
        int64_t value = 0;
        const auto [end, ec] = std::from_chars(word.data(), word.data() + word.size(), value);
        if (ec != std::errc() || end != word.data() + word.size())
            throw ScriptError { quoted(word) + " is not a number (" + what + ")" };
        if (value < min || value > max)
            throw ScriptError { std::string(what) + " " + std::string(word) + " is out of range " +
                                std::to_string(min) + ".." + std::to_string(max) };
        return value;
    }

    void expectEnd() const
    {
        if (!atEnd())
            throw ScriptError { "unexpected " + quoted(m_words[m_pos]) };
    }

private:
    std::vector<std::string_view> m_words;
    size_t m_pos = 0;
};

void readShift(LineReader& in, runtime::InputEvent& event)
{
    if (in.peek() == "shift") {
        in.next("shift");
        event.shift = int(in.number("shift mask", 0, 7));
    }
}

void readKey(LineReader& in, ScriptStep& step)
{
    const std::string_view how = in.next("down or up after key");
    if (how != "down" && how != "up")
        throw ScriptError { "expected down or up after key, not " + quoted(how) };
    step.input.kind = how == "down" ? runtime::InputKind::KeyDown : runtime::InputKind::KeyUp;
    step.input.vk = int(in.number("key code", 1, 255));
    readShift(in, step.input);
}

// A control by name, or a screen position.
void readWhere(LineReader& in, ScriptStep& step)
{
    const std::string_view first = in.peek();
    if (!first.empty() && first[0] >= '0' && first[0] <= '9') {
        step.input.x = int(in.number("x", 0, kMaxPixel));
        step.input.y = int(in.number("y", 0, kMaxPixel));
        step.hasPosition = true;
        return;
    }
    const std::string_view target = in.next("target (Form.control(index)) or x y");
    if (!isTarget(target))
        throw ScriptError { quoted(target) + " is not a target such as Main.ll(3)" };
    step.input.target = std::string(target);
}

void readMouse(std::string_view directive, LineReader& in, ScriptStep& step)
{
    using runtime::InputKind;
    if (directive == "mousemove") {
        step.input.kind = InputKind::MouseMove;
        step.input.button = 0;
        step.input.x = int(in.number("x", 0, kMaxPixel));
        step.input.y = int(in.number("y", 0, kMaxPixel));
        step.hasPosition = true;
    } else if (directive == "mousedown" || directive == "mouseup") {
        step.input.kind = directive == "mousedown" ? InputKind::MouseDown : InputKind::MouseUp;
        const std::string_view button = in.next("left or right");
        if (button != "left" && button != "right")
            throw ScriptError { "expected left or right, not " + quoted(button) };
        step.input.button = button == "left" ? 1 : 2;
        readWhere(in, step);
    } else {
        step.input.kind = directive == "click" ? InputKind::Click : InputKind::DblClick;
        readWhere(in, step);
    }
    readShift(in, step.input);
}

void readJoy(LineReader& in, ScriptStep& step)
{
    constexpr const char* kFields[] = { "x", "y", "z", "r", "u", "v", "buttons" };
    uint32_t* targets[] = { &step.joy.x, &step.joy.y, &step.joy.z, &step.joy.r, &step.joy.u, &step.joy.v,
                            &step.joy.buttons };
    bool seen[7] = {};
    while (!in.atEnd()) {
        const std::string_view field = in.next("joystick field");
        size_t i = 0;
        while (i < 7 && field != kFields[i])
            ++i;
        if (i == 7)
            throw ScriptError { quoted(field) + " is not a joystick field (x y z r u v buttons)" };
        if (seen[i])
            throw ScriptError { "joystick field " + quoted(field) + " given twice" };
        seen[i] = true;
        const int64_t max = i == 6 ? int64_t(std::numeric_limits<uint32_t>::max()) : 65535;
        *targets[i] = uint32_t(in.number(kFields[i], 0, max));
    }
    if (!seen[0] || !seen[1] || !seen[6])
        throw ScriptError { "a joy line needs x, y and buttons" };
}

// "power refuse <number> [errno N]": the number in hexadecimal, as the error box shows it. The
// power-off's own refusal comes from the power-off; the others from the check before it.
void readPowerRefusal(LineReader& in, ScriptStep& step)
{
    if (in.next("refuse after power") != "refuse")
        throw ScriptError { "expected power refuse" };
    const std::string_view word = in.next("error number after power refuse");
    uint32_t number = 0;
    const auto [end, ec] = std::from_chars(word.data(), word.data() + word.size(), number, 16);
    const bool known = ec == std::errc() && end == word.data() + word.size() && word.size() == 8
        && number >= uint32_t(platform::kErrShutdownFailed) && number <= uint32_t(platform::kErrNoPrivilege);
    if (!known)
        throw ScriptError { quoted(word) + " is not a refusal of the power service (8004062B, 8004062C, "
                                           "8004062D or 8004062E)" };
    step.errorNumber = static_cast<int>(number);
    if (!in.atEnd()) {
        if (in.next("errno") != "errno")
            throw ScriptError { "expected errno after the error number" };
        step.systemError = int(in.number("errno", 1, 4095));
    }
}

// The rest of the line, its words joined by one blank: a list file's name holds a blank.
std::string readRest(LineReader& in)
{
    std::string rest;
    while (!in.atEnd()) {
        if (!rest.empty())
            rest += ' ';
        rest.append(in.next("word"));
    }
    return rest;
}

// Fills step from the words after the time.
void readDirective(LineReader& in, ScriptStep& step)
{
    using Action = ScriptStep::Action;
    const std::string_view directive = in.next("directive after the time");
    if (directive == "key") {
        readKey(in, step);
    } else if (directive == "joy") {
        step.action = Action::Joy;
        readJoy(in, step);
    } else if (directive == "click" || directive == "dblclick" || directive == "mousedown"
               || directive == "mouseup" || directive == "mousemove") {
        readMouse(directive, in, step);
    } else if (directive == "focus") {
        const std::string_view how = in.next("lost or gained after focus");
        if (how != "lost" && how != "gained")
            throw ScriptError { "expected lost or gained after focus, not " + quoted(how) };
        step.input.kind = how == "lost" ? runtime::InputKind::FocusLost : runtime::InputKind::FocusGained;
    } else if (directive == "process") {
        if (in.next("exit after process") != "exit")
            throw ScriptError { "expected process exit" };
        step.action = Action::ProcessExit;
    } else if (directive == "screenshot") {
        step.action = Action::Screenshot;
        step.file = std::string(in.next("file name after screenshot"));
    } else if (directive == "dump") {
        step.action = Action::Dump;
    } else if (directive == "end") {
        step.action = Action::End;
    } else if (directive == "launch") {
        if (in.next("fail after launch") != "fail")
            throw ScriptError { "expected launch fail" };
        step.action = Action::FailLaunch;
    } else if (directive == "write") {
        if (in.next("fail after write") != "fail")
            throw ScriptError { "expected write fail" };
        step.action = Action::FailWrite;
        step.file = readRest(in);
    } else if (directive == "power") {
        step.action = Action::RefusePower;
        readPowerRefusal(in, step);
    } else {
        throw ScriptError { "unknown directive " + quoted(directive) };
    }
    in.expectEnd();
}

} // namespace

std::optional<ReplayScript> ReplayScript::parse(std::string_view text, const std::string& name, std::string& error)
{
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    ReplayScript script;
    int lineNumber = 0;
    bool ended = false;
    int64_t lastTime = 0;
    while (!text.empty()) {
        ++lineNumber;
        const size_t eol = text.find('\n');
        std::string_view line = text.substr(0, eol);
        text.remove_prefix(eol == std::string_view::npos ? text.size() : eol + 1);
        if (const size_t hash = line.find('#'); hash != std::string_view::npos)
            line = line.substr(0, hash);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);

        LineReader in(line);
        if (in.empty())
            continue;
        try {
            if (ended)
                throw ScriptError { "nothing may follow end" };
            if (in.next("at") != "at")
                throw ScriptError { "a line starts with \"at <milliseconds>\"" };
            ScriptStep step;
            step.line = lineNumber;
            step.at = in.number("time", 0, kMaxTimeMs);
            if (step.at < lastTime)
                throw ScriptError { "time " + std::to_string(step.at) + " is earlier than the line before ("
                                    + std::to_string(lastTime) + ")" };
            readDirective(in, step);
            lastTime = step.at;
            ended = step.action == ScriptStep::Action::End;
            script.m_steps.push_back(std::move(step));
        } catch (const ScriptError& e) {
            error = name + " line " + std::to_string(lineNumber) + ": " + e.what;
            return std::nullopt;
        }
    }
    return script;
}

std::optional<ReplayScript> ReplayScript::load(const std::string& path, std::string& error)
{
    std::error_code ec;
    std::ifstream in;
    if (std::filesystem::is_regular_file(path, ec))
        in.open(path, std::ios::binary);
    if (!in.is_open()) {
        error = path + ": cannot be read";
        return std::nullopt;
    }
    std::ostringstream text;
    text << in.rdbuf();
    return parse(text.str(), path, error);
}

} // namespace ombrel::replay
