/* Host build only: the handful of Windows types and macros that the portable
 * core uses, so that it compiles and runs natively on Linux under the
 * sanitizers. WCHAR is a 16-bit unit here as it is on Windows. Nothing in this
 * header pretends to be Windows beyond spelling. */
#ifndef TAVONA_HOST_TVHOST_H
#define TAVONA_HOST_TVHOST_H

#ifdef _WIN32
#error "tvhost.h is for the host build only"
#endif

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
typedef char16_t WCHAR;
#define TEXT(s) u##s
#else
typedef uint16_t WCHAR;
#endif

typedef WCHAR *LPWSTR;
typedef const WCHAR *LPCWSTR;
typedef char CHAR;
typedef int BOOL;
typedef int32_t INT;
typedef uint32_t UINT;
typedef int32_t LONG;
typedef uint32_t ULONG;
typedef uint32_t DWORD;
typedef uint16_t WORD;
typedef uint8_t BYTE;
typedef int64_t LONGLONG;
typedef uint64_t ULONGLONG;
typedef intptr_t INT_PTR;
typedef uintptr_t UINT_PTR;
typedef intptr_t LONG_PTR;
typedef uintptr_t ULONG_PTR;
typedef intptr_t LPARAM;
typedef uintptr_t WPARAM;
typedef intptr_t LRESULT;
typedef void *HANDLE;
typedef struct HINSTANCE__ *HINSTANCE;
typedef HINSTANCE HMODULE;
typedef struct HWND__ *HWND;
typedef struct HKEY__ *HKEY;
typedef struct HDC__ *HDC;
typedef struct tagRECT RECT;          /* only passed by pointer */
typedef struct _devicemodeW DEVMODEW; /* only passed by pointer */
typedef DWORD COLORREF;

#define WINAPI
#define CALLBACK
#define TRUE 1
#define FALSE 0
#define MAX_PATH 260

#define MB_OK 0x00000000L
#define MB_OKCANCEL 0x00000001L
#define MB_ABORTRETRYIGNORE 0x00000002L
#define MB_YESNOCANCEL 0x00000003L
#define MB_YESNO 0x00000004L
#define MB_RETRYCANCEL 0x00000005L
#define MB_ICONHAND 0x00000010L
#define MB_ICONQUESTION 0x00000020L
#define MB_ICONEXCLAMATION 0x00000030L
#define MB_ICONINFORMATION 0x00000040L
#define MB_TASKMODAL 0x00002000L

#define IDOK 1
#define IDCANCEL 2
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7

#endif
