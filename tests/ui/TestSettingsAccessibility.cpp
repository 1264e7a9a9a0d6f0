#include "support/AccessibleTree.h"
#include "ui/kit/ApplicationAccessible.h"
#include "ui/settings/SettingsFixture.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace SettingsStates;
using Tab = SettingsFixture::Tab;

namespace {

struct Shown final : OpenSettings {
    [[nodiscard]] bool showActive(Tab tab) const {
        show(tab);
        return QTest::qWaitForWindowActive(view());
    }
    [[nodiscard]] AccessibleTree tree() const { return AccessibleTree{*view()}; }

    /// Everything that can come of a press.
    [[nodiscard]] QStringList state() const {
        QStringList found{u"tab %1"_s.arg(tabs().currentIndex()),
                          daypart.isManual ? DaypartInfo::title(daypart.daypart) + u" pinned" : u"clock followed"_s};
        for (const auto& url : openedPages + openedPanes) {
            found += url.toString();
        }
        for (const auto& call : tool.calls) {
            found += call.arguments.join(u' ');
        }
        return hasPolled() ? found << u"polling"_s : found;
    }
};

void say(OpenSettings& settings, const QString& text) {
    settings.status.caddyDetail = text;
    settings.status.postgresDetail = text;
    settings.status.accountLine = text;
    settings.permissionCenter->items = QList<Item>{{u"one"_s, text, text, Status::granted, std::nullopt},
                                                   {u"two"_s, text, text, Status::denied, QUrl{u"pane:1"_s}}};
}

/// What comes of each control of a tab, in their order.
const QStringList effects[]{
    u"|tab 1|tab 2|tab 3|polling|auth login --surface macos --yes"_s.split(u'|'),
    u"tab 0||tab 2|tab 3|pane:0|pane:1|pane:2|pane:3|pane:4"_s.split(u'|'),
    u"tab 0|tab 1||tab 3|Dawn pinned|Day pinned|Dusk pinned|Night pinned|clock followed"_s.split(u'|'),
    u"tab 0|tab 1|tab 2||https://vorna.localhost/dashboard|https://vorna.localhost/dashboard/agents|"
    "https://vorna.localhost/download"_s.split(u'|'),
};

}

class TestSettingsAccessibility final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { ApplicationAccessible::install(); }

    void tellsWhatItPaintsWhateverTheTexts_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("overlong") << u"refused on every address that was tried "_s.repeated(60);
        QTest::newRow("one long word") << QString{20'000, u'w'};
        QTest::newRow("markup") << u"<b>R&D</b> &amp; more\nsecond line"_s;
        QTest::newRow("empty") << QString{};
    }
    void tellsWhatItPaintsWhateverTheTexts() {
        QFETCH(QString, text);
        Shown shown;
        shown.view()->resize(440, 380);
        for (const auto tab : {Tab::bridge, Tab::permissions, Tab::daypart, Tab::about}) {
            QVERIFY(shown.showActive(tab));
            say(shown, text);
            shown.settle();
            QSet<QAccessibleInterface*> compared;
            for (int part = 0; part <= 8; ++part) {
                for (auto* area : shown.view()->findChildren<QScrollArea*>()) {
                    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum() * part / 8);
                }
                shown.settle();
                const auto tree = shown.tree();
                const QString disagreements = tree.disagreements(shown.daypart.palette);
                QVERIFY2(disagreements.isEmpty(), qPrintable(disagreements));
                for (const auto& node : tree.leavesInView()) {
                    compared += node.interface;
                }
            }
            QCOMPARE(compared.size(), shown.tree().leaves().size());
        }
    }

    void saysWhatIsChosenAndWhatFor() {
        Shown shown;
        QVERIFY(shown.showActive(Tab::daypart));
        shown.daypart.set(Daypart::dusk);
        shown.settle();
        QStringList names;
        for (const auto& control : shown.tree().controls()) {
            if (control.state().checked || control.state().selected) {
                names += control.name;
            }
        }
        QCOMPARE(names, (QStringList{u"Daypart"_s, u"Dusk"_s}));
        const auto* const focused = QAccessible::queryAccessibleInterface(&shown.tabs())->focusChild();
        QVERIFY(focused != nullptr && focused->text(QAccessible::Name) == u"Daypart"_s);
        QCOMPARE(shown.button(u"Dusk"_s)->accessibleDescription(), u"Daypart"_s);
        shown.show(Tab::permissions);
        QCOMPARE(shown.button(u"Open System Settings"_s, 1)->accessibleDescription(), u"Accessibility"_s);
    }

    void clickPressAndKeysDoWhatIsExpected_data() {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("effect");
        for (int tab = 0; tab < 4; ++tab) {
            for (int index = 0; index < effects[tab].size(); ++index) {
                const auto& effect = effects[tab].at(index);
                if (index != tab) {
                    QTest::addRow("%d: %s", tab, qPrintable(effect)) << tab << index << effect;
                }
            }
        }
    }
    void clickPressAndKeysDoWhatIsExpected() {
        QFETCH(QString, effect);
        QCOMPARE(effectOf([](Shown& shown, const AccessibleNode& control) {
                     QTest::mouseClick(shown.view()->windowHandle(), Qt::LeftButton, {}, control.place.center());
                 }),
                 effect);
        QCOMPARE(effectOf([](Shown&, const AccessibleNode& control) { control.press(); }), effect);
        const bool isButton = !effect.startsWith(u"tab") && !effect.endsWith(u"pinned");
        for (const auto key : isButton ? QList{Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter} : QList{Qt::Key_Space}) {
            QCOMPARE(effectOf([key](Shown& shown, const AccessibleNode& control) {
                         reachByKeys(shown, control);
                         QTest::keyClick(focused(), key);
                     }),
                     effect);
        }
    }

private:
    static QWidget* focused() { return QApplication::focusWidget(); }

    /// What comes of one way to press the row's control of a fresh window.
    template <typename Way>
    static QString effectOf(Way way) {
        const auto tab = *static_cast<const int*>(QTest::qData("tab", QMetaType::Int));
        const auto index = *static_cast<const int*>(QTest::qData("index", QMetaType::Int));
        Shown shown;
        if (!shown.showActive(Tab{tab})) {
            return u"not active"_s;
        }
        const auto title = shown.tree().controls().value(index).name;
        if (title != DaypartInfo::title(Daypart::day)) { // which the clock has chosen
            shown.daypart.set(title == DaypartInfo::title(Daypart::dusk) ? Daypart::dawn : Daypart::dusk);
        }
        shown.settle();
        const auto controls = shown.tree().controls();
        const bool hasFollow = tab != 2 || shown.daypart.isManual;
        if (controls.size() != effects[tab].size() - (hasFollow ? 0 : 1)) {
            return u"%1 controls"_s.arg(controls.size());
        }
        auto before = shown.state();
        way(shown, controls.at(index));
        (void)QTest::qWaitFor([&] { return shown.state() != before; });
        auto after = shown.state();
        for (const auto& line : before) {
            after.removeOne(line);
        }
        return after.join(u", "_s);
    }

    /// The Tab key goes from one group of choices to the next, the arrows from one choice to the next.
    static void reachByKeys(const Shown& shown, const AccessibleNode& control) {
        const auto isThere = [&] { return bool(control.state().focused); };
        const auto go = [&](Qt::Key key, const auto& isEnough) {
            for (int i = 0; i < 20 && !isEnough(); ++i) {
                QTest::keyClick(focused(), key);
            }
        };
        const auto role = control.interface->role();
        if (role == QAccessible::Button) {
            go(Qt::Key_Tab, isThere);
        } else if (role == QAccessible::RadioButton) {
            go(Qt::Key_Tab, [&] { return shown.tree().focused()->interface->role() == role; });
            go(control.place.y() > shown.tree().focused()->place.y() ? Qt::Key_Down : Qt::Key_Up, isThere);
        } else {
            go(control.place.x() > shown.tree().focused()->place.x() ? Qt::Key_Right : Qt::Key_Left, isThere);
        }
    }
};

QTEST_MAIN(TestSettingsAccessibility)
#include "TestSettingsAccessibility.moc"
