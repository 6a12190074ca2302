// The settings store: string values in the registry or in private profile
// files, typed values on top of them, and key-level operations.
#include <tavona/controls.h>
#include <tavona/settings.h>
#include <tavona/text.h>

#include <commdlg.h>

#include <cstdlib>

#include "frame/alloc.h"
#include "frame/globals.h"
#include "frame/handles.h"
#include "frame/misuse.h"
#include "settings/regread.h"
#include "base/wstr.h"

namespace {

constexpr int kFullKeySize = 1000;
constexpr int kTypedSize = 50;
constexpr int kEditFieldSize = 30000;
constexpr int kEnumNameSize = 200;
constexpr int kEnumDataBytes = 200;
constexpr int kItemNameSize = 200;
constexpr int kItemDataSize = 500;
const WCHAR kEmpty[] = {0};
const WCHAR kAbsent[] = TEXT("$$$%%%$$$");

bool Given(const WCHAR *s) { return s && s[0]; }

bool UsesRegistry(HKEY root, const WCHAR *key) { return root && Given(key); }

bool UsesProfile(const WCHAR *profile, const WCHAR *section, const WCHAR *value) {
  return Given(profile) && Given(section) && value;
}

// A file name the platform cannot take addresses no profile: reads keep the
// default, writes fail.
bool ProfileUsable(const WCHAR *profile) {
  return tv::ProfileNameFits(profile, "settings (profile file)");
}

// "<key>\<section>". False for a path of 1000 characters or more: the
// bounded append never cuts, and an emptied path would name the root itself.
bool FullKey(const WCHAR *key, const WCHAR *section, WCHAR (&out)[kFullKeySize]) {
  out[0] = 0;
  tv::Appender a(out, kFullKeySize);
  if (!a.Append(key)) return false;
  if (Given(section) && !(a.Append(WCHAR('\\')) && a.Append(section))) return false;
  return true;
}

// Queries a value into out with size BYTES of room. The data are
// terminated even when they were stored without a zero.
bool QueryInto(HKEY root, const WCHAR *path, const WCHAR *value, WCHAR *out, int size) {
  tv::unique_hkey k;
  if (RegOpenKeyExW(root, path, 0, KEY_READ, k.put()) != ERROR_SUCCESS) return false;
  DWORD bytes = static_cast<DWORD>(size);
  if (RegQueryValueExW(k.get(), value, nullptr, nullptr, reinterpret_cast<BYTE *>(out),
                       &bytes) != ERROR_SUCCESS)
    return false;
  out[bytes / sizeof(WCHAR)] = 0;  // bytes <= size: within the buffer
  return true;
}

void LongText(LONG n, WCHAR (&out)[kTypedSize]) { tv::Format(out, kTypedSize, TEXT("%ld"), n); }

void ColorText(COLORREF c, WCHAR (&out)[kTypedSize]) {
  tv::Format(out, kTypedSize, TEXT("%d,%d,%d"), GetRValue(c), GetGValue(c), GetBValue(c));
}

// Three numbers, each an optional '-' and digits followed by an optional
// ','; each cut to its low 8 bits, missing ones 0.
COLORREF ParseColor(const WCHAR *s) {
  BYTE part[3] = {};
  for (BYTE &p : part) {
    bool negative = *s == '-';
    if (negative) ++s;
    UINT n = 0;
    for (; tv::IsDigit(*s); ++s) n = n * 10 + (*s - '0');
    p = static_cast<BYTE>(negative ? 0u - n : n);
    if (*s == ',') ++s;
  }
  return RGB(part[0], part[1], part[2]);
}

DWORD ParseHex(const WCHAR *s) {
  if (s[0] == '0' && (s[1] == 'x' || s[1] == 'X')) s += 2;
  DWORD value = 0;
  return Tavona_HexStringToLong(s, &value) == 0 ? value : 0;
}

// Calls fn(name, data) for the values of root\key from index 0 until the
// first failing enumeration; returns how many there were.
template <typename Fn>
int EnumValues(HKEY root, const WCHAR *key, Fn fn) {
  if (!UsesRegistry(root, key)) return 0;
  tv::unique_hkey k;
  if (RegOpenKeyExW(root, key, 0, KEY_READ, k.put()) != ERROR_SUCCESS) return 0;
  WCHAR name[kEnumNameSize];
  WCHAR data[kEnumDataBytes / sizeof(WCHAR) + 1];  // room for a missing zero
  int count = 0;
  for (;; ++count) {
    DWORD nameLen = kEnumNameSize;
    DWORD dataLen = kEnumDataBytes;
    name[0] = 0;
    data[0] = 0;
    if (RegEnumValueW(k.get(), static_cast<DWORD>(count), name, &nameLen, nullptr, nullptr,
                      reinterpret_cast<BYTE *>(data), &dataLen) != ERROR_SUCCESS)
      break;
    data[dataLen / sizeof(WCHAR)] = 0;
    fn(name, data);
  }
  return count;
}

}  // namespace

namespace tv {

int ReadSettingString(HKEY root, const WCHAR *key, const WCHAR *profile, const WCHAR *section,
                      const WCHAR *value, const WCHAR *defaultText, WCHAR *out, int size) {
  if (!out || size < 1) return 0;
  if (out != defaultText) BoundedCopy(out, defaultText ? defaultText : kEmpty, size);
  if (UsesRegistry(root, key)) {
    WCHAR path[kFullKeySize];
    if (FullKey(key, section, path) && QueryInto(root, path, value, out, size)) return 1;
    // Windows leaves the buffer undefined when the data do not fit.
    if (out != defaultText) BoundedCopy(out, defaultText ? defaultText : kEmpty, size);
    return 0;
  }
  if (UsesProfile(profile, section, value) && ProfileUsable(profile)) {
    // out may be the default's own buffer.
    HeapPtr<WCHAR> def(DuplicateWideString(defaultText ? defaultText : kEmpty));
    if (!def) return 0;
    GetPrivateProfileStringW(section, value, def.get(), out, static_cast<DWORD>(size), profile);
    return 1;
  }
  return 0;
}

int ReadRegistryString(HKEY root, const WCHAR *key, const WCHAR *section, const WCHAR *value,
                       const WCHAR *defaultText, WCHAR *out, int size) {
  return ReadSettingString(root, key, nullptr, section, value, defaultText, out, size);
}

LONG WriteSettingString(HKEY root, const WCHAR *key, const WCHAR *profile, const WCHAR *section,
                        const WCHAR *value, const WCHAR *text) {
  if (UsesRegistry(root, key)) {
    WCHAR path[kFullKeySize];
    if (!FullKey(key, section, path)) return ERROR_FILENAME_EXCED_RANGE;
    unique_hkey k;
    LONG rc =
        RegCreateKeyExW(root, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, k.put(), nullptr);
    if (rc != ERROR_SUCCESS) return rc;
    if (!text) text = kEmpty;
    // The result of setting the value is not what callers get: they get
    // that of closing the key.
    RegSetValueExW(k.get(), value, 0, REG_SZ, reinterpret_cast<const BYTE *>(text),
                   static_cast<DWORD>((Len(text) + 1) * sizeof(WCHAR)));
    return RegCloseKey(k.release());
  }
  if (UsesProfile(profile, section, value))
    return ProfileUsable(profile) ? WritePrivateProfileStringW(section, value, text, profile) : 0;
  return 0;
}

}  // namespace tv

// ---- Strings --------------------------------------------------------------

void WINAPI Tavona_ReadStringFromRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                          const WCHAR *section, const WCHAR *value,
                                          const WCHAR *defaultText, WCHAR *out, INT outSize) {
  tv::ReadSettingString(root, key, profile, section, value, defaultText, out, outSize);
}

void WINAPI Tavona_ReadStringFromHKCU(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                      const WCHAR *defaultText, WCHAR *out, INT outSize) {
  tv::ReadRegistryString(HKEY_CURRENT_USER, key, section, value, defaultText, out, outSize);
}

void WINAPI Tavona_ReadStringFromHKLM(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                      const WCHAR *defaultText, WCHAR *out, INT outSize) {
  tv::ReadRegistryString(HKEY_LOCAL_MACHINE, key, section, value, defaultText, out, outSize);
}

void WINAPI Tavona_ReadStringFromHKCUorHKLM(const WCHAR *key, const WCHAR *section,
                                            const WCHAR *value, const WCHAR *defaultText,
                                            WCHAR *out, INT outSize) {
  if (!out || outSize < 1) return;
  // Asked without a default, so that a buffer too small for the "$$$%%%$$$"
  // placeholder still falls back to the machine's value.
  if (tv::ReadRegistryString(HKEY_CURRENT_USER, key, section, value, nullptr, out, outSize) &&
      tv::Compare(out, kAbsent) != 0)
    return;
  tv::ReadRegistryString(HKEY_LOCAL_MACHINE, key, section, value, defaultText, out, outSize);
}

LONG WINAPI Tavona_WriteStringToRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                         const WCHAR *section, const WCHAR *value,
                                         const WCHAR *text) {
  return tv::WriteSettingString(root, key, profile, section, value, text);
}

LONG WINAPI Tavona_WriteStringToHKCU(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                     const WCHAR *text) {
  return tv::WriteSettingString(HKEY_CURRENT_USER, key, nullptr, section, value, text);
}

LONG WINAPI Tavona_WriteStringToHKLM(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                     const WCHAR *text) {
  return tv::WriteSettingString(HKEY_LOCAL_MACHINE, key, nullptr, section, value, text);
}

// ---- Typed values ---------------------------------------------------------

LONG WINAPI Tavona_ReadLongFromRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                        const WCHAR *section, const WCHAR *value,
                                        LONG defaultValue) {
  WCHAR text[kTypedSize];
  LongText(defaultValue, text);
  tv::ReadSettingString(root, key, profile, section, value, text, text, kTypedSize);
  return _wtol(text);
}

LONG WINAPI Tavona_ReadLongFromHKCU(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                    LONG defaultValue) {
  return Tavona_ReadLongFromRegistry(HKEY_CURRENT_USER, key, nullptr, section, value,
                                     defaultValue);
}

LONG WINAPI Tavona_ReadLongFromHKLM(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                    LONG defaultValue) {
  return Tavona_ReadLongFromRegistry(HKEY_LOCAL_MACHINE, key, nullptr, section, value,
                                     defaultValue);
}

LONG WINAPI Tavona_ReadLongFromHKCUorHKLM(const WCHAR *key, const WCHAR *section,
                                          const WCHAR *value, LONG defaultValue) {
  WCHAR def[kTypedSize];
  WCHAR text[kTypedSize];
  LongText(defaultValue, def);
  Tavona_ReadStringFromHKCUorHKLM(key, section, value, def, text, kTypedSize);
  return _wtol(text);
}

DWORD WINAPI Tavona_ReadHexFromRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                        const WCHAR *section, const WCHAR *value,
                                        DWORD defaultValue) {
  WCHAR text[kTypedSize];
  tv::Format(text, kTypedSize, TEXT("%08X"), defaultValue);
  tv::ReadSettingString(root, key, profile, section, value, text, text, kTypedSize);
  return ParseHex(text);
}

DWORD WINAPI Tavona_ReadBitFromRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                        const WCHAR *section, const WCHAR *value,
                                        LONG defaultValue, DWORD mask, DWORD *flags) {
  DWORD dummy = 0;
  if (!flags) flags = &dummy;
  if (Tavona_ReadLongFromRegistry(root, key, profile, section, value, defaultValue) != 0) {
    *flags |= mask;
    return mask;
  }
  *flags &= ~mask;
  return ~mask;
}

COLORREF WINAPI Tavona_ReadColorFromRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                             const WCHAR *section, const WCHAR *value,
                                             COLORREF defaultColor) {
  WCHAR text[kTypedSize];
  ColorText(defaultColor, text);
  tv::ReadSettingString(root, key, profile, section, value, text, text, kTypedSize);
  return ParseColor(text);
}

COLORREF WINAPI Tavona_ReadColorFromHKCU(const WCHAR *key, const WCHAR *section,
                                         const WCHAR *value, COLORREF defaultColor) {
  return Tavona_ReadColorFromRegistry(HKEY_CURRENT_USER, key, nullptr, section, value,
                                      defaultColor);
}

COLORREF WINAPI Tavona_ReadColorFromHKLM(const WCHAR *key, const WCHAR *section,
                                         const WCHAR *value, COLORREF defaultColor) {
  return Tavona_ReadColorFromRegistry(HKEY_LOCAL_MACHINE, key, nullptr, section, value,
                                      defaultColor);
}

void WINAPI Tavona_ReadEditFieldFromRegistry(HWND dialog, INT controlId, HKEY root,
                                             const WCHAR *key, const WCHAR *profile,
                                             const WCHAR *section, const WCHAR *value,
                                             const WCHAR *defaultText) {
  tv::HeapPtr<WCHAR> text(tv::AllocWideChars(kEditFieldSize));
  if (!text) return;
  tv::ReadSettingString(root, key, profile, section, value, defaultText, text.get(),
                        kEditFieldSize);
  SetDlgItemTextW(dialog, controlId, text.get());
}

LONG WINAPI Tavona_WriteLongToRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                       const WCHAR *section, const WCHAR *value, LONG number) {
  WCHAR text[kTypedSize];
  LongText(number, text);
  return tv::WriteSettingString(root, key, profile, section, value, text);
}

LONG WINAPI Tavona_WriteLongToHKCU(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                   LONG number) {
  return Tavona_WriteLongToRegistry(HKEY_CURRENT_USER, key, nullptr, section, value, number);
}

LONG WINAPI Tavona_WriteLongToHKLM(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                   LONG number) {
  return Tavona_WriteLongToRegistry(HKEY_LOCAL_MACHINE, key, nullptr, section, value, number);
}

LONG WINAPI Tavona_WriteHexToRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                      const WCHAR *section, const WCHAR *value, DWORD number) {
  WCHAR text[kTypedSize];
  tv::Format(text, kTypedSize, TEXT("0x%08X"), number);
  return tv::WriteSettingString(root, key, profile, section, value, text);
}

LONG WINAPI Tavona_WriteBitToRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                      const WCHAR *section, const WCHAR *value, DWORD mask,
                                      DWORD flags) {
  return tv::WriteSettingString(root, key, profile, section, value,
                                (flags & mask) ? TEXT("1") : TEXT("0"));
}

LONG WINAPI Tavona_WriteColorToRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                        const WCHAR *section, const WCHAR *value,
                                        COLORREF color) {
  WCHAR text[kTypedSize];
  ColorText(color, text);
  return tv::WriteSettingString(root, key, profile, section, value, text);
}

LONG WINAPI Tavona_WriteColorToHKCU(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                    COLORREF color) {
  return Tavona_WriteColorToRegistry(HKEY_CURRENT_USER, key, nullptr, section, value, color);
}

LONG WINAPI Tavona_WriteColorToHKLM(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                    COLORREF color) {
  return Tavona_WriteColorToRegistry(HKEY_LOCAL_MACHINE, key, nullptr, section, value, color);
}

// ---- Keys and sections ----------------------------------------------------

INT WINAPI Tavona_IsRegistryKeyAvailable(HKEY root, const WCHAR *key, const WCHAR *profile,
                                         const WCHAR *section) {
  if (UsesRegistry(root, key)) {
    WCHAR path[kFullKeySize];
    if (!FullKey(key, section, path)) return 0;
    tv::unique_hkey k;
    return RegOpenKeyExW(root, path, 0, KEY_READ, k.put()) == ERROR_SUCCESS ? 1 : 0;
  }
  if (Given(profile) && Given(section) && ProfileUsable(profile)) {
    WCHAR names[10];
    GetPrivateProfileStringW(section, nullptr, kEmpty, names, 10, profile);
    return names[0] ? 1 : 0;
  }
  return 0;
}

void WINAPI Tavona_DeleteRegistryKey(HKEY root, const WCHAR *key, const WCHAR *profile,
                                     const WCHAR *section) {
  if (UsesRegistry(root, key)) {
    WCHAR path[kFullKeySize];
    if (FullKey(key, section, path)) RegDeleteKeyW(root, path);
  } else if (Given(profile) && Given(section) && ProfileUsable(profile)) {
    WritePrivateProfileStringW(section, nullptr, nullptr, profile);
  }
}

INT WINAPI Tavona_CountRegistryItems(HKEY root, const WCHAR *key) {
  return EnumValues(root, key, [](const WCHAR *, const WCHAR *) {});
}

INT WINAPI Tavona_ReadRegistryItems(HKEY root, const WCHAR *key, WCHAR *out, INT outSize,
                                    WCHAR separator) {
  if (!out || outSize < 1) return -1;
  out[0] = 0;
  tv::Appender a(out, outSize);
  return EnumValues(root, key, [&](const WCHAR *name, const WCHAR *data) {
    a.Append(name);
    a.Append(separator);
    a.Append(data);
    a.Append(separator);
  });
}

INT WINAPI Tavona_FillLanguageBoxFromRegistry(HKEY root, const WCHAR *key, WCHAR *out,
                                              INT outSize, WCHAR separator) {
  return Tavona_ReadRegistryItems(root, key, out, outSize, separator);
}

void WINAPI Tavona_WriteRegistryItems(HKEY root, const WCHAR *key, const WCHAR *items) {
  if (!UsesRegistry(root, key) || !Given(items)) return;
  WCHAR separator = items[tv::Len(items) - 1];
  WCHAR name[kItemNameSize];
  WCHAR data[kItemDataSize];
  const WCHAR *cursor = items;
  while (tv::ReadField(cursor, separator, name, kItemNameSize) &&
         tv::ReadField(cursor, separator, data, kItemDataSize))
    tv::WriteSettingString(root, key, nullptr, nullptr, name, data);
}

LONG WINAPI Tavona_FillBoxWithRegistrySubKeys(HKEY root, const WCHAR *key, HWND box) {
  Tavona_ResetBox(box);
  tv::unique_hkey k;
  LONG rc = RegOpenKeyExW(root, key, 0, KEY_READ, k.put());
  if (rc != ERROR_SUCCESS) return rc;
  WCHAR name[kEnumNameSize];
  for (DWORD i = 0;; ++i) {
    DWORD len = kEnumNameSize;
    if (RegEnumKeyExW(k.get(), i, name, &len, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
      break;
    if (Tavona_AddBoxEntry(box, name, 0, -1, TAVONA_ADD_UNIQUE) < 0) break;
  }
  return RegCloseKey(k.release());
}

// ---- Colour chooser ------------------------------------------------------

namespace {

constexpr COLORREF kDefaultCustomColors[16] = {
    RGB(255, 255, 128), RGB(255, 255, 91),  RGB(255, 255, 45),  RGB(255, 255, 0),
    RGB(160, 255, 98),  RGB(126, 255, 40),  RGB(89, 223, 0),    RGB(66, 166, 0),
    RGB(170, 164, 255), RGB(122, 112, 254), RGB(64, 48, 254),   RGB(12, 1, 148),
    RGB(255, 121, 255), RGB(255, 15, 255),  RGB(252, 124, 128), RGB(250, 48, 53),
};
const WCHAR kCustomColorsSection[] = TEXT("Custom Colors");

void CustomColorName(int i, WCHAR (&out)[16]) { tv::Format(out, 16, TEXT("Color%02d"), i + 1); }

}  // namespace

INT WINAPI Tavona_ColorDialog(HWND owner, COLORREF *color) {
  COLORREF custom[16];
  WCHAR name[16];
  for (int i = 0; i < 16; ++i) {
    CustomColorName(i, name);
    custom[i] = Tavona_ReadColorFromRegistry(HKEY_CURRENT_USER, tv::g.colorParamsKey, nullptr,
                                             kCustomColorsSection, name, kDefaultCustomColors[i]);
  }
  CHOOSECOLORW cc = {};
  cc.lStructSize = sizeof cc;
  cc.hwndOwner = owner;
  cc.rgbResult = color ? *color : 0;
  cc.lpCustColors = custom;
  cc.Flags = CC_RGBINIT | CC_FULLOPEN;
  if (!ChooseColorW(&cc)) return 2;
  if (color) *color = cc.rgbResult;
  for (int i = 0; i < 16; ++i) {
    CustomColorName(i, name);
    Tavona_WriteColorToRegistry(HKEY_CURRENT_USER, tv::g.colorParamsKey, nullptr,
                                kCustomColorsSection, name, custom[i]);
  }
  return 1;
}
