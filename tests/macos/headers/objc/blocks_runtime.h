// GNUstep's headers look for the blocks runtime under this name; Debian has it as <Block.h>.
#pragma once

#include <Block.h>
