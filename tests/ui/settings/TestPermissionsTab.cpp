#include "ui/settings/FormText.h"
#include "ui/settings/LinkButton.h"
#include "ui/settings/PermissionRow.h"
#include "ui/settings/PermissionsTab.h"
#include "ui/settings/SettingsFixture.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QtTest>

using namespace Qt::StringLiterals;
using Item = PermissionCenter::Item;
using Status = Item::Status;
using Style = FormText::Style;

namespace {

const auto introduction =
    u"Apple Silicon only. Grant only what you need for WARDEN, desk recover, and agent tooling."_s;

Item item(const QString& id, Status status, const std::optional<QUrl>& link = std::nullopt) {
    return {id, u"Title of "_s + id, u"Detail of "_s + id, status, link};
}

}

class TestPermissionsTab final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void emptyListLeavesTheIntroduction();
    void showsEachItemInOrder();
    void statusTexts_data();
    void statusTexts();
    void textsHaveTheirStyles();
    void linkOnlyWhereTheItemHasOne();
    void linkOpensItsPane();
    void openingAPaneDoesNotRefresh();
    void refreshesOnEachShowingAndNotOtherwise();
    void answerAfterHidingIsDropped();
    void rowsFollowTheList();
    void namesTheRowAndItsButton();
    void rowsAreWhollyLaidOutAtOnce();

private:
    /// Puts items into the list while the tab is shown.
    void showItems(const QList<Item>& items);

    std::unique_ptr<SettingsFixture> m_fixture;
    std::unique_ptr<PermissionCenter> m_permissions;
    std::unique_ptr<PermissionsTab> m_tab;
    QList<QUrl> m_opened;
};

void TestPermissionsTab::init() {
    m_fixture = std::make_unique<SettingsFixture>();
    m_fixture->center.answersAtOnce = false;
    m_permissions = m_fixture->newPermissions();
    m_opened.clear();
    m_tab = std::make_unique<PermissionsTab>(*m_permissions, [this](const QUrl& link) { m_opened.append(link); });
    m_tab->resize(520, 680);
}

void TestPermissionsTab::cleanup() {
    m_tab.reset();
    m_permissions.reset();
    m_fixture.reset();
}

void TestPermissionsTab::showItems(const QList<Item>& items) {
    m_tab->show();
    m_permissions->items = items;
    QTRY_COMPARE(m_tab->findChildren<PermissionRow*>().size(), items.size());
}

void TestPermissionsTab::emptyListLeavesTheIntroduction() {
    m_tab->show();
    QCOMPARE(shownStrings(*m_tab), QStringList{introduction});
    QVERIFY(m_tab->findChildren<QAbstractButton*>().isEmpty());
}

void TestPermissionsTab::showsEachItemInOrder() {
    showItems({item(u"b"_s, Status::granted), item(u"a"_s, Status::denied)});
    const QStringList expected{introduction,    u"Title of b"_s, u"Granted"_s,    u"Detail of b"_s,
                               u"Title of a"_s, u"Denied"_s,     u"Detail of a"_s};
    QCOMPARE(shownStrings(*m_tab), expected);
}

void TestPermissionsTab::statusTexts_data() {
    QTest::addColumn<Status>("status");
    QTest::addColumn<QString>("text");
    QTest::newRow("granted") << Status::granted << u"Granted"_s;
    QTest::newRow("denied") << Status::denied << u"Denied"_s;
    QTest::newRow("not determined") << Status::notDetermined << u"Not determined"_s;
    QTest::newRow("unknown") << Status::unknown << u"Check in System Settings"_s;
}

void TestPermissionsTab::statusTexts() {
    QFETCH(Status, status);
    QFETCH(QString, text);
    showItems({item(u"a"_s, status, QUrl{u"pane:1"_s})});
    const auto* const shown = shownText(*m_tab, text);
    QVERIFY(shown);
    const FormText same{text, Style::caption};
    QCOMPARE(shown->shownFont(), same.shownFont());
    QCOMPARE(shown->shownColour(), same.shownColour());
    QVERIFY(shownButton(*m_tab, u"Open System Settings"_s));
}

void TestPermissionsTab::textsHaveTheirStyles() {
    showItems({item(u"a"_s, Status::granted)});
    QCOMPARE(shownText(*m_tab, introduction)->shownFont(), FormText(introduction, Style::caption).shownFont());
    QCOMPARE(shownText(*m_tab, u"Title of a"_s)->shownFont(), FormText({}, Style::headline).shownFont());
    QCOMPARE(shownText(*m_tab, u"Detail of a"_s)->shownFont(), FormText({}, Style::caption).shownFont());
}

void TestPermissionsTab::linkOnlyWhereTheItemHasOne() {
    showItems({item(u"a"_s, Status::unknown, QUrl{u"pane:1"_s}), item(u"b"_s, Status::unknown)});
    const auto rows = m_tab->findChildren<PermissionRow*>();
    QVERIFY(shownButton(*rows.at(0), u"Open System Settings"_s));
    QVERIFY(!shownButton(*rows.at(1), u"Open System Settings"_s));
}

void TestPermissionsTab::linkOpensItsPane() {
    showItems({item(u"a"_s, Status::unknown, QUrl{u"pane:1"_s}), item(u"b"_s, Status::unknown, QUrl{u"pane:2"_s})});
    for (auto* const row : m_tab->findChildren<PermissionRow*>()) {
        QTest::mouseClick(shownButton(*row, u"Open System Settings"_s), Qt::LeftButton);
    }
    const QList<QUrl> expected{QUrl{u"pane:1"_s}, QUrl{u"pane:2"_s}};
    QCOMPARE(m_opened, expected);
}

void TestPermissionsTab::openingAPaneDoesNotRefresh() {
    showItems({item(u"a"_s, Status::unknown, QUrl{u"pane:1"_s})});
    m_fixture->center.answerAll();
    const QSignalSpy changes{m_permissions.get(), &ObservableObject::objectWillChange};
    m_fixture->center.answersAtOnce = true;
    shownButton(*m_tab, u"Open System Settings"_s)->click();
    QCOMPARE(changes.size(), 0);
}

void TestPermissionsTab::refreshesOnEachShowingAndNotOtherwise() {
    m_fixture->center.answersAtOnce = true;
    const QSignalSpy changes{m_permissions.get(), &ObservableObject::objectWillChange};
    m_tab->show();
    QCOMPARE(changes.size(), 1);
    m_tab->resize(700, 700);
    m_tab->activateWindow();
    QCoreApplication::processEvents();
    QCOMPARE(changes.size(), 1);
    m_tab->hide();
    QCOMPARE(changes.size(), 1);
    m_tab->show();
    QCOMPARE(changes.size(), 2);
}

void TestPermissionsTab::answerAfterHidingIsDropped() {
    const QSignalSpy changes{m_permissions.get(), &ObservableObject::objectWillChange};
    m_tab->show();
    m_tab->hide();
    m_fixture->center.answerAll();
    QCOMPARE(changes.size(), 0);
    m_tab->show();
    m_fixture->center.answerAll();
    QCOMPARE(changes.size(), 1);
    QTRY_COMPARE(m_tab->findChildren<PermissionRow*>().size(), 6);
}

void TestPermissionsTab::rowsFollowTheList() {
    showItems({item(u"a"_s, Status::unknown), item(u"b"_s, Status::unknown), item(u"c"_s, Status::unknown)});
    showItems({item(u"d"_s, Status::granted)});
    const QStringList expected{introduction, u"Title of d"_s, u"Granted"_s, u"Detail of d"_s};
    QCOMPARE(shownStrings(*m_tab), expected);
    showItems({});
    QCOMPARE(shownStrings(*m_tab), QStringList{introduction});
}

void TestPermissionsTab::namesTheRowAndItsButton() {
    showItems({item(u"a"_s, Status::unknown, QUrl{u"pane:1"_s})});
    auto* const row = m_tab->findChild<PermissionRow*>();
    QCOMPARE(QAccessible::queryAccessibleInterface(row)->text(QAccessible::Name), u"Title of a"_s);
    auto* const button = QAccessible::queryAccessibleInterface(shownButton(*row, u"Open System Settings"_s));
    QCOMPARE(button->role(), QAccessible::Button);
    QCOMPARE(button->text(QAccessible::Name), u"Open System Settings"_s);
    QCOMPARE(button->text(QAccessible::Description), u"Title of a"_s);
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(m_opened, QList<QUrl>{QUrl{u"pane:1"_s}});
}

void TestPermissionsTab::rowsAreWhollyLaidOutAtOnce() {
    m_tab->resize(440, 380);
    m_tab->show();
    m_fixture->center.answerAll();
    QTRY_COMPARE(m_tab->findChildren<PermissionRow*>().size(), 6);
    for (const auto* const text : shownTexts(*m_tab)) {
        QVERIFY2(text->height() >= text->heightForWidth(text->width()), qPrintable(text->text()));
    }
}

QTEST_MAIN(TestPermissionsTab)

#include "TestPermissionsTab.moc"
