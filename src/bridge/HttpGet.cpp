#include "bridge/HttpGet.h"

#include <QCoreApplication>
#include <QNetworkProxy>

using namespace Qt::StringLiterals;

namespace {

using Kind = BridgeError::Kind;

constexpr int defaultPort = 80;
constexpr auto readBufferBytes = qint64{256} * 1024;

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
    , m_parser{body} {
    connect(&m_socket, &QTcpSocket::connected, this, &HttpGet::sendRequest);
    connect(&m_socket, &QTcpSocket::readyRead, this, &HttpGet::readAnswer);
    connect(&m_socket, &QTcpSocket::errorOccurred, this, &HttpGet::fail, Qt::QueuedConnection);
    m_idle.setInterval(idleLimit);
    m_total.setInterval(totalLimit);
    for (QTimer* timer : {&m_idle, &m_total}) {
        timer->setTimerType(Qt::PreciseTimer);
        connect(timer, &QTimer::timeout, this, [this] { end(std::unexpected{BridgeError::of(Kind::timedOut)}); });
        timer->start();
    }
    m_socket.setProxy(QNetworkProxy::NoProxy);
    m_socket.setReadBufferSize(readBufferBytes);
    m_socket.connectToHost(url.host(), static_cast<quint16>(url.port(defaultPort)));
}

HttpGet::~HttpGet() {
    m_socket.disconnect(this);
    m_answer.deliver(std::unexpected{BridgeError::of(Kind::cancelled)});
}

void HttpGet::sendRequest() {
    m_connected = true;
    const QByteArray target = m_url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::RemoveFragment);
    const QByteArray host = m_url.authority(QUrl::FullyEncoded).section(u'@', -1).toLatin1();
    m_socket.write("GET " + target + " HTTP/1.1\r\nHost: " + host + "\r\nConnection: close\r\n\r\n");
}

void HttpGet::readAnswer() {
    m_idle.start();
    while (m_socket.bytesAvailable() > 0) {
        if (const auto outcome = m_parser.take(m_socket.read(readBufferBytes))) {
            end(*outcome);
        }
    }
}

void HttpGet::fail(QAbstractSocket::SocketError error) {
    readAnswer();
    end(error == QAbstractSocket::RemoteHostClosedError
            ? m_parser.finish()
            : std::unexpected{BridgeError::of(m_connected ? Kind::connectionLost : Kind::cannotConnect)});
}

void HttpGet::end(const std::expected<HttpResponse, BridgeError>& answer) {
    if (m_answer.await_ready()) {
        return;
    }
    m_socket.disconnect(this);
    m_socket.abort();
    deleteLater();
    m_answer.deliver(answer);
}

#include "moc_HttpGet.cpp"
