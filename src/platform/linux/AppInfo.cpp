#include "platform/AppInfo.h"
