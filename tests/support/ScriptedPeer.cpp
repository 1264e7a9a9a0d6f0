#include "support/ScriptedPeer.h"

#include <QPointer>
#include <QTimer>

#include <algorithm>

#include <sys/socket.h>

using namespace Qt::StringLiterals;

ScriptedPeer::ScriptedPeer() {
    connect(this, &QTcpServer::newConnection, this, &ScriptedPeer::accept);
    if (!listen(QHostAddress::LocalHost)) {
        qFatal("The scripted peer cannot listen.");
    }
}

QUrl ScriptedPeer::baseUrl(const QString& path) const {
    return QUrl{u"http://127.0.0.1:%1%2"_s.arg(QString::number(serverPort()), path)};
}

void ScriptedPeer::setScript(const QByteArray& path, const Script& script) {
    m_scripts.insert(path, script);
}

ScriptedPeer::Script ScriptedPeer::plain(int status, const QByteArray& body) {
    return {{"HTTP/1.1 " + QByteArray::number(status) +
             " Scripted\r\nContent-Type: application/json\r\nContent-Length: " + QByteArray::number(body.size()) +
             "\r\n\r\n" + body}};
}

void ScriptedPeer::accept() {
    while (auto* socket = nextPendingConnection()) {
        ++connections;
        mostOpenConnections = std::max(mostOpenConnections, ++openConnections);
        connect(socket, &QTcpSocket::bytesWritten, this, [this](qint64 bytes) { bytesSent += bytes; });
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { readRequest(*socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            --openConnections;
            socket->deleteLater();
        });
        readRequest(*socket);
    }
}

void ScriptedPeer::readRequest(QTcpSocket& socket) {
    const QByteArray head = socket.peek(socket.bytesAvailable());
    if (!head.endsWith("\r\n\r\n")) {
        return;
    }
    socket.readAll();
    requests.append(head);
    const QByteArray target = head.split(' ').value(1);
    play(socket, m_scripts.value(target.split('?').first()), 0);
}

void ScriptedPeer::play(QTcpSocket& socket, const Script& script, qsizetype next) {
    if (next == script.pieces.size()) {
        end(socket, script);
        return;
    }
    socket.write(script.pieces.at(next));
    socket.flush();
    QTimer::singleShot(script.gap, &socket, [this, &socket, script, next] { play(socket, script, next + 1); });
}

void ScriptedPeer::end(QTcpSocket& socket, const Script& script) {
    switch (script.end) {
    case End::close:
        socket.disconnectFromHost();
        break;
    case End::halfClose:
        shutdown(static_cast<int>(socket.socketDescriptor()), SHUT_WR);
        break;
    case End::stall:
        break;
    case End::reset: {
        const linger abortive{.l_onoff = 1, .l_linger = 0};
        setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &abortive, sizeof abortive);
        socket.abort();
        break;
    }
    case End::repeatLastPiece:
        connect(&socket, &QTcpSocket::bytesWritten, &socket, [&socket, piece = script.pieces.last()] {
            if (socket.bytesToWrite() == 0) {
                socket.write(piece);
            }
        });
        socket.write(script.pieces.last());
        break;
    }
}

#include "moc_ScriptedPeer.cpp"
