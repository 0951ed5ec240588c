// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/preload.h"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <unistd.h>

namespace virtual_camera {

namespace {

namespace fs = std::filesystem;

constexpr char preloadLibrary[] = "libumockdev-preload.so.0";
constexpr char openLibrary[] = "virtual_camera_open.so";

std::string environment(const char *name)
{
    const char *value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::string join(const std::string &first, char separator, const std::string &second)
{
    return second.empty() ? first : first + separator + second;
}

// A program that is built with the address sanitizer refuses to run with another library
// before its own, unless it is told not to mind.
std::string sanitizerOptions()
{
    constexpr std::string_view wanted = "verify_asan_link_order=0";
    const std::string before = environment("ASAN_OPTIONS");
    return before.find(wanted) == std::string::npos ? join(std::string(wanted), ':', before)
                                                    : before;
}

// Beside the program in the build tree, else where it was installed.
fs::path findOpenLibrary()
{
    const fs::path folder = fs::read_symlink("/proc/self/exe").parent_path();
    const fs::path installed = (folder / PTZ_MODULE_DIR).lexically_normal();
    for (const fs::path &place : { folder, installed }) {
        if (fs::exists(place / openLibrary))
            return place / openLibrary;
    }
    throw std::runtime_error(std::string("cannot find ") + openLibrary + " in " + folder.string()
        + " or " + installed.string());
}

} // namespace

std::string preloadProblem()
{
    void *library = dlopen(preloadLibrary, RTLD_LAZY | RTLD_LOCAL);
    if (library == nullptr)
        return dlerror();
    dlclose(library);
    return {};
}

std::vector<std::string> busEnvironment(const std::string &rootDirectory)
{
    // A path in LD_PRELOAD may have no blank and no colon. The program's own may; this one is for
    // the user to choose.
    if (rootDirectory.find_first_of(" :") != std::string::npos)
        throw std::runtime_error("the path of the folder for temporary files (TMPDIR) may have no "
                                 "blank and no colon: "
            + fs::path(rootDirectory).parent_path().string());
    const fs::path link = fs::path(rootDirectory) / openLibrary;
    fs::create_symlink(findOpenLibrary(), link);
    return { "UMOCKDEV_DIR=" + rootDirectory,
        "LD_PRELOAD=" + link.string() + ':' + preloadLibrary };
}

std::vector<std::string> environmentWith(const std::vector<std::string> &bus)
{
    const std::string before = environment("LD_PRELOAD");
    std::vector<std::string> variables;
    for (char **variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        const std::string name = text.substr(0, text.find('='));
        if (name != "LD_PRELOAD" && name != "UMOCKDEV_DIR" && name != "ASAN_OPTIONS")
            variables.push_back(text);
    }
    for (const std::string &variable : bus)
        variables.push_back(
            variable.substr(0, 11) == "LD_PRELOAD=" ? join(variable, ':', before) : variable);
    variables.push_back("ASAN_OPTIONS=" + sanitizerOptions());
    return variables;
}

} // namespace virtual_camera
