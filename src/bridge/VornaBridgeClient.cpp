#include "bridge/VornaBridgeClient.h"
