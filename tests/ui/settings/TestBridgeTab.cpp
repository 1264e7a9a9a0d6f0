#include "ui/kit/DotLabel.h"
#include "ui/settings/BridgeTab.h"
#include "ui/settings/SettingsFixture.h"

#include <QAccessible>
#include <QtTest>

using namespace Qt::StringLiterals;
using Style = FormText::Style;

class TestBridgeTab final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsItsTextsInOrder();
    void textsHaveTheirStyles_data();
    void textsHaveTheirStyles();
    void labelsLeadAndValuesTrail();
    void dotFollowsBridgeAndDaypart_data();
    void dotFollowsBridgeAndDaypart();
    void dotIsEightPoints();
    void valuesFollowTheModel();
    void urlStaysWhereverTheClientLooks();
    void severalChangesAreOneRendering();
    void pollNowPollsAtOnce();
    void signInRunsTheTool();
    void secondSignInIsDroppedWhileOneRuns();
    void longValuesAreWhollyLaidOutAtOnce();
    void markupIsShownAsItIs();
    void accessibleNamesAreWhatIsShown();

private:
    std::unique_ptr<SettingsFixture> m_fixture;
    std::unique_ptr<BridgeTab> m_tab;
};

void TestBridgeTab::init() {
    m_fixture = std::make_unique<SettingsFixture>();
    m_tab = std::make_unique<BridgeTab>(m_fixture->status, m_fixture->daypart);
    m_tab->resize(520, 900);
    m_tab->show();
}

void TestBridgeTab::cleanup() {
    m_tab.reset();
    m_fixture.reset();
}

void TestBridgeTab::showsItsTextsInOrder() {
    const QStringList expected{
        u"Local bridge"_s,
        u"URL"_s,
        u"http://127.0.0.1:43105"_s,
        u"Status"_s,
        u"Offline"_s,
        u"Caddy"_s,
        u"—"_s,
        u"Postgres"_s,
        u"—"_s,
        u"Account"_s,
        u"Desktop login"_s,
        u"Not signed in"_s,
        u"After a successful login the web dashboard hides Download for Mac."_s,
        u"Start bridge"_s,
        u"vorna server start"_s,
        u"or"_s,
        u"vorna services start"_s,
        u"Bridge is the Python FastAPI process on port 43105 (not the legacy 43003 default)."_s,
    };
    QCOMPARE(shownStrings(*m_tab), expected);
    QVERIFY(shownButton(*m_tab, u"Poll now"_s));
    QVERIFY(shownButton(*m_tab, u"Sign in with Google Workspace"_s));
}

void TestBridgeTab::textsHaveTheirStyles_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<Style>("style");
    const auto row = [](const char* text, Style style) { QTest::newRow(text) << QString::fromUtf8(text) << style; };
    row("Local bridge", Style::headline);
    row("URL", Style::body);
    row("http://127.0.0.1:43105", Style::monospaced);
    row("Offline", Style::body);
    row("caddy detail", Style::captionMonospaced);
    row("postgres detail", Style::captionMonospaced);
    row("Not signed in", Style::caption);
    row("After a successful login the web dashboard hides Download for Mac.", Style::caption);
    row("vorna server start", Style::monospaced);
    row("or", Style::caption);
    row("vorna services start", Style::monospaced);
    row("Bridge is the Python FastAPI process on port 43105 (not the legacy 43003 default).", Style::caption);
}

void TestBridgeTab::textsHaveTheirStyles() {
    QFETCH(QString, text);
    QFETCH(Style, style);
    m_fixture->status.caddyDetail = u"caddy detail"_s;
    m_fixture->status.postgresDetail = u"postgres detail"_s;
    QTRY_VERIFY(shownText(*m_tab, text));
    const auto* const shown = shownText(*m_tab, text);
    const FormText same{text, style};
    QCOMPARE(shown->shownFont(), same.shownFont());
    QCOMPARE(shown->shownColour(), same.shownColour());
}

void TestBridgeTab::labelsLeadAndValuesTrail() {
    const auto right = [&](const FormText* text) { return text->mapTo(m_tab.get(), text->rect().topRight()).x(); };
    const auto left = [&](const FormText* text) { return text->mapTo(m_tab.get(), QPoint{}).x(); };
    const auto* const url = shownText(*m_tab, u"http://127.0.0.1:43105"_s);
    const auto* const login = shownText(*m_tab, u"Not signed in"_s);
    QCOMPARE(left(shownText(*m_tab, u"URL"_s)), left(shownText(*m_tab, u"Desktop login"_s)));
    QCOMPARE(right(url), right(login));
    QVERIFY(right(url) > m_tab->width() * 3 / 4);
    QVERIFY(url->alignment().testFlag(Qt::AlignTrailing));
}

void TestBridgeTab::dotFollowsBridgeAndDaypart_data() {
    QTest::addColumn<bool>("isOnline");
    QTest::addColumn<Daypart>("daypart");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("online at day") << true << Daypart::day << QColor{30, 122, 74};
    QTest::newRow("offline at dawn") << false << Daypart::dawn << QColor{181, 58, 42};
    QTest::newRow("online at dusk") << true << Daypart::dusk << QColor{127, 217, 154};
    QTest::newRow("offline at night") << false << Daypart::night << QColor{255, 85, 85};
}

void TestBridgeTab::dotFollowsBridgeAndDaypart() {
    QFETCH(bool, isOnline);
    QFETCH(Daypart, daypart);
    QFETCH(QColor, colour);
    m_fixture->status.bridgeOnline = isOnline;
    m_fixture->daypart.set(daypart);
    auto* const dot = m_tab->findChild<DotLabel*>();
    QTRY_COMPARE(dot->grab().toImage().pixelColor(4, 4), colour);
    QCOMPARE(dot->accessibleName(), isOnline ? u"ok"_s : u"not ok"_s);
    QVERIFY(shownText(*m_tab, isOnline ? u"Online"_s : u"Offline"_s));
}

void TestBridgeTab::dotIsEightPoints() {
    const auto* const dot = m_tab->findChild<DotLabel*>();
    const auto* const text = shownText(*m_tab, u"Offline"_s);
    QCOMPARE(dot->size(), QSize(8, 8));
    const auto dotCentre = dot->mapTo(m_tab.get(), dot->rect().center());
    const auto textCentre = text->mapTo(m_tab.get(), text->rect().center());
    QVERIFY(std::abs(dotCentre.y() - textCentre.y()) <= 1);
    QVERIFY(dotCentre.x() < text->mapTo(m_tab.get(), QPoint{}).x());
}

void TestBridgeTab::valuesFollowTheModel() {
    m_fixture->status.bridgeOnline = true;
    m_fixture->status.caddyDetail = u"running · 3/4 sites"_s;
    m_fixture->status.postgresDetail = u"accepting"_s;
    m_fixture->status.accountLine = u"Signed in · CTA hidden"_s;
    QTRY_VERIFY(shownText(*m_tab, u"Signed in · CTA hidden"_s));
    QVERIFY(shownText(*m_tab, u"Online"_s));
    QVERIFY(shownText(*m_tab, u"running · 3/4 sites"_s));
    QVERIFY(shownText(*m_tab, u"accepting"_s));
}

void TestBridgeTab::urlStaysWhereverTheClientLooks() {
    QVERIFY(StatusModel::defaultBridge() != QUrl{u"http://127.0.0.1:9"_s});
    QVERIFY(shownText(*m_tab, u"http://127.0.0.1:43105"_s));
}

void TestBridgeTab::severalChangesAreOneRendering() {
    m_fixture->status.bridgeOnline = true;
    m_fixture->status.bridgeOnline = false;
    m_fixture->status.accountLine = u"Signed in · CTA hidden"_s;
    QVERIFY(shownText(*m_tab, u"Not signed in"_s));
    QTRY_VERIFY(shownText(*m_tab, u"Signed in · CTA hidden"_s));
    QVERIFY(shownText(*m_tab, u"Offline"_s));
}

void TestBridgeTab::pollNowPollsAtOnce() {
    QTest::mouseClick(shownButton(*m_tab, u"Poll now"_s), Qt::LeftButton);
    QVERIFY(m_fixture->status.polling);
    QTRY_VERIFY(!m_fixture->status.polling);
    QTRY_VERIFY(shownText(*m_tab, u"bridge unreachable"_s));
    QVERIFY(m_fixture->status.lastPoll.value());
}

void TestBridgeTab::signInRunsTheTool() {
    auto* const button = shownButton(*m_tab, u"Sign in with Google Workspace"_s);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(m_fixture->tool.calls.size(), 1);
    const QStringList expected{u"auth"_s, u"login"_s, u"--surface"_s, u"macos"_s, u"--yes"_s};
    QCOMPARE(m_fixture->tool.calls.first().arguments, expected);
    QVERIFY(button->isEnabled());
    m_fixture->tool.calls.first().answer.deliver({.exitCode = 0, .stdOut = u"done"_s, .stdErr = {}});
    QTRY_COMPARE(m_fixture->center.posted.size(), 1);
    QCOMPARE(m_fixture->center.posted.first().title, u"vorna sign in"_s);
}

void TestBridgeTab::secondSignInIsDroppedWhileOneRuns() {
    auto* const button = shownButton(*m_tab, u"Sign in with Google Workspace"_s);
    button->click();
    button->click();
    QCOMPARE(m_fixture->tool.calls.size(), 1);
}

void TestBridgeTab::longValuesAreWhollyLaidOutAtOnce() {
    m_tab->resize(440, 300);
    m_fixture->status.caddyDetail = u"https://a-very-long-host-name.vorna.localhost/"_s.repeated(6);
    m_fixture->status.postgresDetail = u"refused on every address that was tried "_s.repeated(5);
    QTRY_VERIFY(shownText(*m_tab, m_fixture->status.postgresDetail));
    for (const auto* const text : shownTexts(*m_tab)) {
        QVERIFY2(text->height() >= text->heightForWidth(text->width()), qPrintable(text->text()));
        QVERIFY(text->mapTo(m_tab.get(), text->rect().topRight()).x() < m_tab->width());
    }
}

void TestBridgeTab::markupIsShownAsItIs() {
    m_fixture->status.caddyDetail = u"<b>&amp; <img src=x></b>"_s;
    QTRY_VERIFY(shownText(*m_tab, u"<b>&amp; <img src=x></b>"_s));
    QCOMPARE(shownText(*m_tab, u"<b>&amp; <img src=x></b>"_s)->textFormat(), Qt::PlainText);
}

void TestBridgeTab::accessibleNamesAreWhatIsShown() {
    for (auto* const text : shownTexts(*m_tab)) {
        auto* const interface = QAccessible::queryAccessibleInterface(text);
        QCOMPARE(interface->role(), QAccessible::StaticText);
        QCOMPARE(interface->text(QAccessible::Name), text->text());
    }
    auto* const button = shownButton(*m_tab, u"Poll now"_s);
    auto* const interface = QAccessible::queryAccessibleInterface(button);
    QCOMPARE(interface->role(), QAccessible::Button);
    QCOMPARE(interface->text(QAccessible::Name), u"Poll now"_s);
    interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_VERIFY(m_fixture->status.lastPoll.value());
    auto* const value = QAccessible::queryAccessibleInterface(shownText(*m_tab, u"http://127.0.0.1:43105"_s));
    const auto relations = value->relations(QAccessible::Label);
    QCOMPARE(relations.size(), 1);
    QCOMPARE(relations.first().first->text(QAccessible::Name), u"URL"_s);
}

QTEST_MAIN(TestBridgeTab)

#include "TestBridgeTab.moc"
