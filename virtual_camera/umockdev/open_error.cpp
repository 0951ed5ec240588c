// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/umockdev/open_error.h"

#include <filesystem>

namespace virtual_camera {

void setOpenError(const std::string &rootDirectory, const std::string &path, int error)
{
    namespace fs = std::filesystem;
    const fs::path link = rootDirectory + "/refuse-open" + path;
    fs::create_directories(link.parent_path());
    fs::path fresh = link;
    fresh += ".new";
    fs::remove(fresh);
    if (error == 0) {
        fs::remove(link);
        return;
    }
    fs::create_symlink(std::to_string(error), fresh);
    fs::rename(fresh, link);
}

} // namespace virtual_camera
