#include "platform/SystemSettings.h"
