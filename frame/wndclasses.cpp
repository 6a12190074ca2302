#include "frame/wndclasses.h"

namespace tv {

namespace {

struct ClassDef {
  const WCHAR *name;
  WNDPROC proc;
  UINT style;
};

// "TAVONATEMPWIND32" deliberately gets no double-click messages.
const ClassDef kClasses[] = {
    {L"TAVONA_BUTTONS_32", WndProcButtons, CS_GLOBALCLASS | CS_DBLCLKS},
    {L"TAVONA_STATUS_32", WndProcStatus, CS_GLOBALCLASS | CS_DBLCLKS},
    {L"TAVONATEMPWIND32", WndProcTempWind, CS_GLOBALCLASS},
    {L"TAVONA_POPUP_32", WndProcButtPopup, CS_GLOBALCLASS | CS_DBLCLKS},
};

}  // namespace

void RegisterWindowClasses(HINSTANCE instance) {
  for (const ClassDef &c : kClasses) {
    WNDCLASSW wc = {};
    wc.style = c.style;
    wc.lpfnWndProc = c.proc;
    wc.cbClsExtra = 0;
    // Four bytes on 32-bit Windows; the windows keep a pointer there.
    wc.cbWndExtra = sizeof(LONG_PTR);
    wc.hInstance = instance;
    wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground = static_cast<HBRUSH>(GetStockObject(LTGRAY_BRUSH));
    wc.lpszClassName = c.name;
    RegisterClassW(&wc);
  }
}

void UnregisterWindowClasses(HINSTANCE instance) {
  UnregisterClassW(L"TAVONATEMPWIND32", instance);
  UnregisterClassW(L"TAVONA_STATUS_32", instance);
  UnregisterClassW(L"TAVONA_BUTTONS_32", instance);
  UnregisterClassW(L"TAVONA_POPUP_32", instance);
}

}  // namespace tv
