// ReturnFromGame: the exit watch, the end of the input lock, and the TV output's hot keys.
#include "launch/ReturnFromGame.h"

#include "config/Settings.h"
#include "core/PassOver.h"
#include "launch/KeySimulation.h"
#include "launch/LaunchContext.h"
#include "runtime/EventLoop.h"
#include "runtime/FormStack.h"

#include <exception>

namespace ombrel::launch {

void timWfExit_Timer(LaunchContext& ctx)
{
    const bool button = ctx.exitButtonDown && ctx.exitButtonDown();
    // Without a key map there is no exit key to watch.
    const bool key = ctx.keyExit && ctx.keyState.isDown(*ctx.keyExit);
    if (button || key) {
        if (button || ctx.keyExit != vk::kEsc)
            send(ctx.keys, press(vk::kEsc));
        const int path = ctx.run.curPath;
        if (path == config::kModelerPath || path == config::kU64Path || path == config::kVpPath) {
            ctx.timers.timescape.setEnabled(true);
            ctx.timers.timWfExit.setEnabled(false);
        }
    }
    ctx.Main.loop().doEvents();
}

void timLock_Timer(LaunchContext& ctx)
{
    // Each step is passed over when it fails, so the browser always gets its input back.
    core::passOver(ctx.Main.failures(), [&] {
        if (runtime::Form* blanker = ctx.Main.stack().existing("blanker"))
            blanker->hide();
    });
    ctx.Main.setEnabled(true);
    ctx.timers.timLock.setEnabled(false);
    ctx.keysSent = false;
}

void startTv(platform::KeyInjector& keys)
{
    send(keys, tvKeys());
}

void startMonitor(platform::KeyInjector& keys)
{
    send(keys, monitorKeys());
}

} // namespace ombrel::launch
