// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_camera {

// A Unix socket at which lines of text come in and lines of text go out. It has no loop of its
// own: the owner polls descriptors() and calls serve().
class ControlSocket
{
public:
    // One line in, one line out, both without their end.
    using Answerer = std::function<std::string(std::string_view)>;

    // Throws std::system_error when there can be no socket of that name. One that a program left
    // behind is replaced.
    ControlSocket(const std::string &path, Answerer answerer);
    ~ControlSocket();
    ControlSocket(const ControlSocket &) = delete;
    ControlSocket &operator=(const ControlSocket &) = delete;

    std::vector<int> descriptors() const;
    // The descriptor can be read from.
    void serve(int descriptor);

private:
    void acceptClient();
    bool answerLines(int client, std::string &pending);

    std::string m_path;
    Answerer m_answerer;
    int m_listener = -1;
    std::map<int, std::string> m_clients; // with what has come of their next line
};

// Sends one line to the socket and returns the one that comes back; throws std::system_error.
std::string askSocket(const std::string &path, const std::string &line);

} // namespace virtual_camera
