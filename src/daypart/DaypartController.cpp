#include "daypart/DaypartController.h"
