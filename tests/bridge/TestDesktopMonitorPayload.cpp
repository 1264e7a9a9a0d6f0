#include "bridge/DesktopMonitorPayload.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using Kind = BridgeError::Kind;
using HostMetrics = DesktopMonitorPayload::HostMetrics;

Q_DECLARE_METATYPE(HostMetrics)

namespace {

QByteArray document(const QByteArray& members) {
    return R"({"caddy_sites_up":0,"caddy_sites_total":0,"services":[])" +
           (members.isEmpty() ? QByteArray{} : QByteArray{"," + members}) + '}';
}

QByteArray withHost(const QByteArray& host) {
    return document(R"("host":)" + host);
}

QByteArray withService(const QByteArray& service) {
    return R"({"caddy_sites_up":0,"caddy_sites_total":0,"services":[{"name":"a","ok":true,"detail":"b"},)" + service +
           "]}";
}

QByteArray withSitesUp(const QByteArray& number) {
    return R"({"caddy_sites_up":)" + number + R"(,"caddy_sites_total":0,"services":[]})";
}

}

class TestDesktopMonitorPayload final : public QObject {
    Q_OBJECT

private slots:
    void leastDocumentDecodes();
    void everyFieldDecodes();
    void emptyHostIsNotAnAbsentHost();
    void nullsOfOptionalKeysAreAbsent();
    void unknownKeysAreIgnored();
    void orderOfServicesIsKept();
    void whatIsNearlyJsonIsTakenToo_data();
    void whatIsNearlyJsonIsTakenToo();
    void wholeNumbersKeep64Bits_data();
    void wholeNumbersKeep64Bits();
    void failuresNameTheirKey_data();
    void failuresNameTheirKey();
};

void TestDesktopMonitorPayload::leastDocumentDecodes() {
    QVERIFY(DesktopMonitorPayload::decode(document({})) == DesktopMonitorPayload{});
}

void TestDesktopMonitorPayload::everyFieldDecodes() {
    const auto payload = DesktopMonitorPayload::decode(R"({
        "host": {"hostname": "desk-ü", "platform": "macOS 14", "cpu_load_1m": 2, "cpu_load_5m": 1.5,
                 "cpu_load_15m": 1.25, "memory_used_pct": 64.4, "disk_used_pct": 70.6, "disk_free_gb": 138},
        "caddy_sites_up": 3, "caddy_sites_total": 4,
        "services": [{"name": "postgres", "ok": true, "detail": "5432", "category": "database"},
                     {"name": "redis", "ok": false, "detail": "refused"}]})");

    const DesktopMonitorPayload expected{
        .host = DesktopMonitorPayload::HostMetrics{u"desk-ü"_s, u"macOS 14"_s, 2.0, 1.5, 1.25, 64.4, 70.6, 138.0},
        .caddySitesUp = 3,
        .caddySitesTotal = 4,
        .services = {{u"postgres"_s, true, u"5432"_s, u"database"_s}, {u"redis"_s, false, u"refused"_s, std::nullopt}},
    };
    QVERIFY(payload == expected);
}

void TestDesktopMonitorPayload::emptyHostIsNotAnAbsentHost() {
    const auto payload = DesktopMonitorPayload::decode(withHost("{}"));
    QVERIFY(payload && payload->host == DesktopMonitorPayload::HostMetrics{});
}

void TestDesktopMonitorPayload::nullsOfOptionalKeysAreAbsent() {
    QVERIFY(!DesktopMonitorPayload::decode(withHost("null"))->host);
    QVERIFY(!DesktopMonitorPayload::decode(withHost(R"({"hostname":null,"cpu_load_1m":null})"))->host->hostname);
    const auto payload =
        DesktopMonitorPayload::decode(withService(R"({"name":"c","ok":true,"detail":"d","category":null})"));
    QVERIFY(payload && !payload->services.at(1).category);
}

void TestDesktopMonitorPayload::unknownKeysAreIgnored() {
    const auto payload = DesktopMonitorPayload::decode(
        R"({"version":7,"Host":3,"caddy_sites_up":0,"caddy_sites_total":0,
            "services":[{"name":"a","ok":true,"detail":"b","port":1}],"host":{"x":[]}})");
    QCOMPARE(payload->services.size(), 1);
}

void TestDesktopMonitorPayload::orderOfServicesIsKept() {
    const auto payload = DesktopMonitorPayload::decode(withService(
        R"({"name":"z","ok":true,"detail":""},{"name":"b","ok":true,"detail":""},{"name":"z","ok":false,"detail":""})"));
    QStringList names;
    for (const auto& service : payload->services) {
        names.append(service.name);
    }
    QCOMPARE(names, (QStringList{u"a"_s, u"z"_s, u"b"_s, u"z"_s}));
}

void TestDesktopMonitorPayload::whatIsNearlyJsonIsTakenToo_data() {
    QTest::addColumn<QByteArray>("host");
    QTest::addColumn<HostMetrics>("expected");
    const auto text = [](const char* name, const QByteArray& json, const QString& hostname) {
        HostMetrics host;
        host.hostname = hostname;
        QTest::newRow(name) << QByteArray{R"({"hostname":")" + json + R"("})"} << host;
    };
    text("control characters as they are", {"a\n\t\x01\0b", 6}, QString::fromLatin1("a\n\t\x01\0b", 6));
    text("escapes that there are not", R"(\q\'\0\x41)", u"q'0x41"_s);
    text("half a surrogate pair", R"(a\ud800)", u"a"_s + QChar{0xd800});
    HostMetrics figures;
    figures.cpuLoad1m = 0.5;
    figures.diskUsedPct = 1.0;
    QTest::newRow("figures with nothing before or behind the point")
        << QByteArray{R"({"cpu_load_1m":.5,"disk_used_pct":1.})"} << figures;
}

void TestDesktopMonitorPayload::whatIsNearlyJsonIsTakenToo() {
    QFETCH(const QByteArray, host);
    QFETCH(const HostMetrics, expected);
    const auto payload = DesktopMonitorPayload::decode(withHost(host));
    QVERIFY(payload && payload->host == expected);
}

void TestDesktopMonitorPayload::wholeNumbersKeep64Bits_data() {
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<qint64>("expected");
    QTest::newRow("largest") << QByteArray("9223372036854775807") << std::numeric_limits<qint64>::max();
    QTest::newRow("smallest") << QByteArray("-9223372036854775808") << std::numeric_limits<qint64>::min();
    QTest::newRow("past a double's integers") << QByteArray("9007199254740993") << qint64{9007199254740993};
    QTest::newRow("whole in decimals") << QByteArray("2.0") << qint64{2};
    QTest::newRow("one") << QByteArray("1") << qint64{1};
}

void TestDesktopMonitorPayload::wholeNumbersKeep64Bits() {
    QFETCH(const QByteArray, number);
    QFETCH(const qint64, expected);
    const auto payload = DesktopMonitorPayload::decode(withSitesUp(number));
    QVERIFY(payload);
    QCOMPARE(payload->caddySitesUp, expected);
}

void TestDesktopMonitorPayload::failuresNameTheirKey_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QByteArray& json, Kind kind, const QString& what) {
        QTest::newRow(name) << json << static_cast<int>(kind) << what;
    };

    row("empty", "", Kind::dataCorrupted, u"The answer of the bridge is not JSON."_s);
    row("not JSON", "{", Kind::dataCorrupted, u"The answer of the bridge is not JSON."_s);
    row("two values", "1,2", Kind::dataCorrupted, u"The answer of the bridge is not JSON."_s);
    row("rest behind the end", document({}) + "x", Kind::dataCorrupted, u"The answer of the bridge is not JSON."_s);
    row("number too large for any", withSitesUp("1e999"), Kind::dataCorrupted,
        u"The answer of the bridge is not JSON."_s);
    row("list at the top", "[]", Kind::typeMismatch, u"The answer of the bridge is not an object."_s);
    row("number at the top", "3", Kind::typeMismatch, u"The answer of the bridge is not an object."_s);
    row("null at the top", " null ", Kind::typeMismatch, u"The answer of the bridge is not an object."_s);
    row("text at the top", R"("a")", Kind::typeMismatch, u"The answer of the bridge is not an object."_s);
    row("host of a wrong type", withHost("[]"), Kind::typeMismatch,
        u"“host” in the answer of the bridge is not an object."_s);
    row("host name of a wrong type", withHost(R"({"hostname":1})"), Kind::typeMismatch,
        u"“host.hostname” in the answer of the bridge is not a text."_s);
    row("figure of a wrong type", withHost(R"({"disk_free_gb":"1"})"), Kind::typeMismatch,
        u"“host.disk_free_gb” in the answer of the bridge is not a number."_s);
    row("figure that is a truth value", withHost(R"({"cpu_load_1m":true})"), Kind::typeMismatch,
        u"“host.cpu_load_1m” in the answer of the bridge is not a number."_s);
    row("missing up", R"({"caddy_sites_total":0,"services":[]})", Kind::keyNotFound,
        u"“caddy_sites_up” in the answer of the bridge is missing."_s);
    row("missing total", R"({"caddy_sites_up":0,"services":[]})", Kind::keyNotFound,
        u"“caddy_sites_total” in the answer of the bridge is missing."_s);
    row("missing services", R"({"caddy_sites_up":0,"caddy_sites_total":0})", Kind::keyNotFound,
        u"“services” in the answer of the bridge is missing."_s);
    row("null up", withSitesUp("null"), Kind::valueNotFound,
        u"“caddy_sites_up” in the answer of the bridge is null."_s);
    row("half a site", withSitesUp("2.5"), Kind::typeMismatch,
        u"“caddy_sites_up” in the answer of the bridge is not a whole number of 64 bits."_s);
    row("up past 64 bits", withSitesUp("9223372036854775808"), Kind::typeMismatch,
        u"“caddy_sites_up” in the answer of the bridge is not a whole number of 64 bits."_s);
    row("up as a text", withSitesUp(R"("1")"), Kind::typeMismatch,
        u"“caddy_sites_up” in the answer of the bridge is not a whole number of 64 bits."_s);
    row("up as a truth value", withSitesUp("true"), Kind::typeMismatch,
        u"“caddy_sites_up” in the answer of the bridge is not a whole number of 64 bits."_s);
    row("services of a wrong type", R"({"caddy_sites_up":0,"caddy_sites_total":0,"services":{}})", Kind::typeMismatch,
        u"“services” in the answer of the bridge is not a list."_s);
    row("service of a wrong type", withService("3"), Kind::typeMismatch,
        u"“services[1]” in the answer of the bridge is not an object."_s);
    row("service without a name", withService(R"({"ok":true,"detail":""})"), Kind::keyNotFound,
        u"“services[1].name” in the answer of the bridge is missing."_s);
    row("ok as a number", withService(R"({"name":"c","ok":1,"detail":""})"), Kind::typeMismatch,
        u"“services[1].ok” in the answer of the bridge is neither true nor false."_s);
    row("ok as a text", withService(R"({"name":"c","ok":"true","detail":""})"), Kind::typeMismatch,
        u"“services[1].ok” in the answer of the bridge is neither true nor false."_s);
    row("service without a detail", withService(R"({"name":"c","ok":true})"), Kind::keyNotFound,
        u"“services[1].detail” in the answer of the bridge is missing."_s);
    row("null detail", withService(R"({"name":"c","ok":true,"detail":null})"), Kind::valueNotFound,
        u"“services[1].detail” in the answer of the bridge is null."_s);
    row("category of a wrong type", withService(R"({"name":"c","ok":true,"detail":"","category":2})"),
        Kind::typeMismatch, u"“services[1].category” in the answer of the bridge is not a text."_s);
    row("the first failure counts", R"({"host":3,"services":4})", Kind::typeMismatch,
        u"“host” in the answer of the bridge is not an object."_s);
}

void TestDesktopMonitorPayload::failuresNameTheirKey() {
    QFETCH(const QByteArray, json);
    QFETCH(const int, kind);
    QFETCH(const QString, text);
    const auto payload = DesktopMonitorPayload::decode(json);
    QVERIFY(!payload);
    QCOMPARE(static_cast<int>(payload.error().kind), kind);
    QCOMPARE(payload.error().text, text);
}

QTEST_GUILESS_MAIN(TestDesktopMonitorPayload)
#include "TestDesktopMonitorPayload.moc"
