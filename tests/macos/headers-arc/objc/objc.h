// The base of Objective-C for a compiler that counts references itself; GCC's own header is not made for that.
// Stands for <objc/objc.h>: id, Class, SEL, IMP, BOOL (bool on arm64), YES, NO, nil, Nil.
#pragma once

#define __GNU_LIBOBJC__ 20110608

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

typedef bool BOOL;
#define OBJC_BOOL_IS_BOOL 1
#define YES __objc_yes
#define NO __objc_no

typedef struct objc_class* Class;
struct objc_object {
    Class isa;
};
typedef struct objc_object* id;
typedef struct objc_selector* SEL;
typedef id (*IMP)(id, SEL, ...);

#define nil nullptr
#define Nil nullptr

@class Protocol;
