#pragma once

#include "bridge/HttpResponseParser.h"
#include "support/Deferred.h"

#include <QObject>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <expected>

/// One GET on a connection of its own: exactly one request goes out, whatever happens to it. It lives from `send()` to
/// its answer and then deletes itself; when the application goes first, it answers `cancelled`. Main thread only.
class HttpGet final : public QObject {
    Q_OBJECT

public:
    using Answer = Deferred<std::expected<HttpResponse, BridgeError>>;

    /// A peer that never falls silent, and never comes to an end either, would hold its connection for ever, and so
    /// would each later one until no descriptor is left.
    static constexpr std::chrono::milliseconds longestLife = std::chrono::minutes{10};

    /// Sends the request now. It fails when nothing moves on the connection for `idleLimit`, as soon as the answer
    /// outgrows the parser's limits, and when it is not complete after `wholeLimit`. The answer always comes in a later
    /// turn of the event loop.
    [[nodiscard]] static Answer send(const QUrl& url, std::chrono::milliseconds idleLimit,
                                     std::chrono::milliseconds wholeLimit = longestLife);

    ~HttpGet() override;

private:
    HttpGet(const QUrl& url, std::chrono::milliseconds idleLimit, std::chrono::milliseconds wholeLimit,
            QObject* parent);

    void sendRequest();
    void readAnswer();
    void fail(QAbstractSocket::SocketError error);
    void end(const std::expected<HttpResponse, BridgeError>& answer);

    QUrl m_url;
    QTcpSocket m_socket;
    QTimer m_idle;
    QTimer m_whole;
    HttpResponseParser m_parser;
    Answer m_answer;
    bool m_connected = false;
    bool m_ended = false;
};
