#include "support/AccessibleTree.h"
#include "ui/kit/ApplicationAccessible.h"
#include "ui/settings/SettingsFixture.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QtTest>

using namespace Qt::StringLiterals;
using Status = PermissionCenter::Item::Status;
using Tab = SettingsFixture::Tab;

namespace {

constexpr QSize usualSize{520, 680};
constexpr QSize smallestSize{440, 380};

struct Shown final : OpenSettings {
    explicit Shown(const QSize& size = usualSize) { view()->resize(size); }

    [[nodiscard]] bool showActive(Tab tab) const {
        show(tab);
        return QTest::qWaitForWindowActive(view());
    }
    void scrollTo(double share) const {
        for (auto* area : view()->findChildren<QScrollArea*>()) {
            area->verticalScrollBar()->setValue(qRound(area->verticalScrollBar()->maximum() * share));
        }
        QCoreApplication::processEvents();
    }
    [[nodiscard]] AccessibleTree tree() const { return AccessibleTree{*view()}; }

    /// Everything that can come of a press.
    [[nodiscard]] QVariantList effects() const {
        QStringList calls;
        for (const auto& call : tool.calls) {
            calls += call.arguments.join(u' ');
        }
        return {openedPages.value(0), openedPages.size(),     openedPanes.value(0), openedPanes.size(), calls,
                defaults.values,      status.polling.value(), tabs().currentIndex()};
    }
};

void online(Shown& shown) {
    shown.status.bridgeOnline = true;
    shown.status.caddyDetail = u"running · 3/4 sites"_s;
    shown.status.postgresDetail = u"accepting on 5432"_s;
}

void signedIn(Shown& shown) {
    online(shown);
    shown.status.accountLine = u"Signed in · CTA hidden"_s;
}

void withText(Shown& shown, const QString& text) {
    shown.status.caddyDetail = text;
    shown.status.postgresDetail = text;
    shown.status.accountLine = text;
    shown.permissionCenter->items =
        QList<PermissionCenter::Item>{{u"one"_s, text, text, Status::granted, std::nullopt},
                                      {u"two"_s, text, text, Status::denied, QUrl{u"pane:1"_s}}};
}

void everyStatus(Shown& shown) {
    QList<PermissionCenter::Item> items;
    for (const auto status : {Status::granted, Status::denied, Status::notDetermined, Status::unknown}) {
        for (const auto& link : {std::optional<QUrl>{}, std::optional{QUrl{u"pane:2"_s}}}) {
            const auto name = QString::number(items.size());
            items += {name, u"Permission "_s + name, u"What it is for"_s, status, link};
        }
    }
    shown.permissionCenter->items = items;
}

template <Daypart choice>
void pinned(Shown& shown) {
    shown.daypart.set(choice);
}

struct State final {
    const char* name;
    Tab tab;
    void (*make)(Shown&);
};

constexpr auto asItIs = [](Shown&) {};
constexpr auto overlong = [](Shown& shown) {
    withText(shown, u"refused on every address that was tried "_s.repeated(60));
};
constexpr auto oneLongWord = [](Shown& shown) { withText(shown, QString{20'000, u'w'}); };
constexpr auto markup = [](Shown& shown) { withText(shown, u"<b>R&D</b> &amp; more\nsecond line"_s); };
constexpr auto textless = [](Shown& shown) { withText(shown, {}); };

constexpr State states[]{
    {"bridge, offline", Tab::bridge, asItIs},
    {"bridge, online", Tab::bridge, online},
    {"bridge, signed in", Tab::bridge, signedIn},
    {"bridge, overlong texts", Tab::bridge, overlong},
    {"bridge, one long word", Tab::bridge, oneLongWord},
    {"bridge, markup", Tab::bridge, markup},
    {"bridge, empty texts", Tab::bridge, textless},
    {"permissions, as read", Tab::permissions, asItIs},
    {"permissions, every status with and without a pane", Tab::permissions, everyStatus},
    {"permissions, overlong texts", Tab::permissions, overlong},
    {"permissions, one long word", Tab::permissions, oneLongWord},
    {"permissions, markup", Tab::permissions, markup},
    {"daypart, following", Tab::daypart, asItIs},
    {"daypart, dawn", Tab::daypart, pinned<Daypart::dawn>},
    {"daypart, day", Tab::daypart, pinned<Daypart::day>},
    {"daypart, dusk", Tab::daypart, pinned<Daypart::dusk>},
    {"daypart, night", Tab::daypart, pinned<Daypart::night>},
    {"about", Tab::about, asItIs},
};

QPalette appearance(QRgb window, QRgb text) {
    QPalette palette{QColor{window}};
    palette.setColor(QPalette::WindowText, text);
    return palette;
}

}

Q_DECLARE_METATYPE(const State*)

class TestSettingsAccessibility final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { ApplicationAccessible::install(); }
    void cleanup() { QApplication::setPalette(m_palette); }

    void tellsWhatItPaints_data() {
        QTest::addColumn<const State*>("state");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QPalette>("palette");
        for (const auto& state : states) {
            QTest::addRow("%s", state.name) << &state << usualSize << appearance(0xfff1f1f2, 0xff1d1d1f);
            QTest::addRow("%s, small and dark", state.name)
                << &state << smallestSize << appearance(0xff242428, 0xfff2f2f3);
        }
    }
    void tellsWhatItPaints() {
        QFETCH(const State*, state);
        QFETCH(QSize, size);
        QFETCH(QPalette, palette);
        QApplication::setPalette(palette);
        Shown shown{size};
        QVERIFY(shown.showActive(state->tab));
        state->make(shown);
        for (int turn = 0; turn < 4; ++turn) { // announced, rendered, laid out
            QCoreApplication::processEvents();
        }
        QSet<QAccessibleInterface*> compared;
        for (const double share : {0.0, 0.125, 0.25, 0.375, 0.5, 0.625, 0.75, 0.875, 1.0}) {
            shown.scrollTo(share);
            const auto tree = shown.tree();
            const QString disagreements = tree.disagreements(shown.daypart.palette);
            QVERIFY2(disagreements.isEmpty(), qPrintable(disagreements));
            for (const auto& node : tree.leavesInView()) {
                compared += node.interface;
            }
        }
        QCOMPARE(compared.size(), shown.tree().leaves().size());
    }

    void chosenTabAndDaypartAreSaid() {
        Shown shown;
        QVERIFY(shown.showActive(Tab::daypart));
        shown.daypart.set(Daypart::dusk);
        QTRY_COMPARE(chosen(shown), (QStringList{u"Daypart"_s, u"Dusk"_s}));
        shown.show(Tab::about);
        QCOMPARE(chosen(shown), QStringList{u"About"_s});
    }

    void pressKeyAndClickDoTheSame_data() {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("index");
        for (const int tab : {0, 1, 2, 3}) {
            Shown shown;
            QVERIFY(shown.showActive(Tab{tab}));
            shown.daypart.set(Daypart::dusk);
            QCoreApplication::processEvents();
            const auto controls = shown.tree().controls();
            for (int i = 0; i < controls.size(); ++i) {
                if (i != tab) {
                    QTest::addRow("%d: %s", tab, qPrintable(controls.at(i).name)) << tab << i;
                }
            }
        }
    }
    void pressKeyAndClickDoTheSame() {
        const auto click = effectsOf([](Shown& shown, const AccessibleNode& control) {
            QTest::mouseClick(shown.view()->windowHandle(), Qt::LeftButton, {}, control.place.center());
            return true;
        });
        QVERIFY(!click.isEmpty());
        QCOMPARE(effectsOf([](Shown&, const AccessibleNode& control) { return control.press(), true; }), click);
        QCOMPARE(effectsOf([](Shown& shown, const AccessibleNode& control) {
                     return reachByKeys(shown, control) && (QTest::keyClick(focused(), Qt::Key_Space), true);
                 }),
                 click);
    }

    void choiceThatIsMadeByTheClockCanBePinned() {
        Shown shown;
        QVERIFY(shown.showActive(Tab::daypart));
        const auto controls = shown.tree().controls();
        const auto day = std::ranges::find(controls, u"Day"_s, &AccessibleNode::name);
        QVERIFY(day->state().checked);
        QVERIFY(!shown.daypart.isManual);
        day->press();
        QTRY_VERIFY(shown.daypart.isManual);
        QCOMPARE(shown.daypart.daypart.value(), Daypart::day);
        QVERIFY(day->state().checked);
    }

private:
    static QWidget* focused() { return QApplication::focusWidget(); }

    static QStringList chosen(const Shown& shown) {
        QStringList names;
        for (const auto& control : shown.tree().controls()) {
            if (control.state().checked || control.state().selected) {
                names += control.name;
            }
        }
        return names;
    }

    /// What comes of one way to press the row's control of a fresh window; nothing where that changes nothing.
    template <typename Way>
    static QVariantList effectsOf(Way way) {
        const auto tab = *static_cast<const int*>(QTest::qData("tab", QMetaType::Int));
        const auto index = *static_cast<const int*>(QTest::qData("index", QMetaType::Int));
        Shown shown;
        if (!shown.showActive(Tab{tab})) {
            return {};
        }
        const auto title = shown.tree().controls().value(index).name;
        shown.daypart.set(title == DaypartInfo::title(Daypart::dusk) ? Daypart::dawn : Daypart::dusk);
        QCoreApplication::processEvents();
        const auto before = shown.effects();
        if (!way(shown, shown.tree().controls().at(index))) {
            return {};
        }
        return QTest::qWaitFor([&] { return shown.effects() != before; }) ? shown.effects() : QVariantList{};
    }

    /// The Tab key goes from one group of choices to the next, the arrows from one choice to the next.
    static bool reachByKeys(const Shown& shown, const AccessibleNode& control) {
        const auto isThere = [&] { return bool(control.state().focused); };
        const auto most = shown.tree().controls().size();
        const auto go = [&](Qt::Key key, const auto& isEnough) {
            for (qsizetype i = 0; i < most && !isEnough(); ++i) {
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
        return isThere();
    }

    const QPalette m_palette = QApplication::palette();
};

QTEST_MAIN(TestSettingsAccessibility)
#include "TestSettingsAccessibility.moc"
