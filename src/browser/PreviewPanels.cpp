// PreviewPanels: the selected game's pictures.
#include "browser/PreviewPanels.h"

namespace ombrel::browser {

void cabRefresh(MainControls&)
{
    // FIXME: the preview panels and the selection's sound join here with the preview feature.
}

} // namespace ombrel::browser
