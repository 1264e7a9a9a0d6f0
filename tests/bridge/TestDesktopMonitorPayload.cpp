#include "bridge/DesktopMonitorPayload.h"

#include "support/Rows.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using Kind = BridgeError::Kind;
using Payload = DesktopMonitorPayload;

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
    void documentsDecode_data() {
        const Rows<QByteArray, Payload> row{"json", "expected"};
        const Payload::ServiceProbe first{u"a"_s, true, u"b"_s, std::nullopt};
        row("least", document({}), {});
        row("everything", R"({
            "host": {"hostname": "desk-ü", "platform": "macOS 14", "cpu_load_1m": 2, "cpu_load_5m": 1.5,
                     "cpu_load_15m": 1.25, "memory_used_pct": 64.4, "disk_used_pct": 70.6, "disk_free_gb": 1e-400},
            "caddy_sites_up": 3, "caddy_sites_total": 4,
            "services": [{"name": "postgres", "ok": true, "detail": "5432", "category": "database"},
                         {"name": "redis", "ok": false, "detail": "refused"}]})",
            {.host = Payload::HostMetrics{u"desk-ü"_s, u"macOS 14"_s, 2.0, 1.5, 1.25, 64.4, 70.6, 0.0},
             .caddySitesUp = 3,
             .caddySitesTotal = 4,
             .services = {{u"postgres"_s, true, u"5432"_s, u"database"_s},
                          {u"redis"_s, false, u"refused"_s, std::nullopt}}});
        row("empty host", withHost("{}"), {Payload::HostMetrics{}, 0, 0, {}});
        row("no host", withHost("null"), {});
        row("host of nulls",
            withHost(R"({"hostname":null,"platform":null,"cpu_load_1m":null,"cpu_load_5m":null,"cpu_load_15m":null,
                         "memory_used_pct":null,"disk_used_pct":null,"disk_free_gb":null})"),
            {Payload::HostMetrics{}, 0, 0, {}});
        row("category of null", withService(R"({"name":"c","ok":true,"detail":"d","category":null})"),
            {{}, 0, 0, {first, {u"c"_s, true, u"d"_s, std::nullopt}}});
        row("unknown keys", R"({"version":7,"Host":3,"caddy_sites_up":0,"caddy_sites_total":0,
                                "services":[{"name":"a","ok":true,"detail":"b","port":1}],"host":{"x":[]}})",
            {Payload::HostMetrics{}, 0, 0, {first}});
        row("order of services, and a repeated name",
            withService(R"({"name":"z","ok":true,"detail":""},{"name":"a","ok":false,"detail":""})"),
            {{}, 0, 0, {first, {u"z"_s, true, {}, {}}, {u"a"_s, false, {}, {}}}});
        row("last of repeated keys",
            R"({"host":3,"caddy_sites_up":7,"caddy_sites_total":1,"services":[],"caddy_sites_up":2,"host":{}})",
            {Payload::HostMetrics{}, 2, 1, {}});
    }
    void documentsDecode() {
        QFETCH(const QByteArray, json);
        QFETCH(const Payload, expected);
        QVERIFY(Payload::decode(json) == expected);
    }

    void textsAreTakenWhole_data() {
        const Rows<QByteArray, QString> row{"json", "text"};
        const QString mark = QChar{QChar::ByteOrderMark};
        row("byte order mark in front",
            QByteArray{"\xEF\xBB\xBF"
                       "a"},
            QString{mark + u"a"});
        row("byte order mark alone, twice", QByteArray{"\xEF\xBB\xBF\xEF\xBB\xBF"}, QString{mark + mark});
        row("byte order mark escaped", QByteArray{R"(\ufeffa)"}, QString{mark + u"a"});
        row("null character", QByteArray{R"(a\u0000b)"}, u"a\0b"_s);
        row("every escape", QByteArray{R"(\"\\\/\b\f\n\r\t\u00fC)"}, u"\"\\/\b\f\n\r\tü"_s);
        row("surrogate pair", QByteArray{R"(\ud83e\udded)"}, u"🧭"_s);
        row("four bytes", QByteArray{"🧭"}, u"🧭"_s);
        row("no character", QByteArray{"\xEF\xBF\xBF"}, u"\uffff"_s);
    }
    void textsAreTakenWhole() {
        QFETCH(const QByteArray, json);
        QFETCH(const QString, text);
        const auto payload = Payload::decode(withHost(R"({"hostname":")" + json + R"("})"));
        QVERIFY(payload);
        QCOMPARE(payload->host->hostname, text);
    }

    void whatIsNotJsonIsRefused_data() {
        const Rows<QByteArray> row{"json"};
        row("nothing", QByteArray{});
        row("not closed", QByteArray{"{"});
        row("two values", QByteArray{"1,2"});
        row("something behind the end", document({}) + "x");
        row("a null character behind the end", document({}) + '\0' + "x");
        row("a byte order mark behind the beginning", QByteArray{" \xEF\xBB\xBF"} + document({}));
        row("comment", document({}) + "// comment");
        row("comma behind the last", document(R"("x":[1,])"));
        row("key without quotes", document("x:1"));
        row("quotes of another kind", document("\"x\":'a'"));
        const QByteArrayList values{".5",    "1.", "01",  "+1",       "0x1",  "1e",
                                    "1e999", "-",  "NaN", "Infinity", "True", "nul"};
        for (const auto& value : values) {
            row(value.constData(), document(R"("x":)" + value));
        }
        const QByteArrayList texts =
            QByteArray{"a\nb|a\tb|\x01|\x1f|\\q|\\'|\\0|\\x41|\\u12g4|\\u+123|a\\ud800|\\ud800\\u0041|"
                       "\\udded\\ud83e|\\udc00|\xff|\x80|\xc0\x80|\xc3|\xed\xa0\x80|\xf4\x90\x80\x80"}
                .split('|')
            << QByteArray(1, '\0');
        for (const auto& text : texts) {
            QTest::addRow("text %s", text.toPercentEncoding().constData()) << document(R"("x":")" + text + '"');
            QTest::addRow("key %s", text.toPercentEncoding().constData()) << document('"' + text + R"(":1)");
        }
    }
    void whatIsNotJsonIsRefused() {
        QFETCH(const QByteArray, json);
        const auto payload = Payload::decode(json);
        QVERIFY(!payload);
        QCOMPARE(payload.error(), (BridgeError{Kind::dataCorrupted, u"The answer of the bridge is not JSON."_s}));
    }

    void nestingHasALimit() {
        const auto nested = [](qsizetype depth) {
            return document(R"("x":)" + QByteArray(depth, '[') + QByteArray(depth, ']'));
        };
        QVERIFY(Payload::decode(nested(511)));
        for (const auto& tooDeep :
             {nested(512), QByteArray(4'000'000, '['), QByteArray{R"({"":)"}.repeated(1'000'000)}) {
            const auto payload = Payload::decode(tooDeep);
            QVERIFY(!payload && payload.error().kind == Kind::dataCorrupted);
        }
    }

    void wholeNumbersKeep64Bits_data() {
        const Rows<QByteArray, qint64> row{"number", "expected"};
        row("largest", QByteArray("9223372036854775807"), std::numeric_limits<qint64>::max());
        row("smallest", QByteArray("-9223372036854775808"), std::numeric_limits<qint64>::min());
        row("past a double's integers", QByteArray("9007199254740993"), qint64{9007199254740993});
        row("whole in decimals", QByteArray("2.0"), qint64{2});
        row("with an exponent", QByteArray("-1.5e1"), qint64{-15});
        row("minus nothing", QByteArray("-0"), qint64{0});
        row("one", QByteArray("1"), qint64{1});
    }
    void wholeNumbersKeep64Bits() {
        QFETCH(const QByteArray, number);
        QFETCH(const qint64, expected);
        const auto payload = Payload::decode(withSitesUp(number));
        QVERIFY(payload);
        QCOMPARE(payload->caddySitesUp, expected);
    }

    void failuresNameTheirKey_data() {
        const Rows<QByteArray, BridgeError> add{"json", "error"};
        const auto row = [&add](const QByteArray& json, Kind kind, const QString& path, const QString& what) {
            const QString subject = path.isEmpty() ? u"The answer"_s : u"“%1” in the answer"_s.arg(path);
            add(json.constData(), json, BridgeError{kind, subject + u" of the bridge " + what + u'.'});
        };
        const QString notWhole = u"is not a whole number of 64 bits"_s;
        row("[]", Kind::typeMismatch, u""_s, u"is not an object"_s);
        row("3", Kind::typeMismatch, u""_s, u"is not an object"_s);
        row(" null ", Kind::typeMismatch, u""_s, u"is not an object"_s);
        row(R"("a")", Kind::typeMismatch, u""_s, u"is not an object"_s);
        row(withHost("[]"), Kind::typeMismatch, u"host"_s, u"is not an object"_s);
        row(withHost(R"({"hostname":1})"), Kind::typeMismatch, u"host.hostname"_s, u"is not a text"_s);
        row(withHost(R"({"disk_free_gb":"1"})"), Kind::typeMismatch, u"host.disk_free_gb"_s, u"is not a number"_s);
        row(withHost(R"({"cpu_load_1m":true})"), Kind::typeMismatch, u"host.cpu_load_1m"_s, u"is not a number"_s);
        row(R"({"caddy_sites_total":0,"services":[]})", Kind::keyNotFound, u"caddy_sites_up"_s, u"is missing"_s);
        row(R"({"caddy_sites_up":0,"services":[]})", Kind::keyNotFound, u"caddy_sites_total"_s, u"is missing"_s);
        row(R"({"caddy_sites_up":0,"caddy_sites_total":0})", Kind::keyNotFound, u"services"_s, u"is missing"_s);
        row(withSitesUp("null"), Kind::valueNotFound, u"caddy_sites_up"_s, u"is null"_s);
        row(withSitesUp("2.5"), Kind::typeMismatch, u"caddy_sites_up"_s, notWhole);
        row(withSitesUp("9223372036854775808"), Kind::typeMismatch, u"caddy_sites_up"_s, notWhole);
        row(withSitesUp("18446744073709551615"), Kind::typeMismatch, u"caddy_sites_up"_s, notWhole);
        row(withSitesUp("-9223372036854775809"), Kind::typeMismatch, u"caddy_sites_up"_s, notWhole);
        row(withSitesUp(R"("1")"), Kind::typeMismatch, u"caddy_sites_up"_s, notWhole);
        row(withSitesUp("true"), Kind::typeMismatch, u"caddy_sites_up"_s, notWhole);
        row(R"({"caddy_sites_up":0,"caddy_sites_total":0,"services":{}})", Kind::typeMismatch, u"services"_s,
            u"is not a list"_s);
        row(withService("3"), Kind::typeMismatch, u"services[1]"_s, u"is not an object"_s);
        row(withService(R"({"ok":true,"detail":""})"), Kind::keyNotFound, u"services[1].name"_s, u"is missing"_s);
        row(withService(R"({"name":"c","ok":1,"detail":""})"), Kind::typeMismatch, u"services[1].ok"_s,
            u"is neither true nor false"_s);
        row(withService(R"({"name":"c","ok":"true","detail":""})"), Kind::typeMismatch, u"services[1].ok"_s,
            u"is neither true nor false"_s);
        row(withService(R"({"name":"c","ok":true})"), Kind::keyNotFound, u"services[1].detail"_s, u"is missing"_s);
        row(withService(R"({"name":"c","ok":true,"detail":null})"), Kind::valueNotFound, u"services[1].detail"_s,
            u"is null"_s);
        row(withService(R"({"name":"c","ok":true,"detail":"","category":2})"), Kind::typeMismatch,
            u"services[1].category"_s, u"is not a text"_s);
        row(R"({"host":3,"services":4})", Kind::typeMismatch, u"host"_s, u"is not an object"_s);
    }
    void failuresNameTheirKey() {
        QFETCH(const QByteArray, json);
        QFETCH(const BridgeError, error);
        const auto payload = Payload::decode(json);
        QVERIFY(!payload);
        QCOMPARE(payload.error(), error);
    }
};

QTEST_GUILESS_MAIN(TestDesktopMonitorPayload)
#include "TestDesktopMonitorPayload.moc"
