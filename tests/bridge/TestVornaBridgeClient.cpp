#include "bridge/VornaBridgeClient.h"

#include "bridge/HttpGet.h"
#include "support/Rows.h"
#include "support/ScriptedPeer.h"

#include <QNetworkProxy>
#include <QTest>

#include <chrono>
#include <list>

#include <sys/socket.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Kind = BridgeError::Kind;
using Script = ScriptedPeer::Script;
using End = ScriptedPeer::End;

namespace {

const QByteArray emptyPayload = R"({"caddy_sites_up":0,"caddy_sites_total":0,"services":[]})";

QByteArray head(const QByteArray& fields) {
    return "HTTP/1.1 200 OK\r\n" + fields + "\r\n";
}

/// "true", "false", how many services came, or the error's text.
template <typename T>
QString said(const std::expected<T, BridgeError>& answer) {
    if (!answer) {
        return answer.error().text;
    }
    if constexpr (std::is_same_v<T, bool>) {
        return *answer ? u"true"_s : u"false"_s;
    } else {
        return QString::number(answer->services.size());
    }
}

template <typename T>
QCoro::Task<> note(QCoro::Task<std::expected<T, BridgeError>> call, QString name, QStringList* record) {
    const auto answer = co_await call;
    record->append(name + u": " + said(answer));
}

QCoro::Task<> note(HttpGet::Answer call, QString* text) {
    const auto answer = co_await call;
    *text = answer ? QString::fromUtf8(answer->body) : answer.error().text;
}

QString text(Kind kind) {
    return BridgeError::of(kind).text;
}

}

class TestVornaBridgeClient final : public QObject {
    Q_OBJECT

private slots:
    void init() { m_peer = std::make_unique<ScriptedPeer>(); }

    void answersBecomeValues_data() {
        const Rows<Script, QString, QString> row{"script", "health", "monitor"};
        const QString bad = text(Kind::badServerResponse);
        const QString lost = text(Kind::connectionLost);
        const QString tooLarge = text(Kind::responseTooLarge);

        row("200", ScriptedPeer::plain(200, emptyPayload), u"true"_s, u"0"_s);
        row("200 to the end", {{head({}) + emptyPayload}}, u"true"_s, u"0"_s);
        row("200 left open behind its length",
            {{head("Content-Length: " + QByteArray::number(emptyPayload.size()) + "\r\n") + emptyPayload}, End::stall},
            u"true"_s, u"0"_s);
        row("200 that is no snapshot", ScriptedPeer::plain(200, "{"), u"true"_s,
            u"The answer of the bridge is not JSON."_s);
        for (const int status : {201, 204, 206, 302, 304, 404, 500}) {
            QTest::addRow("%d", status) << ScriptedPeer::plain(status, emptyPayload) << u"false"_s << bad;
        }
        row("204 left open", {{"HTTP/1.1 204 No Content\r\n\r\n"}, End::stall}, u"false"_s, bad);
        row("redirect", {{"HTTP/1.1 302 Found\r\nLocation: /health\r\nContent-Length: 0\r\n\r\n"}}, u"false"_s, bad);
        row("not HTTP", {{"SSH-2.0-OpenSSH_9.2\r\n"}, End::stall}, u"false"_s, bad);
        row("closed at once", {}, lost, lost);
        row("reset in the body", {{head("Content-Length: 100\r\n") + "{"}, End::reset, 20ms}, lost, lost);
        row("an endless body", {{head({}), QByteArray(256 * 1024, ' ')}, End::repeatLastPiece}, tooLarge, tooLarge);
        row("endless chunk extensions",
            {{head("Transfer-Encoding: chunked\r\n"), "1;" + QByteArray(1000, 'x') + "\r\n \r\n"},
             End::repeatLastPiece},
            tooLarge, tooLarge);
    }
    void answersBecomeValues() {
        QFETCH(const Script, script);
        setScript(script);
        QTEST(health(), "health");
        QTEST(monitor(), "monitor");
        QCOMPARE(m_peer->requests.size(), 2);
        QTRY_COMPARE(m_peer->openConnections, 0);
        QVERIFY(m_peer->bytesSent < 64 * 1024 * 1024);
    }

    /// The order among timers of this thread is the same on a busy machine.
    void silenceEndsACallAfterItsLimit() {
        const QList<QByteArrayList> beginnings{{}, {"HTTP/1.1 200 OK\r\nX: "}, {head("Content-Length: 9\r\n") + "{"}};
        std::list<ScriptedPeer> peers;
        QStringList record;
        for (const auto& pieces : beginnings) {
            auto& peer = peers.emplace_back();
            peer.setScript("/health", {pieces, End::stall});
            peer.setScript("/monitor/desktop", {pieces, End::stall});
            const VornaBridgeClient client{peer.baseUrl()};
            note(client.health(), u"health"_s, &record);
            note(client.desktopMonitor(), u"monitor"_s, &record);
        }
        for (const auto at : {1900ms, 2600ms, 7900ms, 8600ms}) {
            QTimer::singleShot(at, Qt::PreciseTimer, this, [&, at] { record.append(QString::number(at.count())); });
        }
        QTRY_COMPARE_WITH_TIMEOUT(record.size(), 10, 20'000);
        const QString late = u": The request timed out."_s;
        const QStringList healths(3, u"health"_s + late);
        const QStringList monitors(3, u"monitor"_s + late);
        QCOMPARE(record, (QStringList{u"1900"_s} + healths + QStringList{u"2600"_s, u"7900"_s} + monitors +
                          QStringList{u"8600"_s}));
        for (const auto& peer : peers) {
            QTRY_COMPARE(peer.openConnections, 0);
        }
    }

    void slowProgressIsWaitedFor() {
        setScript({{"HTTP/1.1 2", "00 OK\r\nContent", "-Length: 2\r\n\r\n", "{", "}"}, End::stall, 700ms});
        QCOMPARE(health(), u"true"_s);
    }

    void progressWithoutAnEndHasALimit() {
        setScript({QByteArrayList{head({})} + QByteArrayList(1000, " "), End::stall, 50ms});
        QString text;
        QStringList record;
        QTimer later;
        later.setTimerType(Qt::PreciseTimer);
        connect(&later, &QTimer::timeout, this, [&] { record.append(text); });
        later.start(900ms);
        note(HttpGet::send(m_peer->baseUrl(u"/health"_s), 60s, HttpGet::Body::kept, 500ms), &text);
        QTRY_VERIFY(!record.isEmpty());
        QCOMPARE(record.first(), u"The request timed out."_s);
        QVERIFY(m_peer->bytesSent > head({}).size());
        QTRY_COMPARE(m_peer->openConnections, 0);
        QCOMPARE(HttpGet::defaultTotalLimit, 10min);
    }

    void requestIsPlain_data() {
        const Rows<QString, QByteArray, QByteArray> row{"path", "prefix", "healthQuery"};
        row("without a slash", QString{}, QByteArray{}, QByteArray{});
        row("with a slash", u"/"_s, QByteArray{}, QByteArray{});
        row("below a path", u"/a"_s, QByteArray{"/a"}, QByteArray{});
        row("below a path with a slash and escapes", u"/a%20b%2Fc%25/%C3%BC/"_s, QByteArray{"/a%20b%2Fc%25/%C3%BC"},
            QByteArray{});
        row("with a query", u"/?probe_sites=false&x=1#y"_s, QByteArray{}, QByteArray{"?probe_sites=false&x=1"});
    }
    void requestIsPlain() {
        QFETCH(const QString, path);
        QFETCH(const QByteArray, prefix);
        QFETCH(const QByteArray, healthQuery);
        QUrl url = m_peer->baseUrl(path);
        url.setUserInfo(u"user:secret"_s);
        (void)QCoro::waitFor(VornaBridgeClient{url}.desktopMonitor());
        (void)QCoro::waitFor(VornaBridgeClient{url}.health());

        const QByteArray fields =
            "Host: 127.0.0.1:" + QByteArray::number(m_peer->serverPort()) + "\r\nConnection: close\r\n\r\n";
        QCOMPARE(m_peer->requests, (QByteArrayList{
                                       "GET " + prefix + "/monitor/desktop?probe_sites=true HTTP/1.1\r\n" + fields,
                                       "GET " + prefix + "/health" + healthQuery + " HTTP/1.1\r\n" + fields,
                                   }));
    }

    void cookiesAndProxiesAreIgnored() {
        ScriptedPeer proxy;
        setScript({{head("Set-Cookie: a=b\r\nContent-Length: 0\r\n")}});
        QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, u"127.0.0.1"_s, proxy.serverPort()});
        qputenv("http_proxy", u"http://127.0.0.1:%1"_s.arg(proxy.serverPort()).toUtf8());
        QCOMPARE(health(), u"true"_s);
        QUrl notLoopback = m_peer->baseUrl(); // in name; Qt asks no proxy for loopback addresses
        notLoopback.setHost(u"0.0.0.0"_s);
        QCOMPARE(said(QCoro::waitFor(VornaBridgeClient{notLoopback}.health())), u"true"_s);
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
        qunsetenv("http_proxy");
        QCOMPARE(proxy.connections, 0);
        QCOMPARE(m_peer->requests.size(), 2);
        QVERIFY(!m_peer->requests.at(1).contains("Cookie"));
    }

    void peerThatIsGoneBeforeTheRequestIsNotReached() {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        QString text;
        note(HttpGet::send(QUrl{u"http://127.0.0.1:%1"_s.arg(server.serverPort())}, 60s), &text);
        QVERIFY(server.waitForNewConnection(5000));
        auto* const socket = server.nextPendingConnection();
        const linger abortive{.l_onoff = 1, .l_linger = 0};
        setsockopt(static_cast<int>(socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &abortive, sizeof abortive);
        socket->abort();
        QTRY_COMPARE(text, u"Could not connect to the server."_s);
    }

    void hostIsNotLookedUp() {
        QUrl named = m_peer->baseUrl();
        named.setHost(u"localhost"_s);
        QVERIFY(!HttpGet::send(named, 60s).await_ready()); // whoever asks has gone on when it is told
        QCOMPARE(said(QCoro::waitFor(VornaBridgeClient{named}.health())), text(Kind::cannotConnect));
        QCOMPARE(m_peer->connections, 0);
    }

    void addressThatCannotBeSentIsRefused_data() {
        const Rows<QUrl> row{"address"};
        row("none", QUrl{});
        row("no host", QUrl{u"http:///x"_s});
        row("another scheme", QUrl{u"ftp://127.0.0.1"_s});
        row("not an address", QUrl{u"http://[::"_s});
        row("no such port", QUrl{u"http://127.0.0.1:99999"_s});
        row("a blank in the host", QUrl{u"http://127.0 .0.1"_s});
    }
    void addressThatCannotBeSentIsRefused() {
        QFETCH(const QUrl, address);
        QCOMPARE(said(QCoro::waitFor(VornaBridgeClient{address}.desktopMonitor())),
                 u"The address of the server is not valid."_s);
    }

private:
    void setScript(const Script& script) {
        m_peer->setScript("/health", script);
        m_peer->setScript("/monitor/desktop", script);
    }
    [[nodiscard]] QString health() const { return said(QCoro::waitFor(VornaBridgeClient{m_peer->baseUrl()}.health())); }
    [[nodiscard]] QString monitor() const {
        return said(QCoro::waitFor(VornaBridgeClient{m_peer->baseUrl()}.desktopMonitor()));
    }

    std::unique_ptr<ScriptedPeer> m_peer;
};

QTEST_GUILESS_MAIN(TestVornaBridgeClient)
#include "TestVornaBridgeClient.moc"
