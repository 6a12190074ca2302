// Picture information through the optional conversion library kv32.dll.
#include <tavona/controls.h>

#include "frame/globals.h"
#include "frame/optlib.h"
#include "frame/report.h"
#include "base/wstr.h"
#include "tvres.h"

INT WINAPI Tavona_PicConv_GetInfo(const WCHAR *file, void *info, INT infoSize) {
  if (tv::IsBlank(file) || !info || infoSize < 1) return -1;
  static const WCHAR kLibrary[] = L"kv32.dll";
  if (!tv::g.pictureModule) {
    tv::unique_hmodule module = tv::LoadOptionalLibrary(kLibrary);
    if (!module) {
      tv::ReportError(IDS_ERR_PICTURE_LIBRARY, kLibrary);
      return -1;
    }
    // Kept until the library unloads.
    tv::g.pictureModule = module.release();
  }
  using GetInfoFn = INT(WINAPI *)(const WCHAR *, void *, INT);
  auto getInfo = tv::ProcAddress<GetInfoFn>(tv::g.pictureModule, "GetInfo");
  if (!getInfo) {
    tv::ReportError(IDS_ERR_PICTURE_INFO, file);
    return -1;
  }
  return getInfo(file, info, infoSize);
}
