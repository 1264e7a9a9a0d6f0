#include "Cases.h"

#include <QTest>

/// Runs each table of cases under its name.
class TestMac final : public QObject {
    Q_OBJECT

private slots:
    void system_data() { rows(systemCases); }
    void system() { run(); }
    void desktop_data() { rows(desktopCases); }
    void desktop() { run(); }
    void menuBar_data() { rows(menuBarCases); }
    void menuBar() { run(); }
    void statusItem_data() { rows(statusItemCases); }
    void statusItem() { run(); }
    void notifications_data() { rows(notificationCases); }
    void notifications() { run(); }
    void symbols_data() { rows(symbolCases); }
    void symbols() { run(); }

private:
    static void rows(const QList<Case>& cases) {
        QTest::addColumn<Case>("of");
        for (const Case& each : cases) {
            QTest::newRow(each.behaviour) << each;
        }
    }

    static void run() {
        QFETCH(Case, of);
        Doubles::reset();
        of.happens();
        QCOMPARE(Doubles::told(), QString::fromUtf8(of.seen));
    }
};

QTEST_MAIN(TestMac)
#include "TestMac.moc"
