#include "Cases.h"
#include "platform/Desktop.h"
#include "platform/FontDesign.h"

#include <QDir>
#include <QUrl>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace Doubles;

namespace {

constexpr auto launchVariable = "QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM";

/// With a window of ours that was brought to the front.
auto withWindowInFront(std::function<void(QWindow&)> happens) {
    return [happens = std::move(happens)] {
        QWindow window;
        window.show();
        Desktop::bringToFront(window);
        (void)told();
        happens(window);
        turn();
    };
}

auto bringToFront(bool isGranted, bool isClosedAtOnce) {
    return [=] {
        world().platform = u"cocoa"_s;
        world().grantsActivation = isGranted;
        QWindow window;
        window.show();
        Desktop::bringToFront(window);
        tell("a turn later");
        window.setVisible(!isClosedAtOnce);
        turn();
    };
}

auto fontOf(FontDesign design, bool isThere) {
    return [=] {
        const QDir dejavu{u"/usr/share/fonts/truetype/dejavu"_s};
        world().fontFile = isThere ? dejavu.filePath(u"DejaVuSans.ttf"_s) : QString{};
        QFont font{u"Text"_s};
        font.setPixelSize(16);
        font.setBold(true);
        const QFont designed = inDesign(font, design);
        tell(designed.families().join(u','));
        tell(designed.pixelSize() == 16 && designed.bold());
    };
}

}

const QList<Case> desktopCases{
    {"it has no place in the Dock", [] { Desktop::becomeAccessory(); }, "policy 1"},
    {"addresses are opened as they are encoded",
     [] {
         Desktop::openUrl(QUrl{u"https://example.org/a?a=b&c=d#e"_s});
         Desktop::openUrl(QUrl{u"https://example.org/ü b"_s});
     },
     "opens https://example.org/a?a=b&c=d#e; opens https://example.org/%C3%BC%20b"},
    {"a window comes to the front",
     [] {
         QWindow window;
         QWindow other;
         window.showMinimized();
         other.show();
         other.requestActivate();
         turn();
         Desktop::bringToFront(window);
         turn();
         tell(window.isActive() && !window.windowStates().testFlag(Qt::WindowMinimized));
     },
     "unhides; activates 1; true"},
    {"a window whose activation was granted is left alone", bringToFront(true, false),
     "unhides; activates 1; a turn later"},
    {"a window whose activation was refused asks again", bringToFront(false, false),
     "unhides; activates 1; a turn later; asks to be activated; visible native window; orders to the front"},
    {"a window that is closed by then does not", bringToFront(false, true), "unhides; activates 1; a turn later"},
    {"a window that is not shown yet opens on the space of the user, beside full screens",
     [] {
         world().platform = u"cocoa"_s;
         QWindow window;
         Desktop::prepareWindow(window);
     },
     "native window; behaviour 258"},
    {"there is no native window offscreen",
     [] {
         QWindow window;
         Desktop::prepareWindow(window);
     },
     ""},
    {"it stays behind when it launches, and its children know nothing of that",
     [] {
         const auto isSet = [] { tell(!qEnvironmentVariableIsEmpty(launchVariable)); };
         Desktop::prepareLaunch();
         turn();
         isSet();
         finishLaunching();
         isSet();
         turn();
         isSet();
     },
     "true; true; false"},
    {"the keyboard is given back, once", withWindowInFront([](QWindow& window) {
         window.hide();
         Desktop::activatePreviousProgram();
         turn();
         tell("again");
         world().isActive = true;
         Desktop::activatePreviousProgram();
     }),
     "yields to the other; activates the other 0; again; hides"},
    {"it hides where the other does not take the keyboard", withWindowInFront([](QWindow& window) {
         world().otherAccepts = false;
         window.hide();
         Desktop::activatePreviousProgram();
         tell("a turn later");
     }),
     "yields to the other; activates the other 0; a turn later; hides"},
    {"it does not hide a window that is shown meanwhile", withWindowInFront([](QWindow& window) {
         world().otherAccepts = false;
         window.hide();
         Desktop::activatePreviousProgram();
         window.show();
     }),
     "yields to the other; activates the other 0"},
    {"it hides where there was no other",
     [] {
         world().inFront = Program::none;
         QWindow window;
         Desktop::bringToFront(window);
         (void)told();
         Desktop::activatePreviousProgram();
         turn();
     },
     "hides"},
    {"it keeps the keyboard while a window of its own is shown",
     withWindowInFront([](QWindow&) { Desktop::activatePreviousProgram(); }), ""},
    {"it gives nothing back when another program has the keyboard already", withWindowInFront([](QWindow& window) {
         window.hide();
         world().isActive = false;
         Desktop::activatePreviousProgram();
     }),
     ""},
    {"who was in front before it stays known", withWindowInFront([](QWindow& window) {
         for (const auto inFront : {Program::own, Program::none}) {
             world().inFront = inFront;
             Desktop::bringToFront(window);
         }
         (void)told();
         window.hide();
         Desktop::activatePreviousProgram();
     }),
     "yields to the other; activates the other 0"},
    {"the panel is a window in front, without a frame or a full screen of its own",
     [] {
         tell(Desktop::panelFlags() ==
              (Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::CustomizeWindowHint));
         tell(Desktop::placesPanel());
         tell(Desktop::blendsWindows());
     },
     "true; false; true"},
    {"trust is what the system says",
     [] {
         tell(Desktop::trustsAccessibility());
         world().isTrusted = true;
         tell(Desktop::trustsAccessibility());
     },
     "false; true"},
    {"everything that is not used is given back", [] { Desktop::releaseUnusedMemory(); }, "all zones relieved by 0"},
    {"the text's font is its own", fontOf(FontDesign::system, true), "Text; true"},
    {"without a rounded font it is the text's", fontOf(FontDesign::rounded, false), "font rounded; Text; true"},
    {"without a monospaced font it is Qt's fixed one", fontOf(FontDesign::monospaced, false),
     "font monospaced; monospace; true"},
    {"the rounded font", fontOf(FontDesign::rounded, true), "font rounded; DejaVu Sans; true"},
    {"the monospaced font", fontOf(FontDesign::monospaced, true), "font monospaced; DejaVu Sans; true"},
};
