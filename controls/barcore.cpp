#include "controls/barcore.h"

#include <initializer_list>

#include "frame/alloc.h"
#include "base/wstr.h"

namespace tv {

namespace {

constexpr COLORREF Rgb(int r, int g, int b) {
  return static_cast<COLORREF>(r | (g << 8) | (b << 16));
}

bool Equal(const WCHAR *wanted, const WCHAR *have) {
  return Compare(wanted, have ? have : TEXT("")) == 0;
}

void Link(BarRecord *bar, BarButton *b, BarButton *before) {
  b->next = before;
  b->prev = before ? before->prev : bar->last;
  if (b->prev)
    b->prev->next = b;
  else
    bar->first = b;
  if (before)
    before->prev = b;
  else
    bar->last = b;
}

void Unlink(BarRecord *bar, BarButton *b) {
  if (b->prev)
    b->prev->next = b->next;
  else
    bar->first = b->next;
  if (b->next)
    b->next->prev = b->prev;
  else
    bar->last = b->prev;
  b->prev = b->next = nullptr;
}

int32_t Width(const BarButton *b) { return b->rect.right - b->rect.left; }
int32_t Height(const BarButton *b) { return b->rect.bottom - b->rect.top; }

int32_t Max(int32_t a, int32_t b) { return a > b ? a : b; }

// The arrangement in axis terms: "along" is x for rows and y for columns.
struct Axis {
  bool vertical;
  int32_t Along(const BarButton *b) const { return vertical ? Height(b) : Width(b); }
  int32_t Across(const BarButton *b) const { return vertical ? Width(b) : Height(b); }
  void Place(BarButton *b, int32_t along, int32_t across) const {
    int32_t w = Width(b), h = Height(b);
    int32_t x = vertical ? across : along, y = vertical ? along : across;
    b->rect = {x, y, x + w, y + h};
  }
};

}  // namespace

void InitBarRecord(BarRecord *bar) {
  static const int32_t kDefaults[kBarLongCount + 1] = {0, 4, 0, 8, 1, 1, 2, 1, 1, 0,
                                                       0, 1, 1, 1, 1, 0, 0, 1};
  for (int i = 0; i <= kBarLongCount; ++i) bar->longs[i] = kDefaults[i];
  bar->colours[0] = Rgb(0xC0, 0xC0, 0xC0);
  bar->colours[1] = Rgb(0, 0, 0);
  bar->colours[2] = Rgb(0xC0, 0xC0, 0xC0);
  bar->colours[3] = Rgb(0xFF, 0xFF, 0);  // 0x00FFFF
  bar->colours[4] = Rgb(0, 0, 0xFF);     // 0xFF0000
}

int32_t GetBarLong(const BarRecord *bar, int id) {
  return id >= 1 && id <= kBarLongCount ? bar->longs[id] : 0;
}

void SetBarLong(BarRecord *bar, int id, int32_t value) {
  if (id >= 1 && id <= kBarLongCount) bar->longs[id] = value;
}

COLORREF GetBarColour(const BarRecord *bar, int id) {
  int i = id - kBarColourFirst;
  return i >= 0 && i < kBarColourCount ? bar->colours[i] : 0;
}

void SetBarColour(BarRecord *bar, int id, COLORREF value) {
  int i = id - kBarColourFirst;
  if (i >= 0 && i < kBarColourCount) bar->colours[i] = value;
}

bool IsButton(const BarButton *b) { return b && b->marker == kButtonMarker; }

BarButton *NewButton(BarRecord *bar, int32_t kind, const WCHAR *key, const WCHAR *name,
                     int32_t id, int32_t height, int32_t width, uint32_t flags,
                     BarButton *insertBefore) {
  auto *b = static_cast<BarButton *>(AllocBytes(sizeof(BarButton)));
  if (!b) return nullptr;
  *b = BarButton{};
  b->key = DuplicateWideString(key);
  b->name = DuplicateWideString(name);
  if ((key && !b->key) || (name && !b->name)) {
    FreeMem(b->key);
    FreeMem(b->name);
    FreeMem(b);
    return nullptr;
  }
  b->marker = kButtonMarker;
  b->window = bar->window;
  b->kind = kind;
  b->rect = {0, 0, width, height};
  b->id = id;
  b->flags = flags;
  b->childHeight = 100;
  // Only a button of this bar can be the place of insertion.
  if (!IsButton(insertBefore) || insertBefore->window != bar->window) insertBefore = nullptr;
  Link(bar, b, insertBefore);
  ++bar->count;
  return b;
}

void DeleteButton(BarRecord *bar, BarButton *b, void (*releaseBitmap)(HANDLE)) {
  Unlink(bar, b);
  --bar->count;
  if (bar->pressed == b) bar->pressed = nullptr;
  if (bar->dragged == b) bar->dragged = nullptr;
  if (bar->hot == b) bar->hot = nullptr;
  for (WCHAR *t : {b->name, b->key, b->caption, b->popup, b->text7, b->text8}) FreeMem(t);
  if (b->bitmap && releaseBitmap) releaseBitmap(b->bitmap);
  // A stale handle no longer passes the marker test.
  b->marker = 0;
  FreeMem(b);
}

void DeleteAllButtons(BarRecord *bar, void (*releaseBitmap)(HANDLE)) {
  while (bar->first) DeleteButton(bar, bar->first, releaseBitmap);
}

bool Matches(const BarButton *b, const WCHAR *key, const WCHAR *name, int32_t id) {
  if (key && !Equal(key, b->key)) return false;
  if (name && !Equal(name, b->name)) return false;
  return id < 1 || id == b->id;
}

BarButton *FindButton(const BarRecord *bar, const WCHAR *key, const WCHAR *name, int32_t id,
                      const BarButton *start) {
  BarButton *b = IsButton(start) && start->window == bar->window ? start->next : bar->first;
  for (; b; b = b->next)
    if (Matches(b, key, name, id)) return b;
  return nullptr;
}

LONG_PTR GetButtonLong(const BarButton *b, int id) {
  switch (id) {
    case 2: return b->id;
    case 6: return static_cast<int32_t>(b->flags);
    case 9: return b->long9;
    case 10: return reinterpret_cast<LONG_PTR>(b->window);
  }
  return 0;
}

void SetButtonLong(BarButton *b, int id, int32_t value) {
  // Falls through on purpose: each id also stores the ones below it.
  switch (id) {
    case 2: b->id = value; [[fallthrough]];
    case 6: b->flags = static_cast<uint32_t>(value); [[fallthrough]];
    case 9: b->long9 = value; break;
  }
}

WCHAR **ButtonText(BarButton *b, int id) {
  switch (id) {
    case 1: return &b->name;
    case 3: return &b->key;
    case 4: return &b->popup;
    case 5: return &b->caption;
    case 7: return &b->text7;
    case 8: return &b->text8;
  }
  return nullptr;
}

bool SetButtonText(BarButton *b, int id, const WCHAR *text) {
  WCHAR **slot = ButtonText(b, id);
  if (!slot) return true;
  WCHAR *copy = DuplicateWideString(text);
  if (text && !copy) return false;
  FreeMem(*slot);
  *slot = copy;
  return true;
}

void ArrangeButtons(BarRecord *bar, int32_t width, int32_t height) {
  Axis axis{bar->longs[kPropArrangement] == 2};
  int32_t extent = axis.vertical ? height : width;
  if (extent < 1 || !bar->first) return;
  const int32_t m = bar->longs[kPropMargin], g = bar->longs[kPropGap],
                G = bar->longs[kPropGroupGap];
  const bool wrap = bar->longs[kPropWrap] == 1;
  int32_t pos = m, lineStart = m, lineSize = 0;
  for (BarButton *b = bar->first; b; b = b->next) {
    int32_t along = axis.Along(b), across = axis.Across(b);
    // Columns take the group gap even at their top; rows only inside.
    if ((b->flags & kButtonGroupGap) && (axis.vertical || pos != m)) pos += G;
    int32_t grown = Max(lineSize, across);
    bool newLine = pos != m && ((wrap && pos + along + g >= extent - m) ||
                                (b->flags & kButtonNewRow));
    if (newLine) {
      // The line moves by the size including the button that starts the
      // next one.
      lineStart += grown + m;
      lineSize = across;
      pos = m;
    } else {
      lineSize = grown;
    }
    axis.Place(b, pos, lineStart);
    pos += along + g;
  }
}

namespace {

// The needed size across the lines: the group gap counts even at the start
// of a line, and the wrap and new-line tests follow one another.
int32_t NeededAcross(const BarRecord *bar, int32_t extent, bool vertical) {
  Axis axis{vertical};
  const int32_t m = bar->longs[kPropMargin], g = bar->longs[kPropGap],
                G = bar->longs[kPropGroupGap];
  const bool wrap = bar->longs[kPropWrap] == 1;
  int32_t pos = m, lineStart = m, lineSize = 0;
  for (const BarButton *b = bar->first; b; b = b->next) {
    int32_t along = axis.Along(b), across = axis.Across(b);
    if (b->flags & kButtonGroupGap) pos += G;
    bool moved = false;
    if (wrap && pos != m && pos + along + g >= extent - m) {
      lineStart += Max(lineSize, across) + m;
      lineSize = across;
      pos = m;
      moved = true;
    }
    if ((b->flags & kButtonNewRow) && pos != m) {
      lineStart += Max(lineSize, across) + m;
      lineSize = across;
      pos = m;
      moved = true;
    }
    if (!moved) lineSize = Max(lineSize, across);
    pos += along + g;
  }
  return m + lineStart + lineSize;
}

}  // namespace

int32_t CalculateHeight(const BarRecord *bar, int32_t width) {
  return NeededAcross(bar, width, false);
}

int32_t CalculateWidth(const BarRecord *bar, int32_t height) {
  return NeededAcross(bar, height, true) + 1;
}

BarButton *HitTest(const BarRecord *bar, int32_t x, int32_t y) {
  for (BarButton *b = bar->first; b; b = b->next) {
    if (b->flags & kButtonInvisible) continue;
    if (x >= b->rect.left && x < b->rect.right && y >= b->rect.top && y < b->rect.bottom)
      return b;
  }
  return nullptr;
}

bool DropButton(BarRecord *bar, BarButton *b, int32_t x, int32_t y) {
  BarButton *target = HitTest(bar, x, y);
  if (target == b) return false;
  const uint32_t handed = b->flags & (kButtonNewRow | kButtonGroupGap);
  b->flags &= ~handed;
  if (b->next) b->next->flags |= handed;
  bool after = false;  // whether b stood after the target
  if (target)
    for (BarButton *p = target->next; p && !after; p = p->next) after = p == b;
  Unlink(bar, b);
  if (!target)
    Link(bar, b, nullptr);
  else if (after)
    Link(bar, b, target);
  else
    Link(bar, b, target->next);
  return true;
}

}  // namespace tv
