#include "platform/StatusItem.h"
