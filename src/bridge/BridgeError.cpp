#include "bridge/BridgeError.h"
