#include "platform/Launch.h"
