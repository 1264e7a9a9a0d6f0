#include "bridge/DesktopMonitorPayload.h"
