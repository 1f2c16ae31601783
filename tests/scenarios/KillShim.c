/* KillShim: preloaded into the program by the kill test, it kills its own process at one chosen call of
 * write, fsync or rename, so a test can stop a file write at an exact point. Set by the environment:
 *   OMBREL_KILL_CALL  write, fsync or rename
 *   OMBREL_KILL_PATH  a piece of the file's path (for rename, of the new name)
 *   OMBREL_KILL_NTH   which matching call, from 1
 *   OMBREL_KILL_WHEN  before (the default), half (half of a write's bytes go out first) or after
 * Every other call goes straight through. Without a kill it can keep a record instead:
 *   OMBREL_KILL_RECORD  a folder that gets a copy of every file a rename puts in place, as
 *                       <n>-<microseconds of CLOCK_MONOTONIC>-<name>, so a test knows each whole version of
 *                       each file that a run passes through, and when the writes happen. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

typedef ssize_t (*WriteFn)(int, const void*, size_t);
typedef int (*FsyncFn)(int);
typedef int (*RenameFn)(const char*, const char*);

static int matchingCalls;

enum When { kBefore, kHalf, kAfter };

/* Whether this call is the chosen one; path is the file's path, or NULL when it cannot be told. */
static int chosen(const char* call, const char* path)
{
    const char* wantedCall = getenv("OMBREL_KILL_CALL");
    const char* piece = getenv("OMBREL_KILL_PATH");
    const char* nth = getenv("OMBREL_KILL_NTH");
    if (!wantedCall || !piece || !nth || !path || strcmp(wantedCall, call) != 0 || !strstr(path, piece))
        return 0;
    return ++matchingCalls == atoi(nth);
}

static enum When when(void)
{
    const char* text = getenv("OMBREL_KILL_WHEN");
    return !text                     ? kBefore
        : strcmp(text, "half") == 0  ? kHalf
        : strcmp(text, "after") == 0 ? kAfter
                                     : kBefore;
}

/* The path an open file descriptor stands for, in buffer; NULL if unknown. */
static const char* pathOf(int fd, char* buffer, size_t size)
{
    char link[64];
    snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
    ssize_t length = readlink(link, buffer, size - 1);
    if (length < 0)
        return NULL;
    buffer[length] = '\0';
    return buffer;
}

/* The next definition of a function, as a function pointer (memcpy: ISO C has no cast from void*). */
static void (*next(const char* name))(void)
{
    void* symbol = dlsym(RTLD_NEXT, name);
    void (*function)(void) = NULL;
    memcpy(&function, &symbol, sizeof function);
    return function;
}

static void die(void)
{
    kill(getpid(), SIGKILL);
    pause(); /* the signal may take a moment to arrive; nothing more of the program may run */
}

ssize_t write(int fd, const void* bytes, size_t count)
{
    static WriteFn real;
    real = real ? real : (WriteFn)next("write");
    char path[4096];
    if (fd <= 2 || !chosen("write", pathOf(fd, path, sizeof path)))
        return real(fd, bytes, count);
    if (when() != kBefore)
        real(fd, bytes, when() == kHalf ? count / 2 : count);
    die();
    return -1;
}

int fsync(int fd)
{
    static FsyncFn real;
    real = real ? real : (FsyncFn)next("fsync");
    char path[4096];
    if (!chosen("fsync", pathOf(fd, path, sizeof path)))
        return real(fd);
    if (when() == kAfter)
        real(fd);
    die();
    return -1;
}

/* Copies the file now at path into the record folder, if there is one. */
static void record(const char* path, WriteFn realWrite)
{
    static int count;
    const char* folder = getenv("OMBREL_KILL_RECORD");
    if (!folder)
        return;
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    const char* slash = strrchr(path, '/');
    char copy[4096];
    snprintf(copy, sizeof copy, "%s/%d-%lld-%s", folder, ++count,
        (long long)now.tv_sec * 1000000 + now.tv_nsec / 1000, slash ? slash + 1 : path);
    int in = open(path, O_RDONLY | O_CLOEXEC),
        out = open(copy, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    char buffer[65536];
    ssize_t got;
    while (in >= 0 && out >= 0 && (got = read(in, buffer, sizeof buffer)) > 0)
        realWrite(out, buffer, (size_t)got);
    close(in); /* a failed open gave -1, which close only refuses */
    close(out);
}

int rename(const char* from, const char* to)
{
    static RenameFn real;
    real = real ? real : (RenameFn)next("rename");
    if (!chosen("rename", to)) {
        int result = real(from, to);
        if (result == 0)
            record(to, (WriteFn)next("write"));
        return result;
    }
    if (when() == kAfter)
        real(from, to);
    die();
    return -1;
}
