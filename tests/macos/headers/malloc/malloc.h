// Declared after the public manual page malloc_zone_pressure_relief(3); only what the companion uses.
#pragma once

#include <stddef.h>

typedef struct _malloc_zone_t malloc_zone_t; // malloc_zone_t

extern "C" size_t malloc_zone_pressure_relief(malloc_zone_t* zone, size_t goal);
