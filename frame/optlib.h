// Loading of the optional libraries that the library uses when they are
// installed (error handler, editors, picture conversion, ...).
#pragma once

#include "frame/handles.h"

namespace tv {

// A bare file name ("TVDEEH.DLL") is looked for in the application's folder
// and the system folders, never in the current directory, so a planted copy
// in a document folder is not picked up. A name with a folder part is loaded
// as given. Empty when the library cannot be loaded.
unique_hmodule LoadOptionalLibrary(const WCHAR *name);

// The picture conversion library "kv32.dll", loaded on first use and kept
// until the library unloads. Null (reported as message 1384) when missing.
HMODULE PictureLibrary();

}  // namespace tv
