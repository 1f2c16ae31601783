// RuntimeFixture: wiring of the runtime over fakes.
#include "RuntimeFixture.h"

namespace ombrel::test {

RuntimeFixture::RuntimeFixture()
    : forms(runtime::FormServices { loop, trace, fonts, images, files, renderer, "", failures })
{
    loop.setSource(&source);
    loop.setInputHandler([this](const runtime::InputEvent& event) { forms.dispatch(event); });
    loop.setPaintHandler([this] { forms.paintIfChanged(); });
}

void RuntimeFixture::post(runtime::InputKind kind, int vk, int shift, const std::string& target)
{
    runtime::InputEvent event;
    event.kind = kind;
    event.vk = vk;
    event.shift = shift;
    event.target = target;
    loop.postInput(event);
    loop.doEvents();
}

} // namespace ombrel::test
