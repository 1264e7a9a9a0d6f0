#include "support/PaintRecord.h"
#include "ui/kit/Button.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelStates.h"
#include "ui/settings/FormColours.h"
#include "ui/settings/SettingsFixture.h"
#include "ui/settings/SettingsView.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QTabBar>

#include <cmath>

using namespace Qt::StringLiterals;
using enum ColourRole;

namespace {

constexpr auto documentPath = VORNA_ROOT "/docs/accessibility.md";
constexpr auto begin = "<!-- computed by TestContrast -->\n"_L1;
constexpr auto end = "<!-- end of what is computed -->\n"_L1;
constexpr double sufficient = 4.5;
constexpr float pressedText = 0.7F;

constexpr std::array roleNames{"background", "surface", "raised surface", "border",  "text",
                               "muted text", "accent",  "success",        "warning", "danger"};

/// A text in one colour on another, which may let a third shine through.
struct Pair final {
    const char* texts;
    Tint ink;
    Tint ground;
    ColourRole below = background;
};

constexpr std::array panelPairs{
    Pair{"title, figures, the footer's rows", {text}, {surface}},
    Pair{"version, titles of figures, other dayparts", {textMuted}, {surface}},
    Pair{"values, services, rows of the menu", {text}, {background}},
    Pair{"headings, labels, details, outcomes", {textMuted}, {background}},
    Pair{"values that are not ok", {warning}, {background}},
    Pair{"the last error", {danger}, {background}},
    Pair{"time of the last poll", {textMuted, 0.8F}, {background}},
    Pair{"“Auto”", {accent}, {background}},
    Pair{"quick actions, the chosen daypart", {background}, {accent}},
    Pair{"quick actions, pressed", {background}, {accent, 0.8F}},
    Pair{"the chosen daypart, pressed", {background}, {accent, 0.9F}},
    Pair{"other dayparts, pressed", {textMuted, pressedText}, {surface, pressedText}},
    Pair{"“Auto”, pressed", {accent, pressedText}, {background}},
    Pair{"rows of the menu, pressed", {text}, {accent, 0.15F}},
    Pair{"the footer's rows, pressed", {text}, {accent, 0.15F}, surface},
    Pair{"rows of the menu, disabled", {text, Button::disabledOpacity}, {background}},
};

constexpr std::array settingsPairs{
    Pair{"headings", {text}, {background}},
    Pair{"labels and values", {text}, {surface}},
    Pair{"explanations, values that are not known", {textMuted}, {surface}},
    Pair{"“Open System Settings”", {accent}, {surface}},
};

struct Seen final {
    QColor ink;
    QColor ground;
};

/// What is seen of a colour that is laid over another, opaque one.
QColor over(const QColor& upper, const QColor& lower) {
    const float share = upper.alphaF();
    const auto mix = [share](float above, float below) { return above * share + below * (1 - share); };
    return QColor::fromRgbF(mix(upper.redF(), lower.redF()), mix(upper.greenF(), lower.greenF()),
                            mix(upper.blueF(), lower.blueF()));
}

Seen seen(const Pair& pair, const Colours& colours) {
    const QColor ground = over(colours.of(pair.ground), colours.of(pair.below));
    return {over(colours.of(pair.ink), ground), ground};
}

bool isAlike(const QColor& one, const QColor& other) {
    constexpr int rounding = 2;
    return std::abs(one.red() - other.red()) <= rounding && std::abs(one.green() - other.green()) <= rounding &&
           std::abs(one.blue() - other.blue()) <= rounding;
}

QString ratio(const Seen& seen) {
    constexpr double hundred = 100;
    const double exact = FormColours::contrast(seen.ink, seen.ground);
    const QString shown = QString::number(std::floor(exact * hundred) / hundred, 'f', 2);
    return exact < sufficient ? u"**"_s + shown + u"**"_s : shown;
}

/// The pairs that texts of these widgets are painted in, by their places in the table; a text in no pair comes second.
std::pair<QSet<int>, QStringList> painted(QWidget& window, const auto& pairs, const Colours& colours) {
    QSet<int> found;
    QStringList others;
    const PaintRecord record{window};
    for (const auto& text : record.texts()) {
        const auto* widget = window.childAt(text.seen.center().toPoint());
        if (qobject_cast<const TextLabel*>(widget) == nullptr && qobject_cast<const Button*>(widget) == nullptr) {
            continue; // the desktop's style paints it
        }
        const QColor ground = record.groundOf(text);
        const auto pair = std::ranges::find_if(pairs, [&](const Pair& one) {
            const auto wanted = seen(one, colours);
            return isAlike(wanted.ground, ground) && isAlike(wanted.ink, over(text.colour, ground));
        });
        if (pair == pairs.end()) {
            others += text.string;
        } else {
            found += static_cast<int>(pair - pairs.begin());
        }
    }
    return {found, others};
}

/// Shows the settings in the colours of a light or a dark desktop.
struct Settings final {
    SettingsFixture fixture;
    FormColours colours{fixture.daypart};

    explicit Settings(bool isDark) {
        QPalette palette{QColor{isDark ? 0xff242428 : 0xfff1f1f2}};
        palette.setColor(QPalette::WindowText, isDark ? 0xfff2f2f3 : 0xff1d1d1f);
        palette.setColor(QPalette::Highlight, QColor{53, 132, 228});
        QApplication::setPalette(palette);
    }
};

void addRow(QString& table, const Pair& pair, const QStringList& ratios) {
    const auto name = [](const Tint& tint) { return QString::fromLatin1(roleNames.at(std::size_t(tint.role))); };
    const auto tinted = [&name](const Tint& tint) {
        return tint.opacity < 1 ? name(tint) + u" %1 %"_s.arg(100 * tint.opacity) : name(tint);
    };
    const QString below = pair.below == background ? QString{} : u" over "_s + name({pair.below});
    table += u"| %1 | %2 | %3 | %4 |\n"_s.arg(QString::fromUtf8(pair.texts), tinted(pair.ink),
                                              tinted(pair.ground) + below, ratios.join(u" | "_s));
}

QString computed() {
    PanelFixture panel;
    const DaypartColours colours{panel.daypart};
    QString table = u"### The panel\n\n| Texts | Ink | Ground | Dawn | Day | Dusk | Night |\n"
                    u"|---|---|---|---:|---:|---:|---:|\n"_s;
    for (const auto& pair : panelPairs) {
        QStringList ratios;
        for (const auto daypart : DaypartInfo::allCases) {
            panel.daypart.set(daypart);
            ratios += ratio(seen(pair, colours));
        }
        addRow(table, pair, ratios);
    }
    table += u"\n### The settings\n\n| Texts | Ink | Ground | Light | Dark |\n|---|---|---|---:|---:|\n"_s;
    for (const auto& pair : settingsPairs) {
        addRow(table, pair, {ratio(seen(pair, Settings{false}.colours)), ratio(seen(pair, Settings{true}.colours))});
    }
    return table;
}

}

class TestContrast final : public QObject {
    Q_OBJECT

private slots:
    void ratiosAreThoseOfKnownPairs() {
        QCOMPARE(ratio({Qt::black, Qt::white}), u"21.00"_s);
        QCOMPARE(ratio({Qt::white, Qt::white}), u"**1.00**"_s);
        QCOMPARE(ratio({QColor{0x76, 0x76, 0x76}, Qt::white}), u"4.54"_s);
        QCOMPARE(ratio({QColor{0x77, 0x77, 0x77}, Qt::white}), u"**4.47**"_s);
    }

    void tableHasEveryTextOfThePanel() {
        QSet<int> used;
        for (const auto daypart : DaypartInfo::allCases) {
            PanelFixture panel;
            const DaypartColours colours{panel.daypart};
            auto view = panel.makeView();
            view->show();
            QVERIFY(panel.settle());
            for (const auto state : {PanelStates::healthy, PanelStates::unreachable}) {
                for (const bool isBusy : {true, false}) {
                    state(panel);
                    panel.daypart.set(daypart);
                    panel.status.cliBusy = isBusy;
                    (void)drawn(*view);
                    const auto [found, others] = painted(*view, panelPairs, colours);
                    QVERIFY2(others.isEmpty(), qPrintable(others.join(u'\n')));
                    used |= found;
                }
            }
            for (auto* button : view->findChildren<Button*>()) {
                button->setDown(true);
            }
            const auto [found, others] = painted(*view, panelPairs, colours);
            QVERIFY2(others.isEmpty(), qPrintable(others.join(u'\n')));
            used |= found;
        }
        QCOMPARE(used.size(), panelPairs.size());
    }

    void tableHasEveryTextOfTheSettingsButTheStyles() {
        for (const bool isDark : {false, true}) {
            Settings settings{isDark};
            SettingsView view{settings.fixture.status, settings.fixture.daypart, settings.fixture.newPermissions(), {}};
            view.resize(900, 1600);
            view.show();
            QSet<int> used;
            for (int tab = 0; tab < view.findChild<QTabBar*>()->count(); ++tab) {
                view.findChild<QTabBar*>()->setCurrentIndex(tab);
                QCoreApplication::processEvents();
                const auto [found, others] = painted(view, settingsPairs, settings.colours);
                QVERIFY2(others.isEmpty(), qPrintable(others.join(u'\n')));
                used |= found;
            }
            QCOMPARE(used.size(), settingsPairs.size());
        }
    }

    void documentHasTheRatiosOfToday() {
        QFile file{QString::fromUtf8(documentPath)};
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString document = QString::fromUtf8(file.readAll());
        const auto first = document.indexOf(begin) + begin.size();
        if (document.mid(first, document.indexOf(end) - first) != computed()) {
            fputs(qPrintable(computed()), stdout);
            QFAIL("what is computed in docs/accessibility.md is to be replaced by what is printed above");
        }
    }
};

QTEST_MAIN(TestContrast)
#include "TestContrast.moc"
