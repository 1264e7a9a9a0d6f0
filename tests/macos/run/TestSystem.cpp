#include "Doubles.h"
#include "platform/AppInfo.h"
#include "platform/Desktop.h"
#include "platform/SingleInstance.h"
#include "platform/SystemSettings.h"
#include "platform/UserDefaults.h"

#include <QSignalSpy>
#include <QTest>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

constexpr long accessory = 1;
constexpr quint64 moveToActiveSpace = 1U << 1U;
constexpr quint64 fullScreenAuxiliary = 1U << 8U;
const QList<quint64> onceWithoutOptions{0};
const QString daypart = u"vorna.macos.daypart"_s;
const QString manual = u"vorna.macos.daypart.manual"_s;

}

/// The capabilities that are a call or two each.
class TestSystem final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void versionAndBuildAreThoseOfTheBundle();
    void saysWhatItRunsOn();
    void whatTheBundleDoesNotSayIsAbsent();
    void whatIsNotATextIsAbsent();
    void textsKeepEveryUnit_data();
    void textsKeepEveryUnit();
    void truthsAreStoredUnderTheirKeys();
    void whatIsNoTruthIsFalse();
    void whatIsRemovedIsGone();
    void hasNoPlaceInTheDock();
    void opensAddresses_data();
    void opensAddresses();
    void comesToTheFront();
    void comesToTheSpaceOfTheUser();
    void givesTheKeyboardBackOnce();
    void keepsTheKeyboard_data();
    void keepsTheKeyboard();
    void remembersWhoWasInFrontBeforeUs();
    void trustIsWhatTheSystemSays();
    void everythingThatIsNotUsedIsGivenBack();
    void everyPaneHasItsLink_data();
    void everyPaneHasItsLink();
    void windowsAreBlended();
    void panelIsAWindowInFrontWhereWePutIt();
    void thisProcessIsTheOneInstance();
    void openingItAgainShowsThePanel();
    void openingItAgainIsHeardAlsoWhenStartedLate();
    void nobodyListensAfterTheInstanceIsGone();
};

void TestSystem::init() {
    Doubles::reset();
    Doubles::clearStored({daypart, manual});
}

void TestSystem::cleanup() {
    Doubles::clearStored({daypart, manual});
}

void TestSystem::versionAndBuildAreThoseOfTheBundle() {
    Doubles::state().information = {{u"CFBundleShortVersionString"_s, u"1.2.3"_s}, {u"CFBundleVersion"_s, u"45"_s}};
    QCOMPARE(AppInfo::shortVersion(), std::optional{u"1.2.3"_s});
    QCOMPARE(AppInfo::build(), std::optional{u"45"_s});
}

void TestSystem::saysWhatItRunsOn() {
    QCOMPARE(AppInfo::name(), u"vorna for Mac"_s);
    QCOMPARE(AppInfo::architecture(), u"arm64 · Apple Silicon"_s);
    QCOMPARE(AppInfo::requirement(), u"Apple Silicon only. "_s);
}

void TestSystem::whatTheBundleDoesNotSayIsAbsent() {
    QCOMPARE(AppInfo::shortVersion(), std::nullopt);
    QCOMPARE(AppInfo::build(), std::nullopt);
}

void TestSystem::whatIsNotATextIsAbsent() {
    Doubles::state().keyWithNumber = u"CFBundleVersion"_s;
    QCOMPARE(AppInfo::build(), std::nullopt);
}

void TestSystem::textsKeepEveryUnit_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << u"dusk"_s;
    QTest::newRow("empty") << u""_s;
    QTest::newRow("accents and a smile") << u"Grüße 😀"_s;
    QTest::newRow("a nought inside") << u"a\0b"_s;
}

void TestSystem::textsKeepEveryUnit() {
    QFETCH(QString, text);
    const auto defaults = UserDefaults::standard();
    defaults->setString(daypart, text);
    QCOMPARE(defaults->string(daypart), std::optional{text});
    QCOMPARE(UserDefaults::standard()->string(daypart), std::optional{text});
    QVERIFY(Doubles::storedText(daypart));
    QVERIFY(!Doubles::storedText(manual));
}

void TestSystem::truthsAreStoredUnderTheirKeys() {
    const auto defaults = UserDefaults::standard();
    for (const bool value : {true, false, true}) {
        defaults->setBoolean(manual, value);
        QCOMPARE(defaults->boolean(manual), value);
        QCOMPARE(Doubles::storedTruth(manual), std::optional{value});
    }
    QCOMPARE(Doubles::storedTruth(daypart), std::nullopt);
}

void TestSystem::whatIsNoTruthIsFalse() {
    const auto defaults = UserDefaults::standard();
    QVERIFY(!defaults->boolean(manual));
    defaults->setString(manual, u"dusk"_s);
    QVERIFY(!defaults->boolean(manual));
    QCOMPARE(defaults->string(daypart), std::nullopt);
}

void TestSystem::whatIsRemovedIsGone() {
    const auto defaults = UserDefaults::standard();
    defaults->setString(daypart, u"dusk"_s);
    defaults->setBoolean(manual, true);
    defaults->remove(daypart);
    QCOMPARE(defaults->string(daypart), std::nullopt);
    QVERIFY(defaults->boolean(manual));
    defaults->remove(manual);
    QVERIFY(!defaults->boolean(manual));
}

void TestSystem::hasNoPlaceInTheDock() {
    Desktop::becomeAccessory();
    QCOMPARE(Doubles::state().activationPolicy, accessory);
}

void TestSystem::opensAddresses_data() {
    QTest::addColumn<QString>("address");
    QTest::addColumn<QStringList>("opened");
    const QString plain = u"https://console.example.org/dashboard?a=b&c=d#e"_s;
    QTest::newRow("page") << plain << QStringList{plain};
    QTest::newRow("accents are encoded") << u"https://example.org/ü b"_s
                                         << QStringList{u"https://example.org/%C3%BC%20b"_s};
}

void TestSystem::opensAddresses() {
    QFETCH(QString, address);
    Desktop::openUrl(QUrl{address});
    QTEST(Doubles::state().openedUrls, "opened");
}

void TestSystem::comesToTheFront() {
    QWindow window;
    QWindow other;
    window.showMinimized();
    other.show();
    other.requestActivate();
    QTRY_VERIFY(other.isActive());
    Desktop::bringToFront(window);
    QCOMPARE(Doubles::state().activations, 1);
    QVERIFY(!window.windowStates().testFlag(Qt::WindowMinimized));
    QTRY_VERIFY(window.isActive());
}

void TestSystem::comesToTheSpaceOfTheUser() {
    QWindow window;
    window.show();
    Desktop::bringToFront(window);
    QCOMPARE(Doubles::state().windowWithBehavior, &window);
    QCOMPARE(Doubles::state().windowBehavior, moveToActiveSpace | fullScreenAuxiliary);
}

void TestSystem::givesTheKeyboardBackOnce() {
    QWindow window;
    window.show();
    Desktop::bringToFront(window);
    window.hide();
    Desktop::activatePreviousProgram();
    QCOMPARE(Doubles::state().otherActivations, onceWithoutOptions);
    Doubles::state().isActive = true;
    Desktop::activatePreviousProgram();
    QCOMPARE(Doubles::state().otherActivations, onceWithoutOptions);
}

void TestSystem::keepsTheKeyboard_data() {
    QTest::addColumn<bool>("isShown");
    QTest::addColumn<bool>("isActive");
    QTest::newRow("while a window of ours is shown") << true << true;
    QTest::newRow("when another program has it already") << false << false;
}

void TestSystem::keepsTheKeyboard() {
    QFETCH(bool, isShown);
    QFETCH(bool, isActive);
    QWindow window;
    window.show();
    Desktop::bringToFront(window);
    window.setVisible(isShown);
    Doubles::state().isActive = isActive;
    Desktop::activatePreviousProgram();
    QCOMPARE(Doubles::state().otherActivations, QList<quint64>{});
}

void TestSystem::remembersWhoWasInFrontBeforeUs() {
    QWindow window;
    for (const auto inFront : {Doubles::Program::other, Doubles::Program::own, Doubles::Program::none}) {
        Doubles::state().inFront = inFront;
        window.show();
        Desktop::bringToFront(window);
    }
    window.hide();
    Desktop::activatePreviousProgram();
    QCOMPARE(Doubles::state().otherActivations, onceWithoutOptions);
}

void TestSystem::trustIsWhatTheSystemSays() {
    QVERIFY(!Desktop::trustsAccessibility());
    Doubles::state().isTrusted = true;
    QVERIFY(Desktop::trustsAccessibility());
}

void TestSystem::everythingThatIsNotUsedIsGivenBack() {
    constexpr quint64 asMuchAsThereIs = 0;
    Desktop::releaseUnusedMemory();
    QCOMPARE(Doubles::state().reliefGoal, std::optional{asMuchAsThereIs});
}

void TestSystem::everyPaneHasItsLink_data() {
    using enum SystemSettings::Pane;
    QTest::addColumn<SystemSettings::Pane>("pane");
    QTest::addColumn<QString>("rest");
    QTest::newRow("notifications") << notifications << u"com.apple.Notifications-Settings.extension"_s;
    const QString privacy = u"com.apple.preference.security?Privacy_"_s;
    QTest::newRow("accessibility") << accessibility << privacy + u"Accessibility"_s;
    QTest::newRow("automation") << automation << privacy + u"Automation"_s;
    QTest::newRow("full disk access") << fullDiskAccess << privacy + u"AllFiles"_s;
    QTest::newRow("developer tools") << developerTools << privacy + u"DevTools"_s;
}

void TestSystem::everyPaneHasItsLink() {
    QFETCH(SystemSettings::Pane, pane);
    QFETCH(QString, rest);
    const auto link = SystemSettings::link(pane);
    QVERIFY(link);
    QCOMPARE(link->toString(), u"x-apple.systempreferences:"_s + rest);
    SystemSettings::open(*link);
    QCOMPARE(Doubles::state().openedUrls, QStringList{u"x-apple.systempreferences:"_s + rest});
}

void TestSystem::windowsAreBlended() {
    QVERIFY(Desktop::blendsWindows());
}

void TestSystem::panelIsAWindowInFrontWhereWePutIt() {
    const Qt::WindowFlags flags = Desktop::panelFlags();
    QCOMPARE(flags & Qt::WindowType_Mask, Qt::Window);
    QVERIFY(flags.testFlag(Qt::FramelessWindowHint));
    QVERIFY(flags.testFlag(Qt::WindowStaysOnTopHint));
    QVERIFY(!Desktop::placesPanel());
}

void TestSystem::thisProcessIsTheOneInstance() {
    QVERIFY(SingleInstance::claim(u"panel"_s));
    QVERIFY(SingleInstance::claim(u"settings"_s));
}

void TestSystem::openingItAgainShowsThePanel() {
    const auto instance = SingleInstance::claim(u"settings"_s);
    QSignalSpy messages{instance.get(), &SingleInstance::messageReceived};
    QVERIFY(!Doubles::handlesReopening());
    Doubles::finishLaunching();
    QVERIFY(Doubles::handlesReopening());
    Doubles::reopen();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.first().first().toString(), u"panel"_s);
}

void TestSystem::openingItAgainIsHeardAlsoWhenStartedLate() {
    Doubles::state().hasFinishedLaunching = true;
    const auto instance = SingleInstance::claim(u"panel"_s);
    QSignalSpy messages{instance.get(), &SingleInstance::messageReceived};
    Doubles::reopen();
    QCOMPARE(messages.size(), 1);
}

void TestSystem::nobodyListensAfterTheInstanceIsGone() {
    auto instance = SingleInstance::claim(u"panel"_s);
    Doubles::finishLaunching();
    instance.reset();
    QVERIFY(!Doubles::handlesReopening());
    Doubles::finishLaunching();
    QVERIFY(!Doubles::handlesReopening());
}

QTEST_MAIN(TestSystem)
#include "TestSystem.moc"
