#include "bridge/HttpGet.h"

#include <QCoreApplication>
#include <QNetworkProxy>

#include <utility>

namespace {

using Kind = BridgeError::Kind;

constexpr int defaultPort = 80;
constexpr auto readBufferBytes = qint64{256} * 1024;

QByteArray hostField(const QUrl& url) {
    QByteArray host = url.host(QUrl::FullyEncoded).toLatin1();
    if (host.contains(':')) {
        host = '[' + host + ']';
    }
    return url.port() < 0 ? host : host + ':' + QByteArray::number(url.port());
}

}

HttpGet::Answer HttpGet::send(const QUrl& url, std::chrono::milliseconds idleLimit,
                              std::chrono::milliseconds wholeLimit) {
    return (new HttpGet{url, idleLimit, wholeLimit, QCoreApplication::instance()})->m_answer;
}

HttpGet::HttpGet(const QUrl& url, std::chrono::milliseconds idleLimit, std::chrono::milliseconds wholeLimit,
                 QObject* parent)
    : QObject{parent}
    , m_url{url} {
    connect(&m_socket, &QTcpSocket::connected, this, &HttpGet::sendRequest);
    connect(&m_socket, &QTcpSocket::readyRead, this, &HttpGet::readAnswer);
    connect(&m_socket, &QTcpSocket::errorOccurred, this, &HttpGet::fail, Qt::QueuedConnection);
    m_idle.setInterval(idleLimit);
    m_whole.setInterval(wholeLimit);
    for (QTimer* timer : {&m_idle, &m_whole}) {
        timer->setSingleShot(true);
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
    m_idle.start();
    const QByteArray target = m_url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::RemoveFragment);
    m_socket.write("GET " + target + " HTTP/1.1\r\nHost: " + hostField(m_url) + "\r\nConnection: close\r\n\r\n");
}

void HttpGet::readAnswer() {
    m_idle.start();
    while (!m_ended && m_socket.bytesAvailable() > 0) {
        if (const auto outcome = m_parser.take(m_socket.read(readBufferBytes))) {
            end(*outcome);
        }
    }
}

void HttpGet::fail(QAbstractSocket::SocketError error) {
    readAnswer();
    if (m_ended) {
        return;
    }
    if (error == QAbstractSocket::RemoteHostClosedError) {
        end(m_parser.finish());
    } else {
        end(std::unexpected{BridgeError::of(m_connected ? Kind::connectionLost : Kind::cannotConnect)});
    }
}

void HttpGet::end(const std::expected<HttpResponse, BridgeError>& answer) {
    if (std::exchange(m_ended, true)) {
        return;
    }
    m_idle.stop();
    m_whole.stop();
    m_socket.disconnect(this);
    m_socket.abort();
    deleteLater();
    m_answer.deliver(answer);
}

#include "moc_HttpGet.cpp"
