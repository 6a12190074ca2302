// Compiled with the frame layer's include root: base lies below, text above.
#include "base/wstr.h"
#include "text/stack.h"
