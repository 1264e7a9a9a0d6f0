#include "platform/Memory.h"

#include <malloc/malloc.h>

void Memory::giveBackUnused() {
    malloc_zone_pressure_relief(nullptr, 0);
}
