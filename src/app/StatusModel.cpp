#include "app/StatusModel.h"
