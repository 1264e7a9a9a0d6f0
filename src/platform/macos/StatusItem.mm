#include "platform/StatusItem.h"

#include "platform/macos/Action.h"
#include "platform/macos/MenuBar.h"
#include "platform/macos/NativeString.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include <chrono>
#include <functional>
#include <optional>
#include <utility>

#import <AppKit/AppKit.h>

namespace {

constexpr NSEventMask clicks = NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown;
constexpr NSEventMask presses = NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown | NSEventMaskOtherMouseDown;

class MenuBarStatusItem final : public StatusItem {
public:
    explicit MenuBarStatusItem(const QString& title);
    ~MenuBarStatusItem() override;

    void setSymbol(const QString& symbolName, const QString& meaning) override;
    void setPanelOpen(bool isOpen) override;
    [[nodiscard]] QRect anchor() const override;

private:
    using Signal = void (StatusItem::*)();
    using Reaction = void (MenuBarStatusItem::*)();

    [[nodiscard]] VornaAction* actionFor(std::function<void()> function);
    void fillButton();
    void fillMenu();
    void addEntry(const QString& text, Signal chosen);
    [[nodiscard]] id watch(NSEventMask events, Reaction reaction);
    void buttonPressed();
    void rightButtonReleased();
    void pressedInAnotherProgram();
    void openMenu();
    void showMenu();
    void showHighlight();
    [[nodiscard]] std::optional<QRect> place() const;
    [[nodiscard]] bool isPointerOnItem() const;

    const QString m_title;
    QString m_symbolName;
    QString m_meaning;
    NSStatusItem* m_item = nil;
    NSMenu* m_menu = nil;
    NSMutableArray* m_actions = nil;
    VornaAction* m_tracking = nil;
    id m_releases = nil;
    id m_presses = nil;
    bool m_isPanelOpen = false;
    bool m_menuHasOpened = false;
    MenuBar::Openings m_openings;
    std::optional<QPoint> m_click;
};

MenuBarStatusItem::MenuBarStatusItem(const QString& title)
    : m_title{title} {
    @autoreleasepool {
        m_item = [[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength];
        m_menu = [[NSMenu alloc] initWithTitle:NativeString::from(title)];
        m_actions = [[NSMutableArray alloc] init];
        fillButton();
        fillMenu();
        m_releases = watch(NSEventMaskRightMouseUp, &MenuBarStatusItem::rightButtonReleased);
    }
}

MenuBarStatusItem::~MenuBarStatusItem() {
    @autoreleasepool {
        setPanelOpen(false);
        [NSEvent removeMonitor:m_releases];
        [[NSNotificationCenter defaultCenter] removeObserver:m_tracking];
        m_item.button.target = nil;
        [[NSStatusBar systemStatusBar] removeStatusItem:m_item];
    }
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
    [[NSNotificationCenter defaultCenter] addObserver:m_tracking
                                             selector:@selector(perform:)
                                                 name:NSMenuDidBeginTrackingNotification
                                               object:m_menu];
}

void MenuBarStatusItem::addEntry(const QString& text, Signal chosen) {
    NSMenuItem* entry = [[NSMenuItem alloc] initWithTitle:NativeString::from(text)
                                                   action:@selector(perform:)
                                            keyEquivalent:@""];
    entry.target = actionFor([this, chosen] { emit(this->*chosen)(); });
    [m_menu addItem:entry];
}

id MenuBarStatusItem::watch(NSEventMask events, Reaction reaction) {
    return [NSEvent addGlobalMonitorForEventsMatchingMask:events
                                                  handler:^(NSEvent*) {
                                                      (this->*reaction)();
                                                  }];
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

// Since macOS 27 a right press does not reach the button, but its release is heard of as in another program.
void MenuBarStatusItem::rightButtonReleased() {
    if (isPointerOnItem()) {
        openMenu();
    }
}

// A press in another program's menu extra does not take the focus away; this is how it is heard of.
void MenuBarStatusItem::pressedInAnotherProgram() {
    if (!isPointerOnItem()) {
        emit clickedElsewhere();
    }
}

void MenuBarStatusItem::openMenu() {
    if (m_openings.begin(std::chrono::steady_clock::now())) {
        m_click = QCursor::pos();
        showMenu();
        m_click.reset();
        m_openings.end(std::chrono::steady_clock::now());
    }
}

// A menu that is set all the time would keep the button from ever acting. On a second display in full screen a click
// may open nothing.
void MenuBarStatusItem::showMenu() {
    m_item.menu = m_menu;
    m_menuHasOpened = false;
    [m_item.button performClick:nil];
    if (!m_menuHasOpened) {
        [m_item popUpStatusItemMenu:m_menu];
    }
    m_item.menu = nil;
}

void MenuBarStatusItem::setPanelOpen(bool isOpen) {
    m_isPanelOpen = isOpen;
    if (isOpen && m_presses == nil) {
        m_presses = watch(presses, &MenuBarStatusItem::pressedInAnotherProgram);
    } else if (!isOpen && m_presses != nil) {
        [NSEvent removeMonitor:m_presses];
        m_presses = nil;
    }
    showHighlight();
    // The button takes it back at the end of the click that has opened the panel.
    QMetaObject::invokeMethod(this, &MenuBarStatusItem::showHighlight, Qt::QueuedConnection);
}

void MenuBarStatusItem::showHighlight() {
    [m_item.button highlight:m_isPanelOpen];
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
    @autoreleasepool {
        const auto item = place();
        return item ? MenuBar::anchor(*item, m_click, MenuBar::screens()) : QRect{QCursor::pos(), QSize{0, 0}};
    }
}

}

std::unique_ptr<StatusItem> StatusItem::create(const QString& title) {
    return std::make_unique<MenuBarStatusItem>(title);
}
