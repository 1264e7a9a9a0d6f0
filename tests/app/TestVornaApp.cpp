#include "app/VornaApp.h"

#include "support/FakeNotificationService.h"
#include "support/FakeTool.h"
#include "support/MemoryDefaults.h"
#include "support/Rows.h"
#include "ui/menubar/PanelFrame.h"
#include "ui/menubar/PanelWindow.h"
#include "ui/settings/SettingsView.h"

#include <QApplication>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString offline = u"antenna.radiowaves.left.and.right.slash"_s;

class FakeStatusItem final : public StatusItem {
public:
    QStringList symbols;
    QStringList meanings;
    QList<bool> panelStates;

    void setSymbol(const QString& symbolName, const QString& meaning) override {
        symbols.append(symbolName);
        meanings.append(meaning);
    }
    void setPanelOpen(bool isOpen) override { panelStates.append(isOpen); }
    [[nodiscard]] QRect anchor() const override { return {100, 0, 24, 24}; }
};

/// Counts how often the panel's frame is painted, which lies on top of all else.
class PaintWatch final : public QObject {
public:
    PaintWatch() { qApp->installEventFilter(this); }
    int paints = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        paints += event->type() == QEvent::Paint && qobject_cast<PanelFrame*>(watched) != nullptr ? 1 : 0;
        return false;
    }
};

template <typename Window>
bool made() {
    return std::ranges::any_of(QApplication::topLevelWidgets(),
                               [](const QWidget* window) { return qobject_cast<const Window*>(window) != nullptr; });
}

template <typename Window>
Window* shown() {
    const auto windows = QApplication::topLevelWidgets();
    const auto found = std::ranges::find_if(
        windows, [](QWidget* window) { return qobject_cast<Window*>(window) != nullptr && window->isVisible(); });
    return found == windows.end() ? nullptr : qobject_cast<Window*>(*found);
}

bool anyWindowIsShown() {
    return std::ranges::any_of(QApplication::topLevelWidgets(), &QWidget::isVisible);
}

}

class TestVornaApp final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_daypart = std::make_unique<DaypartController>(m_defaults);
        m_tool = std::make_unique<FakeTool>();
        m_notifications.state = NotificationService::Authorization::authorized;
        m_notifications.answersAtOnce = true;
        m_notifications.authorizationRequests = 0;
        m_events.clear();
        m_timesDaypartWasTaken = 0;
        m_timesGivenWay = 0;
        m_tick = nullptr;
        m_later.clear();
    }

    void policyThenRequestThenItem() {
        const auto vorna = launch();
        QCOMPARE(m_events, (QStringList{u"policy, 0 requests"_s, u"item vorna, 1 requests"_s}));
    }

    void nothingWaitsForTheAnswerAboutNotifications() {
        using enum NotificationService::Authorization;
        for (const auto state : {authorized, denied, notDetermined}) {
            init();
            m_notifications.state = state;
            m_notifications.answersAtOnce = false;
            const auto vorna = launch();
            QVERIFY(m_item != nullptr);
            QCOMPARE(m_timesDaypartWasTaken, 1);
            m_notifications.answerAll();
            QCOMPARE(m_timesDaypartWasTaken, 2);
            QCOMPARE(m_notifications.authorizationRequests, 1);
            QVERIFY(m_notifications.posted.isEmpty());
        }
    }

    void startsOfflineAndAsksNobody() {
        const auto vorna = launch();
        QCoreApplication::processEvents();
        QCOMPARE(m_item->symbols, QStringList{offline});
        QCOMPARE(m_item->meanings, QStringList{u"bridge offline"_s});
        QVERIFY(!m_tick);
        QVERIFY(m_tool->calls.isEmpty());
        QVERIFY(!anyWindowIsShown());
        QVERIFY(!QApplication::quitOnLastWindowClosed());
    }

    void itemFollowsTheModel() {
        const auto vorna = launch();
        auto& model = vorna->status();
        model.bridgeOnline = true;
        model.caddyBand = StatusModel::Band::red;
        QCOMPARE(m_item->symbols, QStringList{offline});
        QCoreApplication::processEvents();
        QCOMPARE(m_item->symbols, (QStringList{offline, u"xmark.octagon.fill"_s}));
        QCOMPARE(m_item->meanings.last(), u"down"_s);
    }

    void openingThePanelStartsPolling() {
        const auto vorna = launch();
        emit m_item->clicked();
        QVERIFY(shown<PanelWindow>() != nullptr);
        QTRY_VERIFY(vorna->status().lastPoll.value());
        QCOMPARE(m_interval, std::chrono::milliseconds{5000});
        QCOMPARE(m_tool->calls.size(), 1);
        emit m_item->clicked();
        QVERIFY(shown<PanelWindow>() == nullptr);
        emit m_item->clicked();
        QTRY_COMPARE(m_tool->calls.size(), 2);
    }

    void thePanelIsDrawnOnceUnseenAndGivenBack() {
        const auto vorna = launch();
        PaintWatch watch;
        QCOMPARE(m_later.size(), 1);
        QVERIFY(m_later.first().first > std::chrono::milliseconds{0});
        while (!m_later.isEmpty()) {
            m_later.takeFirst().second();
            QVERIFY(!anyWindowIsShown());
        }
        QCOMPARE(watch.paints, 1);
        QVERIFY(!made<PanelWindow>());
        QCoreApplication::processEvents();
        QVERIFY(!vorna->status().polling);
        QVERIFY(m_tool->calls.isEmpty());
    }

    // However far it is when the click comes.
    void aClickNeedsNoMoreOfThePanelUnseen_data() {
        const Rows<int> row{"pieces"};
        row("none", 0);
        row("fonts", 1);
        row("the panel", 2);
    }
    void aClickNeedsNoMoreOfThePanelUnseen() {
        QFETCH(const int, pieces);
        const auto vorna = launch();
        for (int i = 0; i < pieces; ++i) {
            m_later.takeFirst().second();
        }
        emit m_item->clicked();
        const auto* panel = shown<PanelWindow>();
        QVERIFY(panel != nullptr);
        QTRY_VERIFY(vorna->status().lastPoll.value());
        PaintWatch watch;
        while (!m_later.isEmpty()) {
            m_later.takeFirst().second();
        }
        QCOMPARE(watch.paints, 0);
        QCOMPARE(shown<PanelWindow>(), panel);
    }

    void aPanelClosedMeanwhileIsKeptForAMoment_data() { aClickNeedsNoMoreOfThePanelUnseen_data(); }
    void aPanelClosedMeanwhileIsKeptForAMoment() {
        QFETCH(const int, pieces);
        const auto vorna = launch();
        for (int i = 0; i < pieces; ++i) {
            m_later.takeFirst().second();
        }
        emit m_item->clicked();
        emit m_item->clicked();
        PaintWatch watch;
        while (!m_later.isEmpty()) {
            m_later.takeFirst().second();
        }
        QCOMPARE(watch.paints, 0);
        QVERIFY(made<PanelWindow>());
    }

    void clickElsewhereClosesThePanel() {
        const auto vorna = launch();
        emit m_item->clickedElsewhere();
        QVERIFY(!anyWindowIsShown());
        emit m_item->clicked();
        emit m_item->clickedElsewhere();
        QVERIFY(shown<PanelWindow>() == nullptr);
    }

    // A desktop may tell of the click on the icon as of one elsewhere, and only then as of its own.
    void theClickThatClosedThePanelDoesNotOpenIt() {
        const auto vorna = launch();
        emit m_item->clicked();
        emit m_item->clickedElsewhere();
        emit m_item->clicked();
        QVERIFY(shown<PanelWindow>() == nullptr);
        emit m_item->clicked();
        QVERIFY(shown<PanelWindow>() != nullptr);
    }

    void itemHearsWhetherThePanelIsOpen() {
        const auto vorna = launch();
        emit m_item->clicked();
        QCOMPARE(m_item->panelStates, QList{true});
        shown<PanelWindow>()->close();
        QCOMPARE(m_item->panelStates, (QList{true, false}));
        emit m_item->showPanelChosen();
        QCOMPARE(m_item->panelStates, (QList{true, false, true}));
        emit m_item->clicked();
        QVERIFY(!m_item->panelStates.last());
    }

    void keyboardGoesBackWhenTheUserClosesAWindow() {
        const auto vorna = launch();
        emit m_item->clicked();
        emit m_item->clickedElsewhere();
        QCOMPARE(m_timesGivenWay, 0);
        emit m_item->showPanelChosen();
        QTest::keyClick(shown<PanelWindow>(), Qt::Key_Escape);
        QCOMPARE(m_timesGivenWay, 1);
        emit m_item->settingsChosen();
        shown<SettingsView>()->close();
        QTRY_COMPARE(m_timesGivenWay, 2);
    }

    void entriesOfTheMenuDoWhatTheySay() {
        const auto vorna = launch();
        emit m_item->showPanelChosen();
        QVERIFY(shown<PanelWindow>() != nullptr);
        emit m_item->settingsChosen();
        QVERIFY(shown<SettingsView>() != nullptr);
        bool quits = false;
        connect(qApp, &QCoreApplication::aboutToQuit, this, [&quits] { quits = true; });
        QTimer::singleShot(0, m_item, &StatusItem::quitChosen);
        QApplication::exec();
        QVERIFY(quits);
    }

private:
    [[nodiscard]] std::unique_ptr<VornaApp> launch() {
        const auto note = [this](const QString& event) {
            m_events.append(u"%1, %2 requests"_s.arg(event).arg(m_notifications.authorizationRequests));
        };
        return std::make_unique<VornaApp>(VornaParts{
            .daypart = [this]() -> DaypartController& {
                ++m_timesDaypartWasTaken;
                return *m_daypart;
            },
            .becomeAccessory = [note] { note(u"policy"_s); },
            .activatePreviousProgram = [this] { ++m_timesGivenWay; },
            .notifications = m_notifications,
            .makeItem =
                [this, note](const QString& title) {
                    note(u"item "_s + title);
                    auto item = std::make_unique<FakeStatusItem>();
                    m_item = item.get();
                    return item;
                },
            .runTool = m_tool->runner(),
            .bridge = QUrl{u"http://127.0.0.1:9"_s},
            .ticker =
                [this](QObject&, std::chrono::milliseconds interval, const std::function<void()>& tick) {
                    m_interval = interval;
                    m_tick = tick;
                },
            .delay = [this](QObject&, std::chrono::milliseconds time,
                            const std::function<void()>& then) { m_later.append({time, then}); },
        });
    }

    FakeNotificationService m_notifications;
    MemoryDefaults m_defaults;
    std::unique_ptr<DaypartController> m_daypart;
    std::unique_ptr<FakeTool> m_tool;
    FakeStatusItem* m_item = nullptr;
    QStringList m_events;
    int m_timesDaypartWasTaken = 0;
    int m_timesGivenWay = 0;
    std::function<void()> m_tick;
    QList<std::pair<std::chrono::milliseconds, std::function<void()>>> m_later;
    std::chrono::milliseconds m_interval{};
};

QTEST_MAIN(TestVornaApp)
#include "TestVornaApp.moc"
