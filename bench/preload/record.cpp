// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "record.h"

#include <valgrind/callgrind.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/mman.h>

namespace {

// Read by measure.py under the same names.
struct Record
{
    std::uint64_t settings;
    std::uint64_t readings;
    std::uint64_t countFrom; // the settings between which instructions are counted; 0 for none
    std::uint64_t countTo;
    std::array<std::uint64_t, 1 << 17> times; // nanoseconds of the monotonic clock
};

Record &theRecord()
{
    static Record &mapped = []() -> Record & {
        static Record none{};
        const char *const path = std::getenv("BENCH_RECORD");
        const int file = path ? open(path, O_RDWR | O_CLOEXEC) : -1;
        void *const memory = file < 0
            ? MAP_FAILED
            : mmap(nullptr, sizeof(Record), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        return memory == MAP_FAILED ? none : *static_cast<Record *>(memory);
    }();
    return mapped;
}

} // namespace

void record::noteSetting()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    Record &record = theRecord();
    record.times.at(record.settings % record.times.size()) =
        static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000U
        + static_cast<std::uint64_t>(now.tv_nsec);
    // The bench looks at the number from another process, and then at the time.
    const std::uint64_t number = __atomic_add_fetch(&record.settings, 1, __ATOMIC_RELEASE);
    if (number == record.countFrom) {
        CALLGRIND_START_INSTRUMENTATION;
    } else if (number == record.countTo) {
        CALLGRIND_DUMP_STATS;
        CALLGRIND_STOP_INSTRUMENTATION;
    }
}

void record::noteReading() { __atomic_add_fetch(&theRecord().readings, 1, __ATOMIC_RELEASE); }
