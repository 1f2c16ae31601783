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

static runtime::InputEvent make(runtime::InputKind kind)
{
    runtime::InputEvent event;
    event.kind = kind;
    return event;
}

void RuntimeFixture::keyDown(int vk, int shift)
{
    auto event = make(runtime::InputKind::KeyDown);
    event.vk = vk;
    event.shift = shift;
    loop.postInput(event);
    loop.doEvents();
}

void RuntimeFixture::keyUp(int vk, int shift)
{
    auto event = make(runtime::InputKind::KeyUp);
    event.vk = vk;
    event.shift = shift;
    loop.postInput(event);
    loop.doEvents();
}

void RuntimeFixture::click(const std::string& target)
{
    auto event = make(runtime::InputKind::Click);
    event.target = target;
    loop.postInput(event);
    loop.doEvents();
}

void RuntimeFixture::dblclick(const std::string& target)
{
    auto event = make(runtime::InputKind::DblClick);
    event.target = target;
    loop.postInput(event);
    loop.doEvents();
}

void RuntimeFixture::focusLost()
{
    loop.postInput(make(runtime::InputKind::FocusLost));
    loop.doEvents();
}

void RuntimeFixture::focusGained()
{
    loop.postInput(make(runtime::InputKind::FocusGained));
    loop.doEvents();
}

} // namespace ombrel::test
