#include "support/Activation.h"
#include "ui/DaypartColours.h"
#include "ui/kit/DotLabel.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelFixture.h"
#include "ui/menubar/PanelReading.h"

#include <QApplication>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {

const QString backup = u"Desk backup now"_s;
const QString cloudSync = u"Sync via iCloud"_s;

struct Shown final {
    PanelFixture panel;
    std::unique_ptr<MenuBarView> view = panel.makeView();

    Shown() {
        activate(*view);
        if (!panel.settle()) {
            qFatal("the first poll does not end");
        }
    }
    [[nodiscard]] QStringList texts() {
        (void)drawn(*view);
        return PanelReading::names(*view);
    }
    [[nodiscard]] QPushButton* button(const QString& title) { return PanelReading::named<QPushButton>(*view, title); }
    void press(const QString& title) {
        QTest::mouseClick(button(title), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QString chosen() {
        QString titles;
        for (const Daypart daypart : DaypartInfo::allCases) {
            titles += button(DaypartInfo::title(daypart))->isChecked() ? DaypartInfo::title(daypart) : QString{};
        }
        return titles;
    }
};

}

class TestMenuBarView final : public QObject {
    Q_OBJECT

private slots:
    void quickActionsOpenThePagesOfTheDevelopmentDomain() {
        Shown shown;
        shown.press(u"Console"_s);
        shown.press(u"Agents"_s);
        shown.press(u"Facet"_s);
        QCOMPARE(shown.panel.pagesOpened, (QList{QUrl{u"https://vorna.localhost/dashboard"_s},
                                                 QUrl{u"https://vorna.localhost/dashboard/agents"_s},
                                                 QUrl{u"https://facet.vorna.localhost"_s}}));
    }

    void eachButtonOfTheToolRunsItsOwnAction() {
        for (const auto& [button, arguments] :
             {std::pair{backup, u"desk backup"_s}, std::pair{cloudSync, u"desk sync push --via icloud"_s}}) {
            Shown shown;
            shown.press(button);
            QCOMPARE(shown.panel.tool.calls.last().arguments.join(u' '), arguments);
        }
    }

    void keyboardsFocusComesBackAfterTheRun() {
        Shown shown;
        auto* button = shown.button(backup);
        button->setFocus(Qt::TabFocusReason);
        QTest::keyClick(button, Qt::Key_Return);
        QVERIFY(!shown.texts().isEmpty());
        QCOMPARE(QApplication::focusWidget(), nullptr);
        shown.panel.status.cliBusy = false;
        QVERIFY(!shown.texts().isEmpty());
        QCOMPARE(QApplication::focusWidget(), button);
    }

    void chipPinsItsDaypartAndAutoGoesBack() {
        Shown shown;
        QCOMPARE(shown.chosen(), u"Day"_s);
        QCOMPARE(shown.button(u"Auto"_s), nullptr);
        shown.press(u"Night"_s);
        QCOMPARE(shown.panel.daypart.daypart.value(), Daypart::night);
        QCOMPARE(shown.chosen(), u"Night"_s);
        shown.press(u"Auto"_s);
        QVERIFY(!shown.panel.daypart.isManual);
        QCOMPARE(shown.chosen(), u"Day"_s);
        QCOMPARE(shown.button(u"Auto"_s), nullptr);
        QVERIFY(PanelReading::named<TextLabel>(*shown.view, u"Auto"_s) != nullptr);
    }

    void currentChipPinsWithoutAChangeOfColour() {
        Shown shown;
        const QImage before = shown.button(u"Day"_s)->grab().toImage();
        shown.press(u"Day"_s);
        QVERIFY(shown.panel.daypart.isManual);
        QVERIFY(shown.button(u"Auto"_s) != nullptr);
        shown.button(u"Day"_s)->clearFocus();
        QCOMPARE(shown.button(u"Day"_s)->grab().toImage(), before);
    }

    void everyTestNotificationIsAnotherOne() {
        Shown shown;
        shown.panel.daypart.set(Daypart::dusk);
        shown.press(u"Test notification"_s);
        shown.press(u"Test notification"_s);
        const auto& posted = shown.panel.notifications.posted;
        QCOMPARE(posted.size(), 2);
        QCOMPARE(posted[0].title, u"vorna"_s);
        QCOMPARE(posted[0].body, u"Desktop notifications are working · Dusk"_s);
        QVERIFY(posted[0].identifier != posted[1].identifier);
        QCOMPARE(posted[0].identifier, QUuid{posted[0].identifier}.toString(QUuid::WithoutBraces).toUpper());
    }

    void settingsAndTheEndHaveKeysToo() {
        Shown shown;
        shown.press(u"Settings & permissions"_s);
        QCOMPARE(shown.panel.settingsOpened, 1);
        QTest::keyClick(shown.view.get(), Qt::Key_Comma, Qt::ControlModifier);
        QTRY_COMPARE(shown.panel.settingsOpened, 2);
        shown.press(u"Quit vorna"_s);
        QCOMPARE(shown.panel.quits, 1);
        QTest::keyClick(shown.view.get(), Qt::Key_Q, Qt::ControlModifier);
        QTRY_COMPARE(shown.panel.quits, 2);
    }

    void titleEndsTwoSpacingsBeforeTheDot() {
        Shown shown;
        const auto* title = PanelReading::named<TextLabel>(*shown.view, u"vorna"_s);
        QCOMPARE(shown.view->findChild<DotLabel*>()->x() - title->geometry().right() - 1, 20);
    }

    void rulesAreAsManyWholePixelsThickAsTheScaleHas() {
        Shown shown;
        const QColor border = DaypartColours{shown.panel.daypart}.of(ColourRole::border);
        for (const qreal scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
            const QImage image = drawn(*shown.view, scale);
            QList<int> thicknesses;
            for (int y = 1; y < image.height(); ++y) {
                if (image.pixelColor(0, y) == border) {
                    image.pixelColor(0, y - 1) == border ? ++thicknesses.last() : (thicknesses += 1).last();
                }
            }
            QCOMPARE(thicknesses, QList<int>(5, int(scale)));
        }
    }

    void refreshPollsAndReportsNoHeartbeat() {
        Shown shown;
        shown.panel.status.lastPoll = std::nullopt;
        shown.press(u"Refresh"_s);
        QVERIFY(shown.panel.settle());
        QVERIFY(shown.panel.status.lastPoll.value());
        QCOMPARE(shown.panel.tool.calls.size(), 1); // that of the panel's appearance
    }

    void hintCanBeSelectedWhileThereIsACommandInIt() {
        Shown shown;
        const auto hint = [&shown](const QString& text) {
            (void)drawn(*shown.view);
            return PanelReading::named<QWidget>(*shown.view, text);
        };
        QCOMPARE(hint(u"Start bridge: vorna server start"_s)->focusPolicy(), Qt::StrongFocus);
        shown.panel.status.bridgeOnline = true;
        QCOMPARE(hint(u"No probes yet"_s)->focusPolicy(), Qt::NoFocus);
    }

    void textOfAServiceThatNeedsLessThanHalfLeavesTheRestToTheOther() {
        Shown shown;
        const QString brief = u"a-name-of-15-ch"_s;
        const QString endless = QString{u"words "_s}.repeated(40);
        shown.panel.status.services =
            QList<StatusModel::ServiceRow>{{brief, brief, true, endless, {}}, {endless, endless, true, brief, {}}};
        (void)drawn(*shown.view);
        int wide = 0;
        for (const auto* label : shown.view->findChildren<TextLabel*>()) {
            wide += label->isVisible() && label->wholeText() == endless && label->width() > shown.view->width() / 2;
        }
        QCOMPARE(wide, 2);
    }

    void theFirstFrameComesBeforeThePoll() {
        PanelFixture panel;
        const auto view = panel.makeView();
        (void)view->grab();
        QCoreApplication::processEvents();
        QCOMPARE(panel.tickers, 0); // it has not appeared
        view->show();
        QVERIFY(!panel.status.polling);
        (void)view->grab();
        QVERIFY(!panel.status.polling);
        QCoreApplication::processEvents();
        QCOMPARE(panel.tickers, 1);
        QVERIFY(panel.settle());
    }

    void eachAppearancePollsOnceMore() {
        Shown shown;
        QCOMPARE(shown.panel.tool.calls.size(), 1);
        shown.view->hide();
        (void)shown.view->grab();
        shown.view->show();
        QTRY_COMPARE(shown.panel.tool.calls.size(), 2);
        shown.view->repaint();
        QVERIFY(shown.panel.settle());
        QCOMPARE(shown.panel.tool.calls.size(), 2);
        QCOMPARE(shown.panel.tickers, 1);
    }
};

QTEST_MAIN(TestMenuBarView)
#include "TestMenuBarView.moc"
