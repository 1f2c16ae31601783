// Cabinet: the program's shared state, owned once by the application and passed by reference: the
// owner's settings, the saved state, the run state, the game lists, the key map, and the platform.
#pragma once

#include "browser/Scheme.h"
#include "catalogue/Catalogue.h"
#include "config/RunState.h"
#include "config/SavedState.h"
#include "config/Settings.h"
#include "input/JoystickMap.h"
#include "input/KeyMap.h"
#include "platform/Platform.h"
#include "runtime/FormStack.h"

#include <string>

namespace ombrel::startup {

struct Cabinet {
    platform::Platform& platform;
    runtime::FormStack& forms;
    std::string home; // the program's folder, with a trailing '/'
    config::Settings settings;
    config::SavedState saved;
    config::RunState run;
    catalogue::Catalogue catalogue;
    browser::Scheme scheme;
    input::KeyMap keys; // the thirteen command keys
    input::JoystickMap joyMap; // joyKeys, the words of the stick's controls, and the exit button's mask
    platform::JoyInfo joy; // the last reading of the stick, shared by every poll; a failed read keeps it

    // A file of the program's folder, written as the system names it ("\intro.mpeg", "gamelist.lst").
    std::string homeFile(const std::string& name) const;
};

} // namespace ombrel::startup
