// PreviewPanels: the four pictures of the selected game and the selection's sound.
#pragma once

namespace ombrel::browser {

struct MainControls;

// Shows the selected game's pictures and plays the selection's sound.
void cabRefresh(MainControls& c);

} // namespace ombrel::browser
