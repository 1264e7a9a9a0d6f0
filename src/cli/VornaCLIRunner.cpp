#include "cli/VornaCLIRunner.h"
