// KeySimulation: the key sequences and the timer ticks that press them into a game.
#include "launch/KeySimulation.h"

#include "config/Settings.h"
#include "launch/GameTables.h"
#include "launch/LaunchContext.h"

namespace ombrel::launch {

namespace {

void append(KeySequence& to, const KeySequence& more)
{
    to.insert(to.end(), more.begin(), more.end());
}

// Ctrl+Alt with one more key: all down in order, then up in reverse.
KeySequence ctrlAlt(int key)
{
    return { { vk::kCtrl, false }, { vk::kAlt, false }, { key, false }, { key, true }, { vk::kAlt, true },
        { vk::kCtrl, true } };
}

} // namespace

KeySequence press(int key, int times)
{
    KeySequence keys;
    for (int i = 0; i < times; ++i) {
        keys.push_back({ key, false });
        keys.push_back({ key, true });
    }
    return keys;
}

ModelerKeys modelerListKeys(std::string_view rom)
{
    ModelerKeys result { press(vk::kTab, 3), false };
    // A game the list does not hold gets the Tabs alone: Enter anywhere else would start the wrong one.
    const std::optional<int> downs = modelerDownPresses(rom);
    if (!downs)
        return result;
    append(result.keys, press(vk::kDown, *downs));
    append(result.keys, press(vk::kEnter));
    append(result.keys, press(vk::kTab, 5));
    append(result.keys, press(vk::kEnter));
    result.complete = true;
    return result;
}

KeySequence impactListKeys(std::string_view rom)
{
    KeySequence keys = press(vk::kDown, impactDownPresses(rom).value_or(0));
    append(keys, press(vk::kEnter));
    return keys;
}

KeySequence u64ListKeys()
{
    KeySequence keys = press(vk::kTab);
    append(keys, press(vk::kEnter));
    return keys;
}

KeySequence vpCloseKeys()
{
    return { { vk::kQ, false }, { vk::kQ, true }, { vk::kAlt, false }, { vk::kF, false }, { vk::kAlt, true },
        { vk::kF, true }, { vk::kX, false }, { vk::kX, true } };
}

KeySequence tvKeys()
{
    return ctrlAlt(vk::kA);
}

KeySequence monitorKeys()
{
    return ctrlAlt(vk::kD);
}

void send(platform::KeyInjector& keys, const KeySequence& sequence)
{
    for (const KeyEvent& event : sequence)
        keys.keyEvent(event.vk, event.up);
}

void PressKeySim(LaunchContext& ctx)
{
    const ModelerKeys modeler = modelerListKeys(ctx.run.runRom);
    send(ctx.keys, modeler.keys);
    // The emulator takes a moment to bring the chosen game up before the last Enter makes it full screen.
    if (modeler.complete)
        ctx.timers.timfullscreen.setEnabled(true);
}

void PressKeySim2(LaunchContext& ctx)
{
    send(ctx.keys, impactListKeys(ctx.run.runRom));
}

void PressKeySim3(LaunchContext& ctx)
{
    send(ctx.keys, u64ListKeys());
}

void PressKeySim4(LaunchContext& ctx)
{
    // Nothing pressed before may still count as held, or the Enter would arrive as Alt+Enter or the like.
    ctx.keys.releaseAll();
    send(ctx.keys, press(vk::kEnter));
}

void PressKeySimVPE(LaunchContext& ctx)
{
    send(ctx.keys, vpCloseKeys());
}

void timkey_Timer(LaunchContext& ctx)
{
    if (ctx.keysSent)
        return;
    ctx.keysSent = true;
    const std::string& exe = ctx.run.runExe;
    // NOTE: for any other program the timer is left running; keysSent keeps its ticks idle until timLock
    // clears it.
    if (exe == "modeler.exe") {
        PressKeySim(ctx);
        ctx.timers.timkey.setEnabled(false);
    } else if (exe == "impactemu.exe" || exe == "nt_impactemu.exe") {
        PressKeySim2(ctx);
        ctx.timers.timkey.setEnabled(false);
    } else if (exe == "u64emu.exe" || exe == "u64emu2.exe") {
        PressKeySim3(ctx);
        ctx.timers.timkey.setEnabled(false);
    }
}

void timfullscreen_Timer(LaunchContext& ctx)
{
    ctx.timers.timfullscreen.setEnabled(false);
    PressKeySim4(ctx);
}

void timescape_Timer(LaunchContext& ctx)
{
    ctx.timers.timescape.setEnabled(false);
    if (ctx.run.curPath == config::kVpPath)
        PressKeySimVPE(ctx);
    else
        send(ctx.keys, press(vk::kEsc));
}

} // namespace ombrel::launch
