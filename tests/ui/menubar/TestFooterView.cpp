#include "PanelFixture.h"
#include "PanelReading.h"
#include "ui/menubar/FooterView.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {

struct Shown final {
    PanelFixture panel;
    FooterView view{panel.daypart, panel.notifications, panel.actions()};

    Shown() {
        view.setFixedWidth(340);
        view.show();
        view.adjustSize();
    }
    [[nodiscard]] QPushButton* button(const QString& title) { return PanelReading::named<QPushButton>(view, title); }
};

}

class TestFooterView final : public QObject {
    Q_OBJECT

private slots:
    void readsItsTitlesExactly() {
        Shown shown;
        QCOMPARE(PanelReading::names(shown.view),
                 (QStringList{u"Test notification"_s, u"Settings & permissions"_s, u"Quit vorna"_s}));
    }

    void everyTestNotificationIsAnotherOne() {
        Shown shown;
        shown.panel.daypart.set(Daypart::dusk);
        QTest::mouseClick(shown.button(u"Test notification"_s), Qt::LeftButton);
        QTest::mouseClick(shown.button(u"Test notification"_s), Qt::LeftButton);
        const auto& posted = shown.panel.center.posted;
        QCOMPARE(posted.size(), 2);
        QCOMPARE(posted[0].title, u"vorna"_s);
        QCOMPARE(posted[0].body, u"Desktop notifications are working · Dusk"_s);
        QVERIFY(posted[0].identifier != posted[1].identifier);
        for (const auto& request : posted) {
            const QUuid uuid{request.identifier};
            QVERIFY(!uuid.isNull());
            QCOMPARE(request.identifier, uuid.toString(QUuid::WithoutBraces).toUpper());
        }
    }

    void opensTheSettingsByClickAndByKey() {
        Shown shown;
        QApplication::setActiveWindow(&shown.view);
        QTest::mouseClick(shown.button(u"Settings & permissions"_s), Qt::LeftButton);
        QCOMPARE(shown.panel.settingsOpened, 1);
        QTest::keyClick(&shown.view, Qt::Key_Comma, Qt::ControlModifier);
        QTRY_COMPARE(shown.panel.settingsOpened, 2);
    }

    void quitsByClickAndByKey() {
        Shown shown;
        QApplication::setActiveWindow(&shown.view);
        QTest::mouseClick(shown.button(u"Quit vorna"_s), Qt::LeftButton);
        QCOMPARE(shown.panel.quits, 1);
        QTest::keyClick(&shown.view, Qt::Key_Q, Qt::ControlModifier);
        QTRY_COMPARE(shown.panel.quits, 2);
    }

    void anAmpersandIsNoShortcut() {
        Shown shown;
        QCOMPARE(shown.button(u"Settings & permissions"_s)->shortcut(), QKeySequence{Qt::CTRL | Qt::Key_Comma});
        QCOMPARE(shown.button(u"Quit vorna"_s)->shortcut(), QKeySequence{Qt::CTRL | Qt::Key_Q});
    }
};

QTEST_MAIN(TestFooterView)
#include "TestFooterView.moc"
