#include "support/Activation.h"
#include "support/FixedColours.h"
#include "ui/kit/SelectableLabel.h"

#include <QApplication>
#include <QClipboard>

using namespace Qt::StringLiterals;

namespace {

constexpr TextStyle style{.size = 11, .lines = 2};
const FixedColours colours;
const QString hint = u"Start bridge: vorna server start"_s;

struct Shown final {
    QWidget window;
    SelectableLabel label{style, colours, &window};

    explicit Shown(int width = 300) {
        label.display(hint, u"vorna server start"_s);
        label.resize(width, label.heightForWidth(width));
        window.resize(width, 100);
        activate(window);
        label.clearFocus();
        QApplication::clipboard()->clear();
    }
    void drag(QPoint from, QPoint to) {
        QTest::mousePress(&label, Qt::LeftButton, {}, from);
        QMouseEvent move{QEvent::MouseMove, QPointF{to},    label.mapToGlobal(QPointF{to}),
                         Qt::NoButton,      Qt::LeftButton, {}};
        QCoreApplication::sendEvent(&label, &move);
        QTest::mouseRelease(&label, Qt::LeftButton, {}, to);
    }
    [[nodiscard]] QString copied() {
        QTest::keyClick(&label, Qt::Key_C, Qt::ControlModifier);
        return QApplication::clipboard()->text();
    }
};

}

class TestSelectableLabel final : public QObject {
    Q_OBJECT

private slots:
    void keysSelectTheCommandOrAllOfItAndADoubleClickTheCommand() {
        Shown shown;
        shown.label.setFocus(Qt::TabFocusReason);
        QCOMPARE(shown.copied(), u"vorna server start"_s);
        QTest::keyClick(&shown.label, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(shown.copied(), hint);
        QTest::mouseDClick(&shown.label, Qt::LeftButton);
        QCOMPARE(shown.copied(), u"vorna server start"_s);
    }

    void theMouseSelectsAcrossLinesWhatIsCopiedAsWritten() {
        Shown shown{100};
        QVERIFY(shown.label.shownText().contains(QChar::LineSeparator));
        shown.drag({0, 1}, {shown.label.width() - 1, shown.label.height() - 1});
        QCOMPARE(shown.copied(), hint);
    }

    void theMouseSelectsAPart() {
        Shown shown;
        const QFontMetricsF metrics{shown.label.shownFont()};
        shown.drag({0, 5}, {qRound(metrics.horizontalAdvance(u"Start"_s)), 5});
        QCOMPARE(shown.copied(), u"Start"_s);
    }

    void aPressWithShiftReachesFromTheLastOne() {
        Shown shown;
        const QFontMetricsF metrics{shown.label.shownFont()};
        QTest::mouseClick(&shown.label, Qt::LeftButton, {}, {0, 5});
        QTest::mouseClick(&shown.label, Qt::LeftButton, Qt::ShiftModifier,
                          {qRound(metrics.horizontalAdvance(u"Start"_s)), 5});
        QCOMPARE(shown.copied(), u"Start"_s);
    }

    void anotherTextIsNotSelected() {
        Shown shown;
        QTest::keyClick(&shown.label, Qt::Key_A, Qt::ControlModifier);
        shown.label.display(u"No probes yet"_s);
        QCOMPARE(shown.copied(), QString{});
    }

    void nothingIsCopiedWhenNothingIsSelected() {
        Shown shown;
        QTest::mouseClick(&shown.label, Qt::LeftButton);
        QCOMPARE(shown.copied(), QString{});
    }
};

QTEST_MAIN(TestSelectableLabel)
#include "TestSelectableLabel.moc"
