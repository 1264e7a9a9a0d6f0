#include "PanelFixture.h"
#include "PanelReading.h"
#include "Pixels.h"
#include "ui/menubar/DaypartPickerView.h"

#include <QLabel>
#include <QLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 340;

struct Shown final {
    PanelFixture panel;
    DaypartPickerView view{panel.daypart};

    Shown() {
        view.setFixedWidth(width);
        view.show();
        view.adjustSize();
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QPushButton* button(const QString& title) { return PanelReading::named<QPushButton>(view, title); }
    void press(const QString& title) {
        QTest::mouseClick(button(title), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    [[nodiscard]] bool isPlainAuto() { return PanelReading::named<QLabel>(view, u"Auto"_s) != nullptr; }
    [[nodiscard]] QString selected() {
        QStringList titles;
        for (const Daypart daypart : DaypartInfo::allCases) {
            auto* chip = button(DaypartInfo::title(daypart));
            if (chip->isChecked()) {
                titles += chip->accessibleName();
            }
        }
        return titles.join(u',');
    }
    /// The colour beside the symbol, well inside the chip.
    [[nodiscard]] QColor fill(const QString& title) {
        auto* chip = button(title);
        return chip->grab().toImage().pixelColor(5, chip->height() / 2);
    }
    [[nodiscard]] const DaypartPalette& palette() const { return panel.daypart.palette; }
    /// How many pixels of a chip have a colour, in its symbol and in its title, drawn large enough to be more than
    /// edges.
    [[nodiscard]] std::pair<int, int> pixels(const QString& title, QRgb colour) {
        constexpr int scale = 4;
        auto* chip = button(title);
        const QImage image = Pixels::drawn(*chip, 0xff00ff00, scale);
        std::pair<int, int> count;
        constexpr int edge = 3;
        for (int y = edge * scale; y < (chip->height() - edge) * scale; ++y) {
            for (int x = edge * scale; x < (chip->width() - edge) * scale; ++x) {
                const bool isSymbol = y < chip->height() / 2 * scale;
                (isSymbol ? count.first : count.second) += image.pixel(x, y) == colour ? 1 : 0;
            }
        }
        return count;
    }
};

}

class TestDaypartPickerView final : public QObject {
    Q_OBJECT

private slots:
    void followingTheClockTheCurrentChipIsSelectedAndAutoIsAText() {
        Shown shown;
        QCOMPARE(PanelReading::names(shown.view),
                 (QStringList{u"DAYPART"_s, u"Auto"_s, u"Dawn"_s, u"Day"_s, u"Dusk"_s, u"Night"_s}));
        QCOMPARE(shown.selected(), u"Day"_s);
        QVERIFY(shown.isPlainAuto());
        QCOMPARE(shown.button(u"Auto"_s), nullptr);
        QCOMPARE(shown.fill(u"Day"_s), QColor{shown.palette().accent});
        QCOMPARE(shown.fill(u"Night"_s), QColor{shown.palette().surface});
    }

    void aChosenChipsSymbolAndTitleAreOfTheBackgroundAndTheOthersMuted() {
        Shown shown;
        for (const Daypart chosen : DaypartInfo::allCases) {
            shown.press(DaypartInfo::title(chosen));
            for (const Daypart daypart : DaypartInfo::allCases) {
                const bool isChosen = daypart == chosen;
                const QRgb foreground = isChosen ? shown.palette().background : shown.palette().textMuted;
                const QRgb other = isChosen ? shown.palette().textMuted : shown.palette().background;
                const auto [symbol, title] = shown.pixels(DaypartInfo::title(daypart), foreground);
                QVERIFY2(symbol > 50, qPrintable(QString::number(symbol)));
                QVERIFY2(title > 50, qPrintable(QString::number(title)));
                QCOMPARE(shown.pixels(DaypartInfo::title(daypart), other), std::pair(0, 0));
            }
        }
    }

    void aChipPinsItsDaypartAndAutoGoesBack() {
        Shown shown;
        shown.press(u"Night"_s);
        QCOMPARE(shown.panel.daypart.daypart.value(), Daypart::night);
        QCOMPARE(shown.selected(), u"Night"_s);
        QCOMPARE(shown.fill(u"Night"_s), QColor{DaypartPalette::of(Daypart::night).accent});
        QCOMPARE(shown.fill(u"Day"_s), QColor{DaypartPalette::of(Daypart::night).surface});
        QVERIFY(!shown.isPlainAuto());

        shown.press(u"Auto"_s);
        QVERIFY(!shown.panel.daypart.isManual);
        QCOMPARE(shown.selected(), u"Day"_s);
        QCOMPARE(shown.fill(u"Day"_s), QColor{DaypartPalette::of(Daypart::day).accent});
        QVERIFY(shown.isPlainAuto());
    }

    void theCurrentChipPinsWithoutAChangeOfColour() {
        Shown shown;
        const QImage before = shown.button(u"Day"_s)->grab().toImage();
        shown.press(u"Day"_s);
        QVERIFY(shown.panel.daypart.isManual);
        QVERIFY(shown.button(u"Auto"_s) != nullptr);
        shown.button(u"Day"_s)->clearFocus();
        QCOMPARE(shown.button(u"Day"_s)->grab().toImage(), before);
    }

    void theChipsShareTheWidthEqually() {
        Shown shown;
        int left = 14;
        for (const Daypart daypart : DaypartInfo::allCases) {
            auto* chip = shown.button(DaypartInfo::title(daypart));
            QCOMPARE(chip->x(), left);
            QCOMPARE(chip->width(), (width - 28 - 3 * 4) / 4);
            left += chip->width() + 4;
        }
    }

    void autoStandsAtTheSamePlaceAsTextAndAsButton() {
        Shown shown;
        auto* text = PanelReading::named<QLabel>(shown.view, u"Auto"_s);
        const QRect place = text->geometry();
        shown.press(u"Dusk"_s);
        shown.view.layout()->activate();
        const QRect button = shown.button(u"Auto"_s)->geometry();
        QCOMPARE(button.right(), place.right());
        QCOMPARE(button.y(), place.y());
        QCOMPARE(button.height(), place.height());
    }

    void aChipsOutlineIsItsAccentOrTheBorder() {
        Shown shown;
        auto edge = [&](const QString& title) {
            auto* chip = shown.button(title);
            return chip->grab().toImage().pixelColor(0, chip->height() / 2);
        };
        QCOMPARE(edge(u"Day"_s), QColor{shown.palette().accent});
        QCOMPARE(edge(u"Dawn"_s), QColor{shown.palette().border});
    }
};

QTEST_MAIN(TestDaypartPickerView)
#include "TestDaypartPickerView.moc"
