// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzz {

// Ends the run unless what always holds does; the fuzzer then keeps the input.
inline void expect(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

// A log has a line for each record, whatever bytes came.
inline void expectOneLine(const std::string &text)
{
    expect(!text.empty(), "a line says something");
    expect(std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; }),
        "a line has no control characters");
}

} // namespace fuzz
