// MediaView: a media player placed on a form: it shows a film's pictures in its box (black when
// there are none) and takes clicks like any control.
#pragma once

#include "platform/MediaPlayer.h"
#include "runtime/Control.h"

#include <memory>

namespace ombrel::runtime {

class MediaView : public Control {
public:
    MediaView(Form& form, std::string name, std::unique_ptr<platform::MediaPlayer> player);

    platform::MediaPlayer& player() { return *m_player; }

    void paint(DrawList& out, int originX, int originY, const PixelRect& clip) const override;

private:
    std::unique_ptr<platform::MediaPlayer> m_player;
};

} // namespace ombrel::runtime
