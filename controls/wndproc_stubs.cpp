// Window procedure of the button bar class until the control is built: the
// windows exist and behave as plain windows.
#include "frame/wndclasses.h"

extern "C" {

LRESULT CALLBACK WndProcButtons(HWND w, UINT m, WPARAM wp, LPARAM lp) { return DefWindowProcW(w, m, wp, lp); }
}
