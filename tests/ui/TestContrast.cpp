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
    constexpr float rounding = 0.01F;
    return std::abs(one.redF() - other.redF()) < rounding && std::abs(one.greenF() - other.greenF()) < rounding &&
           std::abs(one.blueF() - other.blueF()) < rounding;
}

QString ratio(const Seen& seen) {
    constexpr double hundred = 100;
    const double exact = FormColours::contrast(seen.ink, seen.ground);
    const QString shown = QString::number(std::floor(exact * hundred) / hundred, 'f', 2);
    return exact < sufficient ? u"**"_s + shown + u"**"_s : shown;
}

/// Strikes out the pairs that the window's texts are painted in; answers the texts in none, but for the style's.
QStringList strike(QSet<const Pair*>& unused, QWidget& window, const auto& pairs, const Colours& colours) {
    QStringList others;
    const PaintRecord record{window};
    for (const auto& text : record.texts()) {
        const auto* widget = window.childAt(text.seen.center().toPoint());
        if (qobject_cast<const TextLabel*>(widget) == nullptr && qobject_cast<const Button*>(widget) == nullptr) {
            continue;
        }
        const QColor ground = record.groundOf(text);
        const auto pair = std::ranges::find_if(pairs, [&](const Pair& one) {
            const auto wanted = seen(one, colours);
            return isAlike(wanted.ground, ground) && isAlike(wanted.ink, over(text.colour, ground));
        });
        others += pair == pairs.end() ? QStringList{text.string} : QStringList{};
        unused.remove(pair == pairs.end() ? nullptr : &*pair);
    }
    return others;
}

QSet<const Pair*> all(const auto& pairs) {
    QSet<const Pair*> found;
    for (const auto& pair : pairs) {
        found += &pair;
    }
    return found;
}

/// Shows the settings in the colours of a light or a dark desktop.
struct Settings final {
    SettingsFixture fixture;
    FormColours colours{fixture.daypart};

    explicit Settings(bool isDark) { QApplication::setPalette(isDark ? SettingsStates::dark : SettingsStates::light); }
};

QString named(const Tint& tint) {
    const auto name = QString::fromLatin1(roleNames.at(std::size_t(tint.role)));
    return tint.opacity < 1 ? name + u" %1 %"_s.arg(100 * tint.opacity) : name;
}

QString table(const QString& heading, const auto& pairs, const QStringList& looks, auto&& ratioIn) {
    QString text = heading + u"\n\n| Texts | Ink | Ground | "_s + looks.join(u" | "_s) + u" |\n|---|---|---|"_s +
                   u"---:|"_s.repeated(looks.size()) + u'\n';
    for (const Pair& pair : pairs) {
        const QString below = pair.below == background ? QString{} : u" over "_s + named({pair.below});
        text += u"| %1 | %2 | %3 |"_s.arg(QString::fromUtf8(pair.texts), named(pair.ink), named(pair.ground) + below);
        for (qsizetype look = 0; look < looks.size(); ++look) {
            text += u' ' + ratioIn(pair, std::size_t(look)) + u" |"_s;
        }
        text += u'\n';
    }
    return text;
}

QString computed() {
    PanelFixture panel;
    QStringList dayparts;
    std::ranges::transform(DaypartInfo::allCases, std::back_inserter(dayparts), &DaypartInfo::title);
    const auto inPanel = [&panel](const Pair& pair, std::size_t daypart) {
        panel.daypart.set(DaypartInfo::allCases[daypart]);
        return ratio(seen(pair, DaypartColours{panel.daypart}));
    };
    const auto inSettings = [](const Pair& pair, std::size_t desktop) {
        return ratio(seen(pair, Settings{desktop == 1}.colours));
    };
    return table(u"### The panel"_s, panelPairs, dayparts, inPanel) + u'\n' +
           table(u"### The settings"_s, settingsPairs, {u"Light"_s, u"Dark"_s}, inSettings);
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
        auto unused = all(panelPairs);
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
                    QCOMPARE(strike(unused, *view, panelPairs, colours), QStringList{});
                }
            }
            for (auto* button : view->findChildren<Button*>()) {
                button->setDown(true);
            }
            QCOMPARE(strike(unused, *view, panelPairs, colours), QStringList{});
        }
        QVERIFY(unused.isEmpty());
    }

    void tableHasEveryTextOfTheSettings() {
        for (const bool isDark : {false, true}) {
            auto unused = all(settingsPairs);
            Settings settings{isDark};
            SettingsView view{settings.fixture.status, settings.fixture.daypart, settings.fixture.newPermissions(), {}};
            view.resize(900, 1600);
            view.show();
            for (int tab = 0; tab < view.findChild<QTabBar*>()->count(); ++tab) {
                view.findChild<QTabBar*>()->setCurrentIndex(tab);
                QCoreApplication::processEvents();
                QCOMPARE(strike(unused, view, settingsPairs, settings.colours), QStringList{});
            }
            QVERIFY(unused.isEmpty());
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
