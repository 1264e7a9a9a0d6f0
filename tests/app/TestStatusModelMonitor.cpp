#include "app/StatusModel.h"

#include "support/FakeNotificationService.h"
#include "support/FakeTool.h"
#include "support/Rows.h"
#include "support/ScriptedPeer.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using Band = StatusModel::Band;

namespace {

QByteArray probe(const QByteArray& name, bool ok = true, const QByteArray& detail = "up") {
    return R"({"name":")" + name + R"(","ok":)" + (ok ? "true" : "false") + R"(,"detail":")" + detail + R"("})";
}

QByteArray snapshot(const QByteArrayList& probes, int up = 0, int total = 0, const QByteArray& host = "null") {
    return R"({"host":)" + host + R"(,"caddy_sites_up":)" + QByteArray::number(up) + R"(,"caddy_sites_total":)" +
           QByteArray::number(total) + R"(,"services":[)" + probes.join(',') + "]}";
}

}

/// What a snapshot on the wire makes of the model: the whole way from the socket on.
class TestStatusModelMonitor final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_peer.setScript("/health", ScriptedPeer::plain(200));
        m_model = std::make_unique<StatusModel>(m_notifications, m_tool.runner(), m_peer.baseUrl());
    }

    void missingHostKeepsTheFiguresAndEmptiesTheName() {
        apply(snapshot(
            {}, 0, 0,
            R"({"hostname":"desk","cpu_load_1m":1.731,"memory_used_pct":64.2,"disk_used_pct":71,"disk_free_gb":138})"));
        apply(snapshot({}));
        QCOMPARE(m_model->hostname.value(), QString());
        QCOMPARE(m_model->hostLoad.value(), u"1.73"_s);
        QCOMPARE(m_model->hostMemory.value(), u"64%"_s);
        QCOMPARE(m_model->hostDisk.value(), u"71% · 138 GB free"_s);
    }

    void hostWithoutFiguresShowsDashes() {
        apply(snapshot({}, 0, 0, R"({"hostname":"desk","cpu_load_1m":1.7,"memory_used_pct":64,"disk_used_pct":71})"));
        apply(snapshot({}, 0, 0, R"({"platform":"any","cpu_load_5m":1,"disk_free_gb":5})"));
        QCOMPARE(m_model->hostname.value(), QString());
        QCOMPARE(m_model->hostLoad.value(), u"—"_s);
        QCOMPARE(m_model->hostMemory.value(), u"—"_s);
        QCOMPARE(m_model->hostDisk.value(), u"—"_s);
    }

    void figuresAreFormatted_data() {
        const Rows<QByteArray, QString> row{"host", "figures"};
        row("as usual",
            QByteArray(R"({"cpu_load_1m":1.734,"memory_used_pct":63.6,"disk_used_pct":70.6,"disk_free_gb":137.7})"),
            u"1.73 64% 71% · 138 GB free"_s);
        row("disk without free space", QByteArray(R"({"disk_used_pct":70.6})"), u"— — 71%"_s);
        row("ties go to even, as in C",
            QByteArray(R"({"cpu_load_1m":0.125,"memory_used_pct":64.5,"disk_used_pct":65.5,"disk_free_gb":0.5})"),
            u"0.12 64% 66% · 0 GB free"_s);
        row("whole numbers",
            QByteArray(R"({"cpu_load_1m":2,"memory_used_pct":100,"disk_used_pct":0,"disk_free_gb":123456})"),
            u"2.00 100% 0% · 123456 GB free"_s);
        row("beyond reason", QByteArray(R"({"cpu_load_1m":-1e20,"memory_used_pct":1e20})"),
            u"-100000000000000000000.00 100000000000000000000% —"_s);
    }
    void figuresAreFormatted() {
        QFETCH(const QByteArray, host);
        QFETCH(const QString, figures);
        apply(snapshot({}, 0, 0, host));
        QCOMPARE((QStringList{m_model->hostLoad, m_model->hostMemory, m_model->hostDisk}.join(u' ')), figures);
    }

    void largestFigureIsWrittenOut() {
        apply(snapshot({}, 0, 0, R"({"cpu_load_1m":-1.7e308})"));
        QCOMPARE(m_model->hostLoad->size(), 1 + 309 + 3);
    }

    void figuresIgnoreTheLocale() {
        const QTemporaryDir made; // a language with a comma, which the system need not have
        qputenv("LOCPATH", QFile::encodeName(made.path()));
        QProcess::execute(u"localedef"_s, {u"-i"_s, u"de_DE"_s, u"-f"_s, u"UTF-8"_s, made.filePath(u"de_DE.UTF-8"_s)});
        QVERIFY(setlocale(LC_ALL, "de_DE.UTF-8"));
        QCOMPARE(localeconv()->decimal_point, ",");
        QLocale::setDefault(QLocale{QLocale::German});
        apply(snapshot({}, 0, 0, R"({"cpu_load_1m":1234.5,"disk_used_pct":50,"disk_free_gb":12345})"));
        QLocale::setDefault(QLocale::c());
        setlocale(LC_ALL, "C");
        QCOMPARE(m_model->hostLoad.value(), u"1234.50"_s);
        QCOMPARE(m_model->hostDisk.value(), u"50% · 12345 GB free"_s);
    }

    void caddyProbeIsFound_data() {
        const Rows<QByteArrayList, Band, QString> row{"probes", "band", "detail"};
        row("none", QByteArrayList{}, Band::amber, u"no caddy probe"_s);
        row("exact, ok", QByteArrayList{probe("caddy.process", true, "running")}, Band::green, u"running"_s);
        row("exact, not ok", QByteArrayList{probe("caddy.process", false, "gone")}, Band::red, u"gone"_s);
        row("exact before a longer name that stands first",
            QByteArrayList{probe("caddy.process.main", false, "a"), probe("caddy.process", true, "b")}, Band::green,
            u"b"_s);
        row("name that goes on", QByteArrayList{probe("caddy.process.main", true, "a")}, Band::green, u"a"_s);
        row("words the other way round", QByteArrayList{probe("proc"), probe("process.of.caddy", true, "a")},
            Band::green, u"a"_s);
        row("both words, one inside another",
            QByteArrayList{probe("x.caddyprocess", true, "a"), probe("caddy.process.2", false, "b")}, Band::green,
            u"a"_s);
        for (const char* name : {"Caddy.Process", "Caddy.process", "caddy.Process", "CADDY.PROCESS", "caddy.admin",
                                 "caddy", "process", "cad.process", "caddy.proc"}) {
            row(name, QByteArrayList{probe(name)}, Band::amber, u"no caddy probe"_s);
        }
        row("the words in two probes", QByteArrayList{probe("caddy"), probe("process")}, Band::amber,
            u"no caddy probe"_s);
        row("process before caddy", QByteArrayList{probe("process.caddy.main", true, "a")}, Band::green, u"a"_s);
    }
    void caddyProbeIsFound() {
        QFETCH(const QByteArrayList, probes);
        QFETCH(const Band, band);
        QFETCH(const QString, detail);
        apply(snapshot(probes));
        QCOMPARE(m_model->caddyBand.value(), band);
        QCOMPARE(m_model->caddyDetail.value(), detail);
    }

    void sitesDegradeAGreenBandOnly_data() {
        const Rows<QByteArrayList, int, int, Band, QString> row{"probes", "up", "total", "band", "detail"};
        const QByteArrayList ok{probe("caddy.process", true, "D")};
        const QByteArrayList notOk{probe("caddy.process", false, "D")};
        row("no sites", ok, 0, 0, Band::green, u"D"_s);
        row("fewer than no sites", ok, 0, -3, Band::green, u"D"_s);
        row("3 of 4", ok, 3, 4, Band::green, u"D · 3/4 sites"_s);
        row("1 of 4", ok, 1, 4, Band::amber, u"D · 1/4 sites"_s);
        row("2 of 4", ok, 2, 4, Band::green, u"D · 2/4 sites"_s);
        row("0 of 1", ok, 0, 1, Band::amber, u"D · 0/1 sites"_s);
        row("1 of 3", ok, 1, 3, Band::green, u"D · 1/3 sites"_s);
        row("1 of 5", ok, 1, 5, Band::amber, u"D · 1/5 sites"_s);
        row("2 of 5", ok, 2, 5, Band::green, u"D · 2/5 sites"_s);
        row("more up than there are", ok, 9, 2, Band::green, u"D · 9/2 sites"_s);
        row("fewer than none up", ok, -1, 1, Band::amber, u"D · -1/1 sites"_s);
        row("not ok, all up", notOk, 4, 4, Band::red, u"D · 4/4 sites"_s);
        row("not ok, none up", notOk, 0, 4, Band::red, u"D · 0/4 sites"_s);
        row("no probe, none up", QByteArrayList{}, 0, 2, Band::amber, u"no caddy probe · 0/2 sites"_s);
        row("no probe, all up", QByteArrayList{}, 2, 2, Band::amber, u"no caddy probe · 2/2 sites"_s);
    }
    void sitesDegradeAGreenBandOnly() {
        QFETCH(const QByteArrayList, probes);
        QFETCH(const int, up);
        QFETCH(const int, total);
        QFETCH(const Band, band);
        QFETCH(const QString, detail);
        apply(snapshot(probes, up, total));
        QCOMPARE(m_model->caddyBand.value(), band);
        QCOMPARE(m_model->caddyDetail.value(), detail);
    }

    void detailIsTakenLiterally() {
        apply(snapshot({probe("caddy.process", true, "%1 %2 %3 100%")}, 1, 2));
        QCOMPARE(m_model->caddyDetail.value(), u"%1 %2 %3 100% · 1/2 sites"_s);
    }

    void postgresProbeIsFound_data() {
        const Rows<QByteArrayList, QString> row{"probes", "state"};
        row("none", QByteArrayList{probe("postgres.other"), probe("Postgres")}, u"absent —"_s);
        row("postgres", QByteArrayList{probe("postgres", true, "a")}, u"ok a"_s);
        row("its port", QByteArrayList{probe("postgres.port", false, "b")}, u"not ok b"_s);
        row("both", QByteArrayList{probe("postgres", true, "a"), probe("postgres.port", false, "b")}, u"ok a"_s);
        row("both the other way", QByteArrayList{probe("postgres.port", false, "b"), probe("postgres", true, "a")},
            u"ok a"_s);
        row("two of a name", QByteArrayList{probe("postgres", false, "first"), probe("postgres", true, "second")},
            u"not ok first"_s);
    }
    void postgresProbeIsFound() {
        QFETCH(const QByteArrayList, probes);
        QFETCH(const QString, state);
        m_model->postgresOk = true;
        m_model->postgresDetail = u"old"_s;
        apply(snapshot(probes));
        const auto ok = m_model->postgresOk.value();
        QCOMPARE((ok ? (*ok ? u"ok"_s : u"not ok"_s) : u"absent"_s) + u' ' + m_model->postgresDetail.value(), state);
    }

    void sitesAreNotRows() {
        QByteArrayList probes;
        QStringList expected;
        for (int i = 0; i < 10; ++i) {
            probes << probe("site.example" + QByteArray::number(i)) << probe("service" + QByteArray::number(i));
            expected << u"service%1"_s.arg(i);
        }
        apply(snapshot(probes));
        QCOMPARE(rowNames(), expected);
        apply(snapshot({probe("Site.x"), probe("my.site.x"), probe("site")}));
        QCOMPARE(rowNames(), (QStringList{u"Site.x"_s, u"my.site.x"_s, u"site"_s}));
    }

    void rowsEndAfterTwelve() {
        QByteArrayList probes{probe("site.a")};
        for (int i = 0; i < 15; ++i) {
            probes << probe("service" + QByteArray::number(i));
        }
        apply(snapshot(probes));
        QCOMPARE(m_model->services->size(), 12);
        QCOMPARE(rowNames().last(), u"service11"_s);
    }

    void rowsCarryTheirProbe() {
        apply(snapshot({probe("a", false, "down"), R"({"name":"b","ok":true,"detail":"","category":"database"})"}));
        const QList<StatusModel::ServiceRow> expected{{u"a"_s, u"a"_s, false, u"down"_s, u"service"_s},
                                                      {u"b"_s, u"b"_s, true, QString(), u"database"_s}};
        QVERIFY(m_model->services.value() == expected);
    }

    void snapshotReplacesTheRowsWhole() {
        apply(snapshot({probe("a"), probe("caddy.process"), probe("postgres")}));
        QCOMPARE(rowNames(), (QStringList{u"a"_s, u"caddy.process"_s, u"postgres"_s}));
        apply(snapshot({probe("b")}));
        QCOMPARE(rowNames(), QStringList{u"b"_s});
    }

private:
    void apply(const QByteArray& json) {
        m_peer.setScript("/monitor/desktop", ScriptedPeer::plain(200, json));
        m_model->poll();
        QTRY_VERIFY(!m_model->polling);
    }
    [[nodiscard]] QStringList rowNames() const {
        QStringList names;
        for (const auto& row : m_model->services.value()) {
            names.append(row.name);
        }
        return names;
    }

    FakeNotificationService m_notifications;
    FakeTool m_tool;
    ScriptedPeer m_peer;
    std::unique_ptr<StatusModel> m_model;
};

QTEST_GUILESS_MAIN(TestStatusModelMonitor)
#include "TestStatusModelMonitor.moc"
