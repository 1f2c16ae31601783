// AtomicFile: replace a file as a whole (temporary file in the same folder, flush, rename), so a power
// cut leaves either the old file or the new one, never half of one.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ombrel::core {

// Writes bytes to path atomically. Returns an empty string on success, else a message that names the
// file and the reason. The old file is untouched on failure, and no temporary file is left behind.
// A path that is a symbolic link (to a shared or read-only copy) stays a link: the file at the end of
// its chain is replaced, through a temporary file beside that file.
std::string writeFileAtomic(const std::string& path, std::string_view bytes);

// Reads a whole file as bytes; false if it cannot be opened.
bool readFile(const std::string& path, std::string& bytes);

// Where a write of path lands: path itself, or the end of its chain of symbolic links (a relative link
// counts from the folder of the link). When the chain leads nowhere or goes round, `file` is empty and
// `problem` says why, naming path and the link's target.
struct LinkEnd
{
    std::string file;
    std::string problem;
};
LinkEnd followLinks(const std::string& path);

// The temporary file that a write of target makes beside it while it runs. The fixed word and the
// writer's process id tell the program's own left-overs from anything else in the folder.
std::string temporaryName(const std::string& target, long pid, unsigned number);

// What a folder entry's name says if it is one of those temporary files (in the form above, or the
// shorter "<name>.tmp<pid>-<number>" of earlier versions): the name of the file it was for, and the
// process that made it.
struct TemporaryName
{
    std::string target; // a name, not a path
    long pid = 0;
};
std::optional<TemporaryName> parseTemporaryName(std::string_view entry);

} // namespace ombrel::core
