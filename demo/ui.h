// Building blocks of the demo's tab pages: the shared font and its dialog
// units, a page window that hands its commands to a C++ object, and a form
// that lays out labelled rows inside group boxes.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace demo {

// The system's message font (the one dialogs use), shared by every control.
HFONT UiFont();
int FontHeight();
// Dialog units of UiFont() in pixels, as dialog templates measure them.
int DuX(int units);
int DuY(int units);
int TextWidth(const wchar_t *text);

std::wstring GetText(HWND control);
// A name in the user's temporary folder.
std::wstring TempPath(const wchar_t *name);
// Sets the text only when it differs, which avoids flicker on live updates.
void SetText(HWND control, const std::wstring &text);

// A tab page. Derived classes build their controls in their constructor
// (usually with a Form) and react in OnCommand. Create them with new: the
// object is deleted with its window.
class Page {
 public:
  explicit Page(HWND parent);
  virtual ~Page() = default;
  Page(const Page &) = delete;
  Page &operator=(const Page &) = delete;

  HWND hwnd() const { return hwnd_; }

  // Creates a child control with the shared font.
  HWND Add(const wchar_t *cls, const wchar_t *text, DWORD style, int x, int y, int w, int h,
           int id = 0, DWORD exStyle = 0);
  // Keeps the control's right edge `inset` pixels left of the page's right
  // edge whenever the page is resized.
  void StretchRight(HWND control, int inset);
  // The page's size when it first shows; the main window never makes it
  // smaller.
  void SetPreferredSize(int width, int height);

 protected:
  virtual void OnCommand(int id, int code) {}

 private:
  struct Stretch {
    HWND control;
    int inset;
  };
  static LRESULT CALLBACK Proc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
  void OnSize(int width);

  HWND hwnd_ = nullptr;
  std::vector<Stretch> stretch_;
};

// Lays out rows top to bottom: a label in a column wide enough for every
// label given to the constructor, then controls left to right. A width of 0
// makes a control reach the right margin and grow with the page.
class Form {
 public:
  Form(Page &page, std::initializer_list<const wchar_t *> labels);

  void BeginGroup(const wchar_t *title);
  void EndGroup();

  void Row(const wchar_t *label);
  HWND Edit(int id, const wchar_t *text, int width, DWORD style = 0);
  HWND ReadOnly(int width);
  HWND Check(int id, const wchar_t *text, bool checked);
  // A check box row turned into another kind of button.
  HWND Button(int id, const wchar_t *text, DWORD style = BS_PUSHBUTTON);
  HWND Note(const wchar_t *text, int width = -1);  // -1: as wide as the text
  HWND List(int id, int visibleRows, DWORD style = 0);

  // Sets the page's preferred size from what was laid out.
  void Finish();

 private:
  HWND Place(const wchar_t *cls, const wchar_t *text, DWORD style, DWORD exStyle, int id,
             int width, int height, int top);

  Page &page_;
  int margin_;
  int labelWidth_ = 0;
  int left_;                 // of the label column
  int inset_;                // right inset of stretched controls
  int x_ = 0;                // next control in the row
  int rowTop_ = 0;
  int rowBottom_ = 0;
  int nextTop_;
  int right_ = 0;            // widest extent so far
  HWND group_ = nullptr;
  int groupTop_ = 0;
};

}  // namespace demo
