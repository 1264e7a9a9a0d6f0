// The base of Objective-C for a compiler that counts references itself, and knows id, Class and SEL; GCC's own header
// is not made for that. Stands for <objc/objc.h>.
#pragma once

#define __GNU_LIBOBJC__ 20110608

typedef bool BOOL;
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr

typedef id (*IMP)(id, SEL, ...);
