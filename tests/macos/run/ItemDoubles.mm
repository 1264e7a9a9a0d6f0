// The item in the menu bar, its button and its menu.
#include "Machinery.h"

#include <unordered_map>

using namespace Machinery;

namespace {

struct MenuEntry {
    NSString* title = nil;
    SEL action = nullptr;
    id target = nil;
};

struct Item {
    std::unordered_map<NSMenuItem*, MenuEntry> entries;
    std::unordered_map<NSMenu*, std::vector<NSMenuItem*>> menus;
    NSStatusItem* item = nil;
    NSMenu* menu = nil;
    NSMenu* lastMenu = nil;
    id target = nil;
    SEL action = nullptr;
};

Item& machinery() {
    static Item one;
    return one;
}

void open(NSMenu* menu, QStringList& titles) {
    for (NSMenuItem* entry : machinery().menus[menu]) {
        titles.append(text(machinery().entries[entry].title));
    }
    [[NSNotificationCenter defaultCenter] postNotificationName:NSMenuDidBeginTrackingNotification object:menu];
    if (!now().chosen.isEmpty()) {
        Doubles::choose(now().chosen);
    }
}

}

void Machinery::forgetItem() {
    machinery() = {};
}

NSString* const NSMenuDidBeginTrackingNotification = @"NSMenuDidBeginTrackingNotification";

@implementation NSStatusBar
ONE_OF(NSStatusBar, systemStatusBar)
- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    ++now().items;
    now().itemLength = length;
    machinery().item = [[NSStatusItem alloc] init];
    return machinery().item;
}
- (void)removeStatusItem:(NSStatusItem*)item {
    now().items -= item == machinery().item ? 1 : 0;
}
@end

@implementation NSStatusItem
- (NSStatusBarButton*)button {
    static NSStatusBarButton* one = [[NSStatusBarButton alloc] init];
    return one;
}
- (void)setMenu:(NSMenu*)menu {
    machinery().menu = menu;
    machinery().lastMenu = menu == nil ? machinery().lastMenu : menu;
}
- (NSMenu*)menu {
    return machinery().menu;
}
- (void)popUpStatusItemMenu:(NSMenu*)menu {
    open(menu, now().button.poppedUp);
}
@end

@implementation NSControl
- (void)setTarget:(id)target {
    machinery().target = target;
    now().button.hasTarget = target != nil;
}
- (void)setAction:(SEL)action {
    machinery().action = action;
}
- (NSInteger)sendActionOn:(NSInteger)mask {
    now().button.actionMask = static_cast<quint64>(mask);
    return 0;
}
@end

@implementation NSButton
- (void)setTitle:(NSString*)value {
    now().button.title = text(value);
}
- (void)setImagePosition:(NSCellImagePosition)position {
    now().button.showsImage = position == NSImageOnly;
    now().button.showsTitle = position == NSNoImage;
}
- (void)setImage:(NSImage*)image {
    describe(image, now().button);
}
- (void)highlight:(BOOL)flag {
    now().button.isHighlighted = flag;
}
- (void)performClick:(id)sender {
    if (machinery().menu != nil && now().clickOpensMenu) {
        open(machinery().menu, now().button.menus);
    }
}
@end

@implementation NSStatusBarButton
@end

void Doubles::pressButton() {
    if (machinery().menu != nil) {
        return; // a button with a menu opens it and never acts
    }
    [machinery().target performSelector:machinery().action withObject:nil];
}

@implementation NSMenu
- (id)initWithTitle:(NSString*)title {
    return [self init];
}
- (void)addItem:(NSMenuItem*)item {
    machinery().menus[self].push_back(item);
}
@end

@implementation NSMenuItem
- (id)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key {
    machinery().entries[self] = {.title = [title copy], .action = action};
    return self;
}
+ (NSMenuItem*)separatorItem {
    return [[NSMenuItem alloc] initWithTitle:@"---" action:nullptr keyEquivalent:@""];
}
- (void)setTarget:(id)target {
    machinery().entries[self].target = target;
}
@end

void Doubles::choose(const QString& title) {
    for (NSMenuItem* item : machinery().menus[machinery().lastMenu]) {
        const MenuEntry& entry = machinery().entries[item];
        if (text(entry.title) == title) {
            [entry.target performSelector:entry.action withObject:item];
        }
    }
}
