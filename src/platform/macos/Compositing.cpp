#include "platform/Compositing.h"

bool Compositing::isActive() {
    return true;
}
