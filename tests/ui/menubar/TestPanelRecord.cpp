#include "support/ApprovedRecord.h"
#include "ui/DaypartColours.h"
#include "ui/VersionLabels.h"
#include "ui/menubar/PanelFixture.h"
#include "ui/menubar/PanelFrame.h"
#include "ui/menubar/PanelReading.h"
#include "ui/menubar/PanelWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFontDatabase>

using namespace Qt::StringLiterals;
using Band = StatusModel::Band;

namespace {

constexpr QRect anchor{300, 0, 24, 24};

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
        panel.fill();
        panel.status.lastError = u"The request timed out."_s;
        panel.status.cliMessage = u"done in 2 s"_s;
        return true;
    }
    [[nodiscard]] QString sections() {
        (void)drawn(*view);
        return u"below all: "_s + ground() + ApprovedRecord::sections(*view, colours);
    }
    /// What the view paints itself, below its sections.
    [[nodiscard]] QString ground() { return ApprovedRecord::painted(*view, colours).section(u'\n', 0, 0) + u'\n'; }
    [[nodiscard]] QList<QAbstractButton*> buttons() const { return view->findChildren<QAbstractButton*>(); }
};

void unreachable(Shown& shown) {
    auto& status = shown.panel.status;
    status.bridgeOnline = false;
    status.caddyBand = Band::unknown;
    status.caddyDetail = u"bridge unreachable"_s;
    status.postgresOk = std::nullopt;
    for (auto* text : {&status.postgresDetail, &status.hostLoad, &status.hostMemory, &status.hostDisk}) {
        *text = u"—"_s;
    }
    status.services = QList<StatusModel::ServiceRow>{};
    status.lastError = u"connection refused"_s;
    status.lastPoll = std::nullopt;
    status.cliMessage = std::nullopt;
}

void withoutServices(Shown& shown) {
    shown.panel.status.services = QList<StatusModel::ServiceRow>{};
    shown.panel.status.lastError = std::nullopt;
}

void withTexts(Shown& shown, const QString& text) {
    auto& status = shown.panel.status;
    for (auto* property :
         {&status.hostLoad, &status.hostMemory, &status.hostDisk, &status.caddyDetail, &status.postgresDetail}) {
        *property = text;
    }
    status.lastError = text;
    status.cliMessage = text;
    status.services = {
        {text, text, true, text, {}}, {text, u"short"_s, false, text, {}}, {text, text, true, u"ok"_s, {}}};
}

void middling(Shown& shown) {
    shown.panel.status.hostDisk = u"71% · 138 GB"_s;
    shown.panel.status.caddyDetail = u"two lines of a text that has to be wrapped once"_s;
    shown.panel.status.services = {
        {{}, u"edge"_s, true, u"running · 4/4 sites · 12 routes · tls · http/3 · http/2"_s, {}}};
}

template <Band band>
void inBand(Shown& shown) {
    shown.panel.status.caddyBand = band;
    shown.panel.status.postgresOk = band == Band::red ? std::optional{false} : std::nullopt;
}

template <Daypart daypart>
void pinned(Shown& shown) {
    shown.panel.daypart.set(daypart);
}

void pressed(Shown& shown) {
    pinned<Daypart::day>(shown);
    (void)drawn(*shown.view);
    for (auto* button : shown.buttons()) {
        button->setDown(true);
    }
}

struct State final {
    const char* name;
    void (*make)(Shown&);
};

constexpr State states[]{
    {"unreachable", unreachable},
    {"no services", withoutServices},
    {"long texts", [](Shown& shown) { withTexts(shown, u"words of a long text · "_s.repeated(30)); }},
    {"empty texts", [](Shown& shown) { withTexts(shown, {}); }},
    {"middling texts", middling},
    {"busy", [](Shown& shown) { shown.panel.status.cliBusy = true; }},
    {"amber", inBand<Band::amber>},
    {"red", inBand<Band::red>},
    {"unknown", inBand<Band::unknown>},
    {"dawn", pinned<Daypart::dawn>},
    {"dusk", pinned<Daypart::dusk>},
    {"night", pinned<Daypart::night>},
    {"pressed", pressed},
};

}
Q_DECLARE_METATYPE(const State*)

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

    void otherStates_data() {
        QTest::addColumn<const State*>("state");
        for (const auto& state : states) {
            QTest::newRow(state.name) << &state;
        }
    }
    void otherStates() {
        QFETCH(const State*, state);
        Shown shown;
        QVERIFY(shown.show());
        const QString base = shown.sections();
        state->make(shown);
        compare(u"panel, "_s + QString::fromLatin1(state->name),
                ApprovedRecord::withoutSectionsOf(base, shown.sections()));
    }

    void desktopsDirectionChangesNothing() {
        QApplication::setLayoutDirection(Qt::RightToLeft);
        const auto back = qScopeGuard([] { QApplication::setLayoutDirection(Qt::LeftToRight); });
        Shown shown;
        QVERIFY(shown.show());
        compare(u"panel"_s, shown.sections());
    }

    void readingOrderAndTabOrder() {
        Shown shown;
        QVERIFY(shown.show());
        unreachable(shown);
        (void)drawn(*shown.view);
        QString text = PanelReading::names(*shown.view).join(u'\n') + u"\n\nTab\n"_s +
                       PanelReading::tabOrder(*shown.view).join(u'\n') + u'\n';
        compare(u"panel, order"_s, text.replace(VersionLabels::caption(), u"(the version)"_s));
    }

    void focusedButtons() {
        Shown shown;
        QVERIFY(shown.show());
        unreachable(shown);
        pinned<Daypart::day>(shown);
        (void)drawn(*shown.view);
        QString text;
        QStringList names;
        for (;;) {
            QTest::keyClick(QApplication::focusWidget() == nullptr ? shown.view.get() : QApplication::focusWidget(),
                            Qt::Key_Tab);
            auto* focused = QApplication::focusWidget();
            if (focused == nullptr || names.contains(focused->accessibleName())) {
                break;
            }
            names += focused->accessibleName();
            text += names.last() + u'\n' + ApprovedRecord::painted(*focused, shown.colours) + u'\n';
        }
        QVERIFY(!names.isEmpty());
        compare(u"panel, focused"_s, text);
    }

    void windowAround_data() {
        QTest::addColumn<bool>("isComposited");
        QTest::newRow("round") << true;
        QTest::newRow("square") << false;
    }
    void windowAround() {
        QFETCH(bool, isComposited);
        Shown shown;
        PanelWindow window{std::move(shown.view), shown.panel.daypart, Qt::Popup, PanelWindow::PlacedBy::us,
                           [isComposited] { return isComposited; }};
        window.showAt(anchor);
        QVERIFY(shown.panel.settle());
        shown.panel.fill();
        window.renderPending();
        QCoreApplication::processEvents();
        QVERIFY(window.height() < 1000);
        compare(u"panel's frame, "_s + QString::fromLatin1(QTest::currentDataTag()),
                ApprovedRecord::painted(*window.findChild<PanelFrame*>(), shown.colours));
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
