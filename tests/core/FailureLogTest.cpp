// Tests of the failure log: once per place and cause, the bound and its halving, a folder that cannot
// be written, and passOver's part in it.
#include "core/FailureLog.h"
#include "core/PassOver.h"

#include "TempHome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace ombrel::core {
namespace {

struct Note
{
    std::string place;
    std::string cause;
};

struct Row
{
    const char* name;
    std::string logFile; // below the folder
    size_t limit;
    std::vector<Note> notes;
    std::string echoed; // standard error
    std::string file; // the log file afterwards
};

// Causes of 20 bytes make file lines of 40 with the stamp "T" and the place "p".
const std::string kA = "a.lst: cannot be rea", kB = "b.lst: cannot be rea", kC = "c.lst: cannot be rea";
std::string line(const std::string& cause, const char* place = "p")
{
    return cause + " (passed over at " + place + ")\n";
}

TEST(FailureLog, WritesEachFailureOnceWithinItsBound)
{
    const std::vector<Row> rows {
        { "same place and cause once", "ombrel.log", 1000, { { "p", kA }, { "p", kA }, { "p", kA } },
            "ombrel: " + line(kA), "T " + line(kA) },
        { "another place or cause is another line", "ombrel.log", 1000,
            { { "p", kA }, { "q", kA }, { "p", kB }, { "q", kA } },
            "ombrel: " + line(kA) + "ombrel: " + line(kA, "q") + "ombrel: " + line(kB),
            "T " + line(kA) + "T " + line(kA, "q") + "T " + line(kB) },
        { "an empty cause is no failure", "ombrel.log", 1000, { { "p", "" } }, "", "" },
        { "a full file keeps its newer half", "ombrel.log", 130,
            { { "p", kA }, { "p", kB }, { "p", kC }, { "q", kC } },
            "ombrel: " + line(kA) + "ombrel: " + line(kB) + "ombrel: " + line(kC)
                + "ombrel: " + line(kC, "q"),
            "T " + line(kC) + "T " + line(kC, "q") },
        { "a folder that cannot be written leaves standard error", "missing/ombrel.log", 1000,
            { { "p", kA }, { "p", kA } }, "ombrel: " + line(kA), "" },
        { "a folder in the log's place is left alone", "logdir", 1000, { { "p", kA } }, "ombrel: " + line(kA),
            "" },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        test::TempHome home;
        if (row.logFile == "logdir")
            home.write("logdir/keep", "k");
        std::ostringstream echo;
        FailureLog log(
            home.path() + row.logFile, echo, [] { return std::string("T"); }, row.limit);
        for (const Note& note : row.notes)
            log.noteAt(note.place, note.cause);
        EXPECT_EQ(echo.str(), row.echoed);
        EXPECT_EQ(home.read(row.logFile), row.file);
    }
}

TEST(FailureLog, PassOverLogsWhatAStatementThrowsOrReturns)
{
    std::ostringstream echo;
    FailureLog log("", echo);
    int after = 0;
    for (int tick = 0; tick < 3; ++tick) {
        passOver(log, [] { throw std::runtime_error("omkeys.cfg: cannot open"); });
        passOver(log, [] { return std::string("ombrel.cfg line 2: saverDelay is missing"); });
        passOver(log, [] { return std::string(); });
        passOver(log, [&] { ++after; });
    }
    EXPECT_EQ(after, 3);
    const std::string text = echo.str();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2) << text;
    EXPECT_NE(text.find("ombrel: omkeys.cfg: cannot open (passed over at "), std::string::npos) << text;
    EXPECT_NE(text.find("saverDelay is missing (passed over at "), std::string::npos) << text;
    EXPECT_NE(text.find("FailureLogTest.cpp:"), std::string::npos) << text;
}

} // namespace
} // namespace ombrel::core
