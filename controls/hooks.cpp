// Window procedure hooks by window property, the edit hooks that turn Enter
// (and Tab) into their Ctrl forms, and the message packing helpers.
#include <tavona/controls.h>

#include <dde.h>

#include "frame/handles.h"
#include "base/wstr.h"

namespace {

// Kept in movable global memory under the caller's property name.
struct HookRecord {
  WNDPROC original;
  LPARAM link;
};

// The hook record a window keeps under the property name (null when none).
HGLOBAL HookMemory(HWND window, const WCHAR *name) {
  return window && !tv::IsBlank(name) ? static_cast<HGLOBAL>(GetPropW(window, name)) : nullptr;
}

const WCHAR kOnlyLf[] = L"ONLYLFHOOKPROPNAME";
const WCHAR kTabAndLf[] = L"TABANDLFHOOKPROPNAME";

// Enter (and Tab) reach the edit control as if Ctrl were held: the key-down
// is swallowed after Ctrl is marked pressed in the thread's keyboard state,
// and the key-up releases it again. The edit control then inserts a line
// break instead of the dialog pressing its default button.
LRESULT EditHook(const WCHAR *name, bool tab, HWND w, UINT m, WPARAM wp, LPARAM lp) {
  bool ours = wp == VK_RETURN || (tab && wp == VK_TAB);
  if (ours && (m == WM_KEYDOWN || m == WM_KEYUP)) {
    BYTE keys[256];
    if (GetKeyboardState(keys)) {
      if (m == WM_KEYDOWN) {
        keys[VK_CONTROL] |= 0x80;
        SetKeyboardState(keys);
        return 0;
      }
      keys[VK_CONTROL] %= 128;
      SetKeyboardState(keys);
    }
  }
  return Call_HookOriginalCallback(w, name, m, wp, lp);
}

}  // namespace

INT WINAPI Hook_Window(HWND window, WNDPROC procedure, const WCHAR *name, LPARAM link,
                       HINSTANCE instance) {
  (void)instance;
  if (!window || !IsWindow(window) || !procedure || tv::IsBlank(name)) return -1;
  // A second hook under the same name would lose the first one's procedure.
  if (GetPropW(window, name)) return -1;
  tv::unique_hglobal memory(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(HookRecord)));
  if (!memory) return -1;
  {
    tv::global_lock<HookRecord> record(memory.get());
    if (!record) return -1;
    record.get()->original = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
    record.get()->link = link;
  }
  if (!SetPropW(window, name, memory.get())) return -1;
  SetLastError(0);
  if (!SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)) &&
      GetLastError()) {
    RemovePropW(window, name);
    return -1;
  }
  memory.release();
  return 0;
}

void WINAPI Unhook_Window(HWND window, const WCHAR *name) {
  if (!window || tv::IsBlank(name)) return;
  tv::unique_hglobal memory(static_cast<HGLOBAL>(GetPropW(window, name)));
  if (!memory) return;
  if (tv::global_lock<HookRecord> record(memory.get()); record)
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(record.get()->original));
  RemovePropW(window, name);
}

LRESULT WINAPI Call_HookOriginalCallback(HWND window, const WCHAR *name, UINT message,
                                         WPARAM wParam, LPARAM lParam) {
  WNDPROC original = nullptr;
  {
    tv::global_lock<HookRecord> hook(HookMemory(window, name));
    if (!hook) return 0;
    original = hook.get()->original;
  }
  // Unlocked first: the original procedure may unhook the window.
  return original ? CallWindowProcW(original, window, message, wParam, lParam) : 0;
}

LPARAM WINAPI Get_HookLink(HWND window, const WCHAR *name) {
  tv::global_lock<HookRecord> hook(HookMemory(window, name));
  return hook ? hook.get()->link : 0;
}

LRESULT CALLBACK Edit_OnlyLf_Hook(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  return EditHook(kOnlyLf, false, w, m, wp, lp);
}

LRESULT CALLBACK Edit_TabAndLf_Hook(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  return EditHook(kTabAndLf, true, w, m, wp, lp);
}

INT WINAPI Hook_Edit_OnlyLf(HWND edit) {
  return Hook_Window(edit, Edit_OnlyLf_Hook, kOnlyLf, 0, nullptr);
}
void WINAPI Unhook_Edit_OnlyLf(HWND edit) { Unhook_Window(edit, kOnlyLf); }
INT WINAPI Hook_Edit_TabAndLf(HWND edit) {
  return Hook_Window(edit, Edit_TabAndLf_Hook, kTabAndLf, 0, nullptr);
}
void WINAPI Unhook_Edit_TabAndLf(HWND edit) { Unhook_Window(edit, kTabAndLf); }

// ---- Message packing --------------------------------------------------------

namespace {
template <typename T>
void Put(T *out, T value) {
  if (out) *out = value;
}
}  // namespace

void WINAPI Evaluate_WmCommand(WPARAM wp, LPARAM lp, UINT *id, UINT *code, HWND *control) {
  Put(id, UINT(LOWORD(wp)));
  Put(code, UINT(HIWORD(wp)));
  Put(control, reinterpret_cast<HWND>(lp));
}

void WINAPI Evaluate_WmActivate(WPARAM wp, LPARAM lp, UINT *state, UINT *minimized,
                                HWND *other) {
  Put(state, UINT(LOWORD(wp)));
  Put(minimized, UINT(HIWORD(wp)));
  Put(other, reinterpret_cast<HWND>(lp));
}

void WINAPI Evaluate_WmScroll(WPARAM wp, LPARAM lp, UINT *code, UINT *position, HWND *bar) {
  Put(code, UINT(LOWORD(wp)));
  Put(position, UINT(HIWORD(wp)));
  Put(bar, reinterpret_cast<HWND>(lp));
}

void WINAPI Evaluate_WmMenuSelect(WPARAM wp, LPARAM lp, UINT *item, UINT *flags, HMENU *menu) {
  Put(item, UINT(LOWORD(wp)));
  Put(flags, UINT(HIWORD(wp)));
  Put(menu, reinterpret_cast<HMENU>(lp));
}

void WINAPI Evaluate_WmDdeExecute(WPARAM wp, LPARAM lp, HWND *client, HGLOBAL *commands) {
  Put(client, reinterpret_cast<HWND>(wp));
  Put(commands, reinterpret_cast<HGLOBAL>(lp));
}

UINT WINAPI GetWmCommandId(WPARAM wp, LPARAM) { return LOWORD(wp); }
UINT WINAPI GetWmCommandNotif(WPARAM wp, LPARAM) { return HIWORD(wp); }
UINT WINAPI GetWmScrollId(WPARAM wp, LPARAM) { return LOWORD(wp); }
UINT WINAPI GetWmScrollPos(WPARAM wp, LPARAM) { return HIWORD(wp); }
HWND WINAPI GetWmScrollHwnd(WPARAM, LPARAM lp) { return reinterpret_cast<HWND>(lp); }
HWND WINAPI GetWmMdiActivateBecomingActive(WPARAM, LPARAM lp) {
  return reinterpret_cast<HWND>(lp);
}
HWND WINAPI GetWmMdiActivateBecomingPassive(WPARAM wp, LPARAM) {
  return reinterpret_cast<HWND>(wp);
}

LRESULT WINAPI SendWmCommand(HWND window, UINT id, UINT code, LPARAM lp) {
  return SendMessageW(window, WM_COMMAND, MAKEWPARAM(id, code), lp);
}
BOOL WINAPI PostWmCommand(HWND window, UINT id, UINT code, LPARAM lp) {
  return PostMessageW(window, WM_COMMAND, MAKEWPARAM(id, code), lp);
}
LRESULT WINAPI SendWmScroll(HWND window, UINT message, UINT code, UINT position, LPARAM lp) {
  return SendMessageW(window, message, MAKEWPARAM(code, position), lp);
}
BOOL WINAPI PostWmScroll(HWND window, UINT message, UINT code, UINT position, LPARAM lp) {
  return PostMessageW(window, message, MAKEWPARAM(code, position), lp);
}

HWND WINAPI SendWmMdiGetActive(HWND client, BOOL *maximized) {
  BOOL max = FALSE;
  HWND active =
      reinterpret_cast<HWND>(SendMessageW(client, WM_MDIGETACTIVE, 0, reinterpret_cast<LPARAM>(&max)));
  Put(maximized, max);
  return active;
}

HMENU WINAPI SendWmMdiSetMenu(HWND client, HMENU frameMenu, HMENU windowMenu) {
  return reinterpret_cast<HMENU>(SendMessageW(client, WM_MDISETMENU,
                                              reinterpret_cast<WPARAM>(frameMenu),
                                              reinterpret_cast<LPARAM>(windowMenu)));
}

DWORD WINAPI SendEmGetSel(HWND edit, DWORD *start, DWORD *end) {
  DWORD s = 0, e = 0;
  SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&s), reinterpret_cast<LPARAM>(&e));
  Put(start, s);
  Put(end, e);
  return e;
}

void WINAPI SendEmSetSel(HWND edit, BOOL noScroll, INT start, INT end) {
  SendMessageW(edit, EM_SETSEL, static_cast<WPARAM>(start), static_cast<LPARAM>(end));
  if (!noScroll) SendMessageW(edit, EM_SCROLLCARET, 0, 0);
}

LPARAM WINAPI PackLparamForDDE(UINT message, UINT_PTR low, UINT_PTR high) {
  return PackDDElParam(message, low, high);
}
BOOL WINAPI UnpackLparamForDDE(UINT message, LPARAM lp, PUINT_PTR low, PUINT_PTR high) {
  return UnpackDDElParam(message, lp, low, high);
}
BOOL WINAPI FreeLparamForDDE(UINT message, LPARAM lp) { return FreeDDElParam(message, lp); }

HCURSOR WINAPI GetClassCursor(HWND window) {
  return reinterpret_cast<HCURSOR>(GetClassLongPtrW(window, GCLP_HCURSOR));
}
HCURSOR WINAPI SetClassCursor(HWND window, HCURSOR cursor) {
  return reinterpret_cast<HCURSOR>(
      SetClassLongPtrW(window, GCLP_HCURSOR, reinterpret_cast<LONG_PTR>(cursor)));
}

HMODULE WINAPI LoadDynamicLibrary(const WCHAR *file) {
  return tv::IsBlank(file) ? nullptr : LoadLibraryW(file);
}

HMETAFILE WINAPI SetMetaFileBitsSystemIndependent(UINT size, const BYTE *bits) {
  if (!bits || !size) return nullptr;
  return SetMetaFileBitsEx(size, bits);
}
