#include "ui/settings/ChoiceButton.h"
#include "ui/settings/DaypartTab.h"
#include "ui/settings/FormButton.h"
#include "ui/settings/SettingsFixture.h"

#include <QAccessible>
#include <QtTest>

using namespace Qt::StringLiterals;
using Style = FormText::Style;

namespace {

const auto following = u"Following local clock · dawn 5–10 · day 10–17 · dusk 17–21 · night else"_s;
const auto follow = u"Follow clock (auto)"_s;

}

class TestDaypartTab final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsItsTextsAndChoicesInOrder();
    void textsHaveTheirStyles();
    void clocksDaypartIsChosenWhileFollowing();
    void choosingPinsADaypart_data();
    void choosingPinsADaypart();
    void choosingTheChosenOnePinsIt();
    void anywhereInARowChooses();
    void pinnedElsewhereIsShownHere();
    void followClockGoesBackToTheClock();
    void arrowKeysChoose();
    void onlyTheChosenOneIsATabStop();
    void keyboardStaysInTheTabWhenTheButtonGoes();
    void choicesAreRadioButtonsForAccessibility();
    void heightStaysWhetherPinnedOrNot();

private:
    [[nodiscard]] ChoiceButton& choice(Daypart daypart) const {
        return *shownButton<ChoiceButton>(*m_tab, DaypartInfo::title(daypart));
    }
    [[nodiscard]] QList<bool> checks() const {
        QList<bool> found;
        for (const auto daypart : DaypartInfo::allCases) {
            found.append(choice(daypart).isChecked());
        }
        return found;
    }

    std::unique_ptr<SettingsFixture> m_fixture;
    std::unique_ptr<DaypartTab> m_tab;
};

void TestDaypartTab::init() {
    m_fixture = std::make_unique<SettingsFixture>();
    m_tab = std::make_unique<DaypartTab>(m_fixture->daypart);
    m_tab->resize(520, 680);
    m_tab->show();
    QVERIFY(QTest::qWaitForWindowActive(m_tab.get()));
}

void TestDaypartTab::cleanup() {
    m_tab.reset();
    m_fixture.reset();
}

void TestDaypartTab::showsItsTextsAndChoicesInOrder() {
    const QStringList expected{u"Appearance"_s, u"Daypart"_s, following};
    QCOMPARE(shownStrings(*m_tab), expected);
    int last = 0;
    for (const auto* const title : {"Dawn", "Day", "Dusk", "Night"}) {
        const auto* const button = shownButton<ChoiceButton>(*m_tab, QString::fromLatin1(title));
        QVERIFY(button);
        const auto top = button->mapTo(m_tab.get(), QPoint{}).y();
        QVERIFY(top > last);
        last = top;
    }
}

void TestDaypartTab::textsHaveTheirStyles() {
    QCOMPARE(shownText(*m_tab, u"Appearance"_s)->shownFont(), FormText({}, Style::headline).shownFont());
    QCOMPARE(shownText(*m_tab, u"Daypart"_s)->shownFont(), FormText({}, Style::body).shownFont());
    QCOMPARE(shownText(*m_tab, following)->shownFont(), FormText({}, Style::caption).shownFont());
    QCOMPARE(shownText(*m_tab, following)->shownColour(), FormText({}, Style::caption).shownColour());
}

void TestDaypartTab::clocksDaypartIsChosenWhileFollowing() {
    QVERIFY(!m_fixture->daypart.isManual);
    QCOMPARE(checks(), (QList<bool>{false, true, false, false}));
    QVERIFY(!shownButton(*m_tab, follow));
}

void TestDaypartTab::choosingPinsADaypart_data() {
    QTest::addColumn<Daypart>("daypart");
    for (const auto daypart : DaypartInfo::allCases) {
        QTest::newRow(qPrintable(DaypartInfo::title(daypart))) << daypart;
    }
}

void TestDaypartTab::choosingPinsADaypart() {
    QFETCH(Daypart, daypart);
    QTest::mouseClick(&choice(daypart), Qt::LeftButton);
    QCOMPARE(m_fixture->daypart.daypart.value(), daypart);
    QVERIFY(m_fixture->daypart.isManual);
    QTRY_VERIFY(shownButton(*m_tab, follow));
    QVERIFY(!shownText(*m_tab, following));
    QVERIFY(choice(daypart).isChecked());
    QCOMPARE(checks().count(true), 1);
}

void TestDaypartTab::choosingTheChosenOnePinsIt() {
    QTest::mouseClick(&choice(Daypart::day), Qt::LeftButton);
    QVERIFY(m_fixture->daypart.isManual);
    QCOMPARE(m_fixture->daypart.daypart.value(), Daypart::day);
    QTRY_VERIFY(shownButton(*m_tab, follow));
}

void TestDaypartTab::anywhereInARowChooses() {
    auto& night = choice(Daypart::night);
    QTest::mouseClick(&night, Qt::LeftButton, {}, QPoint{night.width() - 2, night.height() - 2});
    QCOMPARE(m_fixture->daypart.daypart.value(), Daypart::night);
}

void TestDaypartTab::pinnedElsewhereIsShownHere() {
    m_fixture->daypart.set(Daypart::dusk);
    QTRY_COMPARE(checks(), (QList<bool>{false, false, true, false}));
    QVERIFY(shownButton(*m_tab, follow));
    QVERIFY(!shownText(*m_tab, following));
}

void TestDaypartTab::followClockGoesBackToTheClock() {
    m_fixture->daypart.set(Daypart::dusk);
    QTRY_VERIFY(shownButton(*m_tab, follow));
    QTest::mouseClick(shownButton(*m_tab, follow), Qt::LeftButton);
    QVERIFY(!m_fixture->daypart.isManual);
    QTRY_COMPARE(checks(), (QList<bool>{false, true, false, false}));
    QVERIFY(shownText(*m_tab, following));
    QVERIFY(!shownButton(*m_tab, follow));
}

void TestDaypartTab::arrowKeysChoose() {
    choice(Daypart::day).setFocus();
    QTest::keyClick(m_tab->focusWidget(), Qt::Key_Down);
    QCOMPARE(m_fixture->daypart.daypart.value(), Daypart::dusk);
    QVERIFY(choice(Daypart::dusk).hasFocus());
    QTest::keyClick(m_tab->focusWidget(), Qt::Key_Up);
    QTest::keyClick(m_tab->focusWidget(), Qt::Key_Up);
    QCOMPARE(m_fixture->daypart.daypart.value(), Daypart::dawn);
    QVERIFY(m_fixture->daypart.isManual);
}

void TestDaypartTab::onlyTheChosenOneIsATabStop() {
    for (const auto daypart : DaypartInfo::allCases) {
        QCOMPARE((choice(daypart).focusPolicy() & Qt::TabFocus) != 0, daypart == Daypart::day);
    }
    m_fixture->daypart.set(Daypart::dusk);
    QTRY_VERIFY(shownButton(*m_tab, follow));
    choice(Daypart::dusk).setFocus();
    QTest::keyClick(m_tab->focusWidget(), Qt::Key_Tab);
    QVERIFY(shownButton(*m_tab, follow)->hasFocus());
    QTest::keyClick(m_tab->focusWidget(), Qt::Key_Backtab);
    QVERIFY(choice(Daypart::dusk).hasFocus());
}

void TestDaypartTab::keyboardStaysInTheTabWhenTheButtonGoes() {
    m_fixture->daypart.set(Daypart::dusk);
    QTRY_VERIFY(shownButton(*m_tab, follow));
    shownButton(*m_tab, follow)->setFocus();
    QTest::keyClick(m_tab->focusWidget(), Qt::Key_Return);
    QVERIFY(!m_fixture->daypart.isManual);
    QTRY_VERIFY(choice(Daypart::day).hasFocus());
}

void TestDaypartTab::choicesAreRadioButtonsForAccessibility() {
    for (const auto daypart : DaypartInfo::allCases) {
        auto* const interface = QAccessible::queryAccessibleInterface(&choice(daypart));
        QCOMPARE(interface->role(), QAccessible::RadioButton);
        QCOMPARE(interface->text(QAccessible::Name), DaypartInfo::title(daypart));
        QCOMPARE(interface->text(QAccessible::Description), u"Daypart"_s);
        QVERIFY(interface->state().checkable);
        QCOMPARE(bool(interface->state().checked), daypart == Daypart::day);
    }
}

void TestDaypartTab::heightStaysWhetherPinnedOrNot() {
    const auto& night = choice(Daypart::night);
    const auto before = night.mapTo(m_tab.get(), QPoint{});
    m_fixture->daypart.set(Daypart::night);
    QTRY_VERIFY(shownButton(*m_tab, follow));
    QCOMPARE(night.mapTo(m_tab.get(), QPoint{}), before);
    QVERIFY(shownButton(*m_tab, follow)->y() > night.y());
}

QTEST_MAIN(TestDaypartTab)

#include "TestDaypartTab.moc"
