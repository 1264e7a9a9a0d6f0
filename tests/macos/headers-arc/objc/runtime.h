// What GNUstep's headers need of <objc/runtime.h>.
#pragma once

typedef struct objc_method* Method;
typedef struct objc_ivar* Ivar;
struct objc_method_description;
