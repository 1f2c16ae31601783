// CabinetFixture: the cabinet's files and the application over fakes.
#include "CabinetFixture.h"

#include "config/NumberText.h"

#include <cstdio>
#include <filesystem>

namespace ombrel::test {

namespace {

double soundSeconds(const std::string& path)
{
    if (!std::filesystem::is_regular_file(path))
        return -1;
    // Sounds last as long as these say; a file that is not there cannot be opened.
    return path.ends_with("pop.mp3") ? 0.02 : path.ends_with("end.mp3") ? 1.5 : 1.0;
}

} // namespace

CabinetFixture::CabinetFixture()
    : media(loop, trace, soundSeconds, home.path())
    , processes(trace, home.path())
    , platform { loop, clock, trace, files, media, processes, keys, keyState, joystick, cursor, display,
        power, renderer, fonts, images, home.path() }
{
    loop.setSource(&source);
}

CabinetFixture::~CabinetFixture()
{
    m_app.reset();
    loop.setSource(nullptr);
}

void CabinetFixture::write(const CabinetSetup& setup)
{
    IniSample ini;
    std::string gameList;
    for (size_t i = 0; i < setup.listSizes.size(); ++i) {
        const int list = static_cast<int>(i) + 1;
        ini.setBlock(list, 1, "roms\\" + std::to_string(list) + "\\");
        ini.setBlock(list, 4, "List " + std::to_string(list));
        std::string rows;
        for (int row = 1; row <= setup.listSizes[i]; ++row) {
            char line[64];
            std::snprintf(line, sizeof line, "\"g%d_%03d\",\"Game %d-%d\"\r\n", list, row, list, row);
            rows += line;
            gameList += line;
        }
        home.write("l " + std::to_string(list) + ".lst", rows);
    }
    ini.setTail(13, std::to_string(setup.scrollRate));
    if (setup.ini)
        setup.ini(ini);
    ini.writeTo(home);
    home.write("gamelist.lst", gameList);
    home.write("ombrel.cfg",
        "\"\\Skin\\\"\r\n" + config::numberText(setup.saverDelay) + "\r\n0\r\n0\r\n1\r\n"
            + (setup.muted ? "#TRUE#" : "#FALSE#") + "\r\n0\r\n1\r\n"
            + std::to_string(setup.fontSize) + "\r\n");
    home.write("omthemes/Skin/pop.mp3", "pop");
    home.write("omthemes/Skin/end.mp3", "end");
    if (!setup.skin.empty())
        home.write("omthemes/Skin/skin.ini", setup.skin);
    if (setup.keyFile)
        home.write("omkeys.cfg", "38,40,34,33,116,9,39,37,13,27,53,77,49\r\n");
}

void CabinetFixture::start()
{
    m_app = std::make_unique<startup::Application>(platform, failures);
    m_app->start();
}

void CabinetFixture::boot()
{
    start();
    // Without a film the start-up form shows the browser at once, and its own timer shows it again
    // 2000 ms later; tests begin after that.
    loop.runFor(2500);
}

void CabinetFixture::input(runtime::InputKind kind, int key, int shift, const std::string& target, int button)
{
    loop.postInput({ .kind = kind, .vk = key, .shift = shift, .button = button, .target = target });
    loop.doEvents();
}

std::vector<std::string> CabinetFixture::sinceMark() const
{
    return { trace.lines.begin() + static_cast<std::ptrdiff_t>(std::min(m_mark, trace.lines.size())),
        trace.lines.end() };
}

} // namespace ombrel::test
