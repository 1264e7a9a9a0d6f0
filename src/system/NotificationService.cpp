#include "system/NotificationService.h"
