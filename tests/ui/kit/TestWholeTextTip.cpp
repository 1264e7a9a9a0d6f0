#include "ui/kit/WholeTextTip.h"

#include <QApplication>
#include <QHelpEvent>
#include <QScreen>
#include <QTest>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;

class TestWholeTextTip final : public QObject {
    Q_OBJECT

private slots:
    void staysOnTheScreenWhateverTheText_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("words") << u"connection refused "_s.repeated(100);
        QTest::newRow("one word") << QString{2000, u'w'};
        QTest::newRow("addresses") << u"https://a-very-long-host-name.vorna.localhost/"_s.repeated(40);
        QTest::newRow("emoji") << u"🚀"_s.repeated(1000);
        QTest::newRow("combining marks") << u"e\u0301"_s.repeated(1000);
    }
    void staysOnTheScreenWhateverTheText() {
        QFETCH(QString, text);
        QWidget widget;
        widget.show();
        WholeTextTip::show({QEvent::ToolTip, {}, widget.mapToGlobal(QPoint{})}, text, widget);
        const auto windows = QApplication::topLevelWidgets();
        const auto tip =
            std::ranges::find_if(windows, [](const QWidget* window) { return window->windowType() == Qt::ToolTip; });
        QVERIFY(tip != windows.end());
        QVERIFY2(widget.screen()->geometry().contains((*tip)->geometry()),
                 qPrintable(QString::number((*tip)->width())));
        const QString shown = QToolTip::text().remove(u'\u200B');
        QVERIFY(shown.contains(text.trimmed()));
        QVERIFY(QToolTip::text().isValidUtf16());
        QToolTip::hideText();
    }
};

QTEST_MAIN(TestWholeTextTip)
#include "TestWholeTextTip.moc"
