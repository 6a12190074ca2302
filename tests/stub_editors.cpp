// Stands in for the editor library xeddll.dll (STUB_XED) and the extension
// library TAVONAEX.DLL (STUB_TAVONAEX). Their entries answer a sum weighted
// by position, so a value passed in the wrong place gives itself away; the
// variants built with STUB_NO_ENTRY export something else.
#include <windows.h>

extern "C" {

#if defined(STUB_NO_ENTRY)
__declspec(dllexport) INT WINAPI SomethingElse(void) { return 0; }
#elif defined(STUB_XED)
// -1 when the final value is not 0.
__declspec(dllexport) INT WINAPI Xed_ModalEditor(LPARAM v1, LPARAM v2, LPARAM v3, LPARAM v4,
                                                 LPARAM v5, LPARAM v6, LPARAM v7, LPARAM last) {
  if (last != 0) return -1;
  return INT(v1 + 2 * v2 + 3 * v3 + 4 * v4 + 5 * v5 + 6 * v6 + 7 * v7);
}
#else
__declspec(dllexport) INT WINAPI TavonaExt_EditRTF(LPARAM v1, LPARAM v2, LPARAM v3) {
  return INT(100 * v1 + 10 * v2 + v3);
}
#endif
}
