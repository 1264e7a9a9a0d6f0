#include "ui/settings/SettingsFixture.h"
#include "ui/settings/SettingsView.h"
#include "ui/settings/SettingsWindow.h"

#include <QAccessible>
#include <QApplication>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTabBar>
#include <QtTest>

using namespace Qt::StringLiterals;

class TestSettingsWindow final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void tabsStandInOrderWithTheirSymbols();
    void opensOnTheFirstTab();
    void firstFrameIsComplete();
    void isAtLeast440By380AndGrowsWithoutLimit();
    void largeFontStillShowsEveryTab();
    void growingFontStillShowsEveryTab();
    void openingAgainRaisesTheSameWindowAsItIs();
    void closesByItsKeys_data();
    void closesByItsKeys();
    void closingGivesEverythingBack();
    void closingDoesNotEndTheProgram();
    void reopeningStartsAfresh();
    void reopeningAtOnceAfterClosingWorks();
    void reopeningReadsNoIconAgain();
    void permissionsAreReadOnEachShowingOfTheirTab();
    void answerAfterLeavingTheTabIsDropped();
    void answerAfterClosingIsDropped();
    void opensPanesAndPagesThroughItsLinks();
    void arrowKeysWalkTheTabs();
    void controlTabWalksTheTabsAround();
    void tabKeyReachesEveryControl();
    void tabsAreATabListForAccessibility();
    void followsThePaletteAtOnce();
    void followsTheFontAtOnce();
    void contentScrollsWhereItIsTooHigh();
    void looksDifferentOnEachTab();

private:
    [[nodiscard]] SettingsView* view() const {
        for (auto* const widget : QApplication::topLevelWidgets()) {
            if (auto* const found = qobject_cast<SettingsView*>(widget); found != nullptr && found->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }
    [[nodiscard]] QTabBar& tabs() const { return *view()->findChild<QTabBar*>(); }

    std::unique_ptr<SettingsFixture> m_fixture;
    std::unique_ptr<SettingsWindow> m_window;
    QFont m_font;
    QPalette m_palette;
    int m_permissionCenters = 0;
    QPointer<PermissionCenter> m_permissions;
    int m_refreshes = 0;
};

void TestSettingsWindow::initTestCase() {
    m_font = QApplication::font();
    m_palette = QApplication::palette();
}

void TestSettingsWindow::init() {
    m_fixture = std::make_unique<SettingsFixture>();
    m_permissionCenters = 0;
    m_refreshes = 0;
    const auto makePermissions = [this] {
        ++m_permissionCenters;
        auto made = m_fixture->newPermissions();
        m_permissions = made.get();
        connect(made.get(), &ObservableObject::objectWillChange, this, [this] { ++m_refreshes; });
        return made;
    };
    m_window = std::make_unique<SettingsWindow>(
        m_fixture->status, m_fixture->daypart, makePermissions,
        SettingsLinks{.openPage = [this](const QUrl& page) { m_fixture->openedPages.append(page); },
                      .openPane = [this](const QUrl& pane) { m_fixture->openedPanes.append(pane); }});
    m_window->open();
    QVERIFY(QTest::qWaitForWindowActive(view()));
}

void TestSettingsWindow::cleanup() {
    m_window.reset();
    m_fixture.reset();
    QApplication::setPalette(m_palette);
    QApplication::setFont(m_font);
}

void TestSettingsWindow::tabsStandInOrderWithTheirSymbols() {
    const QList<std::pair<QString, QString>> expected{{u"Bridge"_s, u"network"_s},
                                                      {u"Permissions"_s, u"lock.shield"_s},
                                                      {u"Daypart"_s, u"sun.horizon"_s},
                                                      {u"About"_s, u"info.circle"_s}};
    QCOMPARE(tabs().count(), expected.size());
    for (int index = 0; index < tabs().count(); ++index) {
        QCOMPARE(tabs().tabText(index), expected.at(index).first);
        QCOMPARE(tabs().tabData(index).toString(), expected.at(index).second);
    }
}

void TestSettingsWindow::opensOnTheFirstTab() {
    QCOMPARE(tabs().currentIndex(), 0);
    QVERIFY(shownText(*view(), u"Local bridge"_s));
    QVERIFY(!shownText(*view(), u"Appearance"_s));
    QCOMPARE(m_refreshes, 0);
}

void TestSettingsWindow::firstFrameIsComplete() {
    view()->close();
    m_fixture->status.bridgeOnline = true;
    m_fixture->status.caddyDetail = u"a detail that is long enough to need several lines in the window, "_s.repeated(3);
    m_window->open();
    QVERIFY(shownText(*view(), u"Online"_s));
    for (const auto* const text : shownTexts(*view())) {
        QVERIFY2(text->height() >= text->heightForWidth(text->width()), qPrintable(text->text()));
    }
}

void TestSettingsWindow::isAtLeast440By380AndGrowsWithoutLimit() {
    QCOMPARE(view()->minimumSize(), QSize(440, 380));
    QCOMPARE(view()->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    view()->resize(100, 100);
    QCOMPARE(view()->size(), QSize(440, 380));
    view()->resize(2000, 1500);
    QCOMPARE(view()->size(), QSize(2000, 1500));
}

void TestSettingsWindow::largeFontStillShowsEveryTab() {
    view()->close();
    auto large = QApplication::font();
    large.setPointSizeF(large.pointSizeF() * 3);
    QApplication::setFont(large);
    m_window->open();
    view()->resize(100, 100);
    QVERIFY(view()->width() > 440);
    const auto last = tabs().tabRect(tabs().count() - 1);
    QVERIFY(tabs().mapTo(view(), last.topRight()).x() < view()->width());
    QVERIFY(tabs().mapTo(view(), QPoint{}).x() >= 0);
}

void TestSettingsWindow::growingFontStillShowsEveryTab() {
    view()->resize(440, 380);
    const auto usual = QApplication::font();
    auto large = usual;
    large.setPointSizeF(usual.pointSizeF() * 3);
    QApplication::setFont(large);
    QTRY_VERIFY(view()->minimumWidth() > 440);
    view()->resize(100, 100);
    for (int index = 0; index < tabs().count(); ++index) {
        const QRect tab{tabs().mapTo(view(), tabs().tabRect(index).topLeft()), tabs().tabRect(index).size()};
        QVERIFY(view()->rect().contains(tab));
        const FormText title{tabs().tabText(index), FormText::Style::caption};
        QVERIFY(tab.width() > title.sizeHint().width());
    }

    QApplication::setFont(usual);
    QTRY_COMPARE(view()->minimumSize(), QSize(440, 380));
}

void TestSettingsWindow::openingAgainRaisesTheSameWindowAsItIs() {
    const auto* const before = view();
    tabs().setCurrentIndex(2);
    m_window->open();
    QCOMPARE(view(), before);
    QCOMPARE(tabs().currentIndex(), 2);
    QCOMPARE(m_permissionCenters, 1);
    view()->showMinimized();
    m_window->open();
    QTRY_VERIFY(!view()->isMinimized());
    QCOMPARE(view(), before);
}

void TestSettingsWindow::closesByItsKeys_data() {
    QTest::addColumn<QKeySequence>("key");
    QTest::newRow("escape") << QKeySequence{Qt::Key_Escape};
    for (const auto& key : QKeySequence::keyBindings(QKeySequence::Close)) {
        QTest::newRow(qPrintable(key.toString())) << key;
    }
}

void TestSettingsWindow::closesByItsKeys() {
    QFETCH(QKeySequence, key);
    QTest::keySequence(view(), key);
    QVERIFY(!view());
}

void TestSettingsWindow::closingGivesEverythingBack() {
    const QPointer<SettingsView> shown{view()};
    QVERIFY(m_permissions);
    view()->close();
    QTRY_VERIFY(shown.isNull());
    QVERIFY(m_permissions.isNull());
}

void TestSettingsWindow::closingDoesNotEndTheProgram() {
    const QSignalSpy lastClosed{qApp, &QGuiApplication::lastWindowClosed};
    const QPointer<SettingsView> shown{view()};
    view()->close();
    QTRY_VERIFY(shown.isNull());
    QCOMPARE(lastClosed.size(), 0);
}

void TestSettingsWindow::reopeningStartsAfresh() {
    tabs().setCurrentIndex(1);
    const QPointer<SettingsView> shown{view()};
    view()->close();
    QTRY_VERIFY(shown.isNull());
    m_window->open();
    QCOMPARE(tabs().currentIndex(), 0);
    QCOMPARE(m_permissionCenters, 2);
    QVERIFY(m_permissions->items->isEmpty());
}

void TestSettingsWindow::reopeningAtOnceAfterClosingWorks() {
    view()->close();
    m_window->open();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(view());
    QCOMPARE(m_permissionCenters, 2);
    QVERIFY(m_permissions);
}

void TestSettingsWindow::reopeningReadsNoIconAgain() {
    const auto icon = view()->windowIcon().cacheKey();
    view()->close();
    m_window->open();
    QCOMPARE(view()->windowIcon().cacheKey(), icon);
}

void TestSettingsWindow::permissionsAreReadOnEachShowingOfTheirTab() {
    tabs().setCurrentIndex(1);
    QCOMPARE(m_refreshes, 1);
    tabs().setCurrentIndex(1);
    view()->resize(600, 600);
    m_window->open();
    QCoreApplication::processEvents();
    QCOMPARE(m_refreshes, 1);
    tabs().setCurrentIndex(2);
    QCOMPARE(m_refreshes, 1);
    tabs().setCurrentIndex(1);
    QCOMPARE(m_refreshes, 2);
}

void TestSettingsWindow::answerAfterLeavingTheTabIsDropped() {
    m_fixture->center.answersAtOnce = false;
    tabs().setCurrentIndex(1);
    tabs().setCurrentIndex(0);
    m_fixture->center.answerAll();
    QCOMPARE(m_refreshes, 0);
}

void TestSettingsWindow::answerAfterClosingIsDropped() {
    m_fixture->center.answersAtOnce = false;
    tabs().setCurrentIndex(1);
    const QPointer<SettingsView> shown{view()};
    view()->close();
    QTRY_VERIFY(shown.isNull());
    m_fixture->center.answerAll();
    QCOMPARE(m_refreshes, 0);
}

void TestSettingsWindow::opensPanesAndPagesThroughItsLinks() {
    tabs().setCurrentIndex(1);
    QTRY_VERIFY(shownButton(*view(), u"Open System Settings"_s));
    shownButton(*view(), u"Open System Settings"_s)->click();
    QCOMPARE(m_fixture->openedPanes, QList<QUrl>{SettingsFixture::linkTo(SystemSettings::Pane::notifications)});
    tabs().setCurrentIndex(3);
    shownButton(*view(), u"Open Agents"_s)->click();
    QCOMPARE(m_fixture->openedPages, QList<QUrl>{QUrl{u"https://vorna.localhost/dashboard/agents"_s}});
}

void TestSettingsWindow::arrowKeysWalkTheTabs() {
    QCOMPARE(QApplication::focusWidget(), &tabs());
    QTest::keyClick(&tabs(), Qt::Key_Right);
    QTest::keyClick(&tabs(), Qt::Key_Right);
    QCOMPARE(tabs().currentIndex(), 2);
    QVERIFY(shownText(*view(), u"Appearance"_s));
    QTest::keyClick(&tabs(), Qt::Key_Left);
    QCOMPARE(tabs().currentIndex(), 1);
    QCOMPARE(QApplication::focusWidget(), &tabs());
}

void TestSettingsWindow::controlTabWalksTheTabsAround() {
    QTest::keyClick(view(), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(tabs().currentIndex(), 1);
    QTest::keyClick(view(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(view(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(tabs().currentIndex(), 3);
}

void TestSettingsWindow::tabKeyReachesEveryControl() {
    view()->resize(600, 900);
    tabs().setCurrentIndex(1);
    QTRY_VERIFY(shownButton(*view(), u"Open System Settings"_s));
    QCoreApplication::processEvents();
    for (int row = 0; row < 5; ++row) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->accessibleDescription(), m_permissions->items->at(row).title);
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), &tabs());

    tabs().setCurrentIndex(0);
    QStringList titles;
    for (int step = 0; step < 2; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        titles.append(qobject_cast<QPushButton*>(QApplication::focusWidget())->text());
    }
    QCOMPARE(titles, (QStringList{u"Poll now"_s, u"Sign in with Google Workspace"_s}));
}

void TestSettingsWindow::tabsAreATabListForAccessibility() {
    auto* const list = QAccessible::queryAccessibleInterface(&tabs());
    QCOMPARE(list->role(), QAccessible::PageTabList);
    QStringList names;
    for (int index = 0; index < list->childCount(); ++index) {
        auto* const tab = list->child(index);
        QCOMPARE(tab->role(), QAccessible::PageTab);
        QCOMPARE(bool(tab->state().selected), index == 0);
        QCOMPARE(bool(tab->state().focused), index == 0);
        QCOMPARE(tab->parent(), list);
        QCOMPARE(list->indexOfChild(tab), index);
        QCOMPARE(list->childAt(tab->rect().center().x(), tab->rect().center().y()), tab);
        names.append(tab->text(QAccessible::Name));
    }
    list->child(2)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(tabs().currentIndex(), 2);
    QVERIFY(list->child(2)->state().selected);
    QVERIFY(!list->child(0)->state().selected);
    QCOMPARE(names, (QStringList{u"Bridge"_s, u"Permissions"_s, u"Daypart"_s, u"About"_s}));
    QCOMPARE(QAccessible::queryAccessibleInterface(view())->text(QAccessible::Name), u"vorna Settings"_s);
}

void TestSettingsWindow::followsThePaletteAtOnce() {
    const auto* const text = shownText(*view(), u"URL"_s);
    const auto light = view()->grab().toImage();
    QPalette dark{QColor{0x24, 0x24, 0x28}};
    dark.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(dark);
    QTRY_COMPARE(text->shownColour(), QColor{Qt::white});
    const auto corner = view()->grab().toImage().pixelColor(2, view()->height() - 2);
    QCOMPARE(corner, QColor(0x24, 0x24, 0x28));
    QVERIFY(light.pixelColor(2, view()->height() - 2) != corner);
}

void TestSettingsWindow::followsTheFontAtOnce() {
    const auto* const text = shownText(*view(), u"URL"_s);
    const auto before = text->shownFont();
    const auto tabHeight = tabs().height();
    auto larger = QApplication::font();
    larger.setPointSizeF(larger.pointSizeF() * 2);
    QApplication::setFont(larger);
    QTRY_COMPARE(text->shownFont().pointSizeF(), before.pointSizeF() * 2);
    QTRY_VERIFY(tabs().height() > tabHeight);
    QTRY_VERIFY(text->height() >= QFontMetrics{text->shownFont()}.height());
}

void TestSettingsWindow::contentScrollsWhereItIsTooHigh() {
    view()->resize(440, 380);
    QWidget* ancestor = shownText(*view(), u"URL"_s);
    while (qobject_cast<QScrollArea*>(ancestor) == nullptr) {
        ancestor = ancestor->parentWidget();
    }
    auto* const page = static_cast<QScrollArea*>(ancestor);
    QTRY_VERIFY(page->verticalScrollBar()->maximum() > 0);
    QCOMPARE(page->focusPolicy(), Qt::StrongFocus);
    QCOMPARE(page->accessibleName(), u"Bridge"_s);
    view()->resize(600, 1000);
    QTRY_COMPARE(page->verticalScrollBar()->maximum(), 0);
    QCOMPARE(page->focusPolicy(), Qt::NoFocus);
}

void TestSettingsWindow::looksDifferentOnEachTab() {
    QList<QImage> pictures;
    for (int index = 0; index < tabs().count(); ++index) {
        tabs().setCurrentIndex(index);
        const auto picture = view()->grab().toImage();
        QVERIFY(!pictures.contains(picture));
        pictures.append(picture);
    }
}

QTEST_MAIN(TestSettingsWindow)

#include "TestSettingsWindow.moc"
