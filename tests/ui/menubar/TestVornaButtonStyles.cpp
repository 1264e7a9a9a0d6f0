#include "daypart/DaypartPalette.h"
#include "ui/menubar/Pixels.h"
#include "ui/menubar/VornaAccentButton.h"
#include "ui/menubar/VornaMenuButton.h"

#include <QAccessible>
#include <QPainter>
#include <QTest>

using namespace Qt::StringLiterals;
using Pixels::blended;
using Pixels::drawn;
using Pixels::isNear;
Q_DECLARE_METATYPE(Daypart)

namespace {

constexpr QSize size{152, 32};

void addDayparts() {
    QTest::addColumn<Daypart>("daypart");
    for (const Daypart daypart : DaypartInfo::allCases) {
        QTest::newRow(qPrintable(DaypartInfo::title(daypart))) << daypart;
    }
}

}

class TestVornaButtonStyles final : public QObject {
    Q_OBJECT

private slots:
    void anAccentButtonDimsItsFillWhilePressedAndKeepsItsBorder_data() { addDayparts(); }
    void anAccentButtonDimsItsFillWhilePressedAndKeepsItsBorder() {
        QFETCH(Daypart, daypart);
        const DaypartPalette& palette = DaypartPalette::of(daypart);
        VornaAccentButton button{u"Refresh"_s, u"arrow.clockwise"_s};
        button.setButtonStyle({palette});
        button.resize(size);
        const QImage rest = drawn(button, palette.background);
        QCOMPARE(rest.pixelColor(8, 16), QColor{palette.accent});
        QCOMPARE(rest.pixelColor(0, 16), QColor{palette.accent});
        QCOMPARE(rest.pixelColor(0, 0), QColor{palette.background});
        QCOMPARE(rest.pixelColor(151, 31), QColor{palette.background});

        button.setDown(true);
        const QImage pressed = drawn(button, palette.background);
        QVERIFY(isNear(pressed.pixelColor(8, 16), blended(palette.accent, palette.background, 0.8)));
        QCOMPARE(pressed.pixelColor(0, 16), QColor{palette.accent});

        button.setDown(false);
        QCOMPARE(drawn(button, palette.background), rest);
    }

    void aMenuButtonShowsAGroundOnlyWhilePressed_data() { addDayparts(); }
    void aMenuButtonShowsAGroundOnlyWhilePressed() {
        QFETCH(Daypart, daypart);
        const DaypartPalette& palette = DaypartPalette::of(daypart);
        VornaMenuButton button{u"Quit vorna"_s, u"power"_s};
        button.setButtonStyle({palette});
        button.resize(size);
        QVERIFY(isNear(drawn(button, palette.surface).pixelColor(4, 16), QColor{palette.surface}));

        button.setDown(true);
        const QImage pressed = drawn(button, palette.surface);
        QVERIFY(isNear(pressed.pixelColor(4, 16), blended(palette.accent, palette.surface, 0.15)));
        QCOMPARE(pressed.pixelColor(0, 0), QColor{palette.surface});
        QVERIFY(isNear(pressed.pixelColor(3, 3), blended(palette.accent, palette.surface, 0.15)));
    }

    void aDisabledMenuButtonKeepsItsShapeAndIsDimmed() {
        const DaypartPalette& palette = DaypartPalette::of(Daypart::day);
        VornaMenuButton button{u"Desk backup now"_s, u"externaldrive.badge.timemachine"_s};
        button.setButtonStyle({palette});
        const QSize before = button.sizeHint();
        button.resize(before);
        const QImage enabled = drawn(button, palette.background);
        button.setAvailable(false);
        QCOMPARE(button.sizeHint(), before);
        const QImage disabled = drawn(button, palette.background);
        const auto darkest = [](const QImage& image) {
            int value = 255;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    value = qMin(value, image.pixelColor(x, y).green());
                }
            }
            return value;
        };
        const int expected = blended(palette.text, palette.background, 0.4).green();
        QVERIFY(darkest(enabled) < expected - 50);
        QVERIFY(qAbs(darkest(disabled) - expected) < 20);
    }

    void buttonsArePressedBySpaceReturnAndEnter_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Space") << Qt::Key_Space;
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Enter") << Qt::Key_Enter;
    }
    void buttonsArePressedBySpaceReturnAndEnter() {
        QFETCH(Qt::Key, key);
        VornaMenuButton button{u"Quit vorna"_s, u"power"_s};
        int presses = 0;
        connect(&button, &QPushButton::clicked, this, [&presses] { ++presses; });
        button.show();
        QTest::keyClick(&button, key);
        QCOMPARE(presses, 1);
        button.setAvailable(false);
        QTest::keyClick(&button, key);
        QCOMPARE(presses, 1);
    }

    void aScreenReaderFindsAButtonThatItCanPress() {
        VornaAccentButton button{u"Console & more"_s, u"cpu"_s};
        int presses = 0;
        connect(&button, &QPushButton::clicked, this, [&presses] { ++presses; });
        button.show();
        auto* found = QAccessible::queryAccessibleInterface(&button);
        QCOMPARE(found->role(), QAccessible::Button);
        QCOMPARE(found->text(QAccessible::Name), u"Console & more"_s);
        QVERIFY(found->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
        found->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(presses, 1);
    }

    void theRingShowsTheKeyboardsFocusOnly() {
        const DaypartPalette& palette = DaypartPalette::of(Daypart::night);
        QWidget window;
        VornaMenuButton button{u"Quit vorna"_s, u"power"_s, &window};
        button.setButtonStyle({palette});
        button.resize(size);
        window.resize(size);
        window.show();
        QApplication::setActiveWindow(&window);
        button.clearFocus();
        button.setFocus(Qt::MouseFocusReason);
        QVERIFY(isNear(drawn(button, palette.surface).pixelColor(0, 16), QColor{palette.surface}));
        button.clearFocus();
        button.setFocus(Qt::TabFocusReason);
        QCOMPARE(drawn(button, palette.surface).pixelColor(0, 16), QColor{palette.accent});
        button.clearFocus();
        QVERIFY(isNear(drawn(button, palette.surface).pixelColor(0, 16), QColor{palette.surface}));
    }
};

QTEST_MAIN(TestVornaButtonStyles)
#include "TestVornaButtonStyles.moc"
