// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/control_socket.h"

#include <array>
#include <gio/gunixsocketaddress.h>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace virtual_camera {

namespace {

constexpr std::size_t longestLine = 4096;

template<typename Object> struct Unref
{
    void operator()(Object *object) const { g_object_unref(object); }
};
template<typename Object> using Owned = std::unique_ptr<Object, Unref<Object>>;

Owned<GSocketAddress> addressOf(const std::string &path)
{
    if (path.size() >= sizeof sockaddr_un::sun_path)
        throw std::runtime_error(path + ": File name too long");
    return Owned<GSocketAddress>(g_unix_socket_address_new(path.c_str()));
}

Owned<GSocket> newSocket()
{
    return Owned<GSocket>(g_socket_new(
        G_SOCKET_FAMILY_UNIX, G_SOCKET_TYPE_STREAM, G_SOCKET_PROTOCOL_DEFAULT, nullptr));
}

// GLib puts the call that failed before the reason, which is all that a user can act on.
[[noreturn]] void fail(const std::string &what, GError *error)
{
    const std::string message = error->message;
    g_error_free(error);
    const std::size_t reason = message.rfind(": ");
    throw std::runtime_error(
        what + ": " + (reason == std::string::npos ? message : message.substr(reason + 2)));
}

// A socket at which nobody listens any more was left by a program that was killed. Other files
// are none of our business, though connecting to one fails alike.
void removeLeftover(const std::string &path, GSocketAddress *address)
{
    struct stat about{};
    if (lstat(path.c_str(), &about) != 0 || !S_ISSOCK(about.st_mode))
        return;
    GError *error = nullptr;
    g_socket_connect(newSocket().get(), address, nullptr, &error);
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CONNECTION_REFUSED))
        unlink(path.c_str());
    g_clear_error(&error);
}

} // namespace

Connection::Connection(GSocket *socket) : m_socket(socket)
{
    g_object_ref(m_socket);
    g_socket_set_blocking(m_socket, FALSE);
}

Connection::~Connection()
{
    if (m_source != nullptr) {
        g_source_destroy(m_source);
        g_source_unref(m_source);
    }
    g_socket_close(m_socket, nullptr);
    g_object_unref(m_socket);
}

void Connection::start(
    const std::shared_ptr<Connection> &self, LineHandler handler, std::function<void()> hungUp)
{
    m_self = self;
    m_handler = std::move(handler);
    m_hungUp = std::move(hungUp);
    watch();
}

// Waits to read, or to write while anything is unsent.
void Connection::watch()
{
    const GIOCondition wanted = m_unsent.empty() ? G_IO_IN : G_IO_OUT;
    if (m_source != nullptr) {
        g_source_destroy(m_source);
        g_source_unref(m_source);
    }
    m_source = g_socket_create_source(m_socket, wanted, nullptr);
    g_source_set_callback(m_source, G_SOURCE_FUNC(onReady), this, nullptr);
    g_source_attach(m_source, nullptr);
}

gboolean Connection::onReady(GSocket *, GIOCondition, void *connection)
{
    // Hanging up may end the connection.
    const std::shared_ptr<Connection> self = static_cast<Connection *>(connection)->m_self.lock();
    if (self->serve())
        self->watch();
    else
        self->m_hungUp();
    return G_SOURCE_REMOVE;
}

bool Connection::serve()
{
    if (!m_unsent.empty()) {
        if (!flush())
            return false;
        if (m_unsent.empty() && m_sent)
            m_sent();
        return answerLines();
    }
    return receive() && answerLines();
}

bool Connection::receive()
{
    std::array<char, 1024> bytes{};
    GError *error = nullptr;
    const gssize count = g_socket_receive(m_socket, bytes.data(), bytes.size(), nullptr, &error);
    const bool blocked = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_WOULD_BLOCK);
    g_clear_error(&error);
    if (count > 0)
        m_received.append(bytes.data(), static_cast<std::size_t>(count));
    return count > 0 || blocked;
}

bool Connection::answerLines()
{
    std::size_t end = 0;
    while (m_unsent.empty() && (end = m_received.find('\n')) != std::string::npos) {
        const std::string line = m_received.substr(0, end);
        m_received.erase(0, end + 1);
        m_handler(m_self.lock(), line);
    }
    return !m_broken && m_received.size() <= longestLine;
}

void Connection::send(const std::string &line)
{
    const bool idle = m_unsent.empty();
    m_unsent += line + '\n';
    if (!idle)
        return;
    // A connection that breaks is noticed by the main loop, too.
    m_broken = !flush();
    if (!m_unsent.empty())
        watch();
}

bool Connection::flush()
{
    while (!m_unsent.empty()) {
        GError *error = nullptr;
        const gssize count =
            g_socket_send(m_socket, m_unsent.data(), m_unsent.size(), nullptr, &error);
        const bool blocked = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_WOULD_BLOCK);
        g_clear_error(&error);
        if (count < 0)
            return blocked;
        m_unsent.erase(0, static_cast<std::size_t>(count));
    }
    return true;
}

ControlSocket::ControlSocket(const std::string &path, Connection::LineHandler handler)
    : m_path(path), m_handler(std::move(handler))
{
    const Owned<GSocketAddress> address = addressOf(path);
    removeLeftover(path, address.get());
    const Owned<GSocket> listener = newSocket();
    GError *error = nullptr;
    if (!g_socket_bind(listener.get(), address.get(), FALSE, &error)
        || !g_socket_listen(listener.get(), &error))
        fail("cannot listen at " + path, error);
    m_service = g_socket_service_new();
    g_socket_listener_add_socket(G_SOCKET_LISTENER(m_service), listener.get(), nullptr, nullptr);
    g_signal_connect(m_service, "incoming", G_CALLBACK(onIncoming), this);
}

ControlSocket::~ControlSocket()
{
    g_socket_service_stop(m_service);
    g_socket_listener_close(G_SOCKET_LISTENER(m_service));
    g_object_unref(m_service);
    unlink(m_path.c_str());
}

gboolean ControlSocket::onIncoming(
    GSocketService *, GSocketConnection *incoming, GObject *, void *socket)
{
    auto *self = static_cast<ControlSocket *>(socket);
    const auto connection = std::make_shared<Connection>(g_socket_connection_get_socket(incoming));
    self->m_connections.insert(connection);
    connection->start(connection, self->m_handler, [self, connection = connection.get()] {
        self->m_connections.erase(connection->m_self.lock());
    });
    return TRUE;
}

void askSocket(const std::string &path, const std::string &line,
    const std::function<bool(const std::string &)> &reader)
{
    const Owned<GSocketAddress> address = addressOf(path);
    const Owned<GSocket> socket = newSocket();
    GError *error = nullptr;
    if (!g_socket_connect(socket.get(), address.get(), nullptr, &error))
        fail("cannot reach " + path, error);
    const Owned<GSocketConnection> connection(
        g_socket_connection_factory_create_connection(socket.get()));
    GIOStream *const stream = G_IO_STREAM(connection.get());
    const std::string request = line + '\n';
    if (!g_output_stream_write_all(g_io_stream_get_output_stream(stream), request.data(),
            request.size(), nullptr, nullptr, &error))
        fail("cannot reach " + path, error);
    const Owned<GDataInputStream> lines(
        g_data_input_stream_new(g_io_stream_get_input_stream(stream)));
    while (char *answer = g_data_input_stream_read_line(lines.get(), nullptr, nullptr, nullptr)) {
        const std::string text = answer;
        g_free(answer);
        if (!reader(text))
            return;
    }
}

} // namespace virtual_camera
