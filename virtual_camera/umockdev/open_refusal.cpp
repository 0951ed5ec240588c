// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// No <fcntl.h> here: with optimisation it defines the functions that are defined below.
#include <asm/fcntl.h>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

constexpr char deviceFolder[] = "/dev/bus/usb/";

// The errno with which opening this path is to fail; 0 when it is not. A refusal is a symbolic
// link that points to the number: it appears and goes in one step.
int refusal(const char *path)
{
    if (path == nullptr || std::strncmp(path, deviceFolder, sizeof deviceFolder - 1) != 0)
        return 0;
    const char *root = std::getenv("UMOCKDEV_DIR");
    if (root == nullptr)
        return 0;
    char link[4096];
    const int written = std::snprintf(link, sizeof link, "%s/refuse-open%s", root, path);
    if (written < 0 || static_cast<std::size_t>(written) >= sizeof link)
        return 0;
    const int before = errno;
    char number[16] = "";
    const ssize_t length = readlink(link, number, sizeof number - 1);
    errno = before;
    return length > 0 ? std::atoi(number) : 0;
}

template<typename Function> Function *next(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

using Open = int(const char *, int, ...);
using OpenChecked = int(const char *, int);

int refuse(int error)
{
    errno = error;
    return -1;
}

bool takesMode(int flags) { return (flags & O_CREAT) != 0 || (flags & __O_TMPFILE) != 0; }

int openUnlessRefused(const char *function, const char *path, int flags, mode_t mode)
{
    if (const int error = refusal(path))
        return refuse(error);
    return next<Open>(function)(path, flags, mode);
}

int openUnlessRefused(const char *function, const char *path, int flags)
{
    if (const int error = refusal(path))
        return refuse(error);
    return next<OpenChecked>(function)(path, flags);
}

} // namespace

extern "C" {

int open(const char *path, int flags, ...);
int open64(const char *path, int flags, ...);
int __open_2(const char *path, int flags);
int __open64_2(const char *path, int flags);

int open(const char *path, int flags, ...)
{
    mode_t mode = 0;
    if (takesMode(flags)) {
        va_list rest;
        va_start(rest, flags);
        mode = va_arg(rest, mode_t);
        va_end(rest);
    }
    return openUnlessRefused("open", path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    mode_t mode = 0;
    if (takesMode(flags)) {
        va_list rest;
        va_start(rest, flags);
        mode = va_arg(rest, mode_t);
        va_end(rest);
    }
    return openUnlessRefused("open64", path, flags, mode);
}

int __open_2(const char *path, int flags) { return openUnlessRefused("__open_2", path, flags); }

int __open64_2(const char *path, int flags) { return openUnlessRefused("__open64_2", path, flags); }
}
