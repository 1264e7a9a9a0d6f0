#include "platform/AppInfo.h"
#include "ui/settings/AboutTab.h"
#include "ui/settings/SettingsFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using Style = FormText::Style;

namespace {

const auto role = u"Native menu bar companion for developer monitoring, notifications, and deep system permissions. "
                  "Orchestration stays in the vorna CLI; agents live in ~/dev/agents."_s;

}

class TestAboutTab final : public QObject {
    Q_OBJECT

private slots:
    void init();

    void showsItsTextsInOrder();
    void textsHaveTheirStyles();
    void showsTheVersionOfTheProgram();
    void linksOpenTheirPages_data();
    void linksOpenTheirPages();
    void returnKeyPressesAButton();

private:
    QList<QUrl> m_opened;
    std::unique_ptr<AboutTab> m_tab;
};

void TestAboutTab::init() {
    m_opened.clear();
    m_tab = std::make_unique<AboutTab>([this](const QUrl& page) { m_opened.append(page); });
    m_tab->resize(520, 680);
    m_tab->show();
}

void TestAboutTab::showsItsTextsInOrder() {
    auto texts = shownStrings(*m_tab);
    QVERIFY(texts.at(3).startsWith(u'v'));
    texts.removeAt(3);
    const QStringList expected{
        u"App"_s, u"vorna for Mac"_s, u"Version"_s, u"Architecture"_s, u"arm64 · Apple Silicon"_s, u"Role"_s,
        role,     u"Links"_s};
    QCOMPARE(texts, expected);
}

void TestAboutTab::textsHaveTheirStyles() {
    QCOMPARE(shownText(*m_tab, u"Role"_s)->shownFont(), FormText({}, Style::headline).shownFont());
    QCOMPARE(shownText(*m_tab, u"Links"_s)->shownFont(), FormText({}, Style::headline).shownFont());
    for (const auto& text : {u"App"_s, u"vorna for Mac"_s, u"arm64 · Apple Silicon"_s, role}) {
        QCOMPARE(shownText(*m_tab, text)->shownFont(), FormText({}, Style::body).shownFont());
        QCOMPARE(shownText(*m_tab, text)->shownColour(), FormText({}, Style::body).shownColour());
    }
}

void TestAboutTab::showsTheVersionOfTheProgram() {
    QVERIFY(shownText(
        *m_tab, u"v%1 (build %2)"_s.arg(AppInfo::shortVersion().value_or(u"?"_s), AppInfo::build().value_or(u"?"_s))));
}

void TestAboutTab::linksOpenTheirPages_data() {
    QTest::addColumn<QString>("title");
    QTest::addColumn<QUrl>("page");
    QTest::newRow("console") << u"Open Console"_s << QUrl{u"https://vorna.localhost/dashboard"_s};
    QTest::newRow("agents") << u"Open Agents"_s << QUrl{u"https://vorna.localhost/dashboard/agents"_s};
    QTest::newRow("download") << u"Download page"_s << QUrl{u"https://vorna.localhost/download"_s};
}

void TestAboutTab::linksOpenTheirPages() {
    QFETCH(QString, title);
    QFETCH(QUrl, page);
    QTest::mouseClick(shownButton(*m_tab, title), Qt::LeftButton);
    QCOMPARE(m_opened, QList<QUrl>{page});
}

void TestAboutTab::returnKeyPressesAButton() {
    QTest::keyClick(shownButton(*m_tab, u"Open Console"_s), Qt::Key_Return);
    QTest::keyClick(shownButton(*m_tab, u"Open Console"_s), Qt::Key_Space);
    QCOMPARE(m_opened.size(), 2);
}

QTEST_MAIN(TestAboutTab)

#include "TestAboutTab.moc"
