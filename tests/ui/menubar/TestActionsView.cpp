#include "PanelFixture.h"
#include "PanelReading.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/ActionsView.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const QStringList buttons{u"Refresh"_s,   u"Console"_s,         u"Agents"_s,         u"Facet"_s,
                          u"MAC → MAC"_s, u"Desk backup now"_s, u"Sync via iCloud"_s};

struct Shown final {
    PanelFixture panel;
    ActionsView view{panel.status, panel.daypart, panel.actions()};

    Shown() {
        view.setFixedWidth(340);
        view.show();
    }
    [[nodiscard]] QStringList texts() {
        QCoreApplication::processEvents();
        view.adjustSize();
        QCoreApplication::processEvents();
        return PanelReading::names(view);
    }
    [[nodiscard]] QPushButton* button(const QString& title) { return PanelReading::named<QPushButton>(view, title); }
    void finish(const QString& output) {
        panel.tool.calls.last().answer.deliver({.exitCode = 0, .stdOut = output, .stdErr = {}});
    }
};

}

class TestActionsView final : public QObject {
    Q_OBJECT

private slots:
    void showsNoLineBeforeTheFirstAction() {
        Shown shown;
        QCOMPARE(shown.texts(), buttons);
    }

    void opensThePagesOfTheDevelopmentDomain_data() {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QUrl>("address");
        QTest::newRow("Console") << u"Console"_s << QUrl{u"https://vorna.localhost/dashboard"_s};
        QTest::newRow("Agents") << u"Agents"_s << QUrl{u"https://vorna.localhost/dashboard/agents"_s};
        QTest::newRow("Facet") << u"Facet"_s << QUrl{u"https://facet.vorna.localhost"_s};
    }
    void opensThePagesOfTheDevelopmentDomain() {
        QFETCH(QString, button);
        QFETCH(QUrl, address);
        Shown shown;
        QTest::mouseClick(shown.button(button), Qt::LeftButton);
        QCOMPARE(shown.panel.pagesOpened, QList{address});
    }

    void refreshPollsAtOnce() {
        Shown shown;
        QTest::mouseClick(shown.button(u"Refresh"_s), Qt::LeftButton);
        QVERIFY(shown.panel.status.polling);
        QVERIFY(shown.panel.settle());
    }

    void runsTheToolAndShowsItsProgressAndItsEnd_data() {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("backup") << u"Desk backup now"_s << QStringList{u"desk"_s, u"backup"_s};
        QTest::newRow("sync") << u"Sync via iCloud"_s
                              << QStringList{u"desk"_s, u"sync"_s, u"push"_s, u"--via"_s, u"icloud"_s};
    }
    void runsTheToolAndShowsItsProgressAndItsEnd() {
        QFETCH(QString, button);
        Shown shown;
        QTest::mouseClick(shown.button(button), Qt::LeftButton);
        QCOMPARE(shown.texts(), buttons + QStringList{u"Running vorna…"_s});
        QCOMPARE(shown.panel.tool.calls.size(), 1);
        QTEST(shown.panel.tool.calls.first().arguments, "arguments");
        QVERIFY(!shown.button(u"Desk backup now"_s)->isEnabled());
        QVERIFY(!shown.button(u"Sync via iCloud"_s)->isEnabled());
        auto* disabled = QAccessible::queryAccessibleInterface(shown.button(button));
        QVERIFY(disabled->state().disabled);

        QVERIFY(shown.button(u"Refresh"_s)->isEnabled());
        QTest::mouseClick(shown.button(u"Refresh"_s), Qt::LeftButton);
        QVERIFY(shown.panel.status.polling);
        QVERIFY(shown.panel.settle());

        shown.finish(u"done in 2 s"_s);
        QCOMPARE(shown.texts(), buttons + QStringList{u"done in 2 s"_s});
        QVERIFY(shown.button(button)->isEnabled());
    }

    void aSecondPressRunsNothing() {
        Shown shown;
        auto* button = shown.button(u"Desk backup now"_s);
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::mouseClick(shown.button(u"Sync via iCloud"_s), Qt::LeftButton);
        QCOMPARE(shown.panel.tool.calls.size(), 1);
    }

    void aLongMessageTakesThreeLinesAtMost() {
        Shown shown;
        const QString text = u"a line of the tool's output "_s.repeated(30);
        shown.panel.status.cliMessage = text;
        QCOMPARE(shown.texts().last(), text);
        auto* label = PanelReading::named<TextLabel>(shown.view, text);
        QCOMPARE(label->height(), 3 * label->lineHeight());
        QVERIFY(label->isCut());
    }

    void theFourQuickButtonsAreEquallyWide() {
        Shown shown;
        QVERIFY(!shown.texts().isEmpty());
        for (const auto& title : buttons.first(4)) {
            QCOMPARE(shown.button(title)->width(), (340 - 28 - 8) / 2);
        }
        QCOMPARE(shown.button(u"Console"_s)->x(), 14 + 152 + 8);
        QCOMPARE(shown.button(u"Desk backup now"_s)->width(), 340 - 28);
    }

    void theKeyboardsFocusComesBackAfterTheRun() {
        Shown shown;
        QApplication::setActiveWindow(&shown.view);
        auto* button = shown.button(u"Desk backup now"_s);
        button->setFocus(Qt::TabFocusReason);
        QTest::keyClick(button, Qt::Key_Return);
        QVERIFY(!shown.texts().isEmpty());
        QCOMPARE(QApplication::focusWidget(), nullptr);
        shown.finish(u"done"_s);
        QVERIFY(!shown.texts().isEmpty());
        QCOMPARE(QApplication::focusWidget(), button);
    }
};

QTEST_MAIN(TestActionsView)
#include "TestActionsView.moc"
