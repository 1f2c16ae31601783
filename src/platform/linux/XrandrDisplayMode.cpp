// XrandrDisplayMode: mode look-up and switching on one output's CRTC.
#include "platform/linux/XrandrDisplayMode.h"

#include "platform/linux/XConnection.h"

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <optional>
#include <vector>

namespace ombrel::platform::linux {

namespace {
struct ResourcesFree
{
    void operator()(XRRScreenResources* resources) const { XRRFreeScreenResources(resources); }
};
struct OutputFree
{
    void operator()(XRROutputInfo* info) const { XRRFreeOutputInfo(info); }
};
struct CrtcFree
{
    void operator()(XRRCrtcInfo* info) const { XRRFreeCrtcInfo(info); }
};
using ResourcesPtr = std::unique_ptr<XRRScreenResources, ResourcesFree>;
using OutputPtr = std::unique_ptr<XRROutputInfo, OutputFree>;
using CrtcPtr = std::unique_ptr<XRRCrtcInfo, CrtcFree>;

// NOTE: Xlib reports protocol errors through one handler per process, and its default handler ends
// the process. A refused mode must not do that, so the calls that can fail run inside an ErrorTrap,
// which swaps in a handler that only counts, and puts the previous one back. The count is atomic
// because the handler is the process's: an error of another thread's connection may land in it.
std::atomic<int> g_trappedErrors = 0;

int countError(Display*, XErrorEvent*)
{
    ++g_trappedErrors;
    return 0;
}

class ErrorTrap
{
public:
    explicit ErrorTrap(Display* display)
        : m_display(display)
    {
        XSync(m_display, False);
        g_trappedErrors = 0;
        m_previous = XSetErrorHandler(countError);
    }
    ~ErrorTrap()
    {
        XSync(m_display, False);
        XSetErrorHandler(m_previous);
    }
    ErrorTrap(const ErrorTrap&) = delete;
    ErrorTrap& operator=(const ErrorTrap&) = delete;
    // Whether any request so far failed; waits for the server's answers.
    bool failed()
    {
        XSync(m_display, False);
        return g_trappedErrors != 0;
    }

private:
    Display* m_display;
    XErrorHandler m_previous;
};

class ServerGrab
{
public:
    explicit ServerGrab(Display* display)
        : m_display(display)
    {
        XGrabServer(m_display);
    }
    ~ServerGrab() { XUngrabServer(m_display); }
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;

private:
    Display* m_display;
};

const XRRModeInfo* findMode(const XRRScreenResources& resources, RRMode id)
{
    for (int i = 0; i < resources.nmode; ++i)
        if (resources.modes[i].id == id)
            return &resources.modes[i];
    return nullptr;
}

double refreshOf(const XRRModeInfo& mode)
{
    double lines = mode.vTotal;
    if (mode.modeFlags & RR_DoubleScan)
        lines *= 2;
    if (mode.modeFlags & RR_Interlace)
        lines /= 2;
    if (mode.hTotal == 0 || lines <= 0)
        return 0;
    return static_cast<double>(mode.dotClock) / (mode.hTotal * lines);
}

bool sideways(Rotation rotation)
{
    return (rotation & (RR_Rotate_90 | RR_Rotate_270)) != 0;
}

// The size a mode covers on the screen under the CRTC's rotation.
runtime::PixelSize shownSize(const XRRModeInfo& mode, Rotation rotation)
{
    int w = static_cast<int>(mode.width);
    int h = static_cast<int>(mode.height);
    return sideways(rotation) ? runtime::PixelSize { h, w } : runtime::PixelSize { w, h };
}

// Among the modes of one size, the one for the refresh asked for (see the class comment).
const XRRModeInfo* chooseRefresh(const std::vector<const XRRModeInfo*>& sized, int freq, double current)
{
    if (sized.empty())
        return nullptr;
    auto nearest = [&](double target) {
        return *std::min_element(sized.begin(), sized.end(), [target](auto* a, auto* b) {
            return std::abs(refreshOf(*a) - target) < std::abs(refreshOf(*b) - target);
        });
    };
    if (freq > 0) {
        const XRRModeInfo* best = nearest(freq);
        if (std::abs(refreshOf(*best) - freq) <= 1.0)
            return best;
        // A virtual screen's modes carry no timings, so nothing says they miss the refresh asked for.
        auto unknown = std::find_if(sized.begin(), sized.end(), [](auto* m) { return refreshOf(*m) == 0; });
        return unknown != sized.end() ? *unknown : nullptr;
    }
    if (current > 0) {
        const XRRModeInfo* best = nearest(current);
        if (std::abs(refreshOf(*best) - current) <= 1.0)
            return best;
    }
    return *std::max_element(
        sized.begin(), sized.end(), [](auto* a, auto* b) { return refreshOf(*a) < refreshOf(*b); });
}
}

// What one CRTC shows: enough to set it again.
struct CrtcSetting
{
    RROutput output = 0; // the output whose modes are looked at
    RRCrtc crtc = 0;
    RRMode mode = 0;
    int x = 0;
    int y = 0;
    Rotation rotation = RR_Rotate_0;
    std::vector<RROutput> outputs;
};

struct XrandrDisplayMode::State
{
    XConnection display;
    Window root = 0;
    bool hasCrtcs = false; // RandR 1.2 or later
    double mmPerPixelW = 0.2646; // 96 dots an inch until the server says otherwise
    double mmPerPixelH = 0.2646;
    std::optional<CrtcSetting> start;
    runtime::PixelSize startScreen;
    bool changed = false;

    ResourcesPtr resources(bool probe) const
    {
        return ResourcesPtr(probe ? XRRGetScreenResources(display.get(), root)
                                  : XRRGetScreenResourcesCurrent(display.get(), root));
    }

    OutputPtr outputInfo(XRRScreenResources& res, RROutput output) const
    {
        return OutputPtr(XRRGetOutputInfo(display.get(), &res, output));
    }

    CrtcPtr crtcInfo(XRRScreenResources& res, RRCrtc crtc) const
    {
        return CrtcPtr(XRRGetCrtcInfo(display.get(), &res, crtc));
    }

    // The primary output if it is connected, else the first connected output that has modes.
    RROutput pickOutput(XRRScreenResources& res) const
    {
        RROutput primary = XRRGetOutputPrimary(display.get(), root);
        if (primary) {
            auto info = outputInfo(res, primary);
            if (info && info->connection == RR_Connected)
                return primary;
        }
        for (int i = 0; i < res.noutput; ++i) {
            auto info = outputInfo(res, res.outputs[i]);
            if (info && info->connection == RR_Connected && info->nmode > 0)
                return res.outputs[i];
        }
        return 0;
    }

    // The output's CRTC, or a free one it can use when the output is off.
    RRCrtc pickCrtc(XRRScreenResources& res, const XRROutputInfo& output) const
    {
        if (output.crtc)
            return output.crtc;
        for (int i = 0; i < output.ncrtc; ++i) {
            auto info = crtcInfo(res, output.crtcs[i]);
            if (info && info->noutput == 0)
                return output.crtcs[i];
        }
        return 0;
    }

    std::optional<CrtcSetting> currentSetting(XRRScreenResources& res) const
    {
        RROutput output = pickOutput(res);
        if (!output)
            return std::nullopt;
        auto outInfo = outputInfo(res, output);
        if (!outInfo)
            return std::nullopt;
        RRCrtc crtc = pickCrtc(res, *outInfo);
        auto info = crtc ? crtcInfo(res, crtc) : nullptr;
        if (!info)
            return std::nullopt;
        CrtcSetting setting { output, crtc, info->mode, info->x, info->y, info->rotation, {} };
        if (info->noutput > 0)
            setting.outputs.assign(info->outputs, info->outputs + info->noutput);
        else
            setting.outputs.push_back(output);
        return setting;
    }

    runtime::PixelSize screenSize() const
    {
        Window rootReturn;
        int x, y;
        unsigned width = 0, height = 0, border, depth;
        XGetGeometry(display.get(), root, &rootReturn, &x, &y, &width, &height, &border, &depth);
        return { static_cast<int>(width), static_cast<int>(height) };
    }

    // The screen that holds every lit CRTC once `wanted` shows `mode`.
    runtime::PixelSize screenFor(
        XRRScreenResources& res, const CrtcSetting& wanted, const XRRModeInfo& mode) const
    {
        runtime::PixelSize shown = shownSize(mode, wanted.rotation);
        int right = wanted.x + shown.w;
        int bottom = wanted.y + shown.h;
        for (int i = 0; i < res.ncrtc; ++i) {
            if (res.crtcs[i] == wanted.crtc)
                continue;
            auto info = crtcInfo(res, res.crtcs[i]);
            if (!info || !info->mode)
                continue;
            right = std::max(right, info->x + static_cast<int>(info->width));
            bottom = std::max(bottom, info->y + static_cast<int>(info->height));
        }
        return { right, bottom };
    }

    void setScreen(runtime::PixelSize size) const
    {
        XRRSetScreenSize(display.get(), root, size.w, size.h,
            static_cast<int>(std::lround(size.w * mmPerPixelW)),
            static_cast<int>(std::lround(size.h * mmPerPixelH)));
    }

    // Puts `mode` on the CRTC and sizes the screen to `screen`. The screen must hold the CRTC at every
    // moment, so it grows before the CRTC is set and shrinks after.
    int apply(XRRScreenResources& res, const CrtcSetting& wanted, runtime::PixelSize screen) const
    {
        int minW, minH, maxW, maxH;
        if (XRRGetScreenSizeRange(display.get(), root, &minW, &minH, &maxW, &maxH)) {
            if (screen.w > maxW || screen.h > maxH)
                return kModeBad;
            screen = { std::max(screen.w, minW), std::max(screen.h, minH) };
        }
        ErrorTrap trap(display.get());
        ServerGrab grab(display.get());
        runtime::PixelSize now = screenSize();
        runtime::PixelSize grown { std::max(now.w, screen.w), std::max(now.h, screen.h) };
        if (grown.w != now.w || grown.h != now.h)
            setScreen(grown);
        Status status = XRRSetCrtcConfig(display.get(), &res, wanted.crtc, CurrentTime, wanted.x, wanted.y,
            wanted.mode, wanted.rotation, const_cast<RROutput*>(wanted.outputs.data()),
            static_cast<int>(wanted.outputs.size()));
        if (status != RRSetConfigSuccess || trap.failed()) {
            if (grown.w != now.w || grown.h != now.h)
                setScreen(now);
            return kModeFailed;
        }
        if (grown.w != screen.w || grown.h != screen.h)
            setScreen(screen);
        return trap.failed() ? kModeFailed : 0;
    }
};

std::unique_ptr<XrandrDisplayMode> XrandrDisplayMode::open(const char* displayName)
{
    auto state = std::make_unique<State>();
    state->display = XConnection::open(displayName);
    if (!state->display)
        return nullptr;
    Display* display = state->display.get();
    int screen = DefaultScreen(display);
    state->root = RootWindow(display, screen);
    if (DisplayWidth(display, screen) > 0 && DisplayWidthMM(display, screen) > 0)
        state->mmPerPixelW
            = static_cast<double>(DisplayWidthMM(display, screen)) / DisplayWidth(display, screen);
    if (DisplayHeight(display, screen) > 0 && DisplayHeightMM(display, screen) > 0)
        state->mmPerPixelH
            = static_cast<double>(DisplayHeightMM(display, screen)) / DisplayHeight(display, screen);

    int event, error, major = 0, minor = 0;
    state->hasCrtcs = XRRQueryExtension(display, &event, &error) && XRRQueryVersion(display, &major, &minor)
        && (major > 1 || (major == 1 && minor >= 2));
    if (state->hasCrtcs) {
        // The first look probes the outputs, so the list of modes is complete from here on.
        if (auto res = state->resources(true)) {
            state->start = state->currentSetting(*res);
            state->startScreen = state->screenSize();
        }
    }
    return std::unique_ptr<XrandrDisplayMode>(new XrandrDisplayMode(std::move(state)));
}

XrandrDisplayMode::XrandrDisplayMode(std::unique_ptr<State> state)
    : m_state(std::move(state))
{
}

XrandrDisplayMode::~XrandrDisplayMode() = default;

runtime::PixelSize XrandrDisplayMode::desktopSize()
{
    if (m_state->hasCrtcs) {
        if (auto res = m_state->resources(false)) {
            if (auto setting = m_state->currentSetting(*res); setting && setting->mode) {
                if (auto* mode = findMode(*res, setting->mode))
                    return shownSize(*mode, setting->rotation);
            }
        }
    }
    return m_state->screenSize();
}

int XrandrDisplayMode::change(int width, int height, int /*bits*/, int freq)
{
    if (width <= 0 || height <= 0)
        return kModeBad;
    if (!m_state->hasCrtcs)
        return kModeFailed;
    auto res = m_state->resources(false);
    if (!res)
        return kModeFailed;
    auto setting = m_state->currentSetting(*res);
    if (!setting)
        return kModeFailed;
    auto outInfo = m_state->outputInfo(*res, setting->output);
    if (!outInfo)
        return kModeFailed;

    std::vector<const XRRModeInfo*> sized;
    for (int i = 0; i < outInfo->nmode; ++i) {
        const XRRModeInfo* mode = findMode(*res, outInfo->modes[i]);
        if (!mode)
            continue;
        runtime::PixelSize shown = shownSize(*mode, setting->rotation);
        if (shown.w == width && shown.h == height)
            sized.push_back(mode);
    }
    const XRRModeInfo* current = setting->mode ? findMode(*res, setting->mode) : nullptr;
    const XRRModeInfo* chosen = chooseRefresh(sized, freq, current ? refreshOf(*current) : 0);
    if (!chosen)
        return kModeBad;
    if (chosen->id == setting->mode)
        return 0;

    CrtcSetting wanted = *setting;
    wanted.mode = chosen->id;
    int result = m_state->apply(*res, wanted, m_state->screenFor(*res, wanted, *chosen));
    if (result == 0)
        m_state->changed = true;
    return result;
}

int XrandrDisplayMode::restore(int /*width*/, int /*height*/, int /*bits*/, int /*freq*/)
{
    if (!m_state->changed || !m_state->start)
        return 0;
    auto res = m_state->resources(false);
    if (!res)
        return kModeFailed;
    const CrtcSetting& start = *m_state->start;
    int result = kModeBad;
    if (const XRRModeInfo* mode = findMode(*res, start.mode)) {
        runtime::PixelSize screen = m_state->screenFor(*res, start, *mode);
        screen = { std::max(screen.w, m_state->startScreen.w), std::max(screen.h, m_state->startScreen.h) };
        result = m_state->apply(*res, start, screen);
    }
    if (result == 0)
        m_state->changed = false;
    return result;
}

} // namespace ombrel::platform::linux
