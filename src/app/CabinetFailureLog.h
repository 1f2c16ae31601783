// cabinetFailureLog: the failure log of a run, in the cabinet's folder, echoed to standard error, each
// line of the file stamped with the local date and time.
#pragma once

#include "core/FailureLog.h"

#include <ctime>
#include <iostream>
#include <string>

namespace ombrel::app {

inline core::FailureLog cabinetFailureLog(const std::string& home)
{
    return core::FailureLog(home + core::kFailureLogFileName, std::cerr, [] {
        const std::time_t now = std::time(nullptr);
        std::tm local {};
        char text[32] = "";
        if (localtime_r(&now, &local))
            std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
        return std::string(text);
    });
}

} // namespace ombrel::app
