#include "bridge/VornaBridgeClient.h"

#include "bridge/HttpGet.h"
#include "support/ScriptedPeer.h"

#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QTest>

#include <chrono>
#include <tuple>

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

QByteArray sized(const QByteArray& body) {
    return head("Content-Length: " + QByteArray::number(body.size()) + "\r\n") + body;
}

QByteArray nested(int depth) {
    return R"({"caddy_sites_up":0,"caddy_sites_total":0,"services":[],"x":)" + QByteArray(depth, '[') +
           QByteArray(depth, ']') + '}';
}

QByteArray manyServices(int count) {
    QByteArray json = R"({"caddy_sites_up":0,"caddy_sites_total":0,"services":[)";
    for (int i = 0; i < count; ++i) {
        json += R"({"name":"service)" + QByteArray::number(i) +
                R"(","ok":true,"detail":"listening on a port of this machine, for what it is worth","category":"x"},)";
    }
    return json.chopped(1) + "]}";
}

QByteArrayList byteByByte(const QByteArray& bytes) {
    QByteArrayList pieces;
    for (const char byte : bytes) {
        pieces.append(QByteArray(1, byte));
    }
    return pieces;
}

/// "true", "false" or the error's text.
QString said(const std::expected<bool, BridgeError>& answer) {
    return answer ? (*answer ? u"true"_s : u"false"_s) : answer.error().text;
}

/// How many services came, or the error's text.
QString said(const std::expected<DesktopMonitorPayload, BridgeError>& answer) {
    return answer ? QString::number(answer->services.size()) : answer.error().text;
}

QCoro::Task<> noteError(HttpGet::Answer pending, std::optional<QString>* text) {
    const auto answer = co_await pending;
    *text = answer ? QString{} : answer.error().text;
}

QString text(Kind kind) {
    return BridgeError::of(kind).text;
}

const QString notJson = u"The answer of the bridge is not JSON."_s;

}

class TestVornaBridgeClient final : public QObject {
    Q_OBJECT

private slots:
    void answersBecomeValues_data();
    void answersBecomeValues();
    void refusedConnectionIsOneLineOfText();
    void stallsEndAfterTheIdleLimit_data();
    void stallsEndAfterTheIdleLimit();
    void slowProgressIsWaitedFor();
    void progressWithoutAnEndIsNotWaitedForForEver();
    void endlessBodyEndsWhileItStreams();
    void hugeAnnouncedBodyIsNotAwaited();
    void requestIsPlain_data();
    void requestIsPlain();
    void closedConnectionIsNotTriedAgain();
    void cookiesAndProxiesAreIgnored();
    void redirectIsNotFollowed();
    void addressThatCannotBeSentIsRefused_data();
    void addressThatCannotBeSentIsRefused();
    void overlappingCallsAnswerEach();
};

void TestVornaBridgeClient::answersBecomeValues_data() {
    QTest::addColumn<Script>("script");
    QTest::addColumn<QString>("health");
    QTest::addColumn<QString>("monitor");

    const auto row = [](const char* name, const Script& script, const QString& health, const QString& monitor) {
        QTest::newRow(name) << script << health << monitor;
    };
    const QString bad = text(Kind::badServerResponse);
    const QString lost = text(Kind::connectionLost);
    const QString garbled = text(Kind::malformedResponse);

    row("200", ScriptedPeer::plain(200, emptyPayload), u"true"_s, u"0"_s);
    row("200 without a reason", {{"HTTP/1.1 200\r\nContent-Length: 2\r\n\r\n{}"}}, u"true"_s,
        u"“caddy_sites_up” in the answer of the bridge is missing."_s);
    row("200 of HTTP/1.0 to the end", {{"HTTP/1.0 200 OK\r\n\r\n" + emptyPayload}}, u"true"_s, u"0"_s);
    row("200 left open behind its length", {{sized(emptyPayload)}, End::stall}, u"true"_s, u"0"_s);
    row("200 byte by byte", {byteByByte(sized(emptyPayload))}, u"true"_s, u"0"_s);
    row("200 with bare line feeds", {{sized(emptyPayload).replace("\r\n", "\n")}}, u"true"_s, u"0"_s);
    row("100 before 200", {{"HTTP/1.1 100 Continue\r\n\r\n" + sized(emptyPayload)}}, u"true"_s, u"0"_s);
    row("201", ScriptedPeer::plain(201, emptyPayload), u"false"_s, bad);
    row("204", {{"HTTP/1.1 204 No Content\r\n\r\n"}, End::stall}, u"false"_s, bad);
    row("301", {{"HTTP/1.1 301 Moved\r\nLocation: /elsewhere\r\nContent-Length: 0\r\n\r\n"}}, u"false"_s, bad);
    row("304", {{"HTTP/1.1 304 Not Modified\r\n\r\n"}, End::stall}, u"false"_s, bad);
    row("404", ScriptedPeer::plain(404), u"false"_s, bad);
    row("500 with valid JSON", ScriptedPeer::plain(500, emptyPayload), u"false"_s, bad);
    row("200 and an empty body", ScriptedPeer::plain(200), u"true"_s, notJson);
    row("closed before the status line", {}, lost, lost);
    row("closed in the status line", {{"HTTP/1."}}, lost, lost);
    row("closed in the headers", {{"HTTP/1.1 200 OK\r\nContent-Le"}}, lost, lost);
    row("half a body", {{head("Content-Length: 100\r\n") + "{"}}, lost, lost);
    row("half a chunk", {{head("Transfer-Encoding: chunked\r\n") + "10\r\n{"}}, lost, lost);
    row("reset in the body", {{head("Content-Length: 100\r\n") + "{"}, End::reset, 20ms}, lost, lost);
    row("chunked",
        {{head("Transfer-Encoding: chunked\r\n") + "3;x=y\r\n{\"c\r\n",
          QByteArray::number(emptyPayload.size() - 3, 16).toUpper() + "\r\n" + emptyPayload.mid(3) + "\r\n",
          "0\r\nTrailer: x\r\n\r\n"},
         End::stall},
        u"true"_s, u"0"_s);
    row("chunk without a size", {{head("Transfer-Encoding: chunked\r\n") + "\r\n{}\r\n0\r\n\r\n"}}, garbled, garbled);
    row("chunk of a negative size", {{head("Transfer-Encoding: chunked\r\n") + "-5\r\n{}\r\n0\r\n\r\n"}}, garbled,
        garbled);
    row("chunk longer than it says", {{head("Transfer-Encoding: chunked\r\n") + "1\r\n{}\r\n0\r\n\r\n"}}, garbled,
        garbled);
    row("a coding that nobody asked for", {{head("Transfer-Encoding: gzip\r\n") + "{}"}}, garbled, garbled);
    row("two lengths", {{head("Content-Length: 2\r\nContent-Length: 3\r\n") + "{}"}}, garbled, garbled);
    row("negative length", {{head("Content-Length: -2\r\n") + "{}"}}, garbled, garbled);
    row("length past 64 bits", {{head("Content-Length: 99999999999999999999\r\n") + "{}"}}, garbled, garbled);
    row("header without a colon", {{"HTTP/1.1 200 OK\r\nnonsense\r\n\r\n"}}, garbled, garbled);
    row("wrong content type",
        {{head("Content-Type: text/html\r\nContent-Length: " + QByteArray::number(emptyPayload.size()) + "\r\n") +
          emptyPayload}},
        u"true"_s, u"0"_s);
    row("not HTTP at all", {{"SSH-2.0-OpenSSH_9.2\r\n"}, End::stall}, u"false"_s, bad);
    row("HTTP of another age", {{"HTTP/2 200\r\n\r\n"}, End::stall}, u"false"_s, bad);
    row("a status that is none", {{"HTTP/1.1 2OO OK\r\n\r\n"}, End::stall}, u"false"_s, bad);
    row("zero bytes", {{QByteArray(100, '\0')}, End::stall}, u"false"_s, bad);
    row("a body that is not UTF-8",
        ScriptedPeer::plain(200, R"({"caddy_sites_up":0,"caddy_sites_total":0,"services":[],"x":")"
                                 "\xff\xfe"
                                 R"("})"),
        u"true"_s, notJson);
    row("nested 100,000 deep", ScriptedPeer::plain(200, nested(100'000)), u"true"_s, notJson);
    row("50,000 services", ScriptedPeer::plain(200, manyServices(50'000)), u"true"_s, u"50000"_s);
    row("an endless line of headers", {{"HTTP/1.1 200 OK\r\n", QByteArray(10'000, 'h')}, End::repeatLastPiece},
        text(Kind::responseTooLarge), text(Kind::responseTooLarge));
}

void TestVornaBridgeClient::answersBecomeValues() {
    QFETCH(const Script, script);
    QFETCH(const QString, health);
    QFETCH(const QString, monitor);
    ScriptedPeer peer;
    peer.setScript("/health", script);
    peer.setScript("/monitor/desktop", script);
    const VornaBridgeClient client{peer.baseUrl()};

    QCOMPARE(said(QCoro::waitFor(client.health())), health);
    QCOMPARE(said(QCoro::waitFor(client.desktopMonitor())), monitor);
    QCOMPARE(peer.requests.size(), 2);
    QTRY_COMPARE(peer.openConnections, 0);
}

void TestVornaBridgeClient::refusedConnectionIsOneLineOfText() {
    QTcpServer reserved;
    QVERIFY(reserved.listen(QHostAddress::LocalHost));
    const VornaBridgeClient client{QUrl{u"http://127.0.0.1:%1"_s.arg(reserved.serverPort())}};
    reserved.close();

    QCOMPARE(said(QCoro::waitFor(client.health())), u"Could not connect to the server."_s);
    QCOMPARE(said(QCoro::waitFor(client.desktopMonitor())), u"Could not connect to the server."_s);
}

void TestVornaBridgeClient::stallsEndAfterTheIdleLimit_data() {
    QTest::addColumn<Script>("script");
    QTest::newRow("before the headers") << Script{{}, End::stall};
    QTest::newRow("in the headers") << Script{{"HTTP/1.1 200 OK\r\nX: "}, End::stall};
    QTest::newRow("in the body") << Script{{head("Content-Length: 9\r\n") + "{"}, End::stall};
}

void TestVornaBridgeClient::stallsEndAfterTheIdleLimit() {
    QFETCH(const Script, script);
    ScriptedPeer peer;
    peer.setScript("/health", script);
    peer.setScript("/monitor/desktop", script);
    const VornaBridgeClient client{peer.baseUrl()};
    QElapsedTimer timer;
    timer.start();

    auto monitor = client.desktopMonitor();
    QCOMPARE(said(QCoro::waitFor(client.health())), u"The request timed out."_s);
    const auto healthEnded = timer.elapsed();
    QCOMPARE(said(QCoro::waitFor(monitor)), u"The request timed out."_s);
    const auto monitorEnded = timer.elapsed();

    QVERIFY2(healthEnded >= 2000 && healthEnded < 5000, qPrintable(QString::number(healthEnded)));
    QVERIFY2(monitorEnded >= 8000 && monitorEnded < 12000, qPrintable(QString::number(monitorEnded)));
    QTRY_COMPARE(peer.openConnections, 0);
}

void TestVornaBridgeClient::slowProgressIsWaitedFor() {
    ScriptedPeer peer;
    peer.setScript("/health", {{"HTTP/1.1 2", "00 OK\r\nContent", "-Length: 2\r\n\r\n", "{", "}"}, End::stall, 700ms});
    const VornaBridgeClient client{peer.baseUrl()};
    QElapsedTimer timer;
    timer.start();

    QCOMPARE(said(QCoro::waitFor(client.health())), u"true"_s);
    QVERIFY(timer.elapsed() > 2000);
}

void TestVornaBridgeClient::progressWithoutAnEndIsNotWaitedForForEver() {
    ScriptedPeer peer;
    peer.setScript("/", {QByteArrayList{head({})} + byteByByte(QByteArray(1000, ' ')), End::stall, 50ms});

    const auto answer = HttpGet::send(peer.baseUrl(u"/"_s), 60s, 500ms);
    std::optional<QString> text;
    noteError(answer, &text);
    QTRY_VERIFY(text);
    QCOMPARE(*text, u"The request timed out."_s);
    QVERIFY(peer.bytesSent > head({}).size());
    QTRY_COMPARE(peer.openConnections, 0);
}

void TestVornaBridgeClient::endlessBodyEndsWhileItStreams() {
    ScriptedPeer peer;
    for (const auto* path : {"/health", "/monitor/desktop"}) {
        peer.setScript(path, {{head({}), QByteArray(256 * 1024, ' ')}, End::repeatLastPiece});
    }
    const VornaBridgeClient client{peer.baseUrl()};

    QCOMPARE(said(QCoro::waitFor(client.health())), text(Kind::responseTooLarge));
    QCOMPARE(said(QCoro::waitFor(client.desktopMonitor())), text(Kind::responseTooLarge));
    QTRY_COMPARE(peer.openConnections, 0);
    QVERIFY(peer.bytesSent < 64 * 1024 * 1024);
}

void TestVornaBridgeClient::hugeAnnouncedBodyIsNotAwaited() {
    ScriptedPeer peer;
    peer.setScript("/monitor/desktop", {{head("Content-Length: 8388609\r\n")}, End::stall});
    const VornaBridgeClient client{peer.baseUrl()};

    QCOMPARE(said(QCoro::waitFor(client.desktopMonitor())), text(Kind::responseTooLarge));
}

void TestVornaBridgeClient::requestIsPlain_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("prefix");
    QTest::addColumn<QByteArray>("healthQuery");
    const auto row = [](const char* name, const QString& path, const QByteArray& prefix, const QByteArray& query = {}) {
        QTest::newRow(name) << path << prefix << query;
    };
    row("without a slash", {}, {});
    row("with a slash", u"/"_s, {});
    row("below a path", u"/a"_s, "/a");
    row("below a path with a slash", u"/a/"_s, "/a");
    row("below a path with escapes", u"/a%20b%2Fc%25/%C3%BC"_s, "/a%20b%2Fc%25/%C3%BC");
    row("with a query of its own", u"/?probe_sites=false&x=1"_s, {}, "?probe_sites=false&x=1");
}

void TestVornaBridgeClient::requestIsPlain() {
    QFETCH(const QString, path);
    QFETCH(const QByteArray, prefix);
    QFETCH(const QByteArray, healthQuery);
    ScriptedPeer peer;
    const VornaBridgeClient client{peer.baseUrl(path)};

    std::ignore = QCoro::waitFor(client.desktopMonitor());
    std::ignore = QCoro::waitFor(client.health());

    const QByteArray fields =
        "Host: 127.0.0.1:" + QByteArray::number(peer.serverPort()) + "\r\nConnection: close\r\n\r\n";
    QCOMPARE(peer.requests.value(0), "GET " + prefix + "/monitor/desktop?probe_sites=true HTTP/1.1\r\n" + fields);
    QCOMPARE(peer.requests.value(1), "GET " + prefix + "/health" + healthQuery + " HTTP/1.1\r\n" + fields);
}

void TestVornaBridgeClient::closedConnectionIsNotTriedAgain() {
    ScriptedPeer peer;
    auto script = ScriptedPeer::plain(200, emptyPayload);
    script.firstConnectionsToClose = 1;
    peer.setScript("/health", script);
    const VornaBridgeClient client{peer.baseUrl()};

    QCOMPARE(said(QCoro::waitFor(client.health())), text(Kind::connectionLost));
    QTest::qWait(100);
    QCOMPARE(peer.connections, 1);
    QCOMPARE(said(QCoro::waitFor(client.health())), u"true"_s);
    QCOMPARE(peer.connections, 2);
}

void TestVornaBridgeClient::cookiesAndProxiesAreIgnored() {
    ScriptedPeer peer;
    ScriptedPeer proxy;
    peer.setScript("/health", {{head("Set-Cookie: a=b\r\nContent-Length: 0\r\n")}});
    QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, u"127.0.0.1"_s, proxy.serverPort()});
    qputenv("http_proxy", "http://127.0.0.1:" + QByteArray::number(proxy.serverPort()));
    const VornaBridgeClient client{peer.baseUrl()};

    QCOMPARE(said(QCoro::waitFor(client.health())), u"true"_s);
    QCOMPARE(said(QCoro::waitFor(client.health())), u"true"_s);

    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    qunsetenv("http_proxy");
    QCOMPARE(proxy.connections, 0);
    QVERIFY(!peer.requests.value(1).toLower().contains("cookie"));
}

void TestVornaBridgeClient::redirectIsNotFollowed() {
    ScriptedPeer peer;
    peer.setScript("/health", {{"HTTP/1.1 302 Found\r\nLocation: /elsewhere\r\nContent-Length: 0\r\n\r\n"}});
    peer.setScript("/elsewhere", ScriptedPeer::plain(200));
    const VornaBridgeClient client{peer.baseUrl()};

    QCOMPARE(said(QCoro::waitFor(client.health())), u"false"_s);
    QCOMPARE(peer.requests.size(), 1);
}

void TestVornaBridgeClient::addressThatCannotBeSentIsRefused_data() {
    QTest::addColumn<QUrl>("address");
    QTest::newRow("none") << QUrl{};
    QTest::newRow("no host") << QUrl{u"http:///x"_s};
    QTest::newRow("another scheme") << QUrl{u"ftp://127.0.0.1"_s};
    QTest::newRow("not an address") << QUrl{u"http://[::"_s};
}

void TestVornaBridgeClient::addressThatCannotBeSentIsRefused() {
    QFETCH(const QUrl, address);
    const VornaBridgeClient client{address};

    const auto answer = QCoro::waitFor(client.desktopMonitor());
    QCOMPARE(answer.error(), BridgeError::of(Kind::badUrl));
}

void TestVornaBridgeClient::overlappingCallsAnswerEach() {
    ScriptedPeer peer;
    peer.setScript("/health", ScriptedPeer::plain(200));
    peer.setScript("/monitor/desktop", ScriptedPeer::plain(200, emptyPayload));
    const VornaBridgeClient client{peer.baseUrl()};

    std::vector<QCoro::Task<std::expected<bool, BridgeError>>> calls;
    constexpr std::size_t together = 50;
    calls.reserve(together);
    while (calls.size() < together) {
        calls.push_back(client.health());
    }
    for (auto& call : calls) {
        QCOMPARE(said(QCoro::waitFor(call)), u"true"_s);
    }
    QCOMPARE(peer.requests.size(), 50);
}

QTEST_GUILESS_MAIN(TestVornaBridgeClient)
#include "TestVornaBridgeClient.moc"
