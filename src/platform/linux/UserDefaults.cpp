#include "platform/UserDefaults.h"
