#include "support/AccessibleTree.h"
#include "support/Activation.h"
#include "ui/kit/ApplicationAccessible.h"
#include "ui/menubar/PanelStates.h"
#include "ui/menubar/PanelWindow.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

constexpr QRect anchor{300, 0, 24, 24};

/// A panel with everything in it, at night, that is scrolled where the screen is too low for it.
struct Shown final {
    PanelFixture panel;
    PanelWindow window{panel.makeView(), panel.daypart, Qt::Popup, PanelWindow::PlacedBy::us, [] { return true; }};

    Shown() {
        window.showAt(anchor);
        if (!panel.settle()) {
            qFatal("the first poll does not end");
        }
        activate(window);
        PanelStates::healthy(panel);
        panel.daypart.set(Daypart::night);
        settle();
    }
    void settle() {
        window.renderPending();
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QScrollBar* scrollBar() { return window.findChild<QScrollArea*>()->verticalScrollBar(); }
    [[nodiscard]] AccessibleTree tree() { return AccessibleTree{window}; }
    [[nodiscard]] AccessibleNode control(const QString& name) {
        return tree().those([&](const AccessibleNode& node) { return node.isControl() && node.name == name; }).value(0);
    }
    [[nodiscard]] bool reachByTab(const AccessibleNode& control) {
        for (auto left = tree().controls().size(); left > 0 && !control.state().focused; --left) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        return control.state().focused;
    }

    /// Everything that can come of a press.
    [[nodiscard]] QVariantList effects() {
        QStringList calls;
        for (const auto& call : panel.tool.calls) {
            calls += call.arguments.join(u' ');
        }
        return {panel.settingsOpened,  panel.pagesOpened.size(),          panel.pagesOpened.value(0),
                panel.quits,           panel.notifications.posted.size(), calls,
                panel.defaults.values, panel.status.polling.value()};
    }
};

/// What comes of one way to press a control of a fresh panel; nothing where that changes nothing.
template <typename Way>
QVariantList effectsOf(const QString& name, Way way) {
    Shown shown;
    if (name == DaypartInfo::title(Daypart::night)) {
        shown.panel.daypart.set(Daypart::dawn);
        shown.settle();
    }
    const auto before = shown.effects();
    way(shown, shown.control(name));
    return QTest::qWaitFor([&] { return shown.effects() != before; }) ? shown.effects() : QVariantList{};
}

}

class TestPanelAccessibility final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { ApplicationAccessible::install(); }

    void tellsWhatItPaints_data() { PanelStates::addRows(); }
    void tellsWhatItPaints() {
        QFETCH(const PanelState*, state);
        Shown shown;
        shown.panel.daypart.useAuto();
        state->make(shown.panel);
        shown.settle();
        QSet<QAccessibleInterface*> compared;
        for (const double share : {0.0, 0.5, 1.0}) {
            shown.scrollBar()->setValue(qRound(shown.scrollBar()->maximum() * share));
            QCoreApplication::processEvents();
            const auto tree = shown.tree();
            const QString disagreements = tree.disagreements(shown.panel.daypart.palette);
            QVERIFY2(disagreements.isEmpty(), qPrintable(disagreements));
            for (const auto& node : tree.leavesInView()) {
                compared += node.interface;
            }
        }
        QCOMPARE(compared.size(), shown.tree().leaves().size());
    }

    void applicationListsThePanelWhileItShows() {
        Shown shown;
        auto* application = QAccessible::queryAccessibleInterface(qApp);
        QCOMPARE(application->childCount(), 1);
        QCOMPARE(application->child(0)->text(QAccessible::Name), u"vorna"_s);
        QCOMPARE(application->child(0)->role(), QAccessible::Window);
        shown.window.dismiss();
        QCOMPARE(application->childCount(), 0);
    }

    void chipsAreChoicesOfWhichOneIsMade() {
        Shown shown;
        for (const auto daypart : DaypartInfo::allCases) {
            const auto chip = shown.control(DaypartInfo::title(daypart));
            QCOMPARE(chip.interface->role(), QAccessible::RadioButton);
            QCOMPARE(bool(chip.state().checked), daypart == Daypart::night);
        }
    }

    void keysAreTold() {
        Shown shown;
        auto* const actions = shown.control(u"Quit vorna"_s).interface->actionInterface();
        QCOMPARE(actions->keyBindingsForAction(QAccessibleActionInterface::pressAction()), QStringList{u"Ctrl+Q"_s});
    }

    void pressKeyAndClickDoTheSame_data() {
        QTest::addColumn<QString>("name");
        for (const auto& control : Shown{}.tree().controls()) {
            QTest::newRow(qPrintable(control.name)) << control.name;
        }
    }
    void pressKeyAndClickDoTheSame() {
        QFETCH(QString, name);
        const auto click = effectsOf(name, [](Shown&, const AccessibleNode& control) {
            QTest::mouseClick(qobject_cast<QWidget*>(control.interface->object()), Qt::LeftButton);
        });
        QVERIFY(!click.isEmpty());
        QCOMPARE(effectsOf(name, [](Shown&, const AccessibleNode& control) { control.press(); }), click);
        for (const auto key : {Qt::Key_Space, Qt::Key_Return}) {
            const auto press = [key](Shown& shown, const AccessibleNode& control) {
                if (shown.reachByTab(control)) {
                    QTest::keyClick(QApplication::focusWidget(), key);
                }
            };
            QCOMPARE(effectsOf(name, press), click);
        }
    }

    void twoQuickPressesAreTwo() {
        Shown shown;
        const auto button = shown.control(u"Test notification"_s);
        button.press();
        button.press();
        QTRY_COMPARE(shown.panel.notifications.posted.size(), 2);
    }

    void disabledActionsAreNotPressed() {
        Shown shown;
        const auto calls = shown.panel.tool.calls.size();
        shown.panel.status.cliBusy = true;
        shown.settle();
        for (const auto& name : {u"Desk backup now"_s, u"Sync via iCloud"_s}) {
            auto* const actions = shown.control(name).interface->actionInterface();
            actions->doAction(QAccessibleActionInterface::pressAction());
        }
        shown.panel.status.cliBusy = false;
        shown.settle();
        QCOMPARE(shown.panel.tool.calls.size(), calls);
    }

    void tabBringsEveryControlIntoView() {
        Shown shown;
        QVERIFY(shown.scrollBar()->maximum() > 0);
        QStringList reached;
        QStringList expected;
        for (const auto& control : shown.tree().controls()) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            const auto focused = shown.tree().focused();
            QVERIFY(focused);
            QVERIFY2(shown.window.rect().contains(focused->place), qPrintable(focused->name));
            reached += focused->name;
            expected += control.name;
        }
        QCOMPARE(reached, expected);
    }
};

QTEST_MAIN(TestPanelAccessibility)
#include "TestPanelAccessibility.moc"
