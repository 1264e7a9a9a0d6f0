#include "ui/settings/SettingsFixture.h"

#include <QClipboard>
#include <QScrollArea>
#include <QScrollBar>
#include <QtTest>

using namespace Qt::StringLiterals;
using Tab = SettingsFixture::Tab;

class TestSettingsKeyboard final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_settings.reset(); }

    void arrowKeysWalkTheTabs();
    void controlTabWalksTheTabsAround();
    void newPageLeavesTheKeyboardToItsTab_data();
    void newPageLeavesTheKeyboardToItsTab();
    void tabKeyReachesEveryControlInView_data();
    void tabKeyReachesEveryControlInView();
    void pressUnderThePointerMovesNothing();
    void urlAndCommandsCanBeCopied();
    void pageTakesTheKeyboardOnlyToScroll();
    void onlyTheChosenDaypartIsATabStop();
    void arrowKeysChooseADaypart();
    void keyboardStaysInTheTabWhenTheButtonGoes();
    void returnAndSpacePressAButton();

private:
    static QWidget* focused() { return QApplication::focusWidget(); }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(focused(), key, modifiers); }
    static bool isWhollyInView(const QWidget& widget) { return widget.visibleRegion().boundingRect() == widget.rect(); }
    [[nodiscard]] QScrollArea& page() const {
        for (auto* area : m_settings->view()->findChildren<QScrollArea*>()) {
            if (area->isVisible()) {
                return *area;
            }
        }
        qFatal("no page");
    }

    std::unique_ptr<OpenSettings> m_settings;
};

void TestSettingsKeyboard::init() {
    m_settings = std::make_unique<OpenSettings>();
    QVERIFY(QTest::qWaitForWindowActive(m_settings->view()));
}

void TestSettingsKeyboard::arrowKeysWalkTheTabs() {
    QCOMPARE(focused(), &m_settings->tabs());
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    QCOMPARE(m_settings->tabs().currentIndex(), 2);
    QVERIFY(m_settings->text(u"Appearance"_s));
    press(Qt::Key_Left);
    QCOMPARE(m_settings->tabs().currentIndex(), 1);
    QCOMPARE(focused(), &m_settings->tabs());
}

void TestSettingsKeyboard::controlTabWalksTheTabsAround() {
    press(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(m_settings->tabs().currentIndex(), 1);
    for (const int expected : {0, 3}) {
        press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(m_settings->tabs().currentIndex(), expected);
    }
}

void TestSettingsKeyboard::newPageLeavesTheKeyboardToItsTab_data() {
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Ctrl+Tab") << true;
    QTest::newRow("press by an assistive program") << false;
}

void TestSettingsKeyboard::newPageLeavesTheKeyboardToItsTab() {
    QFETCH(bool, byKey);
    for (int tab = 0; tab < 4; ++tab) {
        m_settings->tabs().setCurrentIndex(tab);
        QCoreApplication::processEvents();
        press(Qt::Key_Backtab);
        QVERIFY(focused() != &m_settings->tabs());
        if (byKey) {
            press(Qt::Key_Tab, Qt::ControlModifier);
        } else {
            m_settings->tabs().setCurrentIndex((tab + 1) % 4);
        }
        QCOMPARE(m_settings->tabs().currentIndex(), (tab + 1) % 4);
        QCOMPARE(focused(), &m_settings->tabs());
    }
}

void TestSettingsKeyboard::tabKeyReachesEveryControlInView_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("bridge") << 0
                            << QStringList{u"http://127.0.0.1:43105"_s, u"Poll now"_s,
                                           u"Sign in with Google Workspace"_s, u"vorna server start"_s,
                                           u"vorna services start"_s};
    QTest::newRow("permissions") << 1 << QStringList{5, u"Open System Settings"_s};
    QTest::newRow("daypart") << 2 << QStringList{u"Dusk"_s, u"Follow clock (auto)"_s};
    QTest::newRow("about") << 3 << QStringList{u"Open Console"_s, u"Open Agents"_s, u"Download page"_s};
}

void TestSettingsKeyboard::tabKeyReachesEveryControlInView() {
    QFETCH(int, tab);
    QFETCH(QStringList, expected);
    m_settings->daypart.set(Daypart::dusk);
    m_settings->view()->resize(440, 380);
    m_settings->tabs().setCurrentIndex(tab);
    QTRY_VERIFY(m_settings->button(expected.last()) || m_settings->text(expected.last()));
    QCoreApplication::processEvents();
    for (const auto key : {Qt::Key_Backtab, Qt::Key_Tab}) {
        QStringList titles;
        for (press(key); focused() != &m_settings->tabs(); press(key)) {
            if (focused() != &page()) {
                const auto title = QAccessible::queryAccessibleInterface(focused())->text(QAccessible::Name);
                titles.insert(key == Qt::Key_Tab ? titles.size() : 0, title);
                QVERIFY2(isWhollyInView(*focused()), qPrintable(title));
            }
        }
        QCOMPARE(titles, expected);
    }
}

void TestSettingsKeyboard::pressUnderThePointerMovesNothing() {
    m_settings->view()->resize(440, 380);
    auto* const button = m_settings->button(u"Poll now"_s);
    QTRY_VERIFY(page().verticalScrollBar()->maximum() > 0);
    page().verticalScrollBar()->setValue(button->mapTo(page().widget(), QPoint{}).y() + 8);
    const auto pointer = button->mapTo(m_settings->view(), button->rect().bottomLeft()) + QPoint{10, -3};
    QVERIFY(!isWhollyInView(*button));
    QTest::mousePress(m_settings->view()->windowHandle(), Qt::LeftButton, {}, pointer);
    QCOMPARE(focused(), button);
    QTest::mouseRelease(m_settings->view()->windowHandle(), Qt::LeftButton, {}, pointer);
    QVERIFY(m_settings->status.polling);
}

void TestSettingsKeyboard::urlAndCommandsCanBeCopied() {
    for (const auto& text : {u"http://127.0.0.1:43105"_s, u"vorna server start"_s, u"vorna services start"_s}) {
        QTest::mouseDClick(m_settings->text(text), Qt::LeftButton);
        m_settings->text(text)->setFocus();
        QTest::keySequence(m_settings->text(text), QKeySequence::Copy);
        QCOMPARE(QApplication::clipboard()->text(), text);
    }
}

void TestSettingsKeyboard::pageTakesTheKeyboardOnlyToScroll() {
    m_settings->view()->resize(440, 380);
    QTRY_VERIFY(page().verticalScrollBar()->maximum() > 0);
    QCOMPARE(page().accessibleName(), u"Bridge"_s);
    const auto before = page().viewport()->grab().toImage();
    press(Qt::Key_Tab);
    QCOMPARE(focused(), &page());
    QVERIFY(page().viewport()->grab().toImage() != before);
    press(Qt::Key_PageDown);
    QVERIFY(page().verticalScrollBar()->value() > 0);
    m_settings->view()->resize(600, 1000);
    QTRY_COMPARE(page().verticalScrollBar()->maximum(), 0);
    QCOMPARE(page().focusPolicy(), Qt::NoFocus);
}

void TestSettingsKeyboard::onlyTheChosenDaypartIsATabStop() {
    m_settings->show(Tab::daypart);
    press(Qt::Key_Tab);
    QCOMPARE(focused(), m_settings->button(u"Day"_s));
    press(Qt::Key_Tab);
    QCOMPARE(focused(), &m_settings->tabs());
    m_settings->daypart.set(Daypart::night);
    QTRY_VERIFY(m_settings->button(u"Follow clock (auto)"_s));
    press(Qt::Key_Tab);
    QCOMPARE(focused(), m_settings->button(u"Night"_s));
}

void TestSettingsKeyboard::arrowKeysChooseADaypart() {
    m_settings->show(Tab::daypart);
    press(Qt::Key_Tab);
    press(Qt::Key_Down);
    QCOMPARE(m_settings->daypart.daypart.value(), Daypart::dusk);
    QVERIFY(m_settings->daypart.isManual);
    QCOMPARE(focused(), m_settings->button(u"Dusk"_s));
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    QCOMPARE(m_settings->daypart.daypart.value(), Daypart::dawn);
}

void TestSettingsKeyboard::keyboardStaysInTheTabWhenTheButtonGoes() {
    m_settings->show(Tab::daypart);
    m_settings->daypart.set(Daypart::dusk);
    QTRY_VERIFY(m_settings->button(u"Follow clock (auto)"_s));
    press(Qt::Key_Backtab);
    QCOMPARE(focused(), m_settings->button(u"Follow clock (auto)"_s));
    press(Qt::Key_Return);
    QTRY_COMPARE(focused(), m_settings->button(u"Day"_s));
}

void TestSettingsKeyboard::returnAndSpacePressAButton() {
    m_settings->show(Tab::about);
    press(Qt::Key_Backtab);
    press(Qt::Key_Return);
    press(Qt::Key_Enter);
    press(Qt::Key_Space);
    QCOMPARE(m_settings->openedPages, (QList<QUrl>{3, QUrl{u"https://vorna.localhost/download"_s}}));
}

QTEST_MAIN(TestSettingsKeyboard)

#include "TestSettingsKeyboard.moc"
