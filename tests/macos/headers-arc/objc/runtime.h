// What GNUstep's headers need of <objc/runtime.h>.
#pragma once

#include <objc/objc.h>

typedef struct objc_method* Method;
typedef struct objc_ivar* Ivar;
typedef struct objc_category* Category;
struct objc_method_description {
    SEL name;
    char* types;
};

extern "C" {
Class object_getClass(id);
SEL sel_getUid(const char*);
}
