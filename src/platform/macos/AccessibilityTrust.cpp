#include "platform/AccessibilityTrust.h"

#include <ApplicationServices/ApplicationServices.h>

bool AccessibilityTrust::isTrusted() {
    return AXIsProcessTrusted();
}
