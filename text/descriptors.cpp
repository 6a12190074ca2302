// Descriptors: "name=value" items separated by tabs in one caller-owned
// buffer, edited in place.
#include <tavona/text.h>

#include "frame/alloc.h"
#include "text/datautil.h"
#include "base/wstr.h"

namespace {

constexpr WCHAR kTab = 9;
constexpr int kKeyLength = 99;  // tab + name + '=': names of up to 97

struct Item {
  WCHAR *start = nullptr;  // first character of the name
  WCHAR *value = nullptr;  // first character after '='
  int valueLen = 0;
};

// The item of that name: at the very start as "name=", else after a tab as
// "\tname=". Names too long for the key are never found.
bool Locate(const WCHAR *descriptor, const WCHAR *name, Item &item) {
  int nameLen = tv::Len(name);
  if (nameLen + 2 > kKeyLength) return false;
  WCHAR key[kKeyLength + 1];
  key[0] = kTab;
  tv::CopyRaw(key + 1, name, nameLen);
  key[nameLen + 1] = '=';
  key[nameLen + 2] = 0;

  WCHAR *d = const_cast<WCHAR *>(descriptor);
  int dLen = tv::Len(d);
  if (dLen >= nameLen + 1 && tv::EqualN(d, key + 1, nameLen + 1)) {
    item.start = d;
  } else {
    tv::Finder finder;
    if (!finder.Init(key, nameLen + 2)) return false;
    int at = finder.Find(d, dLen, 0);
    if (at < 0) return false;
    item.start = d + at + 1;
  }
  item.value = item.start + nameLen + 1;
  const WCHAR *end = item.value;
  while (*end && *end != kTab) ++end;
  item.valueLen = static_cast<int>(end - item.value);
  return true;
}

// The copy that reads values: the source is the text from the value on, so
// a value followed by another item does not fit and reads as "".
void CopyValue(WCHAR *out, int outSize, const Item &item) {
  int n = item.valueLen + 1 < outSize ? item.valueLen + 1 : outSize;
  if (tv::LenBounded(item.value, n) < n) {
    tv::CopyRaw(out, item.value, item.valueLen);
    out[item.valueLen] = 0;
  } else {
    out[0] = 0;
  }
  out[n - 1] = 0;
}

void DeleteItem(WCHAR *descriptor, const WCHAR *name) {
  Item item;
  if (!Locate(descriptor, name, item)) return;
  WCHAR *end = item.value + item.valueLen;
  if (!*end) {
    // The last item: its separating tab goes with it.
    if (item.start == descriptor)
      item.start[0] = 0;
    else
      item.start[-1] = 0;
    return;
  }
  tv::HeapPtr<WCHAR> rest(tv::DuplicateWideString(end + 1));
  if (!rest) return;
  int n = tv::Len(rest.get());
  tv::CopyRaw(item.start, rest.get(), n + 1);
}

}  // namespace

extern "C" {

void WINAPI DescriptorAddStringItem(WCHAR *descriptor, UINT capacity, const WCHAR *name,
                                    const WCHAR *value) {
  if (!descriptor || !name || capacity < 1 || capacity > 0x7FFFFFFF) return;
  int size = static_cast<int>(capacity);
  if (tv::LenBounded(descriptor, size) >= size) return;  // not a text of that buffer
  DeleteItem(descriptor, name);
  tv::Appender out(descriptor, size);
  // Only blanks so far: they stay, and no tab goes before the first item.
  if (!tv::IsBlank(descriptor)) out.Append(kTab);
  out.Append(name);
  out.Append(TEXT("="));
  out.Append(value ? value : TEXT(""));
}

void WINAPI DescriptorAddLongItem(WCHAR *descriptor, UINT capacity, const WCHAR *name,
                                  INT value) {
  WCHAR text[16];
  tv::Format(text, 16, TEXT("%d"), value);
  DescriptorAddStringItem(descriptor, capacity, name, text);
}

void WINAPI DescriptorDeleteItem(WCHAR *descriptor, const WCHAR *name) {
  if (!descriptor || !name) return;
  DeleteItem(descriptor, name);
}

void WINAPI DescriptorGetStringItem(const WCHAR *descriptor, const WCHAR *name,
                                    const WCHAR *defaultValue, WCHAR *out, INT outSize) {
  if (!out || outSize < 1) return;
  Item item;
  if (descriptor && name && Locate(descriptor, name, item))
    CopyValue(out, outSize, item);
  else
    tv::BoundedCopy(out, defaultValue, outSize);
}

INT WINAPI DescriptorGetLongItem(const WCHAR *descriptor, const WCHAR *name, INT defaultValue) {
  WCHAR text[100];
  Item item;
  if (descriptor && name && Locate(descriptor, name, item))
    CopyValue(text, 100, item);
  else
    tv::Format(text, 100, TEXT("%d"), defaultValue);
  return tv::TextToLong(text);
}

}  // extern "C"
