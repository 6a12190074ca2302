// The button bar's records and everything about them that needs no window:
// properties, the button list, matching, layout, the needed size, hit tests
// and drops. The window side (controls/buttonbar.cpp) paints and handles the
// mouse over these.
#pragma once

#include <tavona/tvbase.h>

#include <cstdint>

namespace tv {

inline constexpr uint32_t kButtonMarker = 19550001;

// Button flags (long property 6).
inline constexpr uint32_t kButtonInvisible = 1;
inline constexpr uint32_t kButtonNewRow = 2;
inline constexpr uint32_t kButtonGroupGap = 4;
inline constexpr uint32_t kButtonLatched = 8;
inline constexpr uint32_t kButtonInverted = 16;

// Button kinds the bar paints; others are laid out only.
inline constexpr int32_t kKindPicture = 1;
inline constexpr int32_t kKindTwoColour = 8;

// Bar long properties.
enum BarProp : int {
  kPropMargin = 1,
  kPropGap = 2,
  kPropGroupGap = 3,
  kPropEdgeMode = 6,
  kPropEdgeWidth = 7,
  kPropFrameWidth = 8,
  kPropSeparators = 9,
  kPropWrap = 10,
  kPropArrangement = 11,
  kPropMenuSwitch = 12,
  kPropEditOnDoubleClick = 14,
  kPropPaintClipped = 15,
  kPropContextMenu = 17,
};
inline constexpr int kBarLongCount = 17;

// Bar colour properties 100 to 104.
enum BarColour : int {
  kColourBackground = 100,
  kColourText = 101,
  kColourFace = 102,
  kColourKept = 103,
  kColourSecond = 104,
};
inline constexpr int kBarColourFirst = 100;
inline constexpr int kBarColourCount = 5;

struct BarRect {
  int32_t left, top, right, bottom;
};

struct BarButton {
  uint32_t marker;
  BarButton *prev, *next;
  HWND window;  // the bar
  int32_t kind;
  BarRect rect;
  WCHAR *name;     // string property 1
  WCHAR *key;      // 3
  int32_t id;      // long property 2
  uint32_t flags;  // long property 6
  WCHAR *caption;  // 5
  WCHAR *popup;    // 4
  WCHAR *text7, *text8;
  HANDLE bitmap;  // owned bitmap (HBITMAP)
  HWND child;
  int32_t childHeight;
  int32_t long9;
};

struct BarRecord {
  BarButton *first;
  BarButton *last;  // appends stay constant-time
  int32_t count;
  HWND window;
  HWND notifyWindow;
  UINT notifyMessage;
  int32_t longs[kBarLongCount + 1];  // index 1 to 17
  COLORREF colours[kBarColourCount];
  BarButton *pressed;
  BarButton *dragged;
  BarButton *hot;
  HANDLE savedCursor;
  HANDLE dropCursor, noDropCursor;  // shared resources, never destroyed
  int32_t downX, downY;  // where the left button went down
  bool trackingLeave;
};

// Defaults of every property (16 stays 0: it has no value of its own).
void InitBarRecord(BarRecord *bar);

// Unknown ids read 0 and are ignored when set.
int32_t GetBarLong(const BarRecord *bar, int id);
void SetBarLong(BarRecord *bar, int id, int32_t value);
COLORREF GetBarColour(const BarRecord *bar, int id);
void SetBarColour(BarRecord *bar, int id, COLORREF value);

// The button handle check: not null and carrying the marker.
bool IsButton(const BarButton *b);

// A new button of width x height at (0, 0), at the end or before
// insertBefore (when that is a button). Null after reporting 1300.
BarButton *NewButton(BarRecord *bar, int32_t kind, const WCHAR *key, const WCHAR *name,
                     int32_t id, int32_t height, int32_t width, uint32_t flags,
                     BarButton *insertBefore);
// Takes b out of the list and releases its texts and record (not its
// bitmap, which belongs to the window side: releaseBitmap is called with it).
void DeleteButton(BarRecord *bar, BarButton *b, void (*releaseBitmap)(HANDLE));
void DeleteAllButtons(BarRecord *bar, void (*releaseBitmap)(HANDLE));

// Key and name null or equal (an absent text counts as ""), id below 1 or
// equal; exact comparison.
bool Matches(const BarButton *b, const WCHAR *key, const WCHAR *name, int32_t id);
// First match after start (from the first button when start is no button).
BarButton *FindButton(const BarRecord *bar, const WCHAR *key, const WCHAR *name, int32_t id,
                      const BarButton *start);

// Button long properties: 2 id, 6 flags, 9 long 9, 10 the bar window
// (read only). Setting stores cumulatively: 2 as id, flags and 9; 6 as
// flags and 9; 9 as 9 only.
LONG_PTR GetButtonLong(const BarButton *b, int id);
void SetButtonLong(BarButton *b, int id, int32_t value);

// String properties 1 name, 3 key, 4 popup text, 5 caption, 7, 8: the
// slot, or null for another id.
WCHAR **ButtonText(BarButton *b, int id);
// Replaces the owned copy (null text: none). False when memory ran out
// (reported); the old text then stays.
bool SetButtonText(BarButton *b, int id, const WCHAR *text);

// Lays the buttons out in a client area of width x height (rows, or columns
// when property 11 is 2). Child windows are the caller's business.
void ArrangeButtons(BarRecord *bar, int32_t width, int32_t height);
// The height the rows need at width; the width the columns need at height.
int32_t CalculateHeight(const BarRecord *bar, int32_t width);
int32_t CalculateWidth(const BarRecord *bar, int32_t height);

// The visible button whose rectangle holds the point, or null.
BarButton *HitTest(const BarRecord *bar, int32_t x, int32_t y);
// Moves b as a drop at the point: onto b itself nothing changes (false);
// onto another button before it (b stood after it) or after it; elsewhere
// to the end. b hands its flags 2 and 4 to its successor first.
bool DropButton(BarRecord *bar, BarButton *b, int32_t x, int32_t y);

}  // namespace tv
