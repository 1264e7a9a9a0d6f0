#include "Cases.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// Runs the cases of every area.
class TestMac final : public QObject {
    Q_OBJECT

private slots:
    void behaviour_data() {
        QTest::addColumn<const Area*>("area");
        QTest::addColumn<Case>("of");
        for (const Area* area :
             {&desktopArea(), &menuBarArea(), &notificationArea(), &statusItemArea(), &symbolArea(), &systemArea()}) {
            for (const Case& each : area->cases) {
                QTest::addRow("%s: %s", area->name, each.behaviour) << area << each;
            }
        }
    }

    void behaviour() {
        QFETCH(const Area*, area);
        QFETCH(Case, of);
        Doubles::reset();
        area->begin();
        auto steps = area->steps;
        steps.insert({{u"say"_s, [](const QString& what) { Doubles::tell(what); }},
                      {u"turn"_s, [](auto&) { QCoreApplication::processEvents(); }},
                      {u"wait"_s, [](const QString& milliseconds) { QTest::qSleep(milliseconds.toInt()); }},
                      {u"answer"_s, [](auto&) { Doubles::answerAll(); }},
                      {u"launched"_s, [](auto&) { Doubles::finishLaunching(); }}});
        for (const QString& step : QString::fromUtf8(of.happens).split(u"; "_s)) {
            const QString name = step.section(u' ', 0, 0);
            QVERIFY2(steps.contains(name), qPrintable(step));
            steps[name](step.section(u' ', 1));
        }
        const QString seen = Doubles::told();
        area->end();
        QCOMPARE(seen, QString::fromUtf8(of.seen));
    }
};

QTEST_MAIN(TestMac)
#include "TestMac.moc"
