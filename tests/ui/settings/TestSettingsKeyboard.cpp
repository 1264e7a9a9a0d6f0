#include "support/Rows.h"
#include "ui/settings/SettingsFixture.h"

#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QtTest>

using namespace Qt::StringLiterals;
using Tab = SettingsFixture::Tab;

class TestSettingsKeyboard final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_settings = std::make_unique<OpenSettings>();
        QVERIFY(QTest::qWaitForWindowActive(view()));
    }
    void cleanup() { m_settings.reset(); }

    void newPageLeavesTheKeyboardToItsTab() {
        enum { next, previous, byAssistiveProgram };
        for (const auto way : {next, previous, byAssistiveProgram}) {
            for (int tab = 0; tab < 4; ++tab) {
                const int expected = (tab + (way == previous ? 3 : 1)) % 4;
                m_settings->show(Tab{tab});
                press(Qt::Key_Backtab);
                QVERIFY(focused() != &tabs());
                way == next       ? press(Qt::Key_Tab, Qt::ControlModifier)
                : way == previous ? press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier)
                                  : tabs().setCurrentIndex(expected);
                QCOMPARE(tabs().currentIndex(), expected);
                QCOMPARE(focused(), &tabs());
            }
        }
    }

    void tabKeyReachesEveryControlInView_data() {
        const Rows<Tab, QStringList> row{"tab", "expected"};
        row("bridge", Tab::bridge,
            QStringList{u"http://127.0.0.1:43105"_s, u"Poll now"_s, u"Sign in with Google Workspace"_s,
                        u"vorna server start"_s, u"vorna services start"_s});
        row("permissions", Tab::permissions, QStringList{5, u"Open System Settings"_s});
        row("daypart, following", Tab::daypart, QStringList{u"Day"_s});
        row("daypart, pinned", Tab::daypart, QStringList{u"Dusk"_s, u"Follow clock (auto)"_s});
        row("about", Tab::about, QStringList{u"Open Console"_s, u"Open Agents"_s, u"Download page"_s});
    }
    void tabKeyReachesEveryControlInView() {
        QFETCH(Tab, tab);
        QFETCH(QStringList, expected);
        if (expected.contains(u"Dusk"_s)) {
            m_settings->daypart.set(Daypart::dusk);
        }
        view()->resize(440, 380);
        m_settings->show(tab);
        for (const auto key : {Qt::Key_Backtab, Qt::Key_Tab}) {
            QStringList titles;
            for (press(key); focused() != &tabs(); press(key)) {
                if (focused() != &page()) {
                    const auto title = QAccessible::queryAccessibleInterface(focused())->text(QAccessible::Name);
                    titles.insert(key == Qt::Key_Tab ? titles.size() : 0, title);
                    QVERIFY2(isWhollyInView(*focused()), qPrintable(title));
                }
            }
            QCOMPARE(titles, expected);
        }
    }

    void pressUnderThePointerMovesNothing() {
        view()->resize(440, 380);
        auto* const button = m_settings->button(u"Poll now"_s);
        QTRY_VERIFY(page().verticalScrollBar()->maximum() > 0);
        page().verticalScrollBar()->setValue(button->mapTo(page().widget(), QPoint{}).y() + 8);
        const auto pointer = button->mapTo(view(), button->rect().bottomLeft()) + QPoint{10, -3};
        QVERIFY(!isWhollyInView(*button));
        QTest::mousePress(view()->windowHandle(), Qt::LeftButton, {}, pointer);
        QCOMPARE(focused(), button);
        QTest::mouseRelease(view()->windowHandle(), Qt::LeftButton, {}, pointer);
        QVERIFY(m_settings->hasPolled());
    }

    /// And shows it at its edge, also where its content paints the whole ground.
    void pageTakesTheKeyboardOnlyToScroll() {
        view()->resize(440, 380);
        m_settings->show(Tab::permissions);
        QVERIFY(page().verticalScrollBar()->maximum() > 0);
        QCOMPARE(page().accessibleName(), u"Permissions"_s);
        const QRect place{page().mapTo(view(), QPoint{}), page().viewport()->size()};
        const auto shown = [&] { return view()->screen()->grabWindow(view()->winId()).toImage().copy(place); };
        const auto before = shown();
        const QRect inner = before.rect().adjusted(3, 3, -3, -3);
        press(Qt::Key_Tab);
        QCOMPARE(focused(), &page());
        QTRY_VERIFY(shown() != before);
        QCOMPARE(shown().copy(inner), before.copy(inner));
        press(Qt::Key_PageDown);
        QVERIFY(page().verticalScrollBar()->value() > 0);
        view()->resize(600, 1000);
        QTRY_COMPARE(page().verticalScrollBar()->maximum(), 0);
        QCOMPARE(page().focusPolicy(), Qt::NoFocus);
    }

    void keyboardStaysInTheTabWhenTheButtonGoes() {
        m_settings->daypart.set(Daypart::dusk);
        m_settings->show(Tab::daypart);
        press(Qt::Key_Backtab);
        QCOMPARE(focused(), m_settings->button(u"Follow clock (auto)"_s));
        press(Qt::Key_Return);
        QTRY_COMPARE(focused(), m_settings->button(u"Day"_s));
    }

private:
    static QWidget* focused() { return QApplication::focusWidget(); }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(focused(), key, modifiers); }
    static bool isWhollyInView(const QWidget& widget) { return widget.visibleRegion().boundingRect() == widget.rect(); }
    [[nodiscard]] SettingsView* view() const { return m_settings->view(); }
    [[nodiscard]] QTabBar& tabs() const { return m_settings->tabs(); }
    [[nodiscard]] QScrollArea& page() const {
        const auto all = view()->findChildren<QScrollArea*>();
        return **std::ranges::find_if(all, &QWidget::isVisible);
    }

    std::unique_ptr<OpenSettings> m_settings;
};

QTEST_MAIN(TestSettingsKeyboard)

#include "TestSettingsKeyboard.moc"
