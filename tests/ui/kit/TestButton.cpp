#include "support/FixedColours.h"
#include "ui/kit/Button.h"
#include "ui/menubar/VornaMenuButtonStyle.h"

#include <QAccessible>
#include <QApplication>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const FixedColours colours;

struct Shown final {
    QWidget window;
    Button button{u"Settings & permissions"_s, u"gearshape"_s, VornaMenuButtonStyle{}, colours, &window};
    int presses = 0;

    Shown() {
        QObject::connect(&button, &QPushButton::clicked, &button, [this] { ++presses; });
        button.resize(300, 30);
        window.show();
        QApplication::setActiveWindow(&window);
        button.clearFocus();
    }
    [[nodiscard]] QColor edge() { return button.grab().toImage().pixelColor(0, button.height() / 2); }
};

}

class TestButton final : public QObject {
    Q_OBJECT

private slots:
    void aKeyShowsThePressAndClicksWhenItIsLetGo_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Space") << Qt::Key_Space;
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Enter") << Qt::Key_Enter;
    }
    void aKeyShowsThePressAndClicksWhenItIsLetGo() {
        QFETCH(Qt::Key, key);
        Shown shown;
        QTest::keyPress(&shown.button, key);
        QVERIFY(shown.button.isDown());
        QCOMPARE(shown.presses, 0);
        QTest::keyRelease(&shown.button, key);
        QVERIFY(!shown.button.isDown());
        QCOMPARE(shown.presses, 1);
        shown.button.setAvailable(false);
        QTest::keyClick(&shown.button, key);
        QCOMPARE(shown.presses, 1);
    }

    void aHeldKeyIsOnePress() {
        Shown shown;
        QTest::keyPress(&shown.button, Qt::Key_Return);
        QKeyEvent again{QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true};
        QKeyEvent letGo{QEvent::KeyRelease, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true};
        QCoreApplication::sendEvent(&shown.button, &letGo);
        QCoreApplication::sendEvent(&shown.button, &again);
        QCOMPARE(shown.presses, 0);
        QTest::keyRelease(&shown.button, Qt::Key_Return);
        QCOMPARE(shown.presses, 1);
    }

    void aScreenReaderFindsAButtonThatItCanPress() {
        Shown shown;
        auto* found = QAccessible::queryAccessibleInterface(&shown.button);
        QCOMPARE(found->role(), QAccessible::Button);
        QCOMPARE(found->text(QAccessible::Name), u"Settings & permissions"_s);
        found->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(shown.presses, 1);
    }

    void theRingShowsTheKeyboardsFocusOnly() {
        Shown shown;
        const QColor ring = colours.of(ColourRole::accent);
        shown.button.setFocus(Qt::MouseFocusReason);
        QVERIFY(shown.edge() != ring);
        shown.button.clearFocus();
        shown.button.setFocus(Qt::TabFocusReason);
        QCOMPARE(shown.edge(), ring);
        shown.button.clearFocus();
        QVERIFY(shown.edge() != ring);
    }

    void thePointerIsAHand() { QCOMPARE(Shown{}.button.cursor().shape(), Qt::PointingHandCursor); }

    void anAmpersandIsNoShortcut() {
        const Button button{u"R&D"_s, {}, VornaMenuButtonStyle{}, colours};
        QVERIFY(button.shortcut().isEmpty());
        QCOMPARE(button.accessibleName(), u"R&D"_s);
    }
};

QTEST_MAIN(TestButton)
#include "TestButton.moc"
