// AtomicFile: whole-file replacement through a temporary file and a rename, and whole-file reading.
#include "core/AtomicFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace ombrel::core {

namespace {

std::string failure(const std::string& path, const char* what, int error)
{
    return std::string("cannot ") + what + " " + path + ": " + std::strerror(error);
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

std::string writeFileAtomic(const std::string& path, std::string_view bytes)
{
    if (path.empty() || path.back() == '/')
        return failure(path, "write", EISDIR);
    std::string folder = folderOf(path);

    // A fresh name beside the target (the rename must not cross file systems). O_EXCL makes it ours
    // alone; the mode lets the umask decide, as for any file the program makes.
    std::string temp;
    int fd = -1;
    for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
        temp = path + ".tmp" + std::to_string(::getpid()) + "-" + std::to_string(freshNumber(attempt));
        fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0 && errno != EEXIST)
            return failure(path, "write", errno);
    }
    if (fd < 0)
        return failure(path, "write", EEXIST);

    auto abandon = [&](const char* what, int error) {
        if (fd >= 0)
            ::close(fd);
        ::unlink(temp.c_str());
        return failure(path, what, error);
    };
    if (!writeAll(fd, bytes))
        return abandon("write", errno);
    // An owner who made the old file readable by others, or private, keeps that.
    struct stat old
    {
    };
    if (::stat(path.c_str(), &old) == 0 && S_ISREG(old.st_mode))
        ::fchmod(fd, old.st_mode & 07777);
    if (::fsync(fd) != 0)
        return abandon("write", errno);
    int closed = ::close(fd);
    fd = -1;
    if (closed != 0)
        return abandon("write", errno);
    if (::rename(temp.c_str(), path.c_str()) != 0)
        return abandon("replace", errno);
    syncFolder(folder);
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
