// Test controls of the host files seam.
#pragma once

#include <tavona/tvbase.h>

namespace tv::plat::host {

// The file name ModuleFileName reports for every module (null: none).
void SetModuleFileName(const WCHAR *name);

}  // namespace tv::plat::host
