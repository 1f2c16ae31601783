// PreviewPanels: the selected game's pictures and the selection's click.
#include "browser/PreviewPanels.h"

namespace ombrel::browser {

std::string skinFile(platform::Files& files, const config::RunState& run, const config::SavedState& saved,
    const std::string& name)
{
    const std::string path = run.themesDir + saved.curSkin + name;
    return files.resolveFile(path).value_or(platform::toNativePath(path));
}

void cabRefresh(MainControls&, const PreviewContext& ctx)
{
    // Without a key map there is no click: a cabinet that has not been set up yet stays quiet.
    if (ctx.keyExit && *ctx.keyExit != 0 && !ctx.saved.muted) {
        platform::MediaPlayer& player = ctx.mpFX;
        if (player.playState() != platform::kPlaying) {
            player.setFileName(skinFile(ctx.files, ctx.run, ctx.saved, "pop.mp3"));
            if (!player.fileName().empty())
                player.play();
        }
    }
    // FIXME: the preview panels join here with the preview feature.
}

} // namespace ombrel::browser
