#include "PanelFixture.h"
#include "PanelReading.h"
#include "ui/VersionLabels.h"
#include "ui/kit/DotLabel.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/ServiceRowView.h"
#include "ui/menubar/StatTile.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 340;
constexpr qsizetype megabyte = 1 << 20;

struct Shown final {
    PanelFixture panel;
    std::unique_ptr<MenuBarView> view = panel.makeView();

    [[nodiscard]] bool show() {
        view->show();
        return panel.settle();
    }
    void setEveryText(const QString& text) {
        panel.fill();
        panel.status.hostLoad = text;
        panel.status.hostMemory = text;
        panel.status.hostDisk = text;
        panel.status.caddyDetail = text;
        panel.status.postgresDetail = text;
        panel.status.lastError = text;
        panel.status.cliMessage = text;
        QList<StatusModel::ServiceRow> rows;
        for (int i = 0; i < 12; ++i) {
            rows += {text, text, i % 2 == 0, text, text};
        }
        panel.status.services = rows;
    }
    template <typename Widget>
    [[nodiscard]] QRect place(int index) {
        auto* widget = view->findChildren<Widget*>().at(index);
        return {widget->mapTo(view.get(), QPoint{}), widget->size()};
    }
};

void addTexts() {
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString{};
    QTest::newRow("short") << u"ok"_s;
    QTest::newRow("words") << u"connection refused by the peer "_s.repeated(40);
    QTest::newRow("one absurdly long word") << QString{20'000, u'w'};
    QTest::newRow("right to left") << u"الخادم غير متاح "_s.repeated(40);
    QTest::newRow("emoji") << u"🚀🔥"_s.repeated(100);
    QTest::newRow("ampersands and markup") << u"<b>R&D</b> &amp; <img src=x>"_s;
    QTest::newRow("line breaks") << u"one\ntwo\r\nthree\n\n\nfour"_s;
    QTest::newRow("a megabyte") << QString{megabyte, u'x'};
}

}

class TestMenuBarView final : public QObject {
    Q_OBJECT

private slots:
    void aChangeOfDaypartChangesNothingOfTheLayout() {
        Shown shown;
        QVERIFY(shown.show());
        shown.panel.fill();
        shown.panel.daypart.set(Daypart::dawn);
        const QSize size = drawn(*shown.view).size();
        QList<QRect> before;
        for (auto* child : shown.view->findChildren<QWidget*>()) {
            before += child->geometry();
        }
        shown.panel.daypart.set(Daypart::night);
        QCOMPARE(drawn(*shown.view).size(), size);
        QList<QRect> after;
        for (auto* child : shown.view->findChildren<QWidget*>()) {
            after += child->geometry();
        }
        QCOMPARE(after, before);
    }

    void noTextMovesTheColumnTheTilesOrTheDots_data() { addTexts(); }
    void noTextMovesTheColumnTheTilesOrTheDots() {
        QFETCH(QString, text);
        Shown shown;
        QVERIFY(shown.show());
        shown.panel.fill();
        QCOMPARE(drawn(*shown.view).width(), width);
        const QList<QRect> tiles{shown.place<StatTile>(0), shown.place<StatTile>(1), shown.place<StatTile>(2)};
        const int row = shown.place<ServiceRowView>(0).height();
        shown.setEveryText(text);
        QCOMPARE(drawn(*shown.view).width(), width);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(shown.place<StatTile>(i).size(), tiles[i].size());
            QCOMPARE(shown.place<StatTile>(i).x(), tiles[i].x());
            QCOMPARE(shown.place<DotLabel>(1 + i).size(), QSize(6, 6));
            QCOMPARE(shown.place<DotLabel>(1 + i).right(), width - 14 - 1);
        }
        for (auto* label : shown.view->findChildren<TextLabel*>()) {
            QVERIFY(!label->isVisible() || label->mapTo(shown.view.get(), QPoint{label->width(), 0}).x() <= width - 10);
        }
        QCOMPARE(shown.place<ServiceRowView>(7).height(), row);
    }

    void itIsReadInOrderExactlyAsItIsShown() {
        Shown shown;
        QVERIFY(shown.show());
        shown.panel.fill();
        shown.panel.status.services = PanelFixture::services(1);
        shown.panel.status.lastError = u"The request timed out."_s;
        shown.panel.status.cliMessage = u"a & b"_s;
        shown.panel.daypart.set(Daypart::day);
        (void)drawn(*shown.view);
        QCOMPARE(PanelReading::names(*shown.view), (QStringList{u"vorna"_s,
                                                                VersionLabels::caption() + u" · Day",
                                                                u"ok"_s,
                                                                u"Bridge"_s,
                                                                u"online · :43105"_s,
                                                                u"ok"_s,
                                                                u"Caddy"_s,
                                                                u"running · 4/4 sites"_s,
                                                                u"ok"_s,
                                                                u"Postgres"_s,
                                                                u"accepting on 5432"_s,
                                                                u"ok"_s,
                                                                u"LOAD"_s,
                                                                u"1.73"_s,
                                                                u"MEMORY"_s,
                                                                u"64%"_s,
                                                                u"DISK"_s,
                                                                u"71% · 138 GB free"_s,
                                                                u"The request timed out."_s,
                                                                u"Updated 14:03:07"_s,
                                                                u"SERVICES"_s,
                                                                u"ok"_s,
                                                                u"caddy.process"_s,
                                                                u"listening on 5432"_s,
                                                                u"Refresh"_s,
                                                                u"Console"_s,
                                                                u"Agents"_s,
                                                                u"Facet"_s,
                                                                u"MAC → MAC"_s,
                                                                u"Desk backup now"_s,
                                                                u"Sync via iCloud"_s,
                                                                u"a & b"_s,
                                                                u"DAYPART"_s,
                                                                u"Auto"_s,
                                                                u"Dawn"_s,
                                                                u"Day"_s,
                                                                u"Dusk"_s,
                                                                u"Night"_s,
                                                                u"Test notification"_s,
                                                                u"Settings & permissions"_s,
                                                                u"Quit vorna"_s}));
    }

    void tabGoesThroughTheButtonsInReadingOrder() {
        Shown shown;
        QVERIFY(shown.show());
        shown.panel.daypart.set(Daypart::day);
        (void)drawn(*shown.view);
        const QStringList expected{u"Start bridge: vorna server start"_s,
                                   u"Refresh"_s,
                                   u"Console"_s,
                                   u"Agents"_s,
                                   u"Facet"_s,
                                   u"Desk backup now"_s,
                                   u"Sync via iCloud"_s,
                                   u"Auto"_s,
                                   u"Dawn"_s,
                                   u"Day"_s,
                                   u"Dusk"_s,
                                   u"Night"_s,
                                   u"Test notification"_s,
                                   u"Settings & permissions"_s,
                                   u"Quit vorna"_s};
        QCOMPARE(PanelReading::tabOrder(*shown.view), expected);
    }

    void eachAppearancePollsOnceMore() {
        Shown shown;
        QVERIFY(!shown.panel.status.polling);
        shown.view->show();
        QVERIFY(shown.panel.status.polling);
        QVERIFY(shown.panel.settle());
        QCOMPARE(shown.panel.tool.calls.size(), 1);
        shown.view->hide();
        shown.view->show();
        QVERIFY(shown.panel.status.polling);
        QVERIFY(shown.panel.settle());
        QCOMPARE(shown.panel.tool.calls.size(), 2);
        QCOMPARE(shown.panel.status.findChildren<QTimer*>().size(), 1);
    }

    void nothingIsLaidOutAgainWhenNothingHasChanged() {
        Shown shown;
        QVERIFY(shown.show());
        shown.panel.fill();
        (void)drawn(*shown.view);
        QCoreApplication::processEvents();
        LayoutCounter counter;
        for (auto* widget : shown.view->findChildren<QWidget*>()) {
            widget->installEventFilter(&counter);
        }
        shown.panel.fill();
        QCoreApplication::processEvents();
        QCOMPARE(counter.requests, 0);
        QCOMPARE(counter.paints, 0);
        shown.panel.status.lastError = u"The request timed out."_s;
        QTRY_VERIFY(counter.requests > 0);
    }

private:
    class LayoutCounter final : public QObject {
    public:
        int requests = 0;
        int paints = 0;

    protected:
        bool eventFilter(QObject* /*watched*/, QEvent* event) override {
            requests += event->type() == QEvent::LayoutRequest ? 1 : 0;
            paints += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    };
};

QTEST_MAIN(TestMenuBarView)
#include "TestMenuBarView.moc"
