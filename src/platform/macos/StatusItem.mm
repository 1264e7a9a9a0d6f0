#include "platform/StatusItem.h"

#include "platform/StatusItemMenu.h"
#include "platform/macos/NativeString.h"

#include <QCursor>
#include <QRectF>

#include <functional>
#include <optional>
#include <utility>

#import <AppKit/AppKit.h>

/// What a button or an entry of a menu does.
@interface VornaAction : NSObject {
    std::function<void()> m_function;
}
- (instancetype)initWithFunction:(std::function<void()>)function;
- (void)perform:(id)sender;
@end

@implementation VornaAction

- (instancetype)initWithFunction:(std::function<void()>)function {
    self = [super init];
    if (self != nil) {
        m_function = std::move(function);
    }
    return self;
}

- (void)perform:(id)sender {
    (void)sender;
    m_function();
}

@end

namespace {

constexpr NSEventMask clicks = NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown;
constexpr NSEventMask presses = NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown | NSEventMaskOtherMouseDown;

class MenuBarStatusItem final : public StatusItem {
public:
    explicit MenuBarStatusItem(const QString& title);
    ~MenuBarStatusItem() override;

    void setSymbol(const QString& symbolName, const QString& meaning) override;
    [[nodiscard]] QRect anchor() const override;

private:
    using Signal = void (StatusItem::*)();

    [[nodiscard]] VornaAction* actionFor(std::function<void()> function);
    void fillButton();
    void fillMenu();
    void addEntry(const QString& text, Signal chosen);
    void watchOtherPlaces();
    void buttonPressed();
    void showMenu();
    [[nodiscard]] std::optional<NSRect> frame() const;

    const QString m_title;
    QString m_symbolName;
    QString m_meaning;
    NSStatusItem* m_item = nil;
    NSMenu* m_menu = nil;
    NSMutableArray* m_actions = nil;
    id m_monitor = nil;
};

MenuBarStatusItem::MenuBarStatusItem(const QString& title)
    : m_title{title} {
    @autoreleasepool {
        m_item = [[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength];
        m_menu = [[NSMenu alloc] initWithTitle:NativeString::from(title)];
        m_actions = [[NSMutableArray alloc] init];
        fillButton();
        fillMenu();
        watchOtherPlaces();
    }
}

MenuBarStatusItem::~MenuBarStatusItem() {
    @autoreleasepool {
        if (m_monitor != nil) {
            [NSEvent removeMonitor:m_monitor];
        }
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
    [button setAccessibilityTitle:NativeString::from(m_title)];
    button.target = actionFor([this] { buttonPressed(); });
    button.action = @selector(perform:);
    [button sendActionOn:clicks];
}

void MenuBarStatusItem::fillMenu() {
    addEntry(StatusItemMenu::showPanel.toString(), &StatusItem::showPanelChosen);
    addEntry(StatusItemMenu::settings.toString(), &StatusItem::settingsChosen);
    [m_menu addItem:[NSMenuItem separatorItem]];
    addEntry(StatusItemMenu::quit.toString().arg(m_title), &StatusItem::quitChosen);
}

void MenuBarStatusItem::addEntry(const QString& text, Signal chosen) {
    NSMenuItem* entry = [[NSMenuItem alloc] initWithTitle:NativeString::from(text)
                                                   action:@selector(perform:)
                                            keyEquivalent:@""];
    entry.target = actionFor([this, chosen] { emit(this->*chosen)(); });
    [m_menu addItem:entry];
}

// A press in another program's menu extra does not take the focus away; this is how it is heard of.
void MenuBarStatusItem::watchOtherPlaces() {
    m_monitor = [NSEvent addGlobalMonitorForEventsMatchingMask:presses
                                                       handler:^(NSEvent*) {
                                                           const auto own = frame();
                                                           if (!own || !NSPointInRect([NSEvent mouseLocation], *own)) {
                                                               emit clickedElsewhere();
                                                           }
                                                       }];
}

void MenuBarStatusItem::buttonPressed() {
    NSEvent* event = [[NSApplication sharedApplication] currentEvent];
    if (event != nil &&
        (event.type == NSEventTypeRightMouseDown || (event.modifierFlags & NSEventModifierFlagControl) != 0)) {
        showMenu();
    } else {
        emit clicked();
    }
}

// A menu that is set all the time would keep the button from ever acting.
void MenuBarStatusItem::showMenu() {
    m_item.menu = m_menu;
    [m_item.button performClick:nil];
    m_item.menu = nil;
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

std::optional<NSRect> MenuBarStatusItem::frame() const {
    NSStatusBarButton* button = m_item.button;
    if (button.window == nil) {
        return std::nullopt;
    }
    return [button.window convertRectToScreen:[button convertRect:button.bounds toView:nil]];
}

QRect MenuBarStatusItem::anchor() const {
    @autoreleasepool {
        NSScreen* primary = [[NSScreen screens] firstObject];
        const auto place = frame();
        if (!place || primary == nil) {
            return {QCursor::pos(), QSize{0, 0}};
        }
        // The system counts upwards from the lower edge of the primary screen, Qt downwards from its upper edge.
        const qreal top = NSMaxY(primary.frame) - NSMaxY(*place);
        return QRectF{NSMinX(*place), top, NSWidth(*place), NSHeight(*place)}.toRect();
    }
}

}

std::unique_ptr<StatusItem> StatusItem::create(const QString& title) {
    return std::make_unique<MenuBarStatusItem>(title);
}
