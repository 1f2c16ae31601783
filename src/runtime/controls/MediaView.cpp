// MediaView: a player's pictures on a form.
#include "runtime/controls/MediaView.h"

namespace ombrel::runtime {

MediaView::MediaView(Form& form, std::string name, std::unique_ptr<platform::MediaPlayer> player)
    : Control(form, std::move(name))
    , m_player(std::move(player))
{
}

void MediaView::paint(DrawList& out, int originX, int originY, const PixelRect& clip) const
{
    DrawCommand fill;
    fill.kind = DrawCommand::Kind::Fill;
    fill.rect = pixelRect(originX, originY);
    fill.clip = clip;
    fill.colour = 0;
    out.push_back(fill);
    if (m_player->playState() == platform::kStopped)
        return;
    DrawCommand film;
    film.kind = DrawCommand::Kind::Film;
    film.rect = fill.rect;
    film.clip = clip;
    film.text = name();
    out.push_back(std::move(film));
}

} // namespace ombrel::runtime
