#pragma once

#include "bridge/HttpResponseParser.h"
#include "support/Deferred.h"
#include "support/Descriptor.h"

#include <QObject>
#include <QSocketNotifier>
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

    using Body = HttpResponseParser::Body;

    /// Ends a request whose peer keeps sending a little and never ends; such requests would use up all descriptors.
    static constexpr std::chrono::milliseconds defaultTotalLimit = std::chrono::minutes{10};

    /// Sends the request now, to a host given in numbers: no name server is asked. It fails at once when the URL is not
    /// one of HTTP, and from the event loop when nobody can be connected to, when nothing moves on the connection for
    /// `idleLimit`, as soon as the answer outgrows the parser's limits, and when it is not complete after `totalLimit`.
    [[nodiscard]] static Answer send(const QUrl& url, std::chrono::milliseconds idleLimit, Body body = Body::kept,
                                     std::chrono::milliseconds totalLimit = defaultTotalLimit);

    ~HttpGet() override;

private:
    HttpGet(const QUrl& url, std::chrono::milliseconds idleLimit, Body body, std::chrono::milliseconds totalLimit);

    void sendRequest();
    void readAnswer();
    void fail(BridgeError::Kind kind);
    void end(const std::expected<HttpResponse, BridgeError>& answer);

    QUrl m_url;
    Descriptor m_socket;
    QSocketNotifier m_connected{QSocketNotifier::Write};
    QSocketNotifier m_readable{QSocketNotifier::Read};
    QTimer m_idle;
    QTimer m_total;
    HttpResponseParser m_parser;
    Answer m_answer;
};
