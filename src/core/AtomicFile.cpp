// AtomicFile: whole-file replacement through a temporary file and a rename, and whole-file reading.
#include "core/AtomicFile.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace ombrel::core {

namespace {

constexpr std::string_view kTempWord = ".ombrel-";
constexpr std::string_view kTempEnd = ".tmp";
// As many links as the system itself follows before it calls the chain a loop.
constexpr int kMaxLinks = 40;

// The message names the file asked for, and the file a link led to when they differ.
std::string failure(const std::string& path, const std::string& target, const char* what, int error)
{
    std::string message = std::string("cannot ") + what + " " + path;
    if (target != path)
        message += " (a link to " + target + ")";
    return message + ": " + std::strerror(error);
}

std::string folderOf(const std::string& path)
{
    auto slash = path.find_last_of('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// A number for a temporary name. Uniqueness comes from O_EXCL; the number only makes clashes rare.
unsigned freshNumber(int attempt)
{
    try {
        std::random_device random;
        return random();
    } catch (...) {
        return static_cast<unsigned>(attempt);
    }
}

// Takes the digits at the end of text off it; nullopt if there are none or too many to be a pid or a
// 32-bit number.
std::optional<long> takeNumberFromEnd(std::string_view& text)
{
    size_t digits = 0;
    while (digits < text.size() && digits <= 10 && text[text.size() - 1 - digits] >= '0'
        && text[text.size() - 1 - digits] <= '9')
        ++digits;
    if (digits == 0 || digits > 10)
        return std::nullopt;
    long value = 0;
    for (char c : text.substr(text.size() - digits))
        value = value * 10 + (c - '0');
    text.remove_suffix(digits);
    if (value > UINT_MAX)
        return std::nullopt;
    return value;
}

bool takeSuffix(std::string_view& text, std::string_view suffix)
{
    if (!text.ends_with(suffix))
        return false;
    text.remove_suffix(suffix.size());
    return true;
}

bool writeAll(int fd, std::string_view bytes)
{
    while (!bytes.empty()) {
        ssize_t written = ::write(fd, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        bytes.remove_prefix(static_cast<size_t>(written));
    }
    return true;
}

// Makes the rename itself survive a power cut. Best effort: some file systems refuse to sync a folder.
void syncFolder(const std::string& folder)
{
    int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

} // namespace

LinkEnd followLinks(const std::string& path)
{
    std::string file = path;
    for (int links = 0;; ++links) {
        struct stat info
        {
        };
        if (::lstat(file.c_str(), &info) != 0) {
            if (errno == ENOENT && links == 0)
                return { file, {} }; // a new file
            if (errno == ENOENT)
                return { {},
                    "cannot write " + path + ": it is a link to " + file + ", which does not exist" };
            return { {}, failure(path, file, "write", errno) };
        }
        if (!S_ISLNK(info.st_mode))
            return { file, {} };
        if (links == kMaxLinks)
            return { {}, "cannot write " + path + ": its links go round in a loop (through " + file + ")" };
        std::string target(static_cast<size_t>(info.st_size > 0 ? info.st_size : PATH_MAX), '\0');
        ssize_t length = ::readlink(file.c_str(), target.data(), target.size());
        if (length < 0)
            return { {}, failure(path, file, "write", errno) };
        target.resize(static_cast<size_t>(length));
        if (target.empty())
            return { {}, failure(path, file, "write", ENOENT) };
        file = target.front() == '/' ? target : folderOf(file) + "/" + target;
    }
}

std::string temporaryName(const std::string& target, long pid, unsigned number)
{
    return target + std::string(kTempWord) + std::to_string(pid) + "-" + std::to_string(number)
        + std::string(kTempEnd);
}

std::optional<TemporaryName> parseTemporaryName(std::string_view entry)
{
    std::string_view rest = entry;
    std::optional<long> pid;
    if (takeSuffix(rest, kTempEnd)) {
        // <name>.ombrel-<pid>-<number>.tmp
        if (!takeNumberFromEnd(rest) || !takeSuffix(rest, "-") || !(pid = takeNumberFromEnd(rest))
            || !takeSuffix(rest, kTempWord))
            return std::nullopt;
    } else {
        // <name>.tmp<pid>-<number>, as earlier versions named them
        if (!takeNumberFromEnd(rest) || !takeSuffix(rest, "-") || !(pid = takeNumberFromEnd(rest))
            || !takeSuffix(rest, kTempEnd))
            return std::nullopt;
    }
    if (rest.empty() || *pid <= 0 || *pid > INT_MAX)
        return std::nullopt;
    return TemporaryName { std::string(rest), *pid };
}

std::string writeFileAtomic(const std::string& path, std::string_view bytes)
{
    if (path.empty() || path.back() == '/')
        return failure(path, path, "write", EISDIR);
    // A link is kept: what it leads to is replaced, beside itself, so the rename stays within the
    // target's file system and the link still points at the new file.
    const LinkEnd end = followLinks(path);
    if (!end.problem.empty())
        return end.problem;
    const std::string& target = end.file;

    // A fresh name beside the target (the rename must not cross file systems). O_EXCL makes it ours
    // alone; the mode lets the umask decide, as for any file the program makes.
    std::string temp;
    int fd = -1;
    for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
        temp = temporaryName(target, ::getpid(), freshNumber(attempt));
        fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0 && errno != EEXIST)
            return failure(path, target, "write", errno);
    }
    if (fd < 0)
        return failure(path, target, "write", EEXIST);

    auto abandon = [&](const char* what, int error) {
        if (fd >= 0)
            ::close(fd);
        ::unlink(temp.c_str());
        return failure(path, target, what, error);
    };
    if (!writeAll(fd, bytes))
        return abandon("write", errno);
    // An owner who made the old file readable by others, or private, keeps that.
    struct stat old
    {
    };
    if (::stat(target.c_str(), &old) == 0 && S_ISREG(old.st_mode))
        ::fchmod(fd, old.st_mode & 07777);
    if (::fsync(fd) != 0)
        return abandon("write", errno);
    int closed = ::close(fd);
    fd = -1;
    if (closed != 0)
        return abandon("write", errno);
    if (::rename(temp.c_str(), target.c_str()) != 0)
        return abandon("replace", errno);
    syncFolder(folderOf(target));
    return {};
}

bool readFile(const std::string& path, std::string& bytes)
{
    // Non-blocking open, so a FIFO in the place of a file cannot stall the program; only regular files
    // are read.
    int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return false;
    struct stat info
    {
    };
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        ::close(fd);
        return false;
    }
    std::string data;
    data.reserve(static_cast<size_t>(info.st_size));
    char buffer[65536];
    for (;;) {
        ssize_t got = ::read(fd, buffer, sizeof buffer);
        if (got < 0) {
            if (errno == EINTR)
                continue;
            ::close(fd);
            return false;
        }
        if (got == 0)
            break;
        data.append(buffer, static_cast<size_t>(got));
    }
    ::close(fd);
    bytes = std::move(data);
    return true;
}

} // namespace ombrel::core
