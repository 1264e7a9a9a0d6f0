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

// A method of one statement, and one that only answers.
#define DOES(SIGNATURE, ...)                                                                                           \
    SIGNATURE {                                                                                                        \
        __VA_ARGS__;                                                                                                   \
    }
#define GIVES(SIGNATURE, ...)                                                                                          \
    SIGNATURE {                                                                                                        \
        return __VA_ARGS__;                                                                                            \
    }

namespace Machinery {

using Doubles::tell;
using Doubles::world;

QString text(NSString* string);
NSString* string(const QString& text);

inline void record(const char* name, NSString* value) {
    tell(name + QStringLiteral(" ") + text(value));
}

void record(const char* name, auto number) {
    tell(name + QStringLiteral(" %1").arg(+number));
}

/// Calls back on a thread of its own: at once, or when the test asks for it.
void answer(std::function<void()> work);

/// A block is no object to this runtime: it cannot be sent a message.
template <typename Block>
Block kept(Block block) {
    return reinterpret_cast<Block>(_Block_copy(reinterpret_cast<const void*>(block)));
}

void forgetPrograms();

}
