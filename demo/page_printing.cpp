// Printing: the printers of the profile with their bins, the paper
// formats box, a copy list edited in its dialog, and the three date and
// time format dialogs.
#include <tavona/tavona32.h>

#include <string>
#include <vector>

#include "pages.h"
#include "ui.h"

namespace {

enum : int {
  kPrinters = 100,
  kBins,
  kBinInfo,
  kPaper,
  kWidth,
  kHeight,
  kSelectPaper,
  kCopyList,
  kEditCopies,
  kFormat,
  kEditDate,
  kEditTime,
  kEditDateTime,
};

class PrintingPage : public demo::Page {
 public:
  explicit PrintingPage(HWND parent) : Page(parent) {
    demo::Form f(*this, {L"Printer:", L"Bin:", L"Details:", L"Format:", L"Size:", L"Copy list:",
                         L"Copies:", L"Format code:", L"Sample:"});
    f.BeginGroup(L"Printers and bins (Tavona_InitPrintersBox, Tavona_InitPrinterBinsBox)");
    f.Row(L"Printer:");
    printers_ = Combo(f, kPrinters, 160);
    f.Button(kBinInfo, L"Bins of all printers...");
    f.Row(L"Bin:");
    bins_ = Combo(f, kBins, 160);
    f.Row(L"Details:");
    details_ = f.ReadOnly(0);
    f.EndGroup();

    f.BeginGroup(L"Paper formats (Tavona_PresetPaperFormatsBox)");
    f.Row(L"Format:");
    paper_ = Combo(f, kPaper, 100);
    f.Row(L"Size:");
    width_ = f.Edit(kWidth, L"210500", demo::DuX(40), ES_NUMBER);
    f.Note(L"x");
    height_ = f.Edit(kHeight, L"297900", demo::DuX(40), ES_NUMBER);
    f.Note(L"thousandths of a millimetre");
    f.Button(kSelectPaper, L"Select");
    f.EndGroup();

    f.BeginGroup(L"Copy list (Tavona_EditCopyList, Tavona_GetTotalCount)");
    f.Row(L"Copy list:");
    copyList_ = f.Edit(kCopyList, L"Original|1|Copy|2|", 0);
    f.Row(L"Copies:");
    f.Button(kEditCopies, L"Edit...");
    copies_ = f.Note(L"", 0);
    f.EndGroup();

    f.BeginGroup(L"Date and time formats (Tavona_EditDateTimeFormat)");
    f.Row(L"Format code:");
    format_ = f.Edit(kFormat, L"%W2, %D1. %M4 %Y2 %H2:%U2", 0);
    f.Row(L"");
    f.Button(kEditDate, L"Date...");
    f.Button(kEditTime, L"Time...");
    f.Button(kEditDateTime, L"Date and time...");
    f.Row(L"Sample:");
    sample_ = f.ReadOnly(0);
    f.EndGroup();
    f.Finish();

    wchar_t standard[260] = {};
    Tavona_GetStandardPrinter(standard, 260, nullptr, 0, nullptr, 0);
    Tavona_InitPrintersBox(printers_, standard);
    if (SendMessageW(printers_, CB_GETCURSEL, 0, 0) < 0) SendMessageW(printers_, CB_SETCURSEL, 0, 0);
    ShowPrinter();
    Tavona_PresetPaperFormatsBox(paper_, HKEY_CURRENT_USER, L"Software\\Tavona Demo\\Paper",
                                 nullptr);
    SelectPaper();
    ShowCopies();
    ShowSample();
  }

 protected:
  void OnCommand(int id, int code) override {
    if (id == kPrinters && code == CBN_SELCHANGE) ShowPrinter();
    if (id == kBins && code == CBN_SELCHANGE) ShowDetails();
    if (id == kCopyList && code == EN_CHANGE) ShowCopies();
    if (id == kFormat && code == EN_CHANGE) ShowSample();
    if (code != BN_CLICKED) return;
    switch (id) {
      case kBinInfo: Tavona_BinInfoDialog(hwnd()); break;
      case kSelectPaper: SelectPaper(); break;
      case kEditCopies: EditCopies(); break;
      case kEditDate: EditFormat(1); break;
      case kEditTime: EditFormat(2); break;
      case kEditDateTime: EditFormat(3); break;
    }
  }

 private:
  HWND Combo(demo::Form &f, int id, int width) {
    HWND spot = f.Note(L"", demo::DuX(width));
    RECT r;
    GetWindowRect(spot, &r);
    MapWindowPoints(nullptr, hwnd(), reinterpret_cast<POINT *>(&r), 2);
    DestroyWindow(spot);
    return Add(L"COMBOBOX", L"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, r.left, r.top - 3,
               demo::DuX(width), demo::DuY(100), id);
  }

  // The bins of the chosen printer, its default bin selected.
  void ShowPrinter() {
    wchar_t printer[260] = {}, port[260] = {}, driver[260] = {};
    Tavona_PrintersBoxGetCurrent(printers_, printer, 260);
    Tavona_GetPrinterByName(printer, port, 260, driver, 260);
    Tavona_InitPrinterBinsBox(bins_, printer, port, -1, TAVONA_BINS_DEFAULT);
    ShowDetails();
  }

  void ShowDetails() {
    wchar_t printer[260] = {}, port[260] = {}, driver[260] = {};
    Tavona_PrintersBoxGetCurrent(printers_, printer, 260);
    Tavona_GetPrinterByName(printer, port, 260, driver, 260);
    INT devmode = driver[0] ? Tavona_GetPrinterDevmode(printer, nullptr, nullptr, nullptr, 0) : 0;
    demo::SetText(details_, L"driver " + std::wstring(driver) + L", port " + port + L", bin " +
                                std::to_wstring(Tavona_PrinterBinsBoxGetCurrent(bins_)) +
                                L", device mode " + std::to_wstring(devmode) + L" bytes");
  }

  void SelectPaper() {
    Tavona_SelectPaperFormatsBoxEntry(paper_, _wtoi(demo::GetText(width_).c_str()),
                                      _wtoi(demo::GetText(height_).c_str()));
  }

  void ShowCopies() {
    std::wstring list = demo::GetText(copyList_);
    std::wstring text = L"total " + std::to_wstring(Tavona_GetTotalCount(list.c_str())) + L":";
    for (int i = 0; i < 10; ++i) {
      wchar_t name[100];
      INT count = Tavona_GetCopyListItem(list.c_str(), i, name, 100);
      if (count > 0) text += L" " + std::to_wstring(count) + L" x \"" + name + L"\"";
    }
    demo::SetText(copies_, text);
  }

  void EditCopies() {
    std::vector<wchar_t> buffer(4096);
    std::wstring list = demo::GetText(copyList_);
    list.copy(buffer.data(), buffer.size() - 1);
    if (Tavona_EditCopyList(buffer.data(), static_cast<INT>(buffer.size()), nullptr) == 1)
      demo::SetText(copyList_, buffer.data());
  }

  void EditFormat(int kind) {
    wchar_t format[200] = {};
    demo::GetText(format_).copy(format, 199);
    INT r = kind == 1   ? Tavona_EditDateFormat(format, 200)
            : kind == 2 ? Tavona_EditTimeFormat(format, 200)
                        : Tavona_EditDateTimeFormat(hwnd(), format, 200, 3);
    if (r == 1) demo::SetText(format_, format);
  }

  void ShowSample() {
    DateTimeStruct now{};
    Get_CurrentDateAndTime(&now);
    wchar_t text[200] = {};
    DateTimeStruct_To_FormattedDateTime(&now, text, 200, demo::GetText(format_).c_str());
    demo::SetText(sample_, text);
  }

  HWND printers_, bins_, details_, paper_, width_, height_, copyList_, copies_, format_, sample_;
};

}  // namespace

HWND CreatePrintingPage(HWND parent) { return (new PrintingPage(parent))->hwnd(); }
