#include "support/AccessibleTree.h"
#include "ui/kit/ApplicationAccessible.h"
#include "ui/settings/SettingsFixture.h"
#include "ui/settings/SettingsView.h"

#include <QApplication>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QtTest>

using namespace Qt::StringLiterals;
using Status = PermissionCenter::Item::Status;

namespace {

enum Tab { bridge, permissions, daypart, about };

constexpr QSize usualSize{520, 680};
constexpr QSize smallestSize{440, 380};

struct Shown final {
    SettingsFixture settings;
    QPointer<PermissionCenter> center;
    std::unique_ptr<SettingsView> view;

    explicit Shown(const QSize& size = usualSize) {
        auto made = settings.newPermissions();
        center = made.get();
        view = std::make_unique<SettingsView>(
            settings.status, settings.daypart, std::move(made),
            SettingsLinks{.openPage = [this](const QUrl& page) { settings.openedPages += page; },
                          .openPane = [this](const QUrl& pane) { settings.openedPanes += pane; }});
        view->setWindowTitle(u"vorna Settings"_s);
        view->resize(size);
    }
    [[nodiscard]] QTabBar& tabs() const { return *view->findChild<QTabBar*>(); }
    [[nodiscard]] bool show(int tab) {
        view->show();
        tabs().setCurrentIndex(tab);
        return QTest::qWaitForWindowActive(view.get());
    }
    void scrollTo(double share) {
        for (auto* area : view->findChildren<QScrollArea*>()) {
            area->verticalScrollBar()->setValue(qRound(area->verticalScrollBar()->maximum() * share));
        }
        QCoreApplication::processEvents();
    }
    [[nodiscard]] AccessibleTree tree() const { return AccessibleTree{*view}; }

    /// Everything that can come of a press.
    [[nodiscard]] QVariantList effects() const {
        QStringList calls;
        for (const auto& call : settings.tool.calls) {
            calls += call.arguments.join(u' ');
        }
        return {settings.openedPages.value(0),
                settings.openedPages.size(),
                settings.openedPanes.value(0),
                settings.openedPanes.size(),
                calls,
                settings.defaults.values,
                settings.status.polling.value(),
                tabs().currentIndex()};
    }
};

void online(Shown& shown) {
    shown.settings.status.bridgeOnline = true;
    shown.settings.status.caddyDetail = u"running · 3/4 sites"_s;
    shown.settings.status.postgresDetail = u"accepting on 5432"_s;
}

void signedIn(Shown& shown) {
    online(shown);
    shown.settings.status.accountLine = u"Signed in · CTA hidden"_s;
}

void withText(Shown& shown, const QString& text) {
    shown.settings.status.caddyDetail = text;
    shown.settings.status.postgresDetail = text;
    shown.settings.status.accountLine = text;
    shown.center->items = QList<PermissionCenter::Item>{{u"one"_s, text, text, Status::granted, std::nullopt},
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
    shown.center->items = items;
}

template <Daypart choice>
void pinned(Shown& shown) {
    shown.settings.daypart.set(choice);
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
    {"bridge, offline", bridge, asItIs},
    {"bridge, online", bridge, online},
    {"bridge, signed in", bridge, signedIn},
    {"bridge, overlong texts", bridge, overlong},
    {"bridge, one long word", bridge, oneLongWord},
    {"bridge, markup", bridge, markup},
    {"bridge, empty texts", bridge, textless},
    {"permissions, as read", permissions, asItIs},
    {"permissions, every status with and without a pane", permissions, everyStatus},
    {"permissions, overlong texts", permissions, overlong},
    {"permissions, one long word", permissions, oneLongWord},
    {"permissions, markup", permissions, markup},
    {"daypart, following", daypart, asItIs},
    {"daypart, dawn", daypart, pinned<Daypart::dawn>},
    {"daypart, day", daypart, pinned<Daypart::day>},
    {"daypart, dusk", daypart, pinned<Daypart::dusk>},
    {"daypart, night", daypart, pinned<Daypart::night>},
    {"about", about, asItIs},
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
        QVERIFY(shown.show(state->tab));
        state->make(shown);
        QCoreApplication::processEvents();
        QSet<QAccessibleInterface*> compared;
        for (const double share : {0.0, 0.125, 0.25, 0.375, 0.5, 0.625, 0.75, 0.875, 1.0}) {
            shown.scrollTo(share);
            const auto tree = shown.tree();
            const QString disagreements = tree.disagreements(shown.settings.daypart.palette);
            QVERIFY2(disagreements.isEmpty(), qPrintable(disagreements));
            for (const auto& node : tree.leavesInView()) {
                compared += node.interface;
            }
        }
        QCOMPARE(compared.size(), shown.tree().leaves().size());
    }

    void chosenTabAndDaypartAreSaid() {
        Shown shown;
        QVERIFY(shown.show(daypart));
        shown.settings.daypart.set(Daypart::dusk);
        QTRY_COMPARE(chosen(shown), (QStringList{u"Daypart"_s, u"Dusk"_s}));
        shown.tabs().setCurrentIndex(about);
        QCOMPARE(chosen(shown), QStringList{u"About"_s});
    }

    void pressKeyAndClickDoTheSame_data() {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("index");
        for (const int tab : {bridge, permissions, daypart, about}) {
            Shown shown;
            QVERIFY(shown.show(tab));
            shown.settings.daypart.set(Daypart::dusk);
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
            QTest::mouseClick(shown.view->windowHandle(), Qt::LeftButton, {}, control.place.center());
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
        QVERIFY(shown.show(daypart));
        const auto controls = shown.tree().controls();
        const auto day = std::ranges::find(controls, u"Day"_s, &AccessibleNode::name);
        QVERIFY(day->state().checked);
        QVERIFY(!shown.settings.daypart.isManual);
        day->press();
        QTRY_VERIFY(shown.settings.daypart.isManual);
        QCOMPARE(shown.settings.daypart.daypart.value(), Daypart::day);
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
        if (!shown.show(tab)) {
            return {};
        }
        const auto title = shown.tree().controls().value(index).name;
        shown.settings.daypart.set(title == DaypartInfo::title(Daypart::dusk) ? Daypart::dawn : Daypart::dusk);
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
