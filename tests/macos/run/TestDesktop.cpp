#include "Doubles.h"
#include "platform/Desktop.h"
#include "platform/FontDesign.h"

#include <QDir>
#include <QTest>
#include <QUrl>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

constexpr long accessory = 1;
constexpr quint64 moveToActiveSpace = 1U << 1U;
constexpr quint64 fullScreenAuxiliary = 1U << 8U;
const QList<quint64> onceWithoutOptions{0};

}

class TestDesktop final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void hasNoPlaceInTheDock();
    void opensAddresses_data();
    void opensAddresses();
    void comesToTheFront();
    void asksAgainWhereActivationWasRefused_data();
    void asksAgainWhereActivationWasRefused();
    void windowsOpenOnTheSpaceOfTheUser();
    void thereIsNoNativeWindowOffscreen();
    void staysBehindWhenItHasLaunched();
    void givesTheKeyboardBackOnce();
    void hidesWhereNobodyTakesTheKeyboard_data();
    void hidesWhereNobodyTakesTheKeyboard();
    void keepsTheKeyboard_data();
    void keepsTheKeyboard();
    void remembersWhoWasInFrontBeforeUs();
    void windowsAreBlended();
    void panelIsAWindowInFrontWhereWePutIt();
    void trustIsWhatTheSystemSays();
    void fontsAreOfTheirDesign_data();
    void fontsAreOfTheirDesign();
    void everythingThatIsNotUsedIsGivenBack();
};

void TestDesktop::init() {
    Doubles::reset();
}

void TestDesktop::hasNoPlaceInTheDock() {
    Desktop::becomeAccessory();
    QCOMPARE(Doubles::state().activationPolicy, accessory);
}

void TestDesktop::opensAddresses_data() {
    QTest::addColumn<QString>("address");
    QTest::addColumn<QStringList>("opened");
    const QString plain = u"https://console.example.org/dashboard?a=b&c=d#e"_s;
    QTest::newRow("page") << plain << QStringList{plain};
    QTest::newRow("accents are encoded") << u"https://example.org/ü b"_s
                                         << QStringList{u"https://example.org/%C3%BC%20b"_s};
}

void TestDesktop::opensAddresses() {
    QFETCH(QString, address);
    Desktop::openUrl(QUrl{address});
    QTEST(Doubles::state().openedUrls, "opened");
}

void TestDesktop::comesToTheFront() {
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

void TestDesktop::asksAgainWhereActivationWasRefused_data() {
    QTest::addColumn<bool>("isGranted");
    QTest::addColumn<bool>("isClosedAtOnce");
    QTest::addColumn<int>("requests");
    QTest::newRow("granted") << true << false << 0;
    QTest::newRow("refused") << false << false << 1;
    QTest::newRow("refused, and the window is closed already") << false << true << 0;
}

void TestDesktop::asksAgainWhereActivationWasRefused() {
    QFETCH(bool, isGranted);
    QFETCH(bool, isClosedAtOnce);
    QFETCH(int, requests);
    Doubles::state().platform = u"cocoa"_s;
    Doubles::state().grantsActivation = isGranted;
    Doubles::state().isHidden = true;
    QWindow window;
    window.show();
    Desktop::bringToFront(window);
    QVERIFY(!Doubles::state().isHidden);
    QCOMPARE(Doubles::state().requestsToActivate, 0);
    window.setVisible(!isClosedAtOnce);
    QCoreApplication::processEvents();
    QCOMPARE(Doubles::state().requestsToActivate, requests);
    QCOMPARE(Doubles::state().ordersToTheFront, requests);
}

void TestDesktop::windowsOpenOnTheSpaceOfTheUser() {
    Doubles::state().platform = u"cocoa"_s;
    QWindow window;
    Desktop::prepareWindow(window);
    QCOMPARE(Doubles::state().windowBehavior, moveToActiveSpace | fullScreenAuxiliary);
}

void TestDesktop::thereIsNoNativeWindowOffscreen() {
    QWindow window;
    Desktop::prepareWindow(window);
    QCOMPARE(Doubles::state().windowBehavior, quint64{0});
}

void TestDesktop::staysBehindWhenItHasLaunched() {
    constexpr auto variable = "QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM";
    Desktop::prepareLaunch();
    QVERIFY(!qEnvironmentVariableIsEmpty(variable));
    QCoreApplication::processEvents();
    QVERIFY(!qEnvironmentVariableIsEmpty(variable));
    Doubles::finishLaunching();
    QVERIFY(!qEnvironmentVariableIsEmpty(variable));
    QCoreApplication::processEvents();
    QVERIFY(!qEnvironmentVariableIsSet(variable));
}

void TestDesktop::givesTheKeyboardBackOnce() {
    QWindow window;
    window.show();
    Desktop::bringToFront(window);
    window.hide();
    Desktop::activatePreviousProgram();
    QCOMPARE(Doubles::state().otherActivations, onceWithoutOptions);
    QCoreApplication::processEvents();
    QVERIFY(!Doubles::state().isHidden);
    Doubles::state().isActive = true;
    Desktop::activatePreviousProgram();
    QCOMPARE(Doubles::state().otherActivations, onceWithoutOptions);
}

void TestDesktop::hidesWhereNobodyTakesTheKeyboard_data() {
    QTest::addColumn<bool>("wasInFront");
    QTest::addColumn<bool>("isShownAgain");
    QTest::addColumn<bool>("isHidden");
    QTest::newRow("the other does not take it") << true << false << true;
    QTest::newRow("there is no other") << false << false << true;
    QTest::newRow("a window is shown meanwhile") << true << true << false;
}

void TestDesktop::hidesWhereNobodyTakesTheKeyboard() {
    QFETCH(bool, wasInFront);
    QFETCH(bool, isShownAgain);
    Doubles::state().inFront = wasInFront ? Doubles::Program::other : Doubles::Program::none;
    Doubles::state().otherAccepts = false;
    QWindow window;
    window.show();
    Desktop::bringToFront(window);
    window.hide();
    Desktop::activatePreviousProgram();
    QVERIFY(!Doubles::state().isHidden);
    window.setVisible(isShownAgain);
    QCoreApplication::processEvents();
    QTEST(Doubles::state().isHidden, "isHidden");
}

void TestDesktop::keepsTheKeyboard_data() {
    QTest::addColumn<bool>("isShown");
    QTest::addColumn<bool>("isActive");
    QTest::newRow("while a window of ours is shown") << true << true;
    QTest::newRow("when another program has it already") << false << false;
}

void TestDesktop::keepsTheKeyboard() {
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

void TestDesktop::remembersWhoWasInFrontBeforeUs() {
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

void TestDesktop::windowsAreBlended() {
    QVERIFY(Desktop::blendsWindows());
}

void TestDesktop::panelIsAWindowInFrontWhereWePutIt() {
    const Qt::WindowFlags flags = Desktop::panelFlags();
    QCOMPARE(flags & Qt::WindowType_Mask, Qt::Window);
    QVERIFY(flags.testFlag(Qt::FramelessWindowHint));
    QVERIFY(flags.testFlag(Qt::WindowStaysOnTopHint));
    QVERIFY(flags.testFlag(Qt::CustomizeWindowHint));
    QVERIFY(!Desktop::placesPanel());
}

void TestDesktop::trustIsWhatTheSystemSays() {
    QVERIFY(!Desktop::trustsAccessibility());
    Doubles::state().isTrusted = true;
    QVERIFY(Desktop::trustsAccessibility());
}

void TestDesktop::fontsAreOfTheirDesign_data() {
    QTest::addColumn<FontDesign>("design");
    QTest::addColumn<QStringList>("askedFor");
    QTest::addColumn<bool>("isThere");
    QTest::newRow("rounded, where there is none") << FontDesign::rounded << QStringList{u"rounded"_s} << false;
    QTest::newRow("rounded") << FontDesign::rounded << QStringList{u"rounded"_s} << true;
    QTest::newRow("monospaced") << FontDesign::monospaced << QStringList{u"monospaced"_s} << true;
    QTest::newRow("plain") << FontDesign::system << QStringList{} << true;
}

void TestDesktop::fontsAreOfTheirDesign() {
    QFETCH(FontDesign, design);
    QFETCH(QStringList, askedFor);
    QFETCH(bool, isThere);
    const QFileInfoList files = QDir{u"/usr/share/fonts/truetype/dejavu"_s}.entryInfoList({u"*.ttf"_s});
    if (files.isEmpty()) {
        QSKIP("there is no font to read");
    }
    Doubles::state().fontFile = isThere ? files.first().filePath() : QString{};
    QFont font;
    font.setPixelSize(16);
    font.setBold(true);
    const QFont designed = inDesign(font, design);
    QCOMPARE(Doubles::state().fontDesigns, askedFor);
    if (isThere && !askedFor.isEmpty()) {
        QVERIFY(designed.family().contains(u"DejaVu"_s));
    } else {
        QCOMPARE(designed.family(), font.family());
    }
    QCOMPARE(designed.pixelSize(), 16);
    QVERIFY(designed.bold());
}

void TestDesktop::everythingThatIsNotUsedIsGivenBack() {
    constexpr quint64 asMuchAsThereIs = 0;
    Desktop::releaseUnusedMemory();
    QCOMPARE(Doubles::state().reliefGoal, std::optional{asMuchAsThereIs});
}

QTEST_MAIN(TestDesktop)
#include "TestDesktop.moc"
