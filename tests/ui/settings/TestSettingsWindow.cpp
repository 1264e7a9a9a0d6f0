#include "support/Rows.h"
#include "ui/kit/TextLabel.h"
#include "ui/settings/SettingsFixture.h"

#include <QScreen>
#include <QSignalSpy>
#include <QtTest>

using namespace Qt::StringLiterals;
using Change = void (*)();
using Tab = SettingsFixture::Tab;

class TestSettingsWindow final : public QObject {
    Q_OBJECT

private slots:
    void init() { open(); }
    void cleanup() {
        m_settings.reset();
        QApplication::setPalette(m_palette);
        QApplication::setFont(m_font);
    }

    void firstFrameIsComplete() {
        view()->close();
        m_settings->status.bridgeOnline = true;
        m_settings->status.caddyDetail =
            u"a detail that is long enough to need several lines in the window, "_s.repeated(3);
        m_settings->window.open();
        QCOMPARE(view()->windowTitle(), u"vorna Settings"_s);
        QVERIFY(m_settings->text(u"Online"_s));
        QCOMPARE(firstUnfinishedText(), QString{});
        view()->resize(440, 380);
        for (const int tab : {1, 2, 3}) {
            m_settings->tabs().setCurrentIndex(tab);
            QCOMPARE(firstUnfinishedText(), QString{});
        }
    }

    void dotFollowsBridgeAndDaypart() {
        const auto* const dot = view()->findChild<DotLabel*>();
        const auto place = dot->mapTo(view(), dot->rect().center());
        const auto onScreen = [&] { return view()->screen()->grabWindow(view()->winId()).toImage().pixelColor(place); };
        const auto of = [](Daypart daypart) { return DaypartPalette::of(daypart); };
        QTRY_COMPARE(onScreen(), QColor{of(Daypart::day).danger});
        m_settings->daypart.set(Daypart::night);
        QTRY_COMPARE(onScreen(), QColor(255, 85, 85));
        QCOMPARE(m_settings->text(u"Status"_s)->buddy(), m_settings->text(u"Offline"_s));
        m_settings->status.bridgeOnline = true;
        QTRY_COMPARE(onScreen(), QColor{of(Daypart::night).success});
        QCOMPARE(m_settings->text(u"Status"_s)->buddy(), m_settings->text(u"Online"_s));
    }

    void emptyListLeavesTheIntroduction() {
        m_settings->show(Tab::permissions);
        QCOMPARE(m_settings->texts().size(), 1 + 3 * 6);
        m_settings->permissionCenter->items = QList<PermissionCenter::Item>{};
        m_settings->settle();
        QCOMPARE(m_settings->texts().size(), 1);
    }

    void sizeIsAtLeast440By380AndAtFirstLeavesRoomForTheFrame() {
        QCOMPARE(view()->minimumSize(), QSize(440, 380));
        QCOMPARE(view()->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
        QCOMPARE(SettingsWindow::firstSize({1920, 1080}), QSize(520, 680));
        QCOMPARE(SettingsWindow::firstSize({1024, 600}), QSize(520, 552));
        QCOMPARE(SettingsWindow::firstSize({500, 900}), QSize(484, 680));
        QCOMPARE(view()->size(), SettingsWindow::firstSize(view()->screen()->availableSize()));
    }

    void everyTabIsInSightInAnyFont() {
        setFontSize(m_font.pointSizeF() * 3);
        QTRY_VERIFY(view()->minimumWidth() > 440);
        view()->resize(100, 100);
        const auto& tabs = m_settings->tabs();
        for (int tab = 0; tab < tabs.count(); ++tab) {
            m_settings->show(Tab{tab});
            const QRect place{tabs.mapTo(view(), tabs.tabRect(tab).topLeft()), tabs.tabRect(tab).size()};
            QVERIFY(view()->rect().contains(place));
            QVERIFY(place.width() > tabs.fontMetrics().horizontalAdvance(tabs.tabText(tab)));
            QTRY_COMPARE(firstUnfinishedText(), QString{});
        }
        QApplication::setFont(m_font);
        QTRY_COMPARE(view()->minimumSize(), QSize(440, 380));
    }

    void noWordOfAPermissionIsBroken() {
        m_settings->show(Tab::permissions);
        QCOMPARE(m_settings->texts().size(), 1 + 3 * 6);
        for (const qreal size : {9, 12, 14, 16, 20, 24}) {
            setFontSize(size);
            view()->resize(440, 2000);
            m_settings->settle();
            for (const auto* text : m_settings->texts()) {
                const auto* const label = qobject_cast<const TextLabel*>(text);
                QCOMPARE(label->shownText().replace(QChar::LineSeparator, u' ').simplified(), label->wholeText());
            }
        }
    }

    void openingAgainRaisesTheSameWindowAsItIs() {
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

    void closesByItsKeysAndFreesEverything() {
        const QSignalSpy lastClosed{qApp, &QGuiApplication::lastWindowClosed};
        for (const auto& key : QKeySequence::keyBindings(QKeySequence::Close) + QList{QKeySequence{Qt::Key_Escape}}) {
            open();
            const QSignalSpy closed{&m_settings->window, &SettingsWindow::closed};
            const QPointer<SettingsView> shown{view()};
            QTest::keySequence(shown, key);
            QVERIFY2(!view(), qPrintable(key.toString()));
            QTRY_VERIFY(shown.isNull() && m_settings->permissionCenter.isNull());
            QCOMPARE(closed.size(), 1);
        }
        QCOMPARE(lastClosed.size(), 0);
    }

    void reopeningStartsAfresh() {
        for (const bool isGone : {false, true}) {
            open();
            m_settings->show(Tab::permissions);
            QVERIFY(!m_settings->permissionCenter->items->isEmpty());
            const QPointer<SettingsView> shown{view()};
            shown->close();
            QTRY_VERIFY(!isGone || shown.isNull());
            m_settings->window.open();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCOMPARE(m_settings->tabs().currentIndex(), 0);
            QCOMPARE(m_settings->permissionCenters, 2);
            QVERIFY(m_settings->permissionCenter->items->isEmpty());
        }
    }

    void permissionsAreReadOnEachShowingOfTheirTab() {
        QCOMPARE(m_settings->refreshes, 0);
        m_settings->show(Tab::permissions);
        QCOMPARE(m_settings->refreshes, 1);
        m_settings->show(Tab::permissions);
        view()->resize(600, 600);
        m_settings->window.open();
        QCoreApplication::processEvents();
        m_settings->button(u"Open System Settings"_s)->click();
        m_settings->show(Tab::daypart);
        QCOMPARE(m_settings->refreshes, 1);
        m_settings->show(Tab::permissions);
        QCOMPARE(m_settings->refreshes, 2);
    }

    void answerAfterLeavingTheTabIsDropped() {
        for (const bool closes : {false, true}) {
            open();
            m_settings->notifications.answersAtOnce = false;
            m_settings->show(Tab::permissions);
            const QPointer<SettingsView> shown{view()};
            closes ? (void)shown->close() : m_settings->show(Tab::bridge);
            QTRY_COMPARE(shown.isNull(), closes);
            m_settings->notifications.answerAll();
            QCOMPARE(m_settings->refreshes, 0);
        }
    }

    void textsAreReadableOnEveryDesktop_data() {
        const Rows<QColor, QColor, QColor> row{"window", "text", "highlight"};
        row("white", QColor{Qt::white}, QColor{Qt::black}, QColor{Qt::yellow});
        row("grey", QColor{0xc0, 0xc0, 0xc0}, QColor{Qt::black}, QColor{Qt::blue});
        row("dark", QColor{0x24, 0x24, 0x28}, QColor{0xf2, 0xf2, 0xf3}, QColor{0, 0, 255});
        row("black", QColor{Qt::black}, QColor{Qt::white}, QColor{0x30, 0x30, 0x30});
        row("solarized", QColor{0xfd, 0xf6, 0xe3}, QColor{0x07, 0x36, 0x42}, QColor{0x26, 0x8b, 0xd2});
    }
    void textsAreReadableOnEveryDesktop() {
        QFETCH(QColor, window);
        QFETCH(QColor, text);
        QFETCH(QColor, highlight);
        QPalette palette{window};
        palette.setColor(QPalette::WindowText, text);
        palette.setColor(QPalette::Highlight, highlight);
        QApplication::setPalette(palette);
        const FormColours colours{m_settings->daypart};
        const auto card = colours.of(ColourRole::surface);
        QVERIFY(card != window && colours.of(ColourRole::border) != card);
        QVERIFY(FormColours::contrast(colours.of(ColourRole::border), card) < 1.5);
        for (const auto role : {ColourRole::text, ColourRole::textMuted, ColourRole::accent}) {
            for (const auto& ground : {card, window}) {
                QVERIFY(FormColours::contrast(colours.of(role), ground) >= 4.5);
            }
        }
    }

    void followsTheDesktopAtOnce_data() {
        QTest::addColumn<Change>("change");
        QTest::newRow("palette") << +[] { QApplication::setPalette(SettingsStates::dark); };
        QTest::newRow("font") << +[] { setFontSize(20); };
    }
    void followsTheDesktopAtOnce() {
        QFETCH(Change, change);
        const auto before = pictures();
        change();
        const auto followed = pictures();
        open();
        QVERIFY(followed == pictures());
        for (int tab = 0; tab < 4; ++tab) {
            QVERIFY(followed.at(tab) != before.at(tab));
        }
    }

private:
    static void setFontSize(qreal points) {
        auto font = QApplication::font();
        font.setPointSizeF(points);
        QApplication::setFont(font);
    }
    void open() {
        m_settings = std::make_unique<OpenSettings>();
        QVERIFY(QTest::qWaitForWindowActive(view()));
    }
    [[nodiscard]] SettingsView* view() const { return m_settings->view(); }

    /// Of each tab.
    [[nodiscard]] QList<QImage> pictures() const {
        QList<QImage> found;
        for (int tab = 0; tab < 4; ++tab) {
            m_settings->show(Tab{tab});
            found += view()->grab().toImage();
        }
        return found;
    }

    /// A text that has less room than it takes, or is beyond the window's edge.
    [[nodiscard]] QString firstUnfinishedText() const {
        for (const auto* text : m_settings->texts()) {
            if (text->height() < text->heightForWidth(text->width()) ||
                text->mapTo(view(), text->rect().topRight()).x() >= view()->width()) {
                return OpenSettings::said(text);
            }
        }
        return {};
    }

    const QFont m_font = QApplication::font();
    const QPalette m_palette = QApplication::palette();
    std::unique_ptr<OpenSettings> m_settings;
};

QTEST_MAIN(TestSettingsWindow)

#include "TestSettingsWindow.moc"
