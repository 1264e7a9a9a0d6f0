#include "support/Activation.h"
#include "support/FixedColours.h"
#include "ui/kit/Button.h"
#include "ui/menubar/ButtonStyles.h"

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
        activate(window);
        button.clearFocus();
    }
    [[nodiscard]] bool isRinged() {
        const QColor edge = button.grab().toImage().pixelColor(0, button.height() / 2);
        return edge == colours.of(ColourRole::accent);
    }
};

}

class TestButton final : public QObject {
    Q_OBJECT

private slots:
    void keyShowsThePressAndClicksWhenItIsReleased() {
        for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
            Shown shown;
            QTest::keyPress(&shown.button, key);
            for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {
                QKeyEvent repeated{type, key, Qt::NoModifier, {}, true};
                QCoreApplication::sendEvent(&shown.button, &repeated);
            }
            QVERIFY(shown.button.isDown());
            QCOMPARE(shown.presses, 0);
            QTest::keyRelease(&shown.button, key);
            QVERIFY(!shown.button.isDown());
            QCOMPARE(shown.presses, 1);
            shown.button.setAvailable(false);
            QTest::keyClick(&shown.button, key);
            QCOMPARE(shown.presses, 1);
        }
    }

    void ringShowsTheKeyboardsFocusOnly() {
        Shown shown;
        shown.button.setFocus(Qt::MouseFocusReason);
        QVERIFY(!shown.isRinged());
        shown.button.clearFocus();
        shown.button.setFocus(Qt::TabFocusReason);
        QVERIFY(shown.isRinged());
        shown.button.clearFocus();
        QVERIFY(!shown.isRinged());
    }

    void pointerIsAHand() { QCOMPARE(Shown{}.button.cursor().shape(), Qt::PointingHandCursor); }

    void ampersandIsNoShortcut() {
        const Shown shown;
        QVERIFY(shown.button.shortcut().isEmpty());
        QCOMPARE(shown.button.accessibleName(), u"Settings & permissions"_s);
    }
};

QTEST_MAIN(TestButton)
#include "TestButton.moc"
