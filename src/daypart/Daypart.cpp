#include "daypart/Daypart.h"
