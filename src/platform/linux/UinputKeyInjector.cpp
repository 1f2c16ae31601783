// UinputKeyInjector: the virtual keyboard's set-up and the input_event records written to it.
#include "platform/linux/UinputKeyInjector.h"

#include "platform/linux/VirtualKeys.h"

#include <fcntl.h>
#include <linux/uinput.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace ombrel::platform::linux {

namespace {

bool setUpKeyboard(int fd)
{
    if (ioctl(fd, UI_SET_EVBIT, EV_KEY) < 0 || ioctl(fd, UI_SET_EVBIT, EV_SYN) < 0)
        return false;
    for (const auto& key : virtualKeys()) {
        if (ioctl(fd, UI_SET_KEYBIT, static_cast<int>(key.code)) < 0)
            return false;
    }
    uinput_setup setup {};
    setup.id.bustype = BUS_VIRTUAL;
    std::strncpy(setup.name, "Ombrel virtual keyboard", UINPUT_MAX_NAME_SIZE - 1);
    return ioctl(fd, UI_DEV_SETUP, &setup) >= 0 && ioctl(fd, UI_DEV_CREATE) >= 0;
}

} // namespace

std::unique_ptr<UinputKeyInjector> UinputKeyInjector::open(
    runtime::Trace& trace, const std::string& path, KeyPacing pacing)
{
    // NOTE: never O_CREAT: where there is no uinput device, no file may appear under its name.
    const int fd = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (fd < 0)
        return nullptr;
    struct stat info
    {
    };
    const bool device = fstat(fd, &info) == 0 && S_ISCHR(info.st_mode);
    if (device && !setUpKeyboard(fd)) {
        ::close(fd);
        return nullptr;
    }
    return std::unique_ptr<UinputKeyInjector>(new UinputKeyInjector(fd, device, trace, std::move(pacing)));
}

UinputKeyInjector::UinputKeyInjector(int fd, bool keyboard, runtime::Trace& trace, KeyPacing pacing)
    : m_device(fd, keyboard)
    , m_trace(trace)
    , m_queue([this](int vk, bool up) { send(vk, up); }, std::move(pacing))
{
}

UinputKeyInjector::Device::~Device()
{
    if (m_keyboard)
        ioctl(m_fd, UI_DEV_DESTROY);
    ::close(m_fd);
}

void UinputKeyInjector::keyEvent(int vk, bool up)
{
    m_trace.effect(std::string(up ? "inject up " : "inject down ") + std::to_string(vk));
    m_queue.push(vk, up);
}

void UinputKeyInjector::releaseAll()
{
    m_trace.effect("inject release-all");
    m_queue.releaseAll();
}

void UinputKeyInjector::send(int vk, bool up)
{
    const VirtualKey* key = findVirtualKey(vk);
    if (key == nullptr)
        return;
    // The kernel stamps the time itself; the records carry none.
    input_event records[2] {};
    records[0].type = EV_KEY;
    records[0].code = key->code;
    records[0].value = up ? 0 : 1;
    records[1].type = EV_SYN;
    records[1].code = SYN_REPORT;
    records[1].value = 0;
    const char* bytes = reinterpret_cast<const char*>(records);
    std::size_t left = sizeof records;
    while (left > 0) {
        const ssize_t written = ::write(m_device.fd(), bytes, left);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return; // a lost key press is no worse than a game that was slow to start
        bytes += written;
        left -= static_cast<std::size_t>(written);
    }
}

} // namespace ombrel::platform::linux
