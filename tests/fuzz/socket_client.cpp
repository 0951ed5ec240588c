// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "tests/fuzz/socket_client.h"

#include "tests/fuzz/expect.h"
#include "virtual_camera/command/control_socket.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace fuzz {

namespace {

constexpr std::size_t longestLine = 4096;

// A folder that is gone when the fuzzer has ended.
class Folder
{
public:
    Folder() { expect(mkdtemp(m_path.data()) != nullptr, "there is room for a folder"); }
    ~Folder() { rmdir(m_path.c_str()); }
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;
    std::string file(const char *name) const { return m_path + '/' + name; }

private:
    std::string m_path = "/tmp/ptz-fuzz-XXXXXX";
};

std::string answerTo(std::string_view line) { return "<" + std::string(line) + ">"; }

class Client
{
public:
    Client(const virtual_camera::ControlSocket &server, const std::string &path)
        : m_server(server), m_socket(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, path.data(), path.size());
        expect(connect(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0,
            "a client can connect");
        serve();
        expect(connected(), "a client is let in");
    }
    ~Client()
    {
        close(m_socket);
        serve();
    }
    Client(const Client &) = delete;
    Client &operator=(const Client &) = delete;

    void say(std::string_view text)
    {
        send(m_socket, text.data(), text.size(), MSG_NOSIGNAL);
        // What the socket could not send at once it sends as soon as there is room.
        do {
            serve();
        } while (listen());
    }
    bool connected() const { return m_server.connections() == 1; }
    const std::string &heard() const { return m_heard; }

private:
    static void serve()
    {
        while (g_main_context_iteration(nullptr, FALSE)) { }
    }
    bool listen()
    {
        const std::size_t before = m_heard.size();
        std::array<char, 4096> bytes{};
        ssize_t count = 0;
        while ((count = recv(m_socket, bytes.data(), bytes.size(), MSG_DONTWAIT)) > 0)
            m_heard.append(bytes.data(), static_cast<std::size_t>(count));
        return m_heard.size() > before;
    }

    const virtual_camera::ControlSocket &m_server;
    int m_socket;
    std::string m_heard;
};

} // namespace

void checkSocket(std::string_view text, std::size_t atATime)
{
    static const Folder folder;
    static const std::string path = folder.file("socket");
    static virtual_camera::ControlSocket server(path,
        [](const auto &connection, std::string_view line) { connection->send(answerTo(line)); });

    std::string expected;
    {
        Client client(server, path);
        for (std::string_view rest = text; !rest.empty() && client.connected();) {
            client.say(rest.substr(0, atATime));
            rest.remove_prefix(std::min(atATime, rest.size()));
        }
        for (std::size_t end = 0; (end = text.find('\n')) != std::string_view::npos;) {
            expected += answerTo(text.substr(0, end)) + '\n';
            text.remove_prefix(end + 1);
        }
        if (client.connected())
            expect(client.heard() == expected, "every line is answered, in order and whole");
        else
            expect(expected.size() + text.size() > longestLine,
                "the socket hangs up only when a line is too long");
    }
    expect(server.connections() == 0, "a client that hangs up is forgotten");
}

} // namespace fuzz
