// The item in the menu bar, its button and its menu.
#include "Machinery.h"

using namespace Machinery;

namespace {

struct Entry {
    NSString* title = nil;
    SEL action = nullptr;
    id target = nil;
};

struct Item {
    QHash<NSMenuItem*, Entry> entries;
    NSMenu* menu = nil;
    id target = nil;
    SEL action = nullptr;
};
Item one;

void open(NSMenu* menu, const char* how) {
    if (menu == nil) {
        return;
    }
    tell(how);
    [[NSNotificationCenter defaultCenter] postNotificationName:NSMenuDidBeginTrackingNotification object:menu];
    for (const Entry& entry : one.entries) {
        if (text(entry.title) == world().chosen) {
            [entry.target performSelector:entry.action withObject:nil];
        }
    }
}

}

void Machinery::forgetItem() {
    one = {};
}

NSString* const NSMenuDidBeginTrackingNotification = @"NSMenuDidBeginTrackingNotification";

@implementation NSStatusBar
ONE_OF(NSStatusBar, systemStatusBar)
- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    record("item of length", length);
    return [[NSStatusItem alloc] init];
}
DOES(-(void)removeStatusItem : (NSStatusItem*)item, tell("item removed"))
@end

@implementation NSStatusItem
- (NSStatusBarButton*)button {
    static NSStatusBarButton* button = [[NSStatusBarButton alloc] init];
    return button;
}
DOES(-(void)setMenu : (NSMenu*)menu, one.menu = menu)
DOES(-(void)popUpStatusItemMenu : (NSMenu*)menu, open(menu, "menu pops up"))
@end

@implementation NSControl
DOES(-(void)sendActionOn : (NSUInteger)value, record("acts on", value))
DOES(-(void)setTarget : (id)target, one.target = target)
DOES(-(void)setAction : (SEL)action, one.action = action)
@end

@implementation NSButton
DOES(-(void)setTitle : (NSString*)value, record("title", value))
DOES(-(void)highlight : (BOOL)value, record("pressed", value))
- (void)setImagePosition:(NSCellImagePosition)position {
    tell(position == NSImageOnly ? "shows the image" : "shows the title");
}
DOES(-(void)setImage : (NSImage*)image, tell(image == nil ? "no image" : "image"))
- (void)performClick:(id)sender {
    if (world().clickOpensMenu) {
        open(one.menu, "menu opens");
    }
}
@end

@implementation NSStatusBarButton
@end

void Doubles::pressButton() {
    if (one.menu == nil) { // a button with a menu opens it and never acts
        [one.target performSelector:one.action withObject:nil];
    }
}

@implementation NSMenu
GIVES(-(id)initWithTitle : (NSString*)title, [self init])
DOES(-(void)addItem : (NSString*)value, record("entry", value))
@end

@implementation NSMenuItem
- (id)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key {
    one.entries[self] = {.title = [title copy], .action = action};
    return self;
}
GIVES(+(NSMenuItem*)separatorItem, [[NSMenuItem alloc] initWithTitle:@"---" action:nullptr keyEquivalent:@""])
DOES(-(void)setTarget : (id)target, one.entries[self].target = target)
- (const char*)UTF8String { // as text() asks
    return [one.entries[self].title UTF8String];
}
@end
