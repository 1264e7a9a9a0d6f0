#include "support/Activation.h"
#include "support/Rows.h"
#include "ui/menubar/PanelFixture.h"
#include "ui/menubar/PanelFrame.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/PanelReading.h"
#include "ui/menubar/PanelWindow.h"

#include <QApplication>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using PlacedBy = PanelWindow::PlacedBy;

namespace {

const QRect anchor{400, 0, 24, 24};

struct Opened final {
    PanelFixture panel;
    std::chrono::steady_clock::time_point now{};
    std::chrono::milliseconds grace{};
    std::function<void()> afterGrace = [] {};
    PanelWindow window;
    QWidget elsewhere;

    explicit Opened(PlacedBy whom = PlacedBy::us)
        : window{panel.makeView(),
                 panel.daypart,
                 Qt::Window,
                 whom,
                 [] { return true; },
                 [this] { return now; },
                 [this](QObject&, std::chrono::milliseconds time, const auto& then) {
                     grace = time;
                     afterGrace = then;
                 }} {
        open();
    }
    ~Opened() { settle(); }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    void open() {
        window.showAt(anchor);
        activate(window);
        settle();
    }
    void settle() {
        if (!panel.settle()) {
            qFatal("the poll does not end");
        }
    }
    void takeFocusAway() { activate(elsewhere); }
    [[nodiscard]] QPushButton* button(const QString& title) { return PanelReading::named<QPushButton>(window, title); }
    [[nodiscard]] MenuBarView* content() { return window.findChild<MenuBarView*>(); }
    [[nodiscard]] QScrollArea* scroller() { return window.findChild<QScrollArea*>(); }
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
        opened.window.dismiss();
        opened.panel.fill();
        opened.window.showAt(anchor);
        QCOMPARE(opened.window.width(), 340);
        QVERIFY(opened.workArea().contains(opened.window.geometry()));
        QVERIFY(PanelReading::names(opened.window).contains(u"running · 4/4 sites"_s));
        const QImage frame = opened.window.grab().toImage();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCOMPARE(opened.window.grab().toImage(), frame);
    }

    void saysThatItClosedAndWhetherTheUserDismissedIt() {
        Opened opened;
        const QSignalSpy closings{&opened.window, &PanelWindow::closed};
        const QSignalSpy dismissals{&opened.window, &PanelWindow::dismissedByUser};
        opened.window.dismiss();
        opened.open();
        opened.takeFocusAway();
        QCOMPARE(closings.count(), 2);
        QCOMPARE(dismissals.count(), 0);
        opened.open();
        QTest::keyClick(&opened.window, Qt::Key_Escape);
        opened.open();
        QTest::keyClick(opened.button(u"Refresh"_s), Qt::Key_Escape);
        opened.open();
        opened.window.toggle(anchor);
        QCOMPARE(closings.count(), 5);
        QCOMPARE(dismissals.count(), 3);
        QVERIFY(!opened.window.isVisible());
        opened.window.toggle(anchor);
        QVERIFY(opened.window.isVisible());
    }

    void aClickElsewhereClosesItHoweverSoonItWasOpenedAgain() {
        Opened opened;
        opened.window.dismiss();
        QVERIFY(QGuiApplication::focusWindow() != nullptr); // the window system keeps it with what is hidden
        opened.window.showAt(anchor);
        QTRY_VERIFY(opened.window.isActiveWindow());
        opened.takeFocusAway();
        QVERIFY(!opened.window.isVisible());
    }

    void clickThatTookTheFocusAwayDoesNotOpenItAgain() {
        for (const auto delay : {5ms, 249ms, 250ms, 5000ms}) {
            Opened opened;
            opened.takeFocusAway();
            QVERIFY(!opened.window.isVisible());
            opened.now += delay;
            opened.window.toggle(anchor);
            QCOMPARE(opened.window.isVisible(), delay >= 250ms);
            opened.window.toggle(anchor);
            QCOMPARE(opened.window.isVisible(), delay < 250ms);
        }
    }

    void heightFollowsTheContentAndStaysInsideTheWorkArea() {
        Opened opened;
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

    void contentThatIsTooHighScrolls() {
        Opened opened;
        opened.panel.fillWith(u"word "_s.repeated(100));
        QTRY_VERIFY(opened.content()->height() > opened.workArea().height());
        QTRY_COMPARE(opened.window.size(), QSize(340, opened.workArea().height() - 16));
        auto* bar = opened.scroller()->verticalScrollBar();
        struct Step {
            Qt::Key key;
            int value;
        };
        const int page = std::min(bar->pageStep(), bar->maximum());
        for (const auto [key, value] :
             {Step{Qt::Key_End, bar->maximum()}, Step{Qt::Key_PageUp, bar->maximum() - page}, Step{Qt::Key_Home, 0},
              Step{Qt::Key_Down, bar->singleStep()}, Step{Qt::Key_Right, bar->singleStep()}, Step{Qt::Key_Up, 0},
              Step{Qt::Key_PageDown, page}}) {
            QTest::keyClick(&opened.window, key);
            QCOMPARE(bar->value(), value);
        }
        opened.window.dismiss();
        opened.open();
        QCOMPARE(bar->value(), 0);
    }

    void whereTheDesktopPlacesItItGrowsInsideAWindowThatKeepsItsSize() {
        Opened opened{PlacedBy::desktop};
        const QSize window = opened.window.size();
        QCOMPARE(window, QSize(340, opened.workArea().height() - 52));
        const auto* frame = opened.window.findChild<PanelFrame*>();
        for (const int services : {0, 4, 1}) {
            opened.panel.status.services = PanelFixture::services(services);
            opened.panel.status.cliMessage = u"word "_s.repeated(services * 40);
            QTRY_COMPARE(opened.scroller()->geometry(),
                         QRect(0, 0, 340, std::min(opened.content()->sizeHint().height(), window.height())));
            QCOMPARE(frame->geometry(), opened.scroller()->geometry());
            QCOMPARE(opened.window.size(), window);
        }
    }

    void whereTheDesktopPlacesItAPressBelowItClosesIt() {
        Opened opened{PlacedBy::desktop};
        const int height = opened.scroller()->height();
        QVERIFY(height < opened.window.height());
        QTest::mousePress(&opened.window, Qt::LeftButton, {}, {170, height - 1});
        QVERIFY(opened.window.isVisible());
        QTest::mousePress(&opened.window, Qt::LeftButton, {}, {170, height});
        QVERIFY(!opened.window.isVisible());
    }

    void whereTheDesktopPlacesItItWaitsForThePointer_data() {
        const Rows<bool, bool, bool, bool> row{"pointerHasCome", "focusReturns", "staysFirst", "staysAtLast"};
        row("which comes in time", false, true, true, true);
        row("which never comes", false, false, true, false);
        row("which has been there", true, false, false, false);
    }
    void whereTheDesktopPlacesItItWaitsForThePointer() {
        QFETCH(bool, pointerHasCome);
        QFETCH(bool, focusReturns);
        QCursor::setPos(Opened::workArea().bottomRight());
        Opened opened{PlacedBy::desktop};
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
        opened.open();
        opened.takeFocusAway();
        QVERIFY(opened.window.isVisible());
        QCOMPARE(opened.grace, 1500ms);
    }

    void changeOfDaypartPaintsAllOfItAgainAndLaysNothingOut() {
        Opened opened;
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

    void whatIsPaintedInPartsIsTheWhole() {
        Opened opened;
        const auto onScreen = [&opened] {
            return QGuiApplication::primaryScreen()->grabWindow(opened.window.winId()).toImage();
        };
        const auto checkAfter = [&](const auto& change) {
            const QImage before = onScreen();
            change();
            QTRY_VERIFY(onScreen() != before);
            const QImage inParts = onScreen();
            opened.window.repaint();
            QCOMPARE(inParts, onScreen());
        };
        checkAfter([&opened] { opened.panel.fill(); });
        checkAfter([&opened] { opened.panel.status.hostLoad = u"9.81"_s; });
        checkAfter([&opened] { opened.panel.status.caddyDetail = u"stopped"_s; });
        checkAfter([&opened] { QTest::keyClick(&opened.window, Qt::Key_Down); });
        const QImage whole = onScreen();
        opened.window.repaint(0, 0, PanelMetrics::cornerRadius, PanelMetrics::cornerRadius);
        QCOMPARE(onScreen(), whole);
    }
};

QTEST_MAIN(TestPanelWindow)
#include "TestPanelWindow.moc"
