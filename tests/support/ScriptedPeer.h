#pragma once

#include <QByteArrayList>
#include <QHash>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <chrono>

/// A server on a real socket of this machine that answers each request path as it was told to, byte by byte, and keeps
/// every request that it got.
class ScriptedPeer final : public QTcpServer {
    Q_OBJECT

public:
    /// What to do after the pieces were sent.
    enum class End { close, halfClose, stall, reset, repeatLastPiece };

    struct Script final {
        QByteArrayList pieces;
        End end = End::close;
        std::chrono::milliseconds gap{0}; ///< between the pieces
    };

    ScriptedPeer();

    [[nodiscard]] QUrl baseUrl(const QString& path = {}) const;

    /// The script of a path, such as "/health", from now on.
    void setScript(const QByteArray& path, const Script& script);

    /// A plain answer with a status, a body of stated length and the connection closed behind it.
    [[nodiscard]] static Script plain(int status, const QByteArray& body = {});

    QByteArrayList requests; ///< each request's whole head, in order
    qint64 bytesSent = 0;    ///< of all answers together
    int connections = 0;     ///< accepted so far
    int openConnections = 0;
    int mostOpenConnections = 0; ///< at a time

private:
    void accept();
    void readRequest(QTcpSocket& socket);
    void play(QTcpSocket& socket, const Script& script, qsizetype next);
    static void end(QTcpSocket& socket, const Script& script);

    QHash<QByteArray, Script> m_scripts;
};
