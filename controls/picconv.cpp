// Picture information through the optional conversion library kv32.dll.
#include <tavona/controls.h>

#include "frame/optlib.h"
#include "frame/report.h"
#include "base/wstr.h"
#include "tvres.h"

INT WINAPI Tavona_PicConv_GetInfo(const WCHAR *file, void *info, INT infoSize) {
  if (tv::IsBlank(file) || !info || infoSize < 1) return -1;
  HMODULE library = tv::PictureLibrary();
  if (!library) return -1;
  using GetInfoFn = INT(WINAPI *)(const WCHAR *, void *, INT);
  auto getInfo = tv::ProcAddress<GetInfoFn>(library, "GetInfo");
  if (!getInfo) {
    tv::ReportError(IDS_ERR_PICTURE_INFO, file);
    return -1;
  }
  return getInfo(file, info, infoSize);
}
