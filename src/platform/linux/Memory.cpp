#include "platform/Memory.h"

#include <malloc.h>

void Memory::giveBackUnused() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}
