#include "tvbase.h"
#include "tavona/text.h"
#include "frame/alloc.h"
