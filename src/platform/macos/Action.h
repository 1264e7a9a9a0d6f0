#pragma once

#include <functional>

#import <Foundation/Foundation.h>

/// A function where the system wants an object and a selector: a button's target, an observer, a handler of an event.
@interface VornaAction : NSObject {
    std::function<void()> m_function;
}
- (instancetype)initWithFunction:(std::function<void()>)function;
- (void)perform:(id)sender;
- (void)perform:(id)event with:(id)reply;
/// Performs it whenever `object`, or anybody for nil, posts the notification; until it is removed as an observer.
- (void)performOn:(NSString*)notification of:(id)object;
@end
