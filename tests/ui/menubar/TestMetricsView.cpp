#include "PanelFixture.h"
#include "PanelReading.h"
#include "ui/kit/DotLabel.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/MetricsView.h"
#include "ui/menubar/StatTile.h"

using namespace Qt::StringLiterals;
using Band = StatusModel::Band;

namespace {

constexpr int width = 340;

struct Shown final {
    PanelFixture panel;
    MetricsView view{panel.status, panel.daypart};

    Shown() {
        view.setFixedWidth(width);
        view.show();
    }
    void settle() {
        constexpr int levels = 3;
        for (int level = 0; level < levels; ++level) {
            QCoreApplication::processEvents();
            view.adjustSize();
        }
    }
    [[nodiscard]] QStringList texts() {
        settle();
        return PanelReading::names(view);
    }
    [[nodiscard]] TextLabel* label(const QString& text) { return PanelReading::named<TextLabel>(view, text); }
    [[nodiscard]] DotLabel* dot(int row) { return view.findChildren<DotLabel*>().at(row); }
};

}

class TestMetricsView final : public QObject {
    Q_OBJECT

private slots:
    void beforeTheFirstPollItEndsWithTheTiles() {
        Shown shown;
        QCOMPARE(shown.texts(),
                 (QStringList{u"Bridge"_s, u"offline"_s, u"not ok"_s, u"Caddy"_s, u"—"_s, u"not ok"_s, u"Postgres"_s,
                              u"—"_s, u"not ok"_s, u"LOAD"_s, u"—"_s, u"MEMORY"_s, u"—"_s, u"DISK"_s, u"—"_s}));
        auto* lastTile = shown.view.findChildren<StatTile*>().last();
        QCOMPARE(lastTile->geometry().bottom(), shown.view.rect().bottom() - 14);
    }

    void aHealthyMachineIsOkThroughout() {
        Shown shown;
        shown.panel.fill();
        QCOMPARE(shown.texts(),
                 (QStringList{u"Bridge"_s, u"online · :43105"_s, u"ok"_s, u"Caddy"_s, u"running · 4/4 sites"_s, u"ok"_s,
                              u"Postgres"_s, u"accepting on 5432"_s, u"ok"_s, u"LOAD"_s, u"1.73"_s, u"MEMORY"_s,
                              u"64%"_s, u"DISK"_s, u"71% · 138 GB free"_s, u"Updated 14:03:07"_s}));
    }

    void caddyIsOkOnlyWhenGreen() {
        for (const Band band : {Band::amber, Band::red, Band::unknown}) {
            Shown shown;
            shown.panel.fill();
            shown.panel.status.caddyBand = band;
            shown.settle();
            QCOMPARE(shown.dot(1)->accessibleName(), u"not ok"_s);
        }
    }

    void postgresIsNotOkWhenItIsNotKnown() {
        for (const auto ok : {std::optional<bool>{}, std::optional{false}}) {
            Shown shown;
            shown.panel.fill();
            shown.panel.status.postgresOk = ok;
            shown.settle();
            QCOMPARE(shown.dot(2)->accessibleName(), u"not ok"_s);
        }
    }

    void aLongValueWrapsOnceAndMovesNeitherLabelNorDot() {
        Shown shown;
        shown.panel.fill();
        shown.settle();
        const QPoint dotBefore = shown.dot(1)->mapTo(&shown.view, QPoint{});
        const QString text = u"bad gateway "_s.repeated(20);
        shown.panel.status.caddyDetail = text;
        shown.settle();
        auto* value = shown.label(text);
        QVERIFY(value->isCut());
        QCOMPARE(value->height(), 2 * value->lineHeight());
        QCOMPARE(shown.label(u"Caddy"_s)->width(), 64);
        QCOMPARE(value->mapTo(&shown.view, QPoint{}).x(), 14 + 64 + 8);
        QCOMPARE(value->width(), width - 28 - 64 - 8 - 2 * 8 - 6);
        QCOMPARE(shown.dot(1)->mapTo(&shown.view, QPoint{}), dotBefore);
        QCOMPARE(shown.dot(1)->geometry(), QRect(width - 28 - 6, 4, 6, 6));
    }

    void aLongFigureShrinksAndThenIsCutAndTheTilesStayEqual() {
        Shown shown;
        shown.panel.fill();
        shown.settle();
        const auto tiles = shown.view.findChildren<StatTile*>();
        const QList<QRect> before{tiles[0]->geometry(), tiles[1]->geometry(), tiles[2]->geometry()};
        shown.panel.status.hostMemory = u"12345678901234"_s;
        shown.panel.status.hostLoad = u"1234567890123456789012345678901234567890"_s;
        shown.settle();
        QVERIFY(shown.label(u"12345678901234"_s)->shownScale() < 1);
        QVERIFY(!shown.label(u"12345678901234"_s)->isCut());
        auto* load = shown.label(shown.panel.status.hostLoad);
        QCOMPARE(load->shownScale(), 0.7);
        QVERIFY(load->isCut());
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(tiles[i]->geometry(), before[i]);
            QVERIFY(qAbs(tiles[i]->width() - (width - 28 - 16) / 3) <= 1);
        }
    }

    void theErrorTakesTwoLinesAtMost() {
        Shown shown;
        const QString text = u"The request timed out. "_s.repeated(20);
        shown.panel.status.lastError = text;
        shown.settle();
        auto* error = shown.label(text);
        QCOMPARE(error->height(), 2 * error->lineHeight());
        shown.panel.status.lastError = std::nullopt;
        shown.settle();
        QVERIFY(!error->isVisible());
    }
};

QTEST_MAIN(TestMetricsView)
#include "TestMetricsView.moc"
