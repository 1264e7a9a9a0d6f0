#include "platform/StatusItem.h"

#include "platform/macos/Action.h"
#include "platform/macos/MenuBar.h"
#include "platform/macos/NativeString.h"

#include <QCursor>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QScreen>

#include <chrono>
#include <functional>
#include <optional>
#include <utility>

#import <AppKit/AppKit.h>

using namespace std::chrono_literals;

namespace {

constexpr NSEventMask clicks = NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown;
constexpr NSEventMask presses = clicks | NSEventMaskOtherMouseDown;

/// One click can be heard of twice: by the button's action and by a monitor.
constexpr auto echo = 300ms;

class MenuBarStatusItem final : public StatusItem {
public:
    explicit MenuBarStatusItem(const QString& title);
    ~MenuBarStatusItem() override;

    void setSymbol(const QString& symbolName, const QString& meaning) override;
    void setPanelOpen(bool isOpen) override;
    [[nodiscard]] QRect anchor() const override;

private:
    [[nodiscard]] VornaAction* actionFor(std::function<void()> function);
    void fillButton();
    void fillMenu();
    void addEntry(const QString& text, void (StatusItem::*chosen)());
    void buttonPressed();
    void openMenu();
    void showHighlight() { [m_item.button highlight:m_isPanelOpen]; }
    [[nodiscard]] std::optional<QRect> place() const;
    [[nodiscard]] bool isPointerOnItem() const;

    const QString m_title;
    QString m_symbolName;
    QString m_meaning;
    NSStatusItem* m_item = [[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength];
    NSMenu* m_menu = nil;
    NSMutableArray* m_actions = [[NSMutableArray alloc] init];
    VornaAction* m_tracking = nil;
    id m_releases = nil;
    id m_presses = nil;
    bool m_isPanelOpen = false;
    bool m_menuHasOpened = false;
    QDeadlineTimer m_echoIsOver;
    std::optional<QPoint> m_click;
};

MenuBarStatusItem::MenuBarStatusItem(const QString& title)
    : m_title{title}
    , m_menu{[[NSMenu alloc] initWithTitle:NativeString::from(title)]} {
    fillButton();
    fillMenu();
    // Since macOS 27 a right press does not reach the button, but its release is heard of as in another program.
    m_releases = [NSEvent addGlobalMonitorForEventsMatchingMask:NSEventMaskRightMouseUp
                                                        handler:^(NSEvent*) {
                                                            if (isPointerOnItem()) {
                                                                openMenu();
                                                            }
                                                        }];
}

MenuBarStatusItem::~MenuBarStatusItem() {
    setPanelOpen(false);
    [NSEvent removeMonitor:m_releases];
    [[NSNotificationCenter defaultCenter] removeObserver:m_tracking];
    m_item.button.target = nil;
    [[NSStatusBar systemStatusBar] removeStatusItem:m_item];
}

VornaAction* MenuBarStatusItem::actionFor(std::function<void()> function) {
    VornaAction* action = [[VornaAction alloc] initWithFunction:std::move(function)];
    [m_actions addObject:action];
    return action;
}

void MenuBarStatusItem::fillButton() {
    NSStatusBarButton* button = m_item.button;
    button.title = NativeString::from(m_title);
    button.imagePosition = NSNoImage;
    [button setAccessibilityLabel:NativeString::from(m_title)];
    button.target = actionFor([this] { buttonPressed(); });
    button.action = @selector(perform:);
    [button sendActionOn:clicks];
}

void MenuBarStatusItem::fillMenu() {
    addEntry(StatusItem::showPanelText.toString(), &StatusItem::showPanelChosen);
    addEntry(StatusItem::settingsText.toString(), &StatusItem::settingsChosen);
    [m_menu addItem:[NSMenuItem separatorItem]];
    addEntry(StatusItem::quitText.toString().arg(m_title), &StatusItem::quitChosen);
    m_tracking = actionFor([this] { m_menuHasOpened = true; });
    [m_tracking performOn:NSMenuDidBeginTrackingNotification of:m_menu];
}

void MenuBarStatusItem::addEntry(const QString& text, void (StatusItem::*chosen)()) {
    NSMenuItem* entry = [[NSMenuItem alloc] initWithTitle:NativeString::from(text)
                                                   action:@selector(perform:)
                                            keyEquivalent:@""];
    entry.target = actionFor([this, chosen] { emit(this->*chosen)(); });
    [m_menu addItem:entry];
}

void MenuBarStatusItem::buttonPressed() {
    NSEvent* event = [[NSApplication sharedApplication] currentEvent];
    if (event != nil &&
        (event.type == NSEventTypeRightMouseDown || (event.modifierFlags & NSEventModifierFlagControl) != 0)) {
        openMenu();
    } else {
        m_click = QCursor::pos();
        emit clicked();
        m_click.reset();
    }
}

// A menu that is set all the time would keep the button from ever acting. On a second display in full screen a click
// may open nothing.
void MenuBarStatusItem::openMenu() {
    if (!m_echoIsOver.hasExpired()) {
        return;
    }
    m_click = QCursor::pos();
    m_menuHasOpened = false;
    m_item.menu = m_menu;
    [m_item.button performClick:nil];
    if (!m_menuHasOpened) {
        [m_item popUpStatusItemMenu:m_menu];
    }
    m_item.menu = nil;
    m_click.reset();
    m_echoIsOver.setRemainingTime(echo);
}

void MenuBarStatusItem::setPanelOpen(bool isOpen) {
    m_isPanelOpen = isOpen;
    if (isOpen && m_presses == nil) {
        // A press in another program's menu extra does not take the focus away; this is how it is heard of.
        m_presses = [NSEvent addGlobalMonitorForEventsMatchingMask:presses
                                                           handler:^(NSEvent*) {
                                                               if (!isPointerOnItem()) {
                                                                   emit clickedElsewhere();
                                                               }
                                                           }];
    } else if (!isOpen && m_presses != nil) {
        [NSEvent removeMonitor:m_presses];
        m_presses = nil;
    }
    showHighlight();
    // The button takes it back at the end of the click that has opened the panel.
    QMetaObject::invokeMethod(this, &MenuBarStatusItem::showHighlight, Qt::QueuedConnection);
}

void MenuBarStatusItem::setSymbol(const QString& symbolName, const QString& meaning) {
    if (symbolName == m_symbolName && meaning == m_meaning) {
        return;
    }
    m_symbolName = symbolName;
    m_meaning = meaning;
    @autoreleasepool {
        NSString* description = NativeString::from(meaning);
        NSImage* image = [NSImage imageWithSystemSymbolName:NativeString::from(symbolName)
                                   accessibilityDescription:description];
        [image setTemplate:YES];
        NSStatusBarButton* button = m_item.button;
        button.image = image;
        button.imagePosition = image == nil ? NSNoImage : NSImageOnly;
        button.toolTip = description;
        [button setAccessibilityValue:description];
    }
}

// The system counts upwards from the lower edge of the primary screen, Qt downwards from its upper edge.
std::optional<QRect> MenuBarStatusItem::place() const {
    NSStatusBarButton* button = m_item.button;
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (button.window == nil || primary == nullptr) {
        return std::nullopt;
    }
    const NSRect frame = [button.window convertRectToScreen:[button convertRect:button.bounds toView:nil]];
    const qreal top = primary->geometry().height() - NSMaxY(frame);
    return QRectF{NSMinX(frame), top, NSWidth(frame), NSHeight(frame)}.toRect();
}

bool MenuBarStatusItem::isPointerOnItem() const {
    const auto item = place();
    return item && MenuBar::isOnItem(QCursor::pos(), *item, MenuBar::screens());
}

QRect MenuBarStatusItem::anchor() const {
    const auto item = place();
    return item ? MenuBar::anchor(*item, m_click, MenuBar::screens()) : QRect{QCursor::pos(), QSize{0, 0}};
}

}

std::unique_ptr<StatusItem> StatusItem::create(const QString& title) {
    return std::make_unique<MenuBarStatusItem>(title);
}
