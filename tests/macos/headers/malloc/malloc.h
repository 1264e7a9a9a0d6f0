// As the manual page malloc_zone_pressure_relief(3) has it.
#pragma once

typedef struct _malloc_zone_t malloc_zone_t;
extern "C" size_t malloc_zone_pressure_relief(malloc_zone_t* zone, size_t goal);
