#pragma once

#include <QFile>
#include <QProcess>
#include <QSet>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

/// Whom the one instance of the companion may meet at its socket.
namespace InstancePeers {

inline QSet<QByteArray> socketNames() {
    QSet<QByteArray> names;
    QFile file{QStringLiteral("/proc/net/unix")};
    if (file.open(QFile::ReadOnly)) {
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (const qsizetype at = line.indexOf("@vorna-companion-"); at >= 0) {
                names.insert(line.mid(at + 1));
            }
        }
    }
    return names;
}

inline sockaddr_un abstractAddress(const QByteArray& name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path + 1, name.constData(), static_cast<size_t>(name.size()));
    return address;
}

inline socklen_t addressSize(const QByteArray& name) {
    return static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + static_cast<size_t>(name.size()));
}

/// Runs `work` as another user in a process of its own; only the superuser can.
template <typename Work>
pid_t asStranger(const Work& work) {
    constexpr uid_t nobody = 65534;
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(::setuid(nobody) == 0 ? work() : 99);
    }
    return child;
}

/// A client of its own making on the raw socket.
class Client final {
public:
    explicit Client(const QByteArray& name) {
        const sockaddr_un address = abstractAddress(name);
        m_connected = ::connect(m_descriptor, reinterpret_cast<const sockaddr*>(&address), addressSize(name)) == 0;
    }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    ~Client() { ::close(m_descriptor); }

    [[nodiscard]] bool connected() const { return m_connected; }
    qint64 send(const QByteArray& bytes) const {
        return ::send(m_descriptor, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL | MSG_DONTWAIT);
    }
    /// Whether the other end has hung up.
    [[nodiscard]] bool dropped() const {
        char bytes[64];
        return ::recv(m_descriptor, bytes, sizeof bytes, MSG_DONTWAIT) == 0 || errno == ECONNRESET;
    }

private:
    int m_descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    bool m_connected = false;
};

class Probe final : public QProcess {
public:
    explicit Probe(const QStringList& arguments = {}) { start(QStringLiteral(VORNA_INSTANCE_PROBE), arguments); }
    ~Probe() override {
        ::kill(static_cast<pid_t>(processId()), SIGCONT);
        kill();
        waitForFinished();
    }
    QByteArray output() {
        m_output += readAllStandardOutput();
        return m_output;
    }

private:
    QByteArray m_output;
};

}
