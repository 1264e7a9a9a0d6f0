#include "platform/SingleInstance.h"
