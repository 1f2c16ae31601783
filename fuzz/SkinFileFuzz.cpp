// Fuzz target of the reader of a skin's skin.ini: any bytes as the skin file.
#include "FuzzHome.h"

#include "browser/SkinFile.h"

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

using namespace ombrel;
using fuzz::fuzzCheck;

namespace {

// A run state that holds another skin's values, as a later load of the browser finds it.
config::RunState heldState()
{
    config::RunState run;
    run.skin.xScreen = { 1, 2, 3, 4 };
    run.skin.showNav = true;
    run.skin.listCols = 7;
    run.skin.stripGap = -5;
    run.skin.xlogo = { 9, 8, 7, 6 };
    run.listType = "flyer";
    run.showLogo = true;
    return run;
}

bool finitePosition(double value)
{
    return std::isfinite(value) && std::fabs(value) <= FLT_MAX;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    config::RunState fresh;
    const browser::SkinRead first = browser::readSkin(bytes, fresh);
    fuzzCheck(first.values.size() + first.unread.size() == 41, "a value neither read nor left unread");
    fuzzCheck(
        first.failure.empty() == first.unread.empty(), "values unread without a reason, or the reverse");
    const config::SkinValues& s = fresh.skin;
    for (const config::SkinBox& box : { s.xScreen, s.xCabinet, s.xFlyer, s.xMarquee, s.Shape1, s.xlogo })
        for (double value : { box.top, box.left, box.width, box.height })
            fuzzCheck(finitePosition(value), "a position that no control can take");
    for (double value :
        { s.xlistWidth, s.xlistHeight, s.lblPathTop, s.lblPathLeft, s.lblNavTop, s.lblNavLeft })
        fuzzCheck(finitePosition(value), "a position that no control can take");

    // Over another skin's values the file reads the same, and a file read in full leaves nothing of them.
    config::RunState held = heldState();
    const browser::SkinRead again = browser::readSkin(bytes, held);
    fuzzCheck(again.values.size() == first.values.size() && again.failure == first.failure,
        "the same file read differently over other values");
    for (size_t i = 0; i < first.values.size(); ++i)
        fuzzCheck(again.values[i].text == first.values[i].text
                && again.values[i].fileLine == first.values[i].fileLine,
            "a value read differently over other values");
    if (first.failure.empty())
        fuzzCheck(
            held.skin == fresh.skin && held.listType == fresh.listType && held.showLogo == fresh.showLogo,
            "a complete read left a value of the skin before");
    else if (first.values.size() <= 36) // the logo's four values are the 37th to the 40th
        fuzzCheck(held.skin.xlogo == heldState().skin.xlogo && held.showLogo,
            "a stopped read changed the logo it never reached");
    return 0;
}
