// Printers, bins and paper formats against the user profile, the registry
// and, when the private CUPS scheduler runs, a real printer ("TavonaPDF",
// three trays) that wine's PostScript driver offers: its bins and its
// device mode.
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "testutil.h"

namespace {

const wchar_t kPrinter[] = L"TavonaPDF";
const wchar_t kPaperKey[] = L"Software\\Tavona Tests\\Paper";

std::wstring Entries(HWND box) {
  std::wstring out;
  int count = static_cast<int>(SendMessageW(box, CB_GETCOUNT, 0, 0));
  for (int i = 0; i < count; ++i) {
    wchar_t text[300] = {};
    SendMessageW(box, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text));
    LRESULT data = SendMessageW(box, CB_GETITEMDATA, i, 0);
    out += std::wstring(text) + L"=" + std::to_wstring(data) + L";";
  }
  return out;
}

std::wstring Selected(HWND box) {
  wchar_t text[400] = {};
  GetWindowTextW(box, text, 400);
  return text;
}

class Printing : public ::testing::Test {
 protected:
  void SetUp() override {
    parent_ = CreateWindowW(L"STATIC", L"printing", WS_OVERLAPPEDWINDOW, 0, 0, 400, 400, nullptr,
                            nullptr, nullptr, nullptr);
    g_capturedReports.clear();
    Tavona_SetErrorHandlerCallback(CaptureReports);
  }
  void TearDown() override {
    Tavona_SetErrorHandlerCallback(nullptr);
    for (const std::wstring &name : added_) WriteProfileStringW(L"Devices", name.c_str(), nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, kPaperKey);
    DestroyWindow(parent_);
  }
  HWND Combo(DWORD style = CBS_DROPDOWN) {
    return CreateWindowW(L"COMBOBOX", L"", WS_CHILD | WS_VSCROLL | style, 0, 0, 300, 200, parent_,
                         nullptr, nullptr, nullptr);
  }
  void AddDevice(const std::wstring &name, const wchar_t *entry) {
    ASSERT_TRUE(WriteProfileStringW(L"Devices", name.c_str(), entry));
    added_.push_back(name);
  }
  static bool HavePrinter() { return Tavona_IsPrinterAvailable(kPrinter) == 1; }

  HWND parent_ = nullptr;
  std::vector<std::wstring> added_;
};

#define NEED_PRINTER()                                                                    \
  if (!HavePrinter()) {                                                                   \
    GTEST_SKIP() << "no printer TavonaPDF in the profile: the private CUPS scheduler "    \
                    "(scripts/cups-env, needs cupsd) is not running or wine does not see it"; \
  }

// Entries of the "Devices" section, well-formed and not.
TEST_F(Printing, ProfileEntries) {
  struct Row {
    std::wstring name;
    const wchar_t *entry;  // nullptr: not in the profile
    const wchar_t *driver, *port;
  } rows[] = {
      {L"Tavona Office", L"winspool,Ne00:,15,45", L"winspool", L"Ne00:"},
      {L"Tavona NoComma", L"justadriver", L"justadriver", L""},
      {L"Tavona NoDriver", L",Ne01:", L"", L"Ne01:"},
      {std::wstring(300, L'p'), L"longdrv,LPT9:", L"longdrv", L"LPT9:"},
      {L"Tavona Missing", nullptr, L"", L""},
  };
  for (const Row &r : rows)
    if (r.entry) AddDevice(r.name, r.entry);
  for (const Row &r : rows) {
    wchar_t port[50] = L"x", driver[50] = L"x", only[50] = L"x";
    Tavona_GetPrinterByName(r.name.c_str(), port, 50, driver, 50);
    EXPECT_EQ(Tavona_IsPrinterAvailable(r.name.c_str()), r.entry ? 1 : 0) << Narrow(r.name);
    EXPECT_EQ(std::wstring(driver), r.driver) << Narrow(r.name);
    EXPECT_EQ(std::wstring(port), r.port) << Narrow(r.name);
    EXPECT_EQ(Tavona_GetPrinterDriver(r.name.c_str(), nullptr, only, 50), r.entry ? 0 : -1)
        << Narrow(r.name);
  }
}

TEST_F(Printing, PrintersBox) {
  AddDevice(L"Tavona,Office", L"winspool,Ne00:");
  AddDevice(L"Tavona Lab", L"winspool,Ne01:");
  HWND box = Combo();
  // Only the last "," is cut: "Tavona,Office" is found.
  Tavona_InitPrintersBox(box, L"Tavona,Office,Ne00:");
  EXPECT_NE(Entries(box).find(L"Tavona Lab=0;"), std::wstring::npos);
  wchar_t current[100] = {};
  EXPECT_EQ(Tavona_PrintersBoxGetCurrent(box, current, 100), 0);
  EXPECT_EQ(std::wstring(current), L"Tavona,Office");
  // A name that is not there becomes the box's text, nothing selected.
  SendMessageW(box, CB_RESETCONTENT, 0, 0);
  Tavona_InitPrintersBox(box, L"Elsewhere,winspool,Ne07:");
  EXPECT_EQ(SendMessageW(box, CB_GETCURSEL, 0, 0), CB_ERR);
  EXPECT_EQ(Selected(box), L"Elsewhere,winspool");
  EXPECT_EQ(Tavona_PrintersBoxGetCurrent(box, current, 100), -1);
  // A 300-character preselect.
  Tavona_InitPrintersBox(box, std::wstring(300, L'q').c_str());
  EXPECT_EQ(Selected(box).size(), 300u);
  Tavona_ExitPrintersBox();
}

TEST_F(Printing, PaperFormats) {
  for (auto [w, h, type] : {std::tuple{2100, 2970, 9}, {2970, 2100, 9}, {1480, 2100, 11}, {2100, 2971, 0}})
    EXPECT_EQ(Tavona_GetPaperSizeType(w, h), type) << w << "x" << h;
  HWND box = Combo(CBS_DROPDOWNLIST);
  // No key: the DIN table.
  EXPECT_EQ(Tavona_PresetPaperFormatsBox(box, HKEY_CURRENT_USER, kPaperKey, L"none"), 1);
  EXPECT_EQ(SendMessageW(box, CB_GETCOUNT, 0, 0), 3);
  INT first = 0, second = 0;
  EXPECT_EQ(Tavona_GetPaperFormatsBoxEntry(box, 1, &first, &second), 1);
  EXPECT_EQ(first, 297000);
  EXPECT_EQ(second, 210000);
  struct Pick {
    INT width, height, index;
  } picks[] = {{211000, 296000, 1}, {211001, 297000, -1}, {148000, 211000, 2}, {420000, 297000, 0}};
  for (const Pick &p : picks) {
    EXPECT_EQ(Tavona_SelectPaperFormatsBoxEntry(box, p.width, p.height), 1);
    EXPECT_EQ(SendMessageW(box, CB_GETCURSEL, 0, 0), p.index) << p.width << "x" << p.height;
  }

  // Formats stored in the registry, thousandths of a millimetre.
  std::wstring path = std::wstring(kPaperKey) + L"\\Office";
  for (auto [name, value] : {std::pair{L"Letter", L"215900,279400"}, {L"Words", L"wide,high"},
                             {L"One number", L"100099"}, {L"Negative", L"-210000,297000"}})
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, path.c_str(), name, REG_SZ, value,
                              DWORD((wcslen(value) + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
  SendMessageW(box, CB_RESETCONTENT, 0, 0);
  EXPECT_EQ(Tavona_PresetPaperFormatsBox(box, HKEY_CURRENT_USER, kPaperKey, L"Office"), 1);
  // In the registry's order (wine keeps values sorted): 2159/2794; -2100
  // cut to 16 bits/2970; 1000/0; 0/0.
  EXPECT_EQ(Entries(box), L"Letter=" + std::to_wstring((2159 << 16) | 2794) + L";Negative=" +
                              std::to_wstring((unsigned(65536 - 2100) << 16) | 2970) +
                              L";One number=" + std::to_wstring(1000 << 16) + L";Words=0;");
  Tavona_SelectPaperFormatsBoxEntry(box, 279000, 216000);
  EXPECT_EQ(SendMessageW(box, CB_GETCURSEL, 0, 0), 0);
}

TEST_F(Printing, StandardPrinterAndDevmode) {
  NEED_PRINTER();
  wchar_t name[100] = {}, port[100] = {}, driver[100] = {};
  EXPECT_EQ(Tavona_GetStandardPrinter(name, 100, port, 100, driver, 100), 1);
  EXPECT_EQ(std::wstring(name), kPrinter);
  // Wine's entry for a CUPS printer: its PostScript driver and a CUPS port.
  EXPECT_EQ(std::wstring(driver), L"wineps.drv");
  EXPECT_EQ(std::wstring(port).substr(0, 5), L"CUPS:") << Narrow(port);

  INT size = Tavona_GetPrinterDevmode(kPrinter, nullptr, nullptr, nullptr, 0);
  ASSERT_GE(size, static_cast<INT>(sizeof(DEVMODEW)));
  std::vector<BYTE> buffer(size + 16, 0xCD);
  auto *dm = reinterpret_cast<DEVMODEW *>(buffer.data());
  EXPECT_EQ(Tavona_GetPrinterDevmode(kPrinter, nullptr, nullptr, dm, size - 1), 0);
  EXPECT_EQ(buffer[0], 0xCD);
  EXPECT_EQ(Tavona_GetPrinterDevmode(kPrinter, nullptr, nullptr, dm, size), size);
  EXPECT_EQ(std::wstring(dm->dmDeviceName), kPrinter);
  EXPECT_EQ(dm->dmSize + dm->dmDriverExtra, size);
  EXPECT_EQ(buffer[size], 0xCD) << "written past the size";
  // The default printer when no name is given.
  EXPECT_EQ(Tavona_GetPrinterDevmode(nullptr, nullptr, nullptr, dm, size), size);
  EXPECT_TRUE(g_capturedReports.empty());

  EXPECT_EQ(Tavona_GetPrinterDevmode(L"Tavona Nowhere", nullptr, nullptr, nullptr, 0), 0);
  ASSERT_EQ(g_capturedReports.size(), 1u);
}

TEST_F(Printing, BinsBox) {
  NEED_PRINTER();
  // What the driver reports, as the reference.
  int n = DeviceCapabilitiesW(kPrinter, nullptr, DC_BINS, nullptr, nullptr);
  ASSERT_GE(n, 3);
  std::vector<WORD> ids(n);
  std::vector<wchar_t> names(n * 24);
  DeviceCapabilitiesW(kPrinter, nullptr, DC_BINS, reinterpret_cast<wchar_t *>(ids.data()), nullptr);
  DeviceCapabilitiesW(kPrinter, nullptr, DC_BINNAMES, names.data(), nullptr);
  std::wstring expected;
  for (int i = 0; i < n; ++i)
    expected += std::wstring(&names[i * 24]) + L"=" + std::to_wstring(ids[i]) + L";";
  // The trays of the PPD, after the driver's own "Automatically Select".
  EXPECT_NE(expected.find(L"Upper Tray=256;Lower Tray=257;Manual Feed=258;"), std::wstring::npos)
      << Narrow(expected);

  HWND box = Combo(CBS_DROPDOWNLIST);
  Tavona_InitPrinterBinsBox(box, kPrinter, nullptr, ids[1], 0);
  EXPECT_EQ(Entries(box), expected);
  EXPECT_EQ(Tavona_PrinterBinsBoxGetCurrent(box), ids[1]);
  // With the default entry; a bin that is not there leaves no selection.
  Tavona_InitPrinterBinsBox(box, kPrinter, nullptr, 999, TAVONA_BINS_DEFAULT);
  EXPECT_EQ(Entries(box), L"Default bin=-1;" + expected);
  EXPECT_EQ(Tavona_PrinterBinsBoxGetCurrent(box), -2);
  Tavona_InitPrinterBinsBox(box, kPrinter, nullptr, -1, TAVONA_BINS_DEFAULT);
  EXPECT_EQ(Tavona_PrinterBinsBoxGetCurrent(box), -1);
  // No such printer: the default entry alone.
  Tavona_InitPrinterBinsBox(box, L"Tavona Nowhere", nullptr, 0, TAVONA_BINS_DEFAULT);
  EXPECT_EQ(Entries(box), L"Default bin=-1;");
}

}  // namespace
