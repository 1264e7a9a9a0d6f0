#include "support/Activation.h"
#include "ui/menubar/PanelFixture.h"
#include "ui/menubar/PanelFrame.h"
#include "ui/menubar/PanelReading.h"
#include "ui/menubar/PanelWindow.h"

#include <QApplication>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QRect anchor{400, 0, 24, 24};

struct Opened final {
    explicit Opened(PanelWindow::PlacedBy whom = PanelWindow::PlacedBy::us)
        : placedBy{whom} {}

    const PanelWindow::PlacedBy placedBy;
    PanelFixture panel;
    std::chrono::steady_clock::time_point now{};
    std::function<void()> afterGrace = [] {};
    PanelWindow window{panel.makeView(),
                       panel.daypart,
                       Qt::Window,
                       placedBy,
                       [] { return true; },
                       [this] { return now; },
                       [this](QObject&, std::chrono::milliseconds, const auto& then) { afterGrace = then; }};
    QWidget elsewhere;

    [[nodiscard]] bool open() {
        window.showAt(anchor);
        activate(window);
        return panel.settle();
    }
    void takeFocusAway() { activate(elsewhere); }
    [[nodiscard]] QPushButton* button(const QString& title) { return PanelReading::named<QPushButton>(window, title); }
    [[nodiscard]] MenuBarView* content() { return window.findChild<MenuBarView*>(); }
    [[nodiscard]] static QRect workArea() { return QGuiApplication::primaryScreen()->availableGeometry(); }
};

/// What was painted, and how many layouts were asked for.
class Counter final : public QObject {
public:
    QSet<QObject*> painted{};
    int layouts = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            painted += watched;
        }
        layouts += event->type() == QEvent::LayoutRequest ? 1 : 0;
        return false;
    }
};

}

class TestPanelWindow final : public QObject {
    Q_OBJECT

private slots:
    void opensCompleteAndInsideTheWorkArea() {
        Opened opened;
        opened.panel.fill();
        opened.window.showAt(anchor);
        QCOMPARE(opened.window.width(), 340);
        QVERIFY(opened.workArea().contains(opened.window.geometry()));
        QVERIFY(PanelReading::names(opened.window).contains(u"running · 4/4 sites"_s));
        const QSize first = opened.window.size();
        const QImage frame = opened.window.grab().toImage();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCOMPARE(opened.window.size(), first);
        QCOMPARE(opened.window.grab().toImage(), frame);
        QVERIFY(opened.panel.settle());
    }

    void aSecondClickOnTheIconClosesIt() {
        Opened opened;
        opened.window.toggle(anchor);
        QVERIFY(opened.window.isVisible());
        opened.window.toggle(anchor);
        QVERIFY(!opened.window.isVisible());
        opened.window.toggle(anchor);
        QVERIFY(opened.window.isVisible());
        QVERIFY(opened.panel.settle());
    }

    void saysThatItClosedHoweverItWasClosed() {
        Opened opened;
        const QSignalSpy closings{&opened.window, &PanelWindow::closed};
        opened.window.showAt(anchor);
        QCOMPARE(closings.count(), 0);
        opened.window.dismiss();
        QCOMPARE(closings.count(), 1);
        opened.window.showAt(anchor);
        opened.takeFocusAway();
        QCOMPARE(closings.count(), 2);
        QVERIFY(opened.panel.settle());
    }

    void saysThatItWasLeftOnlyWhenTheUserDidNotTurnToSomethingElse() {
        Opened opened;
        QVERIFY(opened.open());
        const QSignalSpy leavings{&opened.window, &PanelWindow::dismissedByUser};
        opened.window.dismiss();
        QVERIFY(opened.open());
        opened.takeFocusAway();
        QCOMPARE(leavings.count(), 0);
        QVERIFY(opened.open());
        QTest::keyClick(&opened.window, Qt::Key_Escape);
        QCOMPARE(leavings.count(), 1);
        QVERIFY(opened.open());
        opened.window.toggle(anchor);
        QCOMPARE(leavings.count(), 2);
    }

    void aClickThatTookTheFocusAwayDoesNotOpenItAgain_data() {
        QTest::addColumn<int>("delay");
        QTest::addColumn<bool>("opens");
        QTest::newRow("the same click") << 5 << false;
        QTest::newRow("a slow click") << 249 << false;
        QTest::newRow("another click") << 250 << true;
        QTest::newRow("much later") << 5000 << true;
    }
    void aClickThatTookTheFocusAwayDoesNotOpenItAgain() {
        QFETCH(int, delay);
        Opened opened;
        QVERIFY(opened.open());
        opened.takeFocusAway();
        QVERIFY(!opened.window.isVisible());
        opened.now += std::chrono::milliseconds{delay};
        opened.window.toggle(anchor);
        QTEST(opened.window.isVisible(), "opens");
        if (!opened.window.isVisible()) {
            opened.window.toggle(anchor);
            QVERIFY(opened.window.isVisible());
        }
        QVERIFY(opened.panel.settle());
    }

    void escapeClosesItFromAnyButton() {
        Opened opened;
        QVERIFY(opened.open());
        QTest::keyClick(&opened.window, Qt::Key_Escape);
        QVERIFY(!opened.window.isVisible());
        QVERIFY(opened.open());
        QTest::keyClick(opened.button(u"Refresh"_s), Qt::Key_Escape);
        QVERIFY(!opened.window.isVisible());
        opened.window.toggle(anchor);
        QVERIFY(opened.window.isVisible());
        QVERIFY(opened.panel.settle());
    }

    void itsHeightFollowsItsContentAndStaysInsideTheWorkArea() {
        Opened opened;
        QVERIFY(opened.open());
        opened.panel.status.lastError = std::nullopt;
        opened.panel.status.services = PanelFixture::services(1);
        QTRY_VERIFY(PanelReading::names(opened.window).contains(u"caddy.process"_s));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        const int before = opened.window.height();
        opened.panel.status.services = PanelFixture::services(2);
        QTRY_VERIFY(opened.window.height() > before);
        QVERIFY(opened.workArea().contains(opened.window.geometry()));
        QCOMPARE(opened.window.height(), opened.content()->height());
        opened.panel.status.services = PanelFixture::services(1);
        QTRY_COMPARE(opened.window.height(), before);
    }

    void aContentThatIsTooHighScrolls() {
        Opened opened;
        QVERIFY(opened.open());
        opened.panel.fill();
        opened.panel.status.cliMessage = u"word "_s.repeated(100);
        opened.panel.status.lastError = u"word "_s.repeated(100);
        QTRY_VERIFY(opened.content()->height() > opened.workArea().height());
        QTRY_COMPARE(opened.window.height(), opened.workArea().height() - 16);
        QCOMPARE(opened.window.width(), 340);
        auto* bar = opened.window.findChild<QScrollArea*>()->verticalScrollBar();
        QCOMPARE(bar->value(), 0);
        QTest::keyClick(&opened.window, Qt::Key_End);
        QCOMPARE(bar->value(), bar->maximum());
        QTest::keyClick(&opened.window, Qt::Key_Home);
        QCOMPARE(bar->value(), 0);

        opened.button(u"Settings & permissions"_s)->setFocus(Qt::TabFocusReason);
        QTest::keyClick(opened.button(u"Settings & permissions"_s), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), opened.button(u"Quit vorna"_s));
        auto* quit = opened.button(u"Quit vorna"_s);
        QVERIFY(opened.window.rect().contains(QRect{quit->mapTo(&opened.window, QPoint{}), quit->size()}));
    }

    void whereTheDesktopPlacesItItGrowsInsideAWindowThatKeepsItsSize() {
        Opened opened{PanelWindow::PlacedBy::desktop};
        QVERIFY(opened.open());
        const QSize window = opened.window.size();
        QCOMPARE(window, QSize(340, opened.workArea().height() - 52));
        const auto* scroller = opened.window.findChild<QScrollArea*>();
        const auto* frame = opened.window.findChild<PanelFrame*>();
        for (const int services : {0, 4, 1}) {
            opened.panel.status.services = PanelFixture::services(services);
            opened.panel.status.cliMessage = u"word "_s.repeated(services * 40);
            QTRY_COMPARE(scroller->geometry(),
                         QRect(0, 0, 340, std::min(opened.content()->sizeHint().height(), window.height())));
            QCOMPARE(frame->geometry(), scroller->geometry());
            QCOMPARE(opened.window.size(), window);
        }
    }

    void whereTheDesktopPlacesItAPressBelowItClosesIt() {
        Opened opened{PanelWindow::PlacedBy::desktop};
        QVERIFY(opened.open());
        const int height = opened.window.findChild<QScrollArea*>()->height();
        QVERIFY(height < opened.window.height());
        QTest::mousePress(&opened.window, Qt::LeftButton, {}, {170, height - 1});
        QVERIFY(opened.window.isVisible());
        QTest::mousePress(&opened.window, Qt::LeftButton, {}, {170, height});
        QVERIFY(!opened.window.isVisible());
    }

    void whereTheDesktopPlacesItItWaitsForThePointer_data() {
        QTest::addColumn<bool>("pointerHasCome");
        QTest::addColumn<bool>("focusReturns");
        QTest::addColumn<bool>("staysFirst");
        QTest::addColumn<bool>("staysAtLast");
        QTest::newRow("which comes in time") << false << true << true << true;
        QTest::newRow("which never comes") << false << false << true << false;
        QTest::newRow("which has been there") << true << false << false << false;
    }
    void whereTheDesktopPlacesItItWaitsForThePointer() {
        QFETCH(bool, pointerHasCome);
        QFETCH(bool, focusReturns);
        Opened opened{PanelWindow::PlacedBy::desktop};
        QCursor::setPos(opened.workArea().bottomRight());
        QVERIFY(opened.open());
        if (pointerHasCome) {
            QEnterEvent enter{QPointF{9, 9}, QPointF{9, 9}, QPointF{9, 9}};
            QCoreApplication::sendEvent(&opened.window, &enter);
        }
        opened.takeFocusAway();
        QTEST(opened.window.isVisible(), "staysFirst");
        if (focusReturns) {
            activate(opened.window);
        }
        opened.afterGrace();
        QTEST(opened.window.isVisible(), "staysAtLast");
    }

    void aChangeOfDaypartPaintsAllOfItAgainAndLaysNothingOut() {
        Opened opened;
        QVERIFY(opened.open());
        opened.panel.daypart.set(Daypart::dawn);
        QTRY_VERIFY(opened.button(u"Auto"_s) != nullptr);
        QCoreApplication::processEvents();
        Counter counter;
        qsizetype inView = 0;
        for (auto* widget : opened.window.findChildren<QWidget*>()) {
            if (widget->isVisible() && !widget->visibleRegion().isEmpty()) {
                widget->installEventFilter(&counter);
                ++inView;
            }
        }
        QVERIFY(inView > 20);
        opened.panel.daypart.set(Daypart::night);
        QTRY_COMPARE(counter.painted.size(), inView);
        QCOMPARE(counter.layouts, 0);
    }
};

QTEST_MAIN(TestPanelWindow)
#include "TestPanelWindow.moc"
