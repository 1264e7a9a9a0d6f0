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
Class objc_getClass(const char*);
Class objc_lookUpClass(const char*);
const char* class_getName(Class);
Class class_getSuperclass(Class);
BOOL class_isMetaClass(Class);
SEL sel_getUid(const char*);
SEL sel_registerName(const char*);
const char* sel_getName(SEL);
}
