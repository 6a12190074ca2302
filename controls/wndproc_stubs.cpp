// Window procedures of the global classes whose controls are not built yet:
// the windows exist and behave as plain windows.
#include "frame/wndclasses.h"

extern "C" {

LRESULT CALLBACK WndProcButtons(HWND w, UINT m, WPARAM wp, LPARAM lp) { return DefWindowProcW(w, m, wp, lp); }
LRESULT CALLBACK WndProcStatus(HWND w, UINT m, WPARAM wp, LPARAM lp) { return DefWindowProcW(w, m, wp, lp); }
LRESULT CALLBACK WndProcTempWind(HWND w, UINT m, WPARAM wp, LPARAM lp) { return DefWindowProcW(w, m, wp, lp); }
LRESULT CALLBACK WndProcButtPopup(HWND w, UINT m, WPARAM wp, LPARAM lp) { return DefWindowProcW(w, m, wp, lp); }
}
