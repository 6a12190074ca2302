#include "../frame/alloc.h"
#include "base/wstr.h"
