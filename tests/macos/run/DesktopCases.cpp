#include "Cases.h"
#include "platform/Desktop.h"
#include "platform/FontDesign.h"

#include <QDir>
#include <QUrl>
#include <QWidget>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace Doubles;

namespace {

std::unique_ptr<QWindow> window;

class TellingWindow final : public QWindow {
    void showEvent(QShowEvent* /*event*/) override { tell("shows"); }
};

void showWidget() {
    world().platform = u"cocoa"_s;
    QWidget{}.show();
}

/// DESIGN, and whether the system has a file of it.
void font(const QString& words) {
    const QDir dejavu{u"/usr/share/fonts/truetype/dejavu"_s};
    world().fontFile = words.endsWith(u"there"_s) ? dejavu.filePath(u"DejaVuSans.ttf"_s) : QString{};
    QFont font{u"Text"_s};
    font.setPixelSize(16);
    font.setBold(true);
    const QFont designed = inDesign(font, words.startsWith(u"rounded"_s)      ? FontDesign::rounded
                                          : words.startsWith(u"monospaced"_s) ? FontDesign::monospaced
                                                                              : FontDesign::system);
    tell(designed.families().join(u','));
    tell(designed.pixelSize() == 16 && designed.bold());
}

void beMinimizedBehindAnother() {
    QWindow other;
    window->showMinimized();
    other.show();
    other.requestActivate();
    QCoreApplication::processEvents();
    Desktop::bringToFront(*window);
    QCoreApplication::processEvents();
    tell(window->isActive() && !window->windowStates().testFlag(Qt::WindowMinimized));
}

constexpr auto panelFlags = Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::CustomizeWindowHint;

#define TO_FRONT "unhides; activates 1; "

}

const Area& desktopArea() {
    static const Area area{
        "desktop",
        {
            {u"accessory"_s, [](auto&) { Desktop::becomeAccessory(); }},
            {u"open"_s, [](auto& address) { Desktop::openUrl(QUrl{address}); }},
            {u"cocoa"_s, [](auto&) { world().platform = u"cocoa"_s; }},
            {u"show"_s, [](auto&) { window->show(); }},
            {u"hide"_s, [](auto&) { window->hide(); }},
            {u"telling"_s, [](auto&) { window = std::make_unique<TellingWindow>(); }},
            {u"tooltip"_s, [](auto&) { window->setFlags(Qt::ToolTip); }},
            {u"widget"_s, [](auto&) { showWidget(); }},
            {u"front"_s, [](auto&) { Desktop::bringToFront(*window); }},
            {u"behind"_s, [](auto&) { beMinimizedBehindAnother(); }},
            {u"back"_s, [](auto&) { Desktop::activatePreviousProgram(); }},
            {u"refuse"_s, [](auto&) { world().grantsActivation = false; }},
            {u"unwilling"_s, [](auto&) { world().otherAccepts = false; }},
            {u"nobody"_s, [](auto&) { world().inFront = Program::none; }},
            {u"active"_s, [](auto& state) { world().isActive = state != u"no"_s; }},
            {u"launch"_s, [](auto&) { Desktop::prepareLaunch(); }},
            {u"variable"_s, [](auto& name) { tell(qEnvironmentVariableIsSet(qPrintable(name))); }},
            {u"flags"_s, [](auto&) { tell(Desktop::panelFlags() == panelFlags); }},
            {u"looks"_s, [](auto&) { tell(!Desktop::placesPanel() && Desktop::blendsWindows()); }},
            {u"trust"_s, [](auto&) { world().isTrusted = true; }},
            {u"trusts"_s, [](auto&) { tell(Desktop::trustsAccessibility()); }},
            {u"relieve"_s, [](auto&) { Desktop::releaseUnusedMemory(); }},
            {u"font"_s, font},
        },
        {
            {"it has no place in the Dock", "accessory", "policy 1"},
            {"addresses are opened as they are encoded", "open https://b.org/a?a=b&c=d#e; open https://b.org/ü b",
             "opens https://b.org/a?a=b&c=d#e; opens https://b.org/%C3%BC%20b"},
            {"a minimized window comes to the front", "behind", TO_FRONT "true"},
            {"a window whose activation was granted is left alone", "show; cocoa; front; say later; turn",
             TO_FRONT "later"},
            {"a window whose activation was refused asks again", "refuse; show; cocoa; front; say later; turn",
             TO_FRONT "later; asks to be activated; native window; orders to the front"},
            {"a window that is closed by then does not", "refuse; show; cocoa; front; hide; say later; turn",
             TO_FRONT "later"},
            {"a window that was made opens on the space of the user, beside full screens, whenever it is shown",
             "cocoa; telling; show; hide; say again; show",
             "native window; behaviour 258; shows; again; native window; behaviour 258; shows"},
            {"so does a widget, for which Qt asks too", "widget", "native window; native window; behaviour 258"},
            {"other kinds of windows open as Qt has them", "cocoa; telling; tooltip; show", "shows"},
            {"there is no native window offscreen", "telling; show", "shows"},
            {"it stays behind when it launches, and its children know nothing of that",
             "launch; turn; variable QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM; launched; "
             "variable QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM; turn; "
             "variable QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM",
             "true; true; false"},
            {"the keyboard is given back, once", "show; front; hide; back; say again; turn; active; back; turn",
             TO_FRONT "yields to the other; activates the other 0; again; hides"},
            {"it hides where the other does not take the keyboard",
             "show; front; unwilling; hide; back; say later; turn",
             TO_FRONT "yields to the other; activates the other 0; later; hides"},
            {"it does not hide a window that is shown meanwhile", "show; front; unwilling; hide; back; show; turn",
             TO_FRONT "yields to the other; activates the other 0"},
            {"it hides where there was no other", "nobody; front; back; turn", TO_FRONT "hides"},
            {"it keeps the keyboard while a window of its own is shown", "show; front; back; turn; say no",
             TO_FRONT "no"},
            {"it gives nothing back when another program has the keyboard already",
             "show; front; hide; active no; back; turn; say no", TO_FRONT "no"},
            {"who was in front before it stays known", "front; front; nobody; front; back",
             TO_FRONT TO_FRONT TO_FRONT "yields to the other; activates the other 0"},
            {"the panel is a window in front, without a frame or a full screen of its own", "flags; looks",
             "true; true"},
            {"trust is what the system says", "trusts; trust; trusts", "false; true"},
            {"everything that is not used is given back", "relieve", "all zones relieved by 0"},
            {"the text's font is its own", "font system there", "Text; true"},
            {"where there is no rounded font it is the text's", "font rounded", "font rounded; Text; true"},
            {"where there is no monospaced font it is Qt's fixed one", "font monospaced",
             "font monospaced; monospace; true"},
            {"a rounded font", "font rounded there", "font rounded; DejaVu Sans; true"},
            {"a monospaced font", "font monospaced there", "font monospaced; DejaVu Sans; true"},
        },
        [] {
            Desktop::becomeAccessory();
            (void)told();
            window = std::make_unique<QWindow>();
        },
        [] {
            window.reset();
            world().isActive = true;
            Desktop::activatePreviousProgram(); // forgets who was in front
            QCoreApplication::processEvents();
        }};
    return area;
}
