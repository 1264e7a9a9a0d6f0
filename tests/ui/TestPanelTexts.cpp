#include "support/PaintRecord.h"
#include "ui/VersionLabels.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelFixture.h"
#include "ui/menubar/PanelReading.h"

#include <QFontMetricsF>

#include <algorithm>
#include <set>

using namespace Qt::StringLiterals;

namespace {

using Arrange = void (*)(PanelFixture&);

void inUse(PanelFixture& panel) {
    panel.fill();
    panel.status.hostDisk = u"71%"_s;
    panel.status.lastError = u"The request timed out."_s;
    panel.status.cliMessage = u"done in 2 s"_s;
}

void following(PanelFixture& panel) {
    panel.status.bridgeOnline = false;
    panel.status.cliBusy = true;
}

void pinned(PanelFixture& panel) {
    panel.status.bridgeOnline = true;
    panel.daypart.set(Daypart::day);
}

struct Look final {
    int size;
    QFont::Weight weight = QFont::Normal;
    bool isMonospaced = false;
    qreal tracking = 0;
};

constexpr Look title{16, QFont::Bold};
constexpr Look subtitle{11, QFont::Normal, true};
constexpr Look metricLabel{12, QFont::Medium, true};
constexpr Look metricValue{12, QFont::Normal, true};
constexpr Look tileTitle{9, QFont::DemiBold, false, 0.6};
constexpr Look tileValue{12, QFont::Medium, true};
constexpr Look line{11};
constexpr Look updated{10};
constexpr Look heading{10, QFont::DemiBold, false, 0.8};
constexpr Look serviceName{11, QFont::Normal, true};
constexpr Look serviceDetail{10, QFont::Normal, true};
constexpr Look accentButton{12, QFont::DemiBold};
constexpr Look menuButton{12};
constexpr Look message{10, QFont::Normal, true};
constexpr Look automatic{11, QFont::Medium};
constexpr Look chip{9, QFont::DemiBold};

/// Every panel once as it is used, and what differs when it is not.
const QList<std::tuple<Arrange, QString, Look>> looks{
    {inUse, u"vorna"_s, title},
    {inUse, VersionLabels::caption() + u" · Day", subtitle},
    {inUse, u"Bridge"_s, metricLabel},
    {inUse, u"online · :43105"_s, metricValue},
    {following, u"offline"_s, metricValue},
    {inUse, u"Caddy"_s, metricLabel},
    {inUse, u"running · 4/4 sites"_s, metricValue},
    {inUse, u"Postgres"_s, metricLabel},
    {inUse, u"accepting on 5432"_s, metricValue},
    {inUse, u"LOAD"_s, tileTitle},
    {inUse, u"1.73"_s, tileValue},
    {inUse, u"MEMORY"_s, tileTitle},
    {inUse, u"64%"_s, tileValue},
    {inUse, u"DISK"_s, tileTitle},
    {inUse, u"71%"_s, tileValue},
    {inUse, u"The request timed out."_s, line},
    {inUse, u"Updated "_s, updated},
    {inUse, u"SERVICES"_s, heading},
    {following, u"Start bridge: vorna server start"_s, line},
    {pinned, u"No probes yet"_s, line},
    {inUse, u"caddy.process"_s, serviceName},
    {inUse, u"listening on 5432"_s, serviceDetail},
    {inUse, u"Refresh"_s, accentButton},
    {inUse, u"Console"_s, accentButton},
    {inUse, u"Agents"_s, accentButton},
    {inUse, u"Facet"_s, accentButton},
    {inUse, u"MAC → MAC"_s, heading},
    {inUse, u"Desk backup now"_s, menuButton},
    {inUse, u"Sync via iCloud"_s, menuButton},
    {following, u"Running vorna…"_s, line},
    {inUse, u"done in 2 s"_s, message},
    {inUse, u"DAYPART"_s, heading},
    {following, u"Auto"_s, automatic},
    {pinned, u"Auto"_s, automatic},
    {inUse, u"Dawn"_s, chip},
    {inUse, u"Day"_s, chip},
    {inUse, u"Dusk"_s, chip},
    {inUse, u"Night"_s, chip},
    {inUse, u"Test notification"_s, menuButton},
    {inUse, u"Settings & permissions"_s, menuButton},
    {inUse, u"Quit vorna"_s, menuButton},
};

struct Shown final {
    PanelFixture panel;
    std::unique_ptr<MenuBarView> view = panel.makeView();

    [[nodiscard]] bool show(Arrange arrange) {
        view->show();
        const bool isSettled = panel.settle();
        arrange(panel);
        return isSettled;
    }
    [[nodiscard]] QList<PaintRecord::Text> texts() {
        (void)drawn(*view);
        return PaintRecord{*view}.texts();
    }
};

bool isMonospaced(const QFont& font) {
    const QFontMetricsF metrics{font};
    return qFuzzyCompare(metrics.horizontalAdvance(u"iiii"_s), metrics.horizontalAdvance(u"MMMM"_s));
}

QString longText() {
    return u"words of a long text "_s.repeated(30);
}

}
Q_DECLARE_METATYPE(Arrange)
Q_DECLARE_METATYPE(Look)

class TestPanelTexts final : public QObject {
    Q_OBJECT

private slots:
    void textsAreSetAsTheyAreDesigned_data() {
        QTest::addColumn<Arrange>("arrange");
        QTest::addColumn<QString>("text");
        QTest::addColumn<Look>("look");
        for (const auto& [arrange, text, look] : looks) {
            QTest::addRow("%s%s", qPrintable(text), arrange == pinned ? ", pinned" : "") << arrange << text << look;
        }
    }
    void textsAreSetAsTheyAreDesigned() {
        QFETCH(Arrange, arrange);
        QFETCH(QString, text);
        QFETCH(Look, look);
        Shown shown;
        QVERIFY(shown.show(arrange));
        const auto texts = shown.texts();
        const auto found = std::ranges::find_if(texts, [&text](const PaintRecord::Text& painted) {
            return painted.string == text || (text.endsWith(u' ') && painted.string.startsWith(text));
        });
        QVERIFY(found != texts.end());
        QCOMPARE(found->font.pixelSize(), look.size);
        QCOMPARE(found->font.weight(), look.weight);
        QCOMPARE(isMonospaced(found->font), look.isMonospaced);
        QVERIFY(qAbs(found->font.letterSpacing() - look.tracking) < 0.02);
    }

    void everyTextOfAPanelInUseIsInTheTable() {
        Shown shown;
        QVERIFY(shown.show(inUse));
        shown.panel.status.services = PanelFixture::services(1);
        QStringList designed;
        for (const auto& [arrange, text, look] : looks) {
            designed += text;
        }
        for (const auto& painted : shown.texts()) {
            QVERIFY2(designed.contains(painted.string) || painted.string.startsWith(u"Updated "_s),
                     qPrintable(painted.string));
        }
    }

    void aLongTextTakesItsLinesAndNoMore_data() {
        QTest::addColumn<Arrange>("arrange");
        QTest::addColumn<int>("lines");
        QTest::newRow("Caddy") << Arrange{[](PanelFixture& panel) { panel.status.caddyDetail = longText(); }} << 2;
        QTest::newRow("Postgres") << Arrange{[](PanelFixture& panel) { panel.status.postgresDetail = longText(); }}
                                  << 2;
        QTest::newRow("load") << Arrange{[](PanelFixture& panel) { panel.status.hostLoad = longText(); }} << 1;
        QTest::newRow("memory") << Arrange{[](PanelFixture& panel) { panel.status.hostMemory = longText(); }} << 1;
        QTest::newRow("disk") << Arrange{[](PanelFixture& panel) { panel.status.hostDisk = longText(); }} << 1;
        QTest::newRow("error") << Arrange{[](PanelFixture& panel) { panel.status.lastError = longText(); }} << 2;
        QTest::newRow("service") << Arrange{[](PanelFixture& panel) {
            panel.status.services = {{u"id"_s, longText(), true, u"detail"_s, {}}};
        }} << 1;
        QTest::newRow("service's detail") << Arrange{[](PanelFixture& panel) {
            panel.status.services = {{u"id"_s, u"name"_s, true, longText(), {}}};
        }} << 1;
        QTest::newRow("tool's message") << Arrange{[](PanelFixture& panel) { panel.status.cliMessage = longText(); }}
                                        << 3;
    }
    void aLongTextTakesItsLinesAndNoMore() {
        QFETCH(Arrange, arrange);
        Shown shown;
        QVERIFY(shown.show(arrange));
        const auto texts = shown.texts();
        const auto* label = PanelReading::named<TextLabel>(*shown.view, longText());
        QVERIFY(label != nullptr);
        QVERIFY(label->isCut());
        const QRectF place{label->mapTo(shown.view.get(), QPoint{}), label->size()};
        std::set<int> lines;
        for (const auto& painted : texts) {
            if (place.contains(painted.place.center())) {
                lines.insert(qRound(painted.place.center().y()));
            }
        }
        QTEST(int(lines.size()), "lines");
    }
};

QTEST_MAIN(TestPanelTexts)
#include "TestPanelTexts.moc"
