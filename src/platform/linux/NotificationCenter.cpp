#include "platform/NotificationCenter.h"
