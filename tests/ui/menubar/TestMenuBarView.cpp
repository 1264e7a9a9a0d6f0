#include "PanelFixture.h"
#include "ui/kit/DotLabel.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/HeaderView.h"
#include "ui/menubar/ServiceRowView.h"
#include "ui/menubar/StatTile.h"

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

    void theHeadersTextsKeepTwiceTheSpacingFromTheDot() {
        Shown shown;
        QVERIFY(shown.show());
        (void)drawn(*shown.view);
        QCOMPARE(shown.view->findChild<HeaderView*>()->findChild<TextLabel*>()->width(), width - 2 * 14 - 2 * 10 - 28);
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
};

QTEST_MAIN(TestMenuBarView)
#include "TestMenuBarView.moc"
