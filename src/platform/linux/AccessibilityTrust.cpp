#include "platform/AccessibilityTrust.h"

bool AccessibilityTrust::isTrusted() {
    return false;
}
