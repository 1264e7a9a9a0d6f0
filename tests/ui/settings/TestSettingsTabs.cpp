#include "ui/kit/DotLabel.h"
#include "ui/settings/SettingsFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using Item = PermissionCenter::Item;
using Status = Item::Status;
using Tab = SettingsFixture::Tab;

namespace {

const auto following = u"Following local clock · dawn 5–10 · day 10–17 · dusk 17–21 · night else"_s;
const auto follow = u"Follow clock (auto)"_s;
const auto openPane = u"Open System Settings"_s;
const auto introduction = u"Grant only what you need for WARDEN, desk recover, and agent tooling."_s;

Item item(const QString& id, Status status, const std::optional<QUrl>& link = std::nullopt) {
    return {id, u"Title of "_s + id, u"Detail of "_s + id, status, link};
}

}

class TestSettingsTabs final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_settings.reset(); }

    void dotFollowsBridgeAndDaypart_data();
    void dotFollowsBridgeAndDaypart();
    void dotIsPaintedAnewWithTheDaypart();
    void valuesFollowTheModel();
    void severalChangesAreOneRendering();
    void pollNowPollsAtOnce();
    void signInRunsTheToolOnce();
    void longValuesAreWhollyLaidOutAtOnce();

    void permissionsFollowTheList();
    void paneLinksOpenTheirPanes();

    void choosingPinsADaypart_data();
    void choosingPinsADaypart();
    void pinnedElsewhereIsShownHere();
    void followClockGoesBackToTheClock();
    void linksOpenTheirPages();

private:
    void showItems(const QList<Item>& items) const;
    [[nodiscard]] QStringList checked() const;

    std::unique_ptr<OpenSettings> m_settings;
};

void TestSettingsTabs::init() {
    m_settings = std::make_unique<OpenSettings>();
    m_settings->view()->resize(520, 900);
}

/// Puts items into the list while its tab is shown.
void TestSettingsTabs::showItems(const QList<Item>& items) const {
    m_settings->show(Tab::permissions);
    m_settings->permissionCenter->items = items;
    QCoreApplication::processEvents();
}

QStringList TestSettingsTabs::checked() const {
    QStringList found;
    for (const auto daypart : DaypartInfo::allCases) {
        if (m_settings->button(DaypartInfo::title(daypart))->isChecked()) {
            found.append(DaypartInfo::title(daypart));
        }
    }
    return found;
}

void TestSettingsTabs::dotFollowsBridgeAndDaypart_data() {
    QTest::addColumn<bool>("isOnline");
    QTest::addColumn<Daypart>("daypart");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("online at day") << true << Daypart::day << QColor{30, 122, 74};
    QTest::newRow("offline at dawn") << false << Daypart::dawn << QColor{181, 58, 42};
    QTest::newRow("online at dusk") << true << Daypart::dusk << QColor{127, 217, 154};
    QTest::newRow("offline at night") << false << Daypart::night << QColor{255, 85, 85};
}

void TestSettingsTabs::dotFollowsBridgeAndDaypart() {
    QFETCH(bool, isOnline);
    QFETCH(Daypart, daypart);
    QFETCH(QColor, colour);
    m_settings->status.bridgeOnline = isOnline;
    m_settings->daypart.set(daypart);
    QCoreApplication::processEvents();
    auto* const dot = m_settings->view()->findChild<DotLabel*>();
    QCOMPARE(dot->size(), QSize(8, 8));
    QCOMPARE(dot->grab().toImage().pixelColor(4, 4), colour);
    QCOMPARE(dot->accessibleName(), isOnline ? u"ok"_s : u"not ok"_s);
    QCOMPARE(m_settings->text(u"Status"_s)->buddy(), m_settings->text(isOnline ? u"Online"_s : u"Offline"_s));
}

void TestSettingsTabs::dotIsPaintedAnewWithTheDaypart() {
    struct Paints final : QObject {
        int count = 0;
        bool eventFilter(QObject* watched, QEvent* event) override {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return QObject::eventFilter(watched, event);
        }
    } paints;
    QVERIFY(QTest::qWaitForWindowActive(m_settings->view()));
    QTest::qWait(50);
    m_settings->view()->findChild<DotLabel*>()->installEventFilter(&paints);
    m_settings->daypart.set(Daypart::night);
    QTRY_VERIFY(paints.count > 0);
}

void TestSettingsTabs::valuesFollowTheModel() {
    m_settings->status.bridgeOnline = true;
    m_settings->status.caddyDetail = u"<b>running &amp; well</b>"_s;
    m_settings->status.postgresDetail = u"accepting"_s;
    m_settings->status.accountLine = u"Signed in · CTA hidden"_s;
    QCoreApplication::processEvents();
    QCOMPARE(m_settings->strings().mid(4, 8),
             (QStringList{u"Online"_s, u"Caddy"_s, u"<b>running &amp; well</b>"_s, u"Postgres"_s, u"accepting"_s,
                          u"Account"_s, u"Desktop login"_s, u"Signed in · CTA hidden"_s}));
}

void TestSettingsTabs::severalChangesAreOneRendering() {
    m_settings->status.bridgeOnline = true;
    m_settings->status.bridgeOnline = false;
    m_settings->status.accountLine = u"Signed in · CTA hidden"_s;
    QVERIFY(m_settings->text(u"Not signed in"_s));
    QTRY_VERIFY(m_settings->text(u"Signed in · CTA hidden"_s));
    QVERIFY(m_settings->text(u"Offline"_s));
}

void TestSettingsTabs::pollNowPollsAtOnce() {
    m_settings->press(u"Poll now"_s);
    QVERIFY(m_settings->status.polling);
    QTRY_VERIFY(m_settings->text(u"bridge unreachable"_s));
    QVERIFY(m_settings->status.lastPoll.value());
}

void TestSettingsTabs::signInRunsTheToolOnce() {
    const auto title = u"Sign in with Google Workspace"_s;
    m_settings->press(title);
    m_settings->press(title);
    QCOMPARE(m_settings->tool.calls.size(), 1);
    const QStringList expected{u"auth"_s, u"login"_s, u"--surface"_s, u"macos"_s, u"--yes"_s};
    QCOMPARE(m_settings->tool.calls.first().arguments, expected);
    QVERIFY(m_settings->button(title)->isEnabled());
    m_settings->tool.calls.first().answer.deliver({.exitCode = 0, .stdOut = u"done"_s, .stdErr = {}});
    QTRY_COMPARE(m_settings->center.posted.size(), 1);
    QCOMPARE(m_settings->center.posted.first().title, u"vorna sign in"_s);
}

void TestSettingsTabs::longValuesAreWhollyLaidOutAtOnce() {
    m_settings->view()->resize(440, 380);
    QCoreApplication::processEvents();
    m_settings->status.caddyDetail = u"https://a-very-long-host-name.vorna.localhost/"_s.repeated(6);
    m_settings->status.postgresDetail = u"refused on every address that was tried "_s.repeated(5);
    for (int turn = 0; turn < 4; ++turn) { // announced, rendered, laid out
        QCoreApplication::processEvents();
    }
    QVERIFY(m_settings->text(m_settings->status.postgresDetail));
    for (const auto* const text : m_settings->texts()) {
        QVERIFY2(text->height() >= text->heightForWidth(text->width()), qPrintable(OpenSettings::said(text)));
        QVERIFY(text->mapTo(m_settings->view(), text->rect().topRight()).x() < m_settings->view()->width());
    }
}

void TestSettingsTabs::permissionsFollowTheList() {
    m_settings->show(Tab::permissions);
    QTRY_COMPARE(m_settings->strings().size(), 1 + 3 * 6);
    showItems({item(u"d"_s, Status::granted)});
    QCOMPARE(m_settings->strings(), (QStringList{introduction, u"Title of d"_s, u"Granted"_s, u"Detail of d"_s}));
    QVERIFY(!m_settings->button(openPane));
    showItems({});
    QCOMPARE(m_settings->strings(), QStringList{introduction});
}

void TestSettingsTabs::paneLinksOpenTheirPanes() {
    showItems({item(u"a"_s, Status::unknown, QUrl{u"pane:1"_s}), item(u"b"_s, Status::unknown),
               item(u"c"_s, Status::unknown, QUrl{u"pane:3"_s})});
    QCOMPARE(m_settings->button(openPane, 1)->accessibleDescription(), u"Title of c"_s);
    m_settings->press(openPane, 0);
    m_settings->press(openPane, 1);
    QCOMPARE(m_settings->openedPanes, (QList<QUrl>{QUrl{u"pane:1"_s}, QUrl{u"pane:3"_s}}));
}

void TestSettingsTabs::choosingPinsADaypart_data() {
    QTest::addColumn<Daypart>("daypart");
    for (const auto daypart : DaypartInfo::allCases) {
        QTest::newRow(qPrintable(DaypartInfo::title(daypart))) << daypart;
    }
}

/// Also the one that the clock has chosen.
void TestSettingsTabs::choosingPinsADaypart() {
    QFETCH(Daypart, daypart);
    m_settings->show(Tab::daypart);
    QCOMPARE(checked(), QStringList{u"Day"_s});
    QVERIFY(!m_settings->button(follow));
    QCOMPARE(m_settings->button(u"Dusk"_s)->accessibleDescription(), u"Daypart"_s);
    m_settings->press(DaypartInfo::title(daypart));
    QCOMPARE(m_settings->daypart.daypart.value(), daypart);
    QVERIFY(m_settings->daypart.isManual);
    QTRY_VERIFY(m_settings->button(follow));
    QVERIFY(!m_settings->text(following));
    QCOMPARE(checked(), QStringList{DaypartInfo::title(daypart)});
}

void TestSettingsTabs::pinnedElsewhereIsShownHere() {
    m_settings->show(Tab::daypart);
    const auto place = m_settings->button(u"Night"_s)->mapTo(m_settings->view(), QPoint{});
    m_settings->daypart.set(Daypart::dusk);
    QTRY_COMPARE(checked(), QStringList{u"Dusk"_s});
    QVERIFY(m_settings->button(follow));
    QVERIFY(!m_settings->text(following));
    QCoreApplication::processEvents();
    QCOMPARE(m_settings->button(u"Night"_s)->mapTo(m_settings->view(), QPoint{}), place);
}

void TestSettingsTabs::followClockGoesBackToTheClock() {
    m_settings->daypart.set(Daypart::dusk);
    m_settings->show(Tab::daypart);
    m_settings->press(follow);
    QVERIFY(!m_settings->daypart.isManual);
    QTRY_COMPARE(checked(), QStringList{u"Day"_s});
    QVERIFY(m_settings->text(following));
    QVERIFY(!m_settings->button(follow));
}

void TestSettingsTabs::linksOpenTheirPages() {
    m_settings->show(Tab::about);
    for (const auto& title : {u"Open Console"_s, u"Open Agents"_s, u"Download page"_s}) {
        m_settings->press(title);
    }
    QCOMPARE(m_settings->openedPages, (QList<QUrl>{QUrl{u"https://vorna.localhost/dashboard"_s},
                                                   QUrl{u"https://vorna.localhost/dashboard/agents"_s},
                                                   QUrl{u"https://vorna.localhost/download"_s}}));
}

QTEST_MAIN(TestSettingsTabs)

#include "TestSettingsTabs.moc"
