// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "tests/console/uvc_calls.h"

#include <map>
#include <regex>

#include "tests/support/uvc_call_recorder.h"

namespace {

/// Gives each kind of object its own numbers.
class Renumbering
{
public:
    std::string operator()(const std::string &call)
    {
        static const std::regex object("(context|list|descriptor|handle)([0-9]+)");
        std::string renamed;
        std::string rest = call;
        for (std::smatch match; std::regex_search(rest, match, object); rest = match.suffix())
            renamed += match.prefix().str() + match[1].str() + std::to_string(of(match));
        return renamed + rest;
    }

private:
    int of(const std::smatch &match)
    {
        std::map<std::string, int> &known = numbers[match[1]];
        const int next = static_cast<int>(known.size()) + 1;
        return known.emplace(match[2], next).first->second;
    }

    std::map<std::string, std::map<std::string, int>> numbers;
};

} // namespace

std::vector<std::string> callsRenumbered()
{
    Renumbering renumber;
    std::vector<std::string> calls;
    for (const std::string &call : uvc_call_recorder::calls())
        calls.push_back(renumber(call));
    return calls;
}

std::vector<std::string> opensAndCloses()
{
    static const std::regex open(R"(uvc_open\(list[0-9]+\[([0-9]+)\].* = (-?[0-9]+))");
    static const std::regex close(R"(uvc_close\(.*)");
    std::vector<std::string> found;
    for (const std::string &call : uvc_call_recorder::calls()) {
        std::smatch match;
        if (std::regex_match(call, match, open))
            found.push_back("open " + match[1].str() + (match[2] == "0" ? "" : " failed"));
        else if (std::regex_match(call, close))
            found.push_back("close");
    }
    return found;
}
