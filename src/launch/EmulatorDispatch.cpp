// EmulatorDispatch: the two tables of runEmu (the program per list, the launch per program) and the
// launch itself.
#include "launch/EmulatorDispatch.h"

#include "launch/GameTables.h"
#include "core/FailureLog.h"
#include "launch/LaunchContext.h"

namespace ombrel::launch {

namespace {

using config::kUserPaths;

bool isUserPath(int path)
{
    return path >= 1 && path <= kUserPaths;
}

size_t at(int path)
{
    return static_cast<size_t>(path);
}

// The player sees nothing of a launch that failed; the owner finds it in the log. The platform has
// written the reason to standard error already.
void noteStart(LaunchContext& ctx, const LaunchPlan& plan, bool started)
{
    if (!started)
        ctx.Main.failures().note(
            "launch \"" + plan.commandLine + "\" in \"" + plan.folder + "\": could not be started");
}

// The program and argument of a row, by list. Extras and lists outside 1 to 26 name no program here.
void chooseProgram(int curPath, int row, const config::Settings& s, const catalogue::Catalogue& c,
    std::string& runExe, std::string& runRom)
{
    if (curPath < 1 || curPath > config::kDaphnePath)
        return;
    const std::string& rom = c.games[at(curPath)].at(row, 1);
    if (isUserPath(curPath)) {
        runRom = s.fullPath[at(curPath)] ? s.romDir[at(curPath)] + rom : rom;
        runExe = s.emuExe[at(curPath)];
        return;
    }
    switch (curPath) {
    case config::kImpactPath:
        runRom = rom;
        runExe = s.impactNT ? "nt_impactemu.exe" : "impactemu.exe";
        break;
    case config::kModelerPath:
        runRom = rom;
        runExe = "modeler.exe";
        break;
    case config::kU64Path:
        // Each of the two programs runs one game; for any other game no program is named, and the
        // program of the launch before stays.
        runRom = rom;
        if (runRom == "ki")
            runExe = "u64emu.exe";
        else if (runRom == "ki2")
            runExe = "u64emu2.exe";
        break;
    case config::kVpPath:
        runRom = s.vpDir + "tables\\" + rom + ".vpt";
        runExe = "vpinball.exe";
        break;
    case config::kS11Path:
        runRom = rom;
        runExe = s.s11NewPlugins ? "s11emu-newplugins.exe" : "s11emu-oldplugins.exe";
        break;
    case config::kDaphnePath:
        runRom = rom;
        runExe = "daphne.exe";
        break;
    default:
        break;
    }
}

LaunchPlan timed(std::string folder, const std::string& exe, const std::string& arguments = {})
{
    std::string line = folder + exe + arguments;
    return { LaunchKind::Timed, std::move(line), std::move(folder), true };
}

} // namespace

Dispatch dispatch(int curPath, int row, const config::Settings& s, const catalogue::Catalogue& c,
    std::string runExe, std::string runRom)
{
    Dispatch d { std::move(runExe), std::move(runRom), std::nullopt };
    if (curPath < 1 || curPath > config::kExtrasPath)
        return d; // no list is shown, so there is no row to start
    if (curPath == config::kExtrasPath) {
        const catalogue::Table& extras = c.extras;
        const std::string& folder = extras.at(row, 3);
        d.plan = LaunchPlan { LaunchKind::Blocking, folder + extras.at(row, 1) + " " + extras.at(row, 4),
            folder, false };
        return d;
    }
    chooseProgram(curPath, row, s, c, d.runExe, d.runRom);
    const std::string& exe = d.runExe;
    if (exe == "s11emu-newplugins.exe" || exe == "s11emu-oldplugins.exe") {
        getS11Game(d.runRom);
        d.plan = timed(s.s11Dir, exe, " " + d.runRom + " " + s.s11Opts);
    } else if (exe == "daphne.exe") {
        d.plan = timed(s.daphneDir, exe, " " + d.runRom + " " + s.daphneOpts);
    } else if (exe == "impactemu.exe" || exe == "nt_impactemu.exe") {
        d.plan = timed(s.impactDir, exe);
    } else if (exe == "vpinball.exe") {
        d.plan = LaunchPlan { LaunchKind::Shell, d.runRom, s.vpDir + "tables\\", true };
    } else if (exe == "modeler.exe") {
        d.plan = timed(s.modelerDir, exe);
    } else if (exe == "u64emu2.exe") {
        d.plan = timed(s.u64Dir2, exe);
    } else if (exe == "u64emu.exe") {
        d.plan = timed(s.u64Dir, exe);
    } else if (isUserPath(curPath)) {
        const std::string& folder = s.emuDir[at(curPath)];
        d.plan = LaunchPlan { LaunchKind::Blocking,
            folder + exe + " " + d.runRom + " " + s.emuOpts[at(curPath)], folder, true };
    }
    // NOTE: a fixed list whose row named no program and whose last program was a user path's has no
    // folder or options to start it with, so nothing starts.
    return d;
}

void runEmu(LaunchContext& ctx, int listIndex)
{
    config::RunState& run = ctx.run;
    if (run.curPath < 1 || run.curPath > config::kExtrasPath)
        return;
    // An empty list has index -1, which reads the lists' empty row 0.
    Dispatch d = dispatch(run.curPath, listIndex + 1, ctx.settings, ctx.catalogue, run.runExe, run.runRom);
    run.runExe = std::move(d.runExe);
    run.runRom = std::move(d.runRom);
    ctx.timers.timScr.setEnabled(false);
    // Selecting a game while the goodbye sound plays calls the exit off.
    ctx.timers.timfx.setEnabled(false);
    if (!d.plan) {
        if (ctx.checkExitbut)
            ctx.checkExitbut();
        return;
    }
    const LaunchPlan& plan = *d.plan;
    switch (plan.kind) {
    case LaunchKind::Blocking: {
        const int id = ctx.processes.start(plan.commandLine, plan.folder);
        noteStart(ctx, plan, id > 0);
        // Nothing that did not start is waited for: the browser comes back as after a game that ended
        // at once.
        if (id > 0)
            ctx.processes.waitForExit(id);
        ctx.Main.setFocus();
        break;
    }
    case LaunchKind::Timed:
    case LaunchKind::Shell:
        if (plan.kind == LaunchKind::Shell)
            noteStart(ctx, plan, ctx.processes.shellExecute("Play", plan.commandLine, plan.folder));
        else
            noteStart(ctx, plan, ctx.processes.start(plan.commandLine, plan.folder) > 0);
        // The browser takes no input for the game's first seconds, whether it started or not.
        if (plan.kind == LaunchKind::Timed)
            ctx.timers.timkey.setEnabled(true);
        ctx.Main.setEnabled(false);
        ctx.timers.timWfExit.setEnabled(true);
        ctx.timers.timLock.setEnabled(true);
        break;
    }
    if (plan.checkExitbut && ctx.checkExitbut)
        ctx.checkExitbut();
}

} // namespace ombrel::launch
