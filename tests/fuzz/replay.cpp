// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Feeds a fuzz target the files in these folders: what a fuzzer once found stays found.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size);

namespace {

std::vector<std::filesystem::path> filesIn(const char *folder)
{
    std::vector<std::filesystem::path> files;
    // Where nothing was ever found there is no folder.
    if (!std::filesystem::exists(folder))
        return files;
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

void feed(const std::filesystem::path &path)
{
    // Shown when the input ends the run.
    std::printf("%s\n", path.c_str());
    std::fflush(stdout);
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> content(std::istreambuf_iterator<char>(file), {});
    const std::vector<std::uint8_t> bytes(content.begin(), content.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

} // namespace

int main(int count, char **folders)
{
    int fed = 0;
    for (int i = 1; i < count; ++i) {
        const std::vector<std::filesystem::path> files = filesIn(folders[i]);
        std::for_each(files.begin(), files.end(), feed);
        fed += static_cast<int>(files.size());
    }
    std::printf("%d inputs\n", fed);
    return fed > 0 ? 0 : 1;
}
