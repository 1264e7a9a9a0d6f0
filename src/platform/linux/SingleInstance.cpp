#include "platform/SingleInstance.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <optional>

#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto peerTimeout = 1000ms;
constexpr unsigned long retryInterval = 10;
constexpr int maxMessage = 64;
constexpr qint64 maxLine = maxMessage * 4 + 1;
constexpr int maxPeers = 16;
constexpr auto acknowledgement = "ok\n";

/// One name per user and desktop session. It is no file: it goes with its process, however that ends.
QString socketName() {
    QByteArray session = qgetenv("WAYLAND_DISPLAY");
    if (session.isEmpty()) {
        session = qgetenv("DISPLAY");
        // ":0" and ":0.0" are the same desktop.
        const qsizetype screen = session.lastIndexOf('.');
        session.truncate(screen > session.lastIndexOf(':') ? screen : session.size());
    }
    const QByteArray hash = QCryptographicHash::hash(session, QCryptographicHash::Sha256).toHex().first(16);
    return u"vorna-companion-%1-%2"_s.arg(::getuid()).arg(QLatin1StringView{hash});
}

bool belongsToUs(const QLocalSocket& socket) {
    ucred peer{};
    socklen_t size = sizeof(peer);
    const int descriptor = static_cast<int>(socket.socketDescriptor());
    return ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::getuid();
}

/// The message of a line that a later start has sent; nothing for anything else.
std::optional<QString> messageOf(const QByteArray& line) {
    const QString message = QString::fromUtf8(line).chopped(1);
    const bool readable = std::ranges::all_of(message, [](QChar character) { return character.isPrint(); });
    const bool fits = !message.isEmpty() && message.size() <= maxMessage;
    return readable && fits ? std::optional{message} : std::nullopt;
}

class ListeningInstance final : public SingleInstance {
public:
    explicit ListeningInstance(std::unique_ptr<QLocalServer> server)
        : m_server{std::move(server)} {
        connect(m_server.get(), &QLocalServer::newConnection, this, [this] {
            while (QLocalSocket* const peer = m_server->nextPendingConnection()) {
                welcome(peer);
            }
        });
    }

private:
    void welcome(QLocalSocket* peer) {
        if (m_peers >= maxPeers || !belongsToUs(*peer)) {
            delete peer;
            return;
        }
        ++m_peers;
        connect(peer, &QObject::destroyed, this, [this] { --m_peers; });
        connect(peer, &QLocalSocket::disconnected, peer, &QObject::deleteLater);
        connect(peer, &QLocalSocket::readyRead, this, [this, peer] { listenTo(peer); });
        QTimer::singleShot(peerTimeout, peer, [peer] {
            peer->abort();
            peer->deleteLater();
        });
        peer->setReadBufferSize(maxLine);
        listenTo(peer);
    }

    void listenTo(QLocalSocket* peer) {
        if (!peer->canReadLine()) {
            if (peer->bytesAvailable() >= maxLine) {
                peer->abort();
            }
            return;
        }
        disconnect(peer, &QLocalSocket::readyRead, this, nullptr);
        const std::optional<QString> message = messageOf(peer->readLine());
        peer->write(acknowledgement);
        peer->disconnectFromServer();
        if (message) {
            emit messageReceived(*message);
        }
    }

    std::unique_ptr<QLocalServer> m_server;
    int m_peers = 0;
};

std::unique_ptr<QLocalServer> listeningServer() {
    auto server = std::make_unique<QLocalServer>();
    server->setSocketOptions(QLocalServer::AbstractNamespaceOption);
    return server->listen(socketName()) ? std::move(server) : nullptr;
}

enum class Delivery { nobody, stranger, handedOver };

Delivery deliver(const QString& message, const QDeadlineTimer& deadline) {
    QLocalSocket socket;
    socket.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
    socket.connectToServer(socketName());
    const auto left = [&deadline] { return static_cast<int>(deadline.remainingTime()); };
    if (!socket.waitForConnected(left())) {
        return deadline.hasExpired() ? Delivery::handedOver : Delivery::nobody;
    }
    if (!belongsToUs(socket)) {
        return Delivery::stranger;
    }
    socket.write(message.left(maxMessage).toUtf8() + '\n');
    const bool heard = socket.waitForBytesWritten(left()) && socket.waitForReadyRead(left());
    return heard || deadline.hasExpired() ? Delivery::handedOver : Delivery::nobody;
}

}

std::unique_ptr<SingleInstance> SingleInstance::claim(const QString& message) {
    const QDeadlineTimer deadline{peerTimeout};
    while (!deadline.hasExpired()) {
        if (auto server = listeningServer()) {
            return std::make_unique<ListeningInstance>(std::move(server));
        }
        switch (deliver(message, deadline)) {
        case Delivery::handedOver:
            return nullptr;
        case Delivery::stranger:
            return std::make_unique<SingleInstance>();
        case Delivery::nobody:
            QThread::msleep(retryInterval);
        }
    }
    return std::make_unique<SingleInstance>();
}
