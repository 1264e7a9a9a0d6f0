#include "Doubles.h"
#include "platform/AppInfo.h"
#include "platform/ChildDescriptors.h"
#include "platform/SingleInstance.h"
#include "platform/SystemSettings.h"
#include "platform/UserDefaults.h"

#include <QSignalSpy>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

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
    void everyPaneHasItsLink_data();
    void everyPaneHasItsLink();
    void thisProcessIsTheOneInstance();
    void aStartBesideARunningOneOpensThatOne_data();
    void aStartBesideARunningOneOpensThatOne();
    void openingItAgainShowsThePanel();
    void openingItAgainIsHeardAlsoWhenStartedLate();
    void nobodyListensAfterTheInstanceIsGone();
    void noChildInheritsAPipe();
    void childrenInheritStandardInputAndNothingElse_data();
    void childrenInheritStandardInputAndNothingElse();
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

void TestSystem::thisProcessIsTheOneInstance() {
    QVERIFY(SingleInstance::claim(u"panel"_s));
    QVERIFY(SingleInstance::claim(u"settings"_s));
}

void TestSystem::aStartBesideARunningOneOpensThatOne_data() {
    QTest::addColumn<bool>("hasBundle");
    QTest::addColumn<bool>("runs");
    QTest::addColumn<bool>("hasLaunched");
    QTest::addColumn<bool>("answers");
    QTest::addColumn<bool>("isOpened");
    QTest::newRow("one runs") << true << true << true << true << true;
    QTest::newRow("one runs, and the system says nothing") << true << true << true << false << true;
    QTest::newRow("both start at once") << true << true << false << true << false;
    QTest::newRow("none runs") << true << false << true << true << false;
    QTest::newRow("without a bundle") << false << true << true << true << false;
}

void TestSystem::aStartBesideARunningOneOpensThatOne() {
    QFETCH(bool, hasBundle);
    QFETCH(bool, isOpened);
    QFETCH(bool, answers);
    QFETCH(bool, runs);
    QFETCH(bool, hasLaunched);
    auto& state = Doubles::state();
    if (!hasBundle) {
        state.bundleIdentifier.reset();
    }
    state.otherInstanceRuns = runs;
    state.otherHasFinishedLaunching = hasLaunched;
    state.holdsAnswers = !answers;
    QCOMPARE(SingleInstance::claim(u"panel"_s) == nullptr, isOpened);
    QCOMPARE(state.openedApplications, isOpened ? QStringList{u"file:///other.app"_s} : QStringList{});
    Doubles::answerAll();
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

void TestSystem::noChildInheritsAPipe() {
    std::array<int, 2> ends{-1, -1};
    QCOMPARE(ChildDescriptors::openPipe(ends), 0);
    QCOMPARE(::write(ends[1], "x", 1), 1);
    for (const int end : ends) {
        QVERIFY((fcntl(end, F_GETFD) & FD_CLOEXEC) != 0);
        ::close(end);
    }
}

void TestSystem::childrenInheritStandardInputAndNothingElse_data() {
    QTest::addColumn<bool>("hasInput");
    QTest::addColumn<QList<int>>("inherited");
    QTest::newRow("standard input") << true << QList<int>{STDIN_FILENO};
    QTest::newRow("no standard input") << false << QList<int>{};
}

void TestSystem::childrenInheritStandardInputAndNothingElse() {
    constexpr short wanted = 0x02;
    constexpr short closesTheRest = 0x4000;
    QFETCH(bool, hasInput);
    const int spare = ::dup(STDIN_FILENO);
    hasInput ? (void)::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO) : (void)::close(STDIN_FILENO);
    posix_spawn_file_actions_t actions;
    short flags = wanted;
    const int status = ChildDescriptors::inheritNothingElse(actions, flags);
    spare == -1 ? (void)0 : (void)::dup2(spare, STDIN_FILENO);
    QCOMPARE(status, 0);
    QCOMPARE(flags, short{wanted | closesTheRest});
    QTEST(Doubles::state().inheritedDescriptors, "inherited");
}

QTEST_MAIN(TestSystem)
#include "TestSystem.moc"
