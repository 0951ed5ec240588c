// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <gio/gio.h>
#include <memory>
#include <set>
#include <string>
#include <string_view>

namespace virtual_camera {

/// A program at the control socket. What it is sent waits here until it reads; while anything
/// waits, no further line of its own is taken.
class Connection
{
public:
    using LineHandler = std::function<void(const std::shared_ptr<Connection> &, std::string_view)>;

    explicit Connection(GSocket *socket);
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// A line without its end.
    void send(const std::string &line);
    /// Bytes that the program has not taken yet.
    std::size_t unsent() const { return m_unsent.size(); }
    /// Called each time when everything has been taken.
    void onSent(std::function<void()> handler) { m_sent = std::move(handler); }

private:
    friend class ControlSocket;
    void start(
        const std::shared_ptr<Connection> &self, LineHandler handler, std::function<void()> hungUp);
    void watch();
    bool serve();
    bool receive();
    bool answerLines();
    bool flush();
    static gboolean onReady(GSocket *socket, GIOCondition condition, void *connection);

    GSocket *m_socket;
    GSource *m_source = nullptr;
    std::weak_ptr<Connection> m_self;
    LineHandler m_handler;
    std::function<void()> m_hungUp;
    std::function<void()> m_sent;
    std::string m_received; // of the next line
    std::string m_unsent;
    bool m_broken = false;
};

/// A Unix socket at which lines of text come in and lines of text go out, served by the main loop.
class ControlSocket
{
public:
    /// Throws std::runtime_error when there can be no socket of that name. One that a program left
    /// behind is replaced.
    ControlSocket(const std::string &path, Connection::LineHandler handler);
    ~ControlSocket();
    ControlSocket(const ControlSocket &) = delete;
    ControlSocket &operator=(const ControlSocket &) = delete;

    std::size_t connections() const { return m_connections.size(); }

private:
    static gboolean onIncoming(
        GSocketService *service, GSocketConnection *incoming, GObject *source, void *socket);

    std::string m_path;
    Connection::LineHandler m_handler;
    GSocketService *m_service;
    std::set<std::shared_ptr<Connection>> m_connections;
};

/// Sends one line to the socket and hands every line that comes back to the reader, until that
/// answers false or the other side hangs up. Throws std::runtime_error.
void askSocket(const std::string &path, const std::string &line,
    const std::function<bool(const std::string &)> &reader);

} // namespace virtual_camera
