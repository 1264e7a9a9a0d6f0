#include "support/ContrastTable.h"
#include "support/PaintRecord.h"
#include "ui/menubar/PanelFixture.h"
#include "ui/settings/FormColours.h"
#include "ui/settings/SettingsFixture.h"
#include "ui/settings/SettingsView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QTabBar>

using namespace Qt::StringLiterals;
using Sights = QList<ContrastTable::Sight>;

namespace {

constexpr auto documentPath = VORNA_ROOT "/docs/accessibility.md";
constexpr auto begin = "<!-- computed by TestContrast -->\n"_L1;
constexpr auto end = "<!-- end of what is computed -->\n"_L1;

struct Role final {
    const char* name;
    QRgb DaypartPalette::* colour;
};

constexpr std::array roles{
    Role{"text", &DaypartPalette::text},
    Role{"textMuted", &DaypartPalette::textMuted},
    Role{"background", &DaypartPalette::background},
    Role{"surface", &DaypartPalette::surface},
    Role{"accent", &DaypartPalette::accent},
    Role{"warning", &DaypartPalette::warning},
    Role{"danger", &DaypartPalette::danger},
};

ContrastTable::Appearance appearanceOf(Daypart daypart) {
    ContrastTable::Appearance appearance{DaypartInfo::title(daypart), {}};
    for (const auto& role : roles) {
        appearance.roles += {QString::fromLatin1(role.name), QColor{DaypartPalette::of(daypart).*role.colour}};
    }
    return appearance;
}

QPalette desktopPalette(QRgb window, QRgb text) {
    QPalette palette{QColor{window}};
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Highlight, QColor{53, 132, 228});
    return palette;
}

const std::array desktops{std::pair{u"Light"_s, desktopPalette(0xfff1f1f2, 0xff1d1d1f)},
                          std::pair{u"Dark"_s, desktopPalette(0xff242428, 0xfff2f2f3)}};

ContrastTable::Appearance appearanceOf(const QString& title, const QPalette& palette) {
    QApplication::setPalette(palette);
    const SettingsFixture fixture;
    const FormColours colours{fixture.daypart};
    return {title,
            {{u"text"_s, colours.of(ColourRole::text)},
             {u"secondary text"_s, colours.of(ColourRole::textMuted)},
             {u"accent"_s, colours.of(ColourRole::accent)},
             {u"card"_s, colours.of(ColourRole::surface)},
             {u"window"_s, colours.of(ColourRole::background)}}};
}

/// Which texts count: of the button that a text stands on, or of none.
using Filter = bool (*)(const QAbstractButton*);

bool isUsable(const QAbstractButton* button) {
    return button == nullptr || button->isEnabled();
}

bool isDisabled(const QAbstractButton* button) {
    return !isUsable(button);
}

bool isPressed(const QAbstractButton* button) {
    return button != nullptr && button->isDown();
}

Sights sightsIn(QWidget& window, Filter counts) {
    const auto buttons = window.findChildren<QAbstractButton*>();
    Sights found = ContrastTable::sightsIn(window);
    found.removeIf([&](const ContrastTable::Sight& sight) {
        const auto button = std::ranges::find_if(buttons, [&](const QAbstractButton* one) {
            return one->isVisibleTo(&window) && (one->accessibleName() == sight.name || one->text() == sight.name);
        });
        return !counts(button == buttons.end() ? nullptr : *button);
    });
    return found;
}

/// A panel in one daypart after another.
struct Panel final {
    PanelFixture fixture;
    std::unique_ptr<MenuBarView> view = fixture.makeView();

    QList<Sights> looks(Filter counts) {
        QList<Sights> found;
        for (const auto daypart : DaypartInfo::allCases) {
            fixture.daypart.set(daypart);
            (void)drawn(*view);
            for (auto* button : view->findChildren<QAbstractButton*>()) {
                button->setDown(counts == isPressed);
            }
            found += sightsIn(*view, counts);
            alignDayparts(found.last(), DaypartInfo::title(daypart));
        }
        return found;
    }

    /// The chosen daypart is another one in each look: it comes last, and the others keep their order.
    static void alignDayparts(Sights& sights, const QString& chosen) {
        const auto last = std::ranges::find(sights, chosen, &ContrastTable::Sight::name);
        if (last == sights.end()) {
            return;
        }
        last->name = u"(the chosen daypart)"_s;
        std::rotate(last, std::next(last), sights.end());
        for (const auto daypart : DaypartInfo::allCases) {
            const auto other = std::ranges::find(sights, DaypartInfo::title(daypart), &ContrastTable::Sight::name);
            if (other != sights.end()) {
                other->name = u"(another daypart)"_s;
            }
        }
    }
};

QString panelTable() {
    QList<ContrastTable::Appearance> dayparts;
    for (const auto daypart : DaypartInfo::allCases) {
        dayparts += appearanceOf(daypart);
    }
    ContrastTable table{dayparts};
    Panel panel;
    auto& status = panel.fixture.status;
    table.add(u"at rest"_s, panel.looks(isUsable));
    panel.fixture.fill();
    status.hostDisk = u"71%"_s;
    status.services = QList<StatusModel::ServiceRow>{};
    status.lastError = u"The request timed out."_s;
    table.add(u"at rest"_s, panel.looks(isUsable));
    status.services = PanelFixture::services(1);
    status.cliMessage = u"done in 2 s"_s;
    table.add(u"at rest"_s, panel.looks(isUsable));
    table.add(u"pressed"_s, panel.looks(isPressed));
    status.cliBusy = true;
    table.add(u"at rest"_s, panel.looks(isUsable));
    table.add(u"disabled"_s, panel.looks(isDisabled));
    return table.markdown();
}

/// The settings on each desktop, one tab after another.
struct Settings final {
    SettingsFixture fixture;

    QList<Sights> looks() {
        QList<Sights> found;
        for (const auto& [title, palette] : desktops) {
            QApplication::setPalette(palette);
            SettingsView view{fixture.status, fixture.daypart, fixture.newPermissions(), {}};
            view.resize(900, 1600);
            view.show();
            found += Sights{};
            for (int tab = 0; tab < view.findChild<QTabBar*>()->count(); ++tab) {
                view.findChild<QTabBar*>()->setCurrentIndex(tab);
                QCoreApplication::processEvents();
                found.last() += ContrastTable::sightsIn(view);
            }
        }
        return found;
    }
};

QString settingsTable() {
    QList<ContrastTable::Appearance> appearances;
    for (const auto& [title, palette] : desktops) {
        appearances += appearanceOf(title, palette);
    }
    ContrastTable table{appearances};
    Settings settings;
    table.add(u"at rest"_s, settings.looks());
    settings.fixture.status.bridgeOnline = true;
    settings.fixture.daypart.set(Daypart::day);
    table.add(u"at rest"_s, settings.looks());
    return table.markdown();
}

}

class TestContrast final : public QObject {
    Q_OBJECT

private slots:
    void knownPairsHaveTheirRatios() {
        const auto ratioOf = [](const QColor& ink, const QColor& ground) {
            ContrastTable table{{{u"One"_s, {}}}};
            table.add({}, {{{u"text"_s, ink, ground}}});
            return table.markdown().section(u'|', -2, -2).trimmed();
        };
        QCOMPARE(ratioOf(Qt::black, Qt::white), u"21.00"_s);
        QCOMPARE(ratioOf(Qt::white, Qt::white), u"**1.00**"_s);
        QCOMPARE(ratioOf(QColor{0x76, 0x76, 0x76}, Qt::white), u"4.54"_s);
        QCOMPARE(ratioOf(QColor{0x77, 0x77, 0x77}, Qt::white), u"**4.47**"_s);
    }

    void tintsAreSeenOverWhatIsBehindThem() {
        struct Tinted final : QWidget {
            void paintEvent(QPaintEvent* /*event*/) override {
                QPainter painter{this};
                painter.fillRect(rect(), Qt::white);
                painter.fillRect(rect(), QColor{0, 0, 0, 51});
                painter.setOpacity(0.5);
                painter.setPen(Qt::black);
                painter.drawText(rect(), Qt::AlignCenter, u"text"_s);
            }
        } widget;
        widget.resize(100, 40);
        const PaintRecord painted{widget};
        QCOMPARE(painted.texts().size(), 1);
        QCOMPARE(painted.texts().constFirst().ground, QColor(204, 204, 204));
        QCOMPARE(painted.texts().constFirst().ink.red(), 102);
    }

    void theDocumentHasTheRatiosOfToday() {
        const QString computed = u"### The panel\n\n"_s + panelTable() + u"\n### The settings\n\n"_s + settingsTable();
        QFile file{QString::fromUtf8(documentPath)};
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString document = QString::fromUtf8(file.readAll());
        const auto first = document.indexOf(begin) + begin.size();
        const auto last = document.indexOf(end);
        if (document.mid(first, last - first) != computed) {
            fputs(qPrintable(computed), stdout);
            QFAIL("what is computed in docs/accessibility.md is to be replaced by what is printed above");
        }
    }
};

QTEST_MAIN(TestContrast)
#include "TestContrast.moc"
