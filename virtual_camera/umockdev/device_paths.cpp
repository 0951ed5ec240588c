// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What programs find beneath /dev/bus/usb, and how they listen for uevents: these functions stand
// before those of umockdev's preload library and of libc, either as part of the program (a test
// that links virtual_camera_umockdev) or preloaded into it. The root user may open everything, so
// that an open can only be refused here.

// No <fcntl.h> and no <sys/stat.h>: with optimisation they define what is defined below.
#include <asm/fcntl.h>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <sys/socket.h>
#include <sys/types.h>
#include <type_traits>
#include <unistd.h>

namespace {

constexpr char busFolder[] = "/dev/bus/usb";
constexpr std::size_t busLength = sizeof busFolder - 1;
constexpr std::size_t longestPath = 4096;

template<typename Function> Function *next(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

bool isOnBus(const char *path)
{
    return path != nullptr && std::strncmp(path, busFolder, busLength) == 0
        && (path[busLength] == '/' || path[busLength] == '\0');
}

// A path in the testbed's folder; false when there is no testbed.
bool inTestbed(char (&result)[longestPath], const char *folder, const char *path)
{
    const char *root = std::getenv("UMOCKDEV_DIR");
    if (root == nullptr)
        return false;
    const int written = std::snprintf(result, sizeof result, "%s%s%s", root, folder, path);
    return written > 0 && static_cast<std::size_t>(written) < sizeof result;
}

// The errno with which every call on this path is to fail; 0 when none is. umockdev leaves paths
// that it does not know to the computer, whose own devices would show.
int hiding(const char *path)
{
    char emulated[longestPath];
    if (!isOnBus(path) || !inTestbed(emulated, "", path))
        return 0;
    const int before = errno;
    const bool exists = next<int(const char *, int)>("access")(emulated, F_OK) == 0;
    errno = before;
    return exists ? 0 : ENOENT;
}

// The same for open. A refusal is a symbolic link that points to the number: it appears and goes
// in one step.
int refusal(const char *path)
{
    char link[longestPath];
    if (const int error = hiding(path))
        return error;
    if (!isOnBus(path) || !inTestbed(link, "/refuse-open", path))
        return 0;
    const int before = errno;
    char number[16] = "";
    const ssize_t length = readlink(link, number, sizeof number - 1);
    errno = before;
    return length > 0 ? std::atoi(number) : 0;
}

constexpr int lockExclusively = 2; // <sys/file.h> includes <fcntl.h>

// umockdev names a listener's socket after its descriptor, and takes the name from any other
// program that listens at the same one. With the process in its name a socket keeps it.
void nameListener(const char *root, int descriptor)
{
    char given[longestPath];
    char own[longestPath];
    std::snprintf(given, sizeof given, "%s/event%d", root, descriptor);
    std::snprintf(own, sizeof own, "%s/event%d.%d", root, descriptor, getpid());
    std::rename(given, own);
}

// Goes on to the next function of that name, unless the call is to fail.
template<typename Function, typename... Arguments>
auto pass(int error, const char *function, Arguments... arguments)
{
    using Result = decltype(next<Function>(function)(arguments...));
    if (error == 0)
        return next<Function>(function)(arguments...);
    errno = error;
    if constexpr (std::is_pointer_v<Result>)
        return Result(nullptr);
    else
        return Result(-1);
}

using Open = int(const char *, int, ...);
using OpenAt = int(int, const char *, int, ...);

mode_t modeBehind(int flags, va_list rest)
{
    const bool given = (flags & O_CREAT) != 0 || (flags & __O_TMPFILE) != 0;
    return given ? va_arg(rest, mode_t) : 0;
}

} // namespace

extern "C" {

int bind(int descriptor, const sockaddr *address, socklen_t length) noexcept
{
    const auto bindNext = next<int(int, const sockaddr *, socklen_t)>("bind");
    const char *root = std::getenv("UMOCKDEV_DIR");
    if (root == nullptr || address == nullptr || address->sa_family != AF_NETLINK)
        return bindNext(descriptor, address, length);
    // Until it is renamed, another program must not make a socket of that name.
    const int folder = next<Open>("open")(root, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    next<int(int, int)>("flock")(folder, lockExclusively);
    const int result = bindNext(descriptor, address, length);
    const int error = errno;
    if (result == 0)
        nameListener(root, descriptor);
    close(folder);
    errno = error;
    return result;
}

int open(const char *path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = modeBehind(flags, rest);
    va_end(rest);
    return pass<Open>(refusal(path), "open", path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = modeBehind(flags, rest);
    va_end(rest);
    return pass<Open>(refusal(path), "open64", path, flags, mode);
}

int openat(int folder, const char *path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = modeBehind(flags, rest);
    va_end(rest);
    return pass<OpenAt>(refusal(path), "openat", folder, path, flags, mode);
}

int openat64(int folder, const char *path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = modeBehind(flags, rest);
    va_end(rest);
    return pass<OpenAt>(refusal(path), "openat64", folder, path, flags, mode);
}

// What programs call that are built with _FORTIFY_SOURCE.
int __open_2(const char *path, int flags)
{
    return pass<int(const char *, int)>(refusal(path), "__open_2", path, flags);
}

int __open64_2(const char *path, int flags)
{
    return pass<int(const char *, int)>(refusal(path), "__open64_2", path, flags);
}

FILE *fopen(const char *path, const char *mode)
{
    return pass<FILE *(const char *, const char *)>(refusal(path), "fopen", path, mode);
}

FILE *fopen64(const char *path, const char *mode)
{
    return pass<FILE *(const char *, const char *)>(refusal(path), "fopen64", path, mode);
}

void *opendir(const char *path)
{
    return pass<void *(const char *)>(hiding(path), "opendir", path);
}

int access(const char *path, int mode) noexcept
{
    return pass<int(const char *, int)>(hiding(path), "access", path, mode);
}

int stat(const char *path, void *result)
{
    return pass<int(const char *, void *)>(hiding(path), "stat", path, result);
}

int stat64(const char *path, void *result)
{
    return pass<int(const char *, void *)>(hiding(path), "stat64", path, result);
}

int lstat(const char *path, void *result)
{
    return pass<int(const char *, void *)>(hiding(path), "lstat", path, result);
}

int lstat64(const char *path, void *result)
{
    return pass<int(const char *, void *)>(hiding(path), "lstat64", path, result);
}

int fstatat(int folder, const char *path, void *result, int flags)
{
    return pass<int(int, const char *, void *, int)>(
        hiding(path), "fstatat", folder, path, result, flags);
}

int fstatat64(int folder, const char *path, void *result, int flags)
{
    return pass<int(int, const char *, void *, int)>(
        hiding(path), "fstatat64", folder, path, result, flags);
}

int statx(int folder, const char *path, int flags, unsigned mask, void *result)
{
    return pass<int(int, const char *, int, unsigned, void *)>(
        hiding(path), "statx", folder, path, flags, mask, result);
}
}
