#include "daypart/DaypartPalette.h"
