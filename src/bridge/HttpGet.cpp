#include "bridge/HttpGet.h"

#include <QCoreApplication>

#include <cerrno>
#include <csignal>
#include <memory>

#include <fcntl.h>
#include <netdb.h>
#include <sys/socket.h>

using namespace Qt::StringLiterals;

namespace {

using Kind = BridgeError::Kind;

constexpr int defaultPort = 80;
constexpr qsizetype blockBytes = qsizetype{16} * 1024;

/// A socket on its way to the host, or none.
Descriptor connecting(const QUrl& url) {
    addrinfo wanted{};
    wanted.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
    wanted.ai_socktype = SOCK_STREAM;
    const QByteArray host = url.host().toUtf8();
    const QByteArray port = QByteArray::number(url.port(defaultPort));
    addrinfo* found = nullptr;
    if (getaddrinfo(host.constData(), port.constData(), &wanted, &found) != 0) {
        return {};
    }
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> address{found, &freeaddrinfo};
    Descriptor socket{::socket(found->ai_family, found->ai_socktype, found->ai_protocol)};
    (void)fcntl(socket.number(), F_SETFD, FD_CLOEXEC);
    (void)fcntl(socket.number(), F_SETFL, O_NONBLOCK);
    const bool isOnItsWay = connect(socket.number(), found->ai_addr, found->ai_addrlen) == 0 || errno == EINPROGRESS;
    return isOnItsWay ? std::move(socket) : Descriptor{};
}

}

HttpGet::Answer HttpGet::send(const QUrl& url, std::chrono::milliseconds idleLimit, Body body,
                              std::chrono::milliseconds totalLimit) {
    if (url.scheme() != "http"_L1 || url.host().isEmpty()) {
        Answer refused;
        refused.deliver(std::unexpected{BridgeError::of(Kind::badUrl)});
        return refused;
    }
    return (new HttpGet{url, idleLimit, body, totalLimit})->m_answer;
}

HttpGet::HttpGet(const QUrl& url, std::chrono::milliseconds idleLimit, Body body, std::chrono::milliseconds totalLimit)
    : QObject{QCoreApplication::instance()}
    , m_url{url}
    , m_socket{connecting(url)}
    , m_parser{body} {
    if (!m_socket.isOpen()) {
        QMetaObject::invokeMethod(this, [this] { fail(Kind::cannotConnect); }, Qt::QueuedConnection);
        return;
    }
    m_idle.setInterval(idleLimit);
    m_total.setInterval(totalLimit);
    for (QTimer* timer : {&m_idle, &m_total}) {
        timer->setTimerType(Qt::PreciseTimer);
        connect(timer, &QTimer::timeout, this, [this] { fail(Kind::timedOut); });
        timer->start();
    }
    connect(&m_connected, &QSocketNotifier::activated, this, &HttpGet::sendRequest);
    connect(&m_readable, &QSocketNotifier::activated, this, &HttpGet::readAnswer);
    m_connected.setSocket(m_socket.number());
    m_connected.setEnabled(true);
}

HttpGet::~HttpGet() {
    m_answer.deliver(std::unexpected{BridgeError::of(Kind::cancelled)});
}

void HttpGet::sendRequest() {
    m_connected.setEnabled(false);
    int error = 0;
    socklen_t size = sizeof error;
    if (getsockopt(m_socket.number(), SOL_SOCKET, SO_ERROR, &error, &size) != 0 || error != 0) {
        fail(Kind::cannotConnect);
        return;
    }
    const QByteArray target = m_url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::RemoveFragment);
    const QByteArray host = m_url.authority(QUrl::FullyEncoded).section(u'@', -1).toLatin1();
    const QByteArray request = "GET " + target + " HTTP/1.1\r\nHost: " + host + "\r\nConnection: close\r\n\r\n";
    std::signal(SIGPIPE, SIG_IGN); // a peer that is gone already ends the request, not the program
    (void)::send(m_socket.number(), request.constData(), static_cast<std::size_t>(request.size()), 0);
    m_readable.setSocket(m_socket.number());
    m_readable.setEnabled(true);
}

void HttpGet::readAnswer() {
    QByteArray block{blockBytes, Qt::Uninitialized};
    const ssize_t count = read(m_socket.number(), block.data(), static_cast<std::size_t>(blockBytes));
    if (count > 0) {
        m_idle.start();
        if (const auto outcome = m_parser.take(QByteArrayView{block}.first(count))) {
            end(*outcome);
        }
    } else if (count == 0) {
        end(m_parser.finish());
    } else if (errno != EAGAIN && errno != EINTR) {
        fail(Kind::connectionLost);
    }
}

void HttpGet::fail(BridgeError::Kind kind) {
    end(std::unexpected{BridgeError::of(kind)});
}

void HttpGet::end(const std::expected<HttpResponse, BridgeError>& answer) {
    m_connected.setEnabled(false);
    m_readable.setEnabled(false);
    deleteLater();
    m_answer.deliver(answer);
}

#include "moc_HttpGet.cpp"
