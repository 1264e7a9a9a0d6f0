// What the files of stand-ins share. Everything in them is kept for as long as the program runs: there is nothing to
// count.
#pragma once

#include "Doubles.h"

#include <vector>

#import <AppKit/AppKit.h>
#include <Block.h>

#define ONE_OF(CLASS, NAME)                                                                                            \
    +(CLASS*)NAME {                                                                                                    \
        static CLASS* one = [[CLASS alloc] init];                                                                      \
        return one;                                                                                                    \
    }

namespace Machinery {

using Work = std::function<void()>;

inline Doubles::State& now() {
    return Doubles::state();
}

QString text(NSString* string);
NSString* string(const QString& text);

/// Calls back on a thread of its own: at once, or when the test asks for it.
void answer(Work work);

/// A block is no object to this runtime: it cannot be sent a message.
template <typename Block>
Block kept(Block block) {
    return reinterpret_cast<Block>(_Block_copy(reinterpret_cast<const void*>(block)));
}

template <typename Block>
void drop(Block block) {
    _Block_release(reinterpret_cast<const void*>(block));
}

void describe(NSImage* image, Doubles::Button& button);

/// Each file of stand-ins forgets its own.
void forgetItem();
void forgetSystem();
void forgetPictures();
void forgetPrograms();

}
