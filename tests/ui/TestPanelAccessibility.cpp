#include "support/AccessibleTree.h"
#include "ui/kit/ApplicationAccessible.h"
#include "ui/menubar/PanelStates.h"
#include "ui/menubar/PanelWindow.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

constexpr QRect anchor{300, 0, 24, 24};

struct Shown final {
    PanelFixture panel;
    PanelWindow window{panel.makeView(), panel.daypart, Qt::Popup, PanelWindow::PlacedBy::us, [] { return true; }};

    [[nodiscard]] bool show() {
        window.showAt(anchor);
        return QTest::qWaitForWindowActive(&window) && panel.settle();
    }
    void settle() {
        window.renderPending();
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QScrollBar* scrollBar() { return window.findChild<QScrollArea*>()->verticalScrollBar(); }
    void scrollTo(double share) {
        auto* bar = scrollBar();
        bar->setValue(qRound(bar->maximum() * share));
        QCoreApplication::processEvents();
    }
    [[nodiscard]] AccessibleTree tree() { return AccessibleTree{window}; }
    [[nodiscard]] AccessibleNode control(const QString& name) {
        const auto controls = tree().controls();
        const auto found = std::ranges::find(controls, name, &AccessibleNode::name);
        return found == controls.end() ? AccessibleNode{} : *found;
    }

    /// Everything that can come of a press.
    [[nodiscard]] QVariantList effects() {
        QStringList calls;
        for (const auto& call : panel.tool.calls) {
            calls += call.arguments.join(u' ');
        }
        return {panel.settingsOpened,  panel.pagesOpened.size(),    panel.pagesOpened.value(0),
                panel.quits,           panel.center.posted.size(),  calls,
                panel.defaults.values, panel.status.polling.value()};
    }
};

}

class TestPanelAccessibility final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { ApplicationAccessible::install(); }

    void tellsWhatItPaints_data() {
        QTest::addColumn<const PanelState*>("state");
        for (const auto& state : PanelStates::all) {
            QTest::newRow(state.name) << &state;
        }
    }
    void tellsWhatItPaints() {
        QFETCH(const PanelState*, state);
        Shown shown;
        QVERIFY(shown.show());
        PanelStates::healthy(shown.panel);
        state->make(shown.panel);
        shown.settle();
        QSet<QAccessibleInterface*> compared;
        for (const double share : {0.0, 0.5, 1.0}) {
            shown.scrollTo(share);
            const auto tree = shown.tree();
            const QString disagreements = tree.disagreements(shown.panel.daypart.palette);
            QVERIFY2(disagreements.isEmpty(), qPrintable(disagreements));
            for (const auto& node : tree.leavesInView()) {
                compared += node.interface;
            }
        }
        QCOMPARE(compared.size(), shown.tree().leaves().size());
    }

    void theApplicationListsThePanelWhileItShows() {
        Shown shown;
        auto* application = QAccessible::queryAccessibleInterface(qApp);
        QCOMPARE(application->childCount(), 0);
        QVERIFY(shown.show());
        QCOMPARE(application->childCount(), 1);
        QCOMPARE(application->child(0)->text(QAccessible::Name), u"vorna"_s);
        QCOMPARE(application->child(0)->role(), QAccessible::Window);
        shown.window.dismiss();
        QCOMPARE(application->childCount(), 0);
    }

    void chipsAreChoicesOfWhichOneIsMade() {
        Shown shown;
        QVERIFY(shown.show());
        shown.panel.daypart.set(Daypart::dusk);
        shown.settle();
        for (const auto daypart : DaypartInfo::allCases) {
            const auto chip = shown.control(DaypartInfo::title(daypart));
            QCOMPARE(chip.interface->role(), QAccessible::RadioButton);
            QCOMPARE(bool(chip.state().checked), daypart == Daypart::dusk);
        }
    }

    void pressKeyAndClickDoTheSame_data() {
        QTest::addColumn<QString>("name");
        Shown shown;
        QVERIFY(shown.show());
        shown.panel.fill();
        shown.panel.daypart.set(Daypart::night);
        shown.settle();
        for (const auto& control : shown.tree().controls()) {
            QTest::newRow(qPrintable(control.name)) << control.name;
        }
    }
    void pressKeyAndClickDoTheSame() {
        QFETCH(QString, name);
        const auto click = effectsOf(name, [](Shown&, const AccessibleNode& control) {
            auto* const widget = qobject_cast<QWidget*>(control.interface->object());
            QTest::mouseClick(widget, Qt::LeftButton);
            return true;
        });
        QVERIFY(!click.isEmpty());
        QCOMPARE(effectsOf(name, [](Shown&, const AccessibleNode& control) { return control.press(), true; }), click);
        for (const auto key : {Qt::Key_Space, Qt::Key_Return}) {
            QCOMPARE(effectsOf(name,
                               [key](Shown& shown, const AccessibleNode& control) {
                                   return reachByTab(shown, control) &&
                                          (QTest::keyClick(QApplication::focusWidget(), key), true);
                               }),
                     click);
        }
    }

    void twoQuickPressesAreTwo() {
        Shown shown;
        QVERIFY(shown.show());
        const auto button = shown.control(u"Test notification"_s);
        button.press();
        button.press();
        QTRY_COMPARE(shown.panel.center.posted.size(), 2);
    }

    void disabledActionsAreNotPressed() {
        Shown shown;
        QVERIFY(shown.show());
        const auto calls = shown.panel.tool.calls.size();
        shown.panel.status.cliBusy = true;
        shown.settle();
        for (const auto& name : {u"Desk backup now"_s, u"Sync via iCloud"_s}) {
            const auto control = shown.control(name);
            QVERIFY(control.interface != nullptr);
            auto* const actions = control.interface->actionInterface();
            QVERIFY(actions != nullptr);
            actions->doAction(QAccessibleActionInterface::pressAction());
        }
        shown.panel.status.cliBusy = false;
        shown.settle();
        QCOMPARE(shown.panel.tool.calls.size(), calls);
    }

    void tabBringsEveryControlIntoView() {
        Shown shown;
        QVERIFY(shown.show());
        shown.panel.fill();
        shown.settle();
        QVERIFY(shown.scrollBar()->maximum() > 0);
        QStringList reached;
        const auto controls = shown.tree().controls();
        for (qsizetype i = 0; i < controls.size(); ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            const auto focused = shown.tree().focused();
            QVERIFY(focused);
            QVERIFY2(shown.window.rect().contains(focused->place), qPrintable(focused->name));
            reached += focused->name;
        }
        QStringList expected;
        std::ranges::transform(controls, std::back_inserter(expected), &AccessibleNode::name);
        QCOMPARE(reached, expected);
    }

private:
    /// What comes of one way to press a control of a fresh panel; nothing where that changes nothing.
    template <typename Way>
    static QVariantList effectsOf(const QString& name, Way way) {
        Shown shown;
        if (!shown.show()) {
            return {};
        }
        shown.panel.fill();
        shown.panel.daypart.set(Daypart::night);
        if (name == DaypartInfo::title(Daypart::night)) {
            shown.panel.daypart.set(Daypart::dawn);
        }
        shown.settle();
        const auto before = shown.effects();
        if (!way(shown, shown.control(name))) {
            return {};
        }
        return QTest::qWaitFor([&] { return shown.effects() != before; }) ? shown.effects() : QVariantList{};
    }

    static bool reachByTab(Shown& shown, const AccessibleNode& control) {
        const auto most = shown.tree().controls().size();
        for (qsizetype i = 0; i < most && !control.state().focused; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        return control.state().focused;
    }
};

QTEST_MAIN(TestPanelAccessibility)
#include "TestPanelAccessibility.moc"
