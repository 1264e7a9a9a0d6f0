#include "platform/macos/Action.h"

#include <utility>

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

- (void)perform:(id)event with:(id)reply {
    (void)reply;
    [self perform:event];
}

- (void)performOn:(NSString*)notification of:(id)object {
    [[NSNotificationCenter defaultCenter] addObserver:self
                                             selector:@selector(perform:)
                                                 name:notification
                                               object:object];
}

@end
