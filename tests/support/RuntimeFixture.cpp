// RuntimeFixture: wiring of the runtime over fakes.
#include "RuntimeFixture.h"

#include "runtime/Form.h"

#include <memory>

namespace ombrel::test {

RuntimeFixture::RuntimeFixture()
    : forms(runtime::FormServices { loop, trace, fonts, images, files, renderer, "", failures })
{
    loop.setSource(&source);
    loop.setInputHandler([this](const runtime::InputEvent& event) { forms.dispatch(event); });
    loop.setPaintHandler([this] { forms.paintIfChanged(); });
}

runtime::Form& RuntimeFixture::plainForm(const std::string& name)
{
    forms.define(name, [name](runtime::FormStack& s) { return std::make_unique<runtime::Form>(s, name); });
    return forms.form(name);
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
