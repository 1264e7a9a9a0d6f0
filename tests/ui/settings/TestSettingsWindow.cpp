#include "platform/Symbol.h"
#include "support/PaintRecord.h"
#include "ui/settings/SettingsFixture.h"

#include <QSignalSpy>
#include <QtTest>

using namespace Qt::StringLiterals;
using Tab = SettingsFixture::Tab;

class TestSettingsWindow final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void opensOnTheFirstTab();
    void firstFrameIsComplete();
    void isAtLeast440By380AndGrowsWithoutLimit();
    void firstSizeLeavesRoomForTheFrame_data();
    void firstSizeLeavesRoomForTheFrame();
    void everyTabIsInSightInAnyFont();
    void noWordOfAPermissionIsBroken_data();
    void noWordOfAPermissionIsBroken();
    void openingAgainRaisesTheSameWindowAsItIs();
    void closesByItsKeys_data();
    void closesByItsKeys();
    void closingGivesEverythingBack();
    void reopeningStartsAfresh();
    void reopeningAtOnceAfterClosingWorks();
    void permissionsAreReadOnEachShowingOfTheirTab();
    void answerAfterLeavingTheTabIsDropped();
    void answerAfterClosingIsDropped();
    void followsThePaletteAtOnce();
    void followsTheFontAtOnce();

private:
    static void setFontSize(qreal points) {
        auto font = QApplication::font();
        font.setPointSizeF(points);
        QApplication::setFont(font);
    }
    [[nodiscard]] SettingsView* view() const { return m_settings->view(); }
    [[nodiscard]] QString firstUnfinishedText() const;

    const QFont m_font = QApplication::font();
    const QPalette m_palette = QApplication::palette();
    std::unique_ptr<OpenSettings> m_settings;
};

void TestSettingsWindow::init() {
    m_settings = std::make_unique<OpenSettings>();
    QVERIFY(QTest::qWaitForWindowActive(view()));
}

void TestSettingsWindow::cleanup() {
    m_settings.reset();
    QApplication::setPalette(m_palette);
    QApplication::setFont(m_font);
}

/// A text that has less room than it takes, or is beyond the window's edge.
QString TestSettingsWindow::firstUnfinishedText() const {
    for (const auto* text : m_settings->texts()) {
        if (text->height() < text->heightForWidth(text->width()) ||
            text->mapTo(view(), text->rect().topRight()).x() >= view()->width()) {
            return OpenSettings::said(text);
        }
    }
    return {};
}

void TestSettingsWindow::opensOnTheFirstTab() {
    QCOMPARE(view()->windowTitle(), u"vorna Settings"_s);
    QCOMPARE(m_settings->tabs().currentIndex(), 0);
    QVERIFY(m_settings->text(u"Local bridge"_s));
    QVERIFY(!m_settings->text(u"Appearance"_s));
    QCOMPARE(m_settings->refreshes, 0);
}

void TestSettingsWindow::firstFrameIsComplete() {
    view()->close();
    m_settings->status.bridgeOnline = true;
    m_settings->status.caddyDetail =
        u"a detail that is long enough to need several lines in the window, "_s.repeated(3);
    m_settings->window.open();
    QVERIFY(m_settings->text(u"Online"_s));
    QCOMPARE(firstUnfinishedText(), QString{});
    view()->resize(440, 380);
    for (const auto tab : {Tab::permissions, Tab::daypart, Tab::about}) {
        m_settings->show(tab);
        QCOMPARE(firstUnfinishedText(), QString{});
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

void TestSettingsWindow::firstSizeLeavesRoomForTheFrame_data() {
    QTest::addColumn<QSize>("room");
    QTest::addColumn<QSize>("size");
    QTest::newRow("large screen") << QSize{1920, 1080} << QSize{520, 680};
    QTest::newRow("low screen") << QSize{1024, 600} << QSize{520, 552};
    QTest::newRow("narrow screen") << QSize{500, 900} << QSize{484, 680};
}

void TestSettingsWindow::firstSizeLeavesRoomForTheFrame() {
    QFETCH(QSize, room);
    QTEST(SettingsWindow::firstSize(room), "size");
    QCOMPARE(view()->size(), SettingsWindow::firstSize(view()->screen()->availableSize()));
}

void TestSettingsWindow::everyTabIsInSightInAnyFont() {
    setFontSize(m_font.pointSizeF() * 3);
    QTRY_VERIFY(view()->minimumWidth() > 440);
    view()->resize(100, 100);
    QCoreApplication::processEvents();
    for (const auto tab : {Tab::bridge, Tab::permissions, Tab::daypart, Tab::about}) {
        m_settings->show(tab);
        QCoreApplication::processEvents();
        const auto& tabs = m_settings->tabs();
        const QRect place{tabs.mapTo(view(), tabs.tabRect(tabs.currentIndex()).topLeft()),
                          tabs.tabRect(tabs.currentIndex()).size()};
        QVERIFY(view()->rect().contains(place));
        QVERIFY(place.width() > tabs.fontMetrics().horizontalAdvance(tabs.tabText(tabs.currentIndex())));
        QTRY_COMPARE(firstUnfinishedText(), QString{});
    }
    QApplication::setFont(m_font);
    QTRY_COMPARE(view()->minimumSize(), QSize(440, 380));
}

void TestSettingsWindow::noWordOfAPermissionIsBroken_data() {
    QTest::addColumn<qreal>("size");
    for (const qreal size : {9, 12, 14, 16, 20, 24}) {
        QTest::addRow("%g points", size) << size;
    }
}

void TestSettingsWindow::noWordOfAPermissionIsBroken() {
    QFETCH(qreal, size);
    setFontSize(size);
    view()->resize(440, 2000);
    m_settings->show(Tab::permissions);
    QCoreApplication::processEvents();
    const QRegularExpression notWord{u"\\W+"_s};
    QSet<QString> words;
    for (const auto& text : m_settings->strings() + QStringList{u"Open System Settings"_s}) {
        const auto all = text.split(notWord);
        words.unite({all.begin(), all.end()});
    }
    const PaintRecord painted{*m_settings->text(u"Accessibility"_s)->parentWidget()->parentWidget()};
    QVERIFY(painted.texts().size() >= 19);
    for (const auto& line : painted.texts()) {
        for (const auto& word : line.string.split(notWord, Qt::SkipEmptyParts)) {
            QVERIFY2(words.contains(word), qPrintable(line.string));
        }
    }
}

void TestSettingsWindow::openingAgainRaisesTheSameWindowAsItIs() {
    const auto* const before = view();
    m_settings->show(Tab::daypart);
    m_settings->window.open();
    QCOMPARE(view(), before);
    QCOMPARE(m_settings->tabs().currentIndex(), 2);
    QCOMPARE(m_settings->permissionCenters, 1);
    view()->showMinimized();
    m_settings->window.open();
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
    const QSignalSpy lastClosed{qApp, &QGuiApplication::lastWindowClosed};
    const QSignalSpy closed{&m_settings->window, &SettingsWindow::closed};
    const QPointer<SettingsView> shown{view()};
    QVERIFY(m_settings->permissionCenter);
    view()->close();
    QTRY_VERIFY(shown.isNull());
    QVERIFY(m_settings->permissionCenter.isNull());
    QCOMPARE(closed.size(), 1);
    QCOMPARE(lastClosed.size(), 0);
}

void TestSettingsWindow::reopeningStartsAfresh() {
    m_settings->show(Tab::permissions);
    const QPointer<SettingsView> shown{view()};
    view()->close();
    QTRY_VERIFY(shown.isNull());
    m_settings->window.open();
    QCOMPARE(m_settings->tabs().currentIndex(), 0);
    QCOMPARE(m_settings->permissionCenters, 2);
    QVERIFY(m_settings->permissionCenter->items->isEmpty());
}

void TestSettingsWindow::reopeningAtOnceAfterClosingWorks() {
    view()->close();
    m_settings->window.open();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(view());
    QCOMPARE(m_settings->permissionCenters, 2);
    QVERIFY(m_settings->permissionCenter);
}

void TestSettingsWindow::permissionsAreReadOnEachShowingOfTheirTab() {
    m_settings->show(Tab::permissions);
    QCOMPARE(m_settings->refreshes, 1);
    m_settings->show(Tab::permissions);
    view()->resize(600, 600);
    m_settings->window.open();
    QCoreApplication::processEvents();
    m_settings->press(u"Open System Settings"_s);
    QCOMPARE(m_settings->refreshes, 1);
    m_settings->show(Tab::daypart);
    QCOMPARE(m_settings->refreshes, 1);
    m_settings->show(Tab::permissions);
    QCOMPARE(m_settings->refreshes, 2);
}

void TestSettingsWindow::answerAfterLeavingTheTabIsDropped() {
    m_settings->center.answersAtOnce = false;
    m_settings->show(Tab::permissions);
    m_settings->show(Tab::bridge);
    m_settings->center.answerAll();
    QCOMPARE(m_settings->refreshes, 0);
}

void TestSettingsWindow::answerAfterClosingIsDropped() {
    m_settings->center.answersAtOnce = false;
    m_settings->show(Tab::permissions);
    const QPointer<SettingsView> shown{view()};
    view()->close();
    QTRY_VERIFY(shown.isNull());
    m_settings->center.answerAll();
    QCOMPARE(m_settings->refreshes, 0);
}

void TestSettingsWindow::followsThePaletteAtOnce() {
    const auto pixels = [this] {
        const auto* const heading = m_settings->text(u"Local bridge"_s);
        const QPoint card = heading->mapTo(view(), heading->rect().bottomLeft()) + QPoint{8, 12};
        const auto picture = view()->grab().toImage();
        return std::pair{picture.pixelColor(2, view()->height() - 2), picture.pixelColor(card)};
    };
    const auto before = pixels();
    QPalette dark{QColor{0x24, 0x24, 0x28}};
    dark.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(dark);
    QTRY_COMPARE(pixels().first, QColor(0x24, 0x24, 0x28));
    QVERIFY(pixels().second.lightness() < 0x40);
    QVERIFY(before.second.lightness() > 0xc0);
    QCOMPARE(m_settings->tabs().tabIcon(0).pixmap(QSize{16, 16}, 1).toImage(),
             Symbol::pixmap(u"network"_s, 16, Qt::white, 1).toImage());
}

void TestSettingsWindow::followsTheFontAtOnce() {
    const auto* const text = m_settings->text(u"URL"_s);
    const auto height = text->height();
    const auto tabHeight = m_settings->tabs().height();
    setFontSize(m_font.pointSizeF() * 2);
    QTRY_VERIFY(text->height() > height * 3 / 2);
    QTRY_VERIFY(m_settings->tabs().height() > tabHeight);
}

QTEST_MAIN(TestSettingsWindow)

#include "TestSettingsWindow.moc"
