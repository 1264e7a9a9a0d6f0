#include "platform/Symbol.h"
