#include "support/ApprovedRecord.h"
#include "ui/VersionLabels.h"
#include "ui/menubar/PanelFrame.h"
#include "ui/menubar/PanelReading.h"
#include "ui/menubar/PanelStates.h"
#include "ui/menubar/PanelWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFontDatabase>

using namespace Qt::StringLiterals;

namespace {

constexpr QRect anchor{300, 0, 24, 24};

const QStringList sectionNames{u"header"_s,  u"metrics"_s,        u"services"_s,
                               u"actions"_s, u"daypart picker"_s, u"footer"_s};

/// The panel whole, in a window as high as it needs.
struct Shown final {
    PanelFixture panel;
    DaypartColours colours{panel.daypart};
    std::unique_ptr<MenuBarView> view = panel.makeView();

    [[nodiscard]] bool show() {
        view->show();
        if (!QTest::qWaitForWindowActive(view.get()) || !panel.settle()) {
            return false;
        }
        if (auto* focused = view->focusWidget()) {
            focused->clearFocus();
        }
        const auto children = view->findChildren<PanelSection*>(Qt::FindDirectChildrenOnly);
        for (qsizetype i = 0; i < children.size(); ++i) {
            children.at(i)->setObjectName(sectionNames.at(i));
        }
        PanelStates::healthy(panel);
        return true;
    }
    [[nodiscard]] QString sections() {
        (void)drawn(*view);
        return ApprovedRecord::sections(*view, colours);
    }
};

}

/// What the panel paints, held against what was approved; `script/approve` approves what it paints now.
class TestPanelRecord final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QVERIFY(QFontDatabase::addApplicationFont(QStringLiteral(VORNA_FONTS "/rounded/rounded.ttf")) >= 0);
    }

    void panelInUse() {
        Shown shown;
        QVERIFY(shown.show());
        compare(u"panel"_s, shown.sections());
    }

    void otherStates_data() { PanelStates::addRows(); }
    void otherStates() {
        QFETCH(const PanelState*, state);
        Shown shown;
        QVERIFY(shown.show());
        const QString base = shown.sections();
        state->make(shown.panel);
        compare(u"panel, "_s + QString::fromLatin1(state->name),
                ApprovedRecord::withoutSectionsOf(base, shown.sections()));
    }

    void pressedButtons() {
        Shown shown;
        QVERIFY(shown.show());
        const QString base = shown.sections();
        shown.panel.daypart.set(Daypart::day);
        (void)drawn(*shown.view);
        for (auto* button : shown.view->findChildren<QAbstractButton*>()) {
            button->setDown(true);
        }
        compare(u"panel, pressed"_s, ApprovedRecord::withoutSectionsOf(base, shown.sections()));
    }

    void desktopsDirectionChangesNothing() {
        QApplication::setLayoutDirection(Qt::RightToLeft);
        const auto back = qScopeGuard([] { QApplication::setLayoutDirection(Qt::LeftToRight); });
        Shown shown;
        QVERIFY(shown.show());
        compare(u"panel"_s, shown.sections());
    }

    void readingOrder() {
        Shown shown;
        QVERIFY(shown.show());
        PanelStates::unreachable(shown.panel);
        (void)drawn(*shown.view);
        QString text = PanelReading::names(*shown.view).join(u'\n') + u'\n';
        compare(u"panel, order"_s, text.replace(VersionLabels::caption(), u"(the version)"_s));
    }

    void focusedControlsInTheOrderOfTheTabKey() {
        Shown shown;
        QVERIFY(shown.show());
        PanelStates::unreachable(shown.panel);
        shown.panel.daypart.set(Daypart::day);
        (void)drawn(*shown.view);
        QString text;
        for (QWidget* focused = shown.view.get(); focused != nullptr; focused = QApplication::focusWidget()) {
            const QString heading = focused->accessibleName() + u'\n';
            if (text.startsWith(heading)) {
                break;
            }
            text += focused == shown.view.get() ? QString{}
                                                : heading + ApprovedRecord::painted(*focused, shown.colours) + u'\n';
            QTest::keyClick(focused, Qt::Key_Tab);
        }
        compare(u"panel, focused"_s, text);
    }

    void windowAround() {
        for (const bool isComposited : {true, false}) {
            Shown shown;
            PanelWindow window{std::move(shown.view), shown.panel.daypart, Qt::Popup, PanelWindow::PlacedBy::us,
                               [isComposited] { return isComposited; }};
            window.showAt(anchor);
            QVERIFY(shown.panel.settle());
            shown.panel.fill();
            window.renderPending();
            QCoreApplication::processEvents();
            QVERIFY(window.height() < 1000);
            compare(isComposited ? u"panel's frame, round"_s : u"panel's frame, square"_s,
                    ApprovedRecord::painted(*window.findChild<PanelFrame*>(), shown.colours));
        }
    }

private:
    static void compare(const QString& name, const QString& text) {
        const QString difference = ApprovedRecord::difference(name, text);
        if (!difference.isEmpty()) {
            fputs(qPrintable(difference + u'\n'), stdout); // a message of the test would be cut
            QFAIL("something else is painted than was approved");
        }
    }
};

QTEST_MAIN(TestPanelRecord)
#include "TestPanelRecord.moc"
