#include "platform/SingleInstance.h"

#include "support/Descriptor.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QSocketNotifier>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string_view>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto peerTimeout = 1000ms;
constexpr unsigned long retryInterval = 10;
constexpr int maxMessage = 64;
constexpr qsizetype maxLine = maxMessage * 4 + 1;
constexpr int maxPeers = 16;
constexpr int queueLength = 50;
constexpr std::string_view acknowledgement = "ok\n";

/// One name per user and desktop session. It is no file: it goes with its process, however that ends.
QByteArray socketName() {
    QByteArray session = qgetenv("WAYLAND_DISPLAY");
    if (session.isEmpty()) {
        session = qgetenv("DISPLAY");
        // ":0" and ":0.0" are the same desktop.
        const qsizetype screen = session.lastIndexOf('.');
        session.truncate(screen > session.lastIndexOf(':') ? screen : session.size());
    }
    const QByteArray hash = QCryptographicHash::hash(session, QCryptographicHash::Sha256).toHex().first(16);
    return "vorna-companion-" + QByteArray::number(::getuid()) + '-' + hash;
}

/// Calls `bind` or `connect`; answers whether that went well.
template <typename Call>
bool withAddress(const Call& call, const Descriptor& socket) {
    const QByteArray name = socketName();
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    std::memcpy(address.sun_path + 1, name.constData(), static_cast<std::size_t>(name.size()));
    const auto size = offsetof(sockaddr_un, sun_path) + 1 + static_cast<std::size_t>(name.size());
    return call(socket.number(), reinterpret_cast<const sockaddr*>(&address), static_cast<socklen_t>(size)) == 0;
}

bool belongsToUs(const Descriptor& socket) {
    ucred peer{};
    socklen_t size = sizeof(peer);
    return ::getsockopt(socket.number(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::getuid();
}

/// The message of a line that a later start has sent; nothing for anything else.
std::optional<QString> messageOf(const QByteArray& line) {
    const QString message = QString::fromUtf8(line).chopped(1);
    const bool readable = std::ranges::all_of(message, [](QChar character) { return character.isPrint(); });
    const bool fits = !message.isEmpty() && message.size() <= maxMessage;
    return readable && fits ? std::optional{message} : std::nullopt;
}

/// A later start that has connected. Goes away by itself, and with the instance.
class Peer final : public QObject {
public:
    Peer(Descriptor socket, SingleInstance* instance)
        : QObject{instance}
        , m_instance{*instance}
        , m_socket{std::move(socket)}
        , m_readable{m_socket.number(), QSocketNotifier::Read} {
        connect(&m_readable, &QSocketNotifier::activated, this, &Peer::listen);
        QTimer::singleShot(peerTimeout, this, &QObject::deleteLater);
    }

private:
    void listen() {
        std::array<char, maxLine> bytes{};
        const ssize_t count = ::recv(m_socket.number(), bytes.data(), bytes.size(), 0);
        m_heard.append(bytes.data(), std::max<ssize_t>(count, 0));
        const qsizetype end = m_heard.indexOf('\n') + 1;
        if (count > 0 && end == 0 && m_heard.size() < maxLine) {
            return;
        }
        m_readable.setEnabled(false);
        deleteLater();
        if (end == 0) {
            return;
        }
        (void)::send(m_socket.number(), acknowledgement.data(), acknowledgement.size(), MSG_NOSIGNAL);
        if (const auto message = messageOf(m_heard.first(end))) {
            emit m_instance.messageReceived(*message);
        }
    }

    SingleInstance& m_instance;
    Descriptor m_socket;
    QSocketNotifier m_readable;
    QByteArray m_heard;
};

class ListeningInstance final : public SingleInstance {
public:
    explicit ListeningInstance(Descriptor socket)
        : m_socket{std::move(socket)}
        , m_connected{m_socket.number(), QSocketNotifier::Read} {
        connect(&m_connected, &QSocketNotifier::activated, this, &ListeningInstance::welcome);
    }

private:
    void welcome() {
        Descriptor peer{::accept4(m_socket.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK)};
        if (!peer.isOpen()) { // there are no descriptors left, and it would be asked for ever
            m_connected.setEnabled(false);
            QTimer::singleShot(peerTimeout, this, [this] { m_connected.setEnabled(true); });
        } else if (belongsToUs(peer) && children().size() < maxPeers) {
            new Peer{std::move(peer), this};
        }
    }

    Descriptor m_socket;
    QSocketNotifier m_connected;
};

Descriptor listeningSocket() {
    Descriptor socket{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
    const bool isOurs = withAddress(::bind, socket) && ::listen(socket.number(), queueLength) == 0;
    return isOurs ? std::move(socket) : Descriptor{};
}

enum class Delivery { nobody, stranger, handedOver };

void waitAtMost(const Descriptor& socket, const QDeadlineTimer& deadline) {
    const auto left = std::max<qint64>(1, deadline.remainingTimeAsDuration() / 1us); // none at all would be no limit
    const timeval limit{.tv_sec = left / 1'000'000, .tv_usec = left % 1'000'000};
    for (const int direction : {SO_SNDTIMEO, SO_RCVTIMEO}) {
        (void)::setsockopt(socket.number(), SOL_SOCKET, direction, &limit, sizeof limit);
    }
}

Delivery deliver(const QString& message, const QDeadlineTimer& deadline) {
    const Descriptor socket{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    waitAtMost(socket, deadline);
    if (!withAddress(::connect, socket)) {
        return deadline.hasExpired() ? Delivery::handedOver : Delivery::nobody;
    }
    if (!belongsToUs(socket)) {
        return Delivery::stranger;
    }
    const QByteArray line = message.left(maxMessage).toUtf8() + '\n';
    (void)::send(socket.number(), line.constData(), static_cast<std::size_t>(line.size()), MSG_NOSIGNAL);
    waitAtMost(socket, deadline);
    char answer = 0;
    const bool heard = ::recv(socket.number(), &answer, 1, 0) == 1;
    return heard || deadline.hasExpired() ? Delivery::handedOver : Delivery::nobody;
}

}

std::unique_ptr<SingleInstance> SingleInstance::claim(const QString& message) {
    const QDeadlineTimer deadline{peerTimeout};
    while (!deadline.hasExpired()) {
        if (auto socket = listeningSocket(); socket.isOpen()) {
            return std::make_unique<ListeningInstance>(std::move(socket));
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
