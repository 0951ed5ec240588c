// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/control_socket.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace virtual_camera {

namespace {

constexpr std::size_t longestLine = 4096;

[[noreturn]] void fail(const std::string &what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

sockaddr_un addressOf(const std::string &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        errno = ENAMETOOLONG;
        fail(path);
    }
    std::memcpy(address.sun_path, path.data(), path.size());
    return address;
}

const sockaddr *generic(const sockaddr_un &address)
{
    return reinterpret_cast<const sockaddr *>(&address);
}

int newSocket() { return socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0); }

// A socket at which nobody listens any more was left by a program that was killed. Other files
// are none of our business, though connecting to one fails alike.
void removeLeftover(const sockaddr_un &address)
{
    struct stat about
    { };
    if (lstat(address.sun_path, &about) != 0 || !S_ISSOCK(about.st_mode))
        return;
    const int probe = newSocket();
    const bool refused =
        connect(probe, generic(address), sizeof address) != 0 && errno == ECONNREFUSED;
    close(probe);
    if (refused)
        unlink(address.sun_path);
}

bool sendAll(int descriptor, std::string_view text, int flags = 0)
{
    while (!text.empty()) {
        const ssize_t sent = send(descriptor, text.data(), text.size(), MSG_NOSIGNAL | flags);
        if (sent < 0 && errno == EINTR)
            continue;
        if (sent <= 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

} // namespace

ControlSocket::ControlSocket(const std::string &path, Answerer answerer)
    : m_path(path), m_answerer(std::move(answerer))
{
    const sockaddr_un address = addressOf(path);
    removeLeftover(address);
    m_listener = newSocket();
    constexpr int queue = 8;
    if (bind(m_listener, generic(address), sizeof address) != 0 || listen(m_listener, queue) != 0) {
        const int error = errno;
        close(m_listener);
        errno = error;
        fail("cannot listen at " + path);
    }
}

ControlSocket::~ControlSocket()
{
    for (const auto &[client, pending] : m_clients)
        close(client);
    close(m_listener);
    unlink(m_path.c_str());
}

std::vector<int> ControlSocket::descriptors() const
{
    std::vector<int> all{ m_listener };
    for (const auto &[client, pending] : m_clients)
        all.push_back(client);
    return all;
}

void ControlSocket::acceptClient()
{
    const int client = accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (client >= 0)
        m_clients[client];
}

void ControlSocket::serve(int descriptor)
{
    if (descriptor == m_listener) {
        acceptClient();
        return;
    }
    const auto client = m_clients.find(descriptor);
    if (client == m_clients.end())
        return;
    std::array<char, 1024> bytes{};
    const ssize_t count = recv(descriptor, bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count > 0)
        client->second.append(bytes.data(), static_cast<std::size_t>(count));
    const bool gone = count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR);
    if (gone || !answerLines(descriptor, client->second)) {
        close(descriptor);
        m_clients.erase(client);
    }
}

bool ControlSocket::answerLines(int client, std::string &pending)
{
    std::string answers;
    for (std::size_t end = 0; (end = pending.find('\n')) != std::string::npos;) {
        answers += m_answerer(std::string_view(pending).substr(0, end)) + '\n';
        pending.erase(0, end + 1);
    }
    // A client that asks on and on but never reads must not hold up the camera.
    return sendAll(client, answers, MSG_DONTWAIT) && pending.size() <= longestLine;
}

std::string askSocket(const std::string &path, const std::string &line)
{
    const sockaddr_un address = addressOf(path);
    const int descriptor = newSocket();
    std::string answer;
    const bool sent = connect(descriptor, generic(address), sizeof address) == 0
        && sendAll(descriptor, line + '\n');
    if (!sent) {
        const int error = errno;
        close(descriptor);
        errno = error;
        fail("cannot reach " + path);
    }
    std::array<char, 1024> bytes{};
    ssize_t count = 0;
    while (answer.find('\n') == std::string::npos
        && (count = recv(descriptor, bytes.data(), bytes.size(), 0)) > 0)
        answer.append(bytes.data(), static_cast<std::size_t>(count));
    close(descriptor);
    return answer.substr(0, answer.find('\n'));
}

} // namespace virtual_camera
