#include "platform/AccessibilityTrust.h"
