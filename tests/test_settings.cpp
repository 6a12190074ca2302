// The settings store against the real registry and real profile files, and
// the colour chooser driven through its dialog.
#include <tavona/tavona32.h>

#include <colordlg.h>
#include <gtest/gtest.h>

#include "testutil.h"
#include "uidriver.h"

namespace {

const wchar_t kKey[] = L"Software\\Tavona Software\\SettingsTest";
const wchar_t kCustom[] = L"Software\\Tavona Software\\Global Parameters\\Custom Colors";
const HKEY kUser = HKEY_CURRENT_USER;

std::wstring RawValue(const wchar_t *key, const wchar_t *value) {
  wchar_t buf[200] = {};
  DWORD bytes = sizeof buf;
  if (RegGetValueW(kUser, key, value, RRF_RT_REG_SZ, nullptr, buf, &bytes) != ERROR_SUCCESS)
    return L"<missing>";
  return buf;
}

std::wstring ReadText(HKEY root, const wchar_t *file, const wchar_t *section, const wchar_t *value,
                      const wchar_t *def, int size = 50) {
  wchar_t buf[100] = L"junk";
  Tavona_ReadStringFromRegistry(root, file ? nullptr : kKey, file, section, value, def, buf, size);
  return buf;
}

class Settings : public ::testing::Test {
 protected:
  void SetUp() override {
    RegDeleteTreeW(kUser, kKey);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kKey);
  }
  void TearDown() override { SetUp(); }
};

// Values are read with the buffer size in BYTES of room: 24 characters and
// the terminator fill 50 bytes exactly.
TEST_F(Settings, StringReadHalfCapacityAndDefaults) {
  for (int n : {24, 25, 30}) {
    std::wstring name = L"v" + std::to_wstring(n);
    Tavona_WriteStringToHKCU(kKey, L"S", name.c_str(), std::wstring(n, 'x').c_str());
  }
  Tavona_WriteStringToHKCU(kKey, nullptr, L"top", L"no section");
  struct Row { HKEY root; const wchar_t *section, *value, *def; int size; std::wstring expected; };
  const Row rows[] = {
      {kUser, L"S", L"v24", L"def", 50, std::wstring(24, 'x')},
      {kUser, L"S", L"v25", L"def", 50, L"def"},
      {kUser, L"S", L"v30", L"def", 62, std::wstring(30, 'x')},
      {kUser, L"S", L"missing", L"def", 50, L"def"}, {kUser, L"S", L"missing", nullptr, 50, L""},
      {kUser, nullptr, L"top", L"def", 50, L"no section"},
  };
  for (const Row &r : rows)
    EXPECT_EQ(ReadText(r.root, nullptr, r.section, r.value, r.def, r.size), r.expected)
        << Narrow(r.section) << "/" << Narrow(r.value) << " size " << r.size;
  // The default's own buffer as destination.
  wchar_t same[50] = L"same";
  Tavona_ReadStringFromRegistry(kUser, kKey, nullptr, L"S", L"v30", same, same, 50);
  EXPECT_STREQ(same, L"same");
}

TEST_F(Settings, BitReadSetsOrClearsTheMask) {
  struct Row { const wchar_t *text; DWORD flagsBefore, result, flagsAfter; };
  for (const Row &r : {Row{L"0", 0xFF, ~4u, 0xFB}, Row{L"1", 0x01, 4, 0x05}, Row{L"-3", 0x00, 4, 0x04},
                       Row{L"x", 0x04, ~4u, 0x00}}) {
    Tavona_WriteStringToHKCU(kKey, nullptr, L"bit", r.text);
    DWORD flags = r.flagsBefore;
    EXPECT_EQ(Tavona_ReadBitFromRegistry(kUser, kKey, nullptr, nullptr, L"bit", 0, 4, &flags), r.result)
        << Narrow(r.text);
    EXPECT_EQ(flags, r.flagsAfter) << Narrow(r.text);
  }
}

TEST_F(Settings, UserValueOverridesMachineValue) {
  Tavona_WriteStringToHKLM(kKey, L"S", L"both", L"machine");
  Tavona_WriteStringToHKCU(kKey, L"S", L"both", L"");
  Tavona_WriteStringToHKLM(kKey, L"S", L"lm", L"machine");
  Tavona_WriteStringToHKLM(kKey, L"S", L"short", L"abc");
  Tavona_WriteStringToHKCU(kKey, L"S", L"placeholder", L"$$$%%%$$$");
  Tavona_WriteStringToHKLM(kKey, L"S", L"placeholder", L"machine");
  struct Row { const wchar_t *value; int size; std::wstring expected; };
  const Row rows[] = {
      {L"both", 50, L""},  // an empty user value still counts
      {L"lm", 50, L"machine"}, {L"placeholder", 50, L"machine"},
      {L"short", 8, L"abc"},  // too small for the placeholder
      {L"missing", 50, L"def"},
  };
  for (const Row &r : rows) {
    wchar_t buf[50];
    Tavona_ReadStringFromHKCUorHKLM(kKey, L"S", r.value, L"def", buf, r.size);
    EXPECT_EQ(std::wstring(buf), r.expected) << Narrow(r.value) << " size " << r.size;
  }
}

TEST_F(Settings, ProfileFileStore) {
  wchar_t dir[MAX_PATH], file[MAX_PATH];
  GetTempPathW(MAX_PATH, dir);
  GetTempFileNameW(dir, L"tvs", 0, file);
  // Registry first: with a root and key the profile is not touched.
  Tavona_WriteStringToRegistry(kUser, kKey, file, L"Sec", L"a", L"reg");
  EXPECT_EQ(Tavona_IsRegistryKeyAvailable(nullptr, nullptr, file, L"Sec"), 0);
  EXPECT_NE(Tavona_WriteStringToRegistry(nullptr, nullptr, file, L"Sec", L"a", L"one"), 0);
  Tavona_WriteLongToRegistry(nullptr, L"", file, L"Sec", L"n", -5);
  EXPECT_EQ(ReadText(nullptr, file, L"Sec", L"a", L"def"), L"one");
  // The profile has no half-capacity limit: it gets the whole buffer.
  Tavona_WriteStringToRegistry(nullptr, nullptr, file, L"Sec", L"long", std::wstring(40, 'y').c_str());
  EXPECT_EQ(ReadText(nullptr, file, L"Sec", L"long", L"def"), std::wstring(40, 'y'));
  EXPECT_EQ(Tavona_ReadLongFromRegistry(nullptr, nullptr, file, L"Sec", L"n", 0), -5);
  EXPECT_EQ(Tavona_IsRegistryKeyAvailable(nullptr, nullptr, file, L"Sec"), 1);
  // A NULL text deletes the entry; deleting the key deletes the section.
  Tavona_WriteStringToRegistry(nullptr, nullptr, file, L"Sec", L"a", nullptr);
  EXPECT_EQ(ReadText(nullptr, file, L"Sec", L"a", L"def"), L"def");
  Tavona_DeleteRegistryKey(nullptr, nullptr, file, L"Sec");
  EXPECT_EQ(Tavona_IsRegistryKeyAvailable(nullptr, nullptr, file, L"Sec"), 0);
  DeleteFileW(file);
}

// Profile file names longer than the platform takes are refused before they
// reach it (wine's profile functions overrun their own buffers on them).
TEST_F(Settings, OverlongNamesAreRefused) {
  for (const std::wstring &file : {std::wstring(1000, 'p'), L"C:\\" + std::wstring(1000, 'p'),
                                   std::wstring(300, 'q') + L".ini"}) {
    std::string what = std::to_string(file.size()) + " characters";
    EXPECT_EQ(Tavona_WriteStringToRegistry(nullptr, nullptr, file.c_str(), L"S", L"V", L"x"), 0) << what;
    EXPECT_FALSE(Tavona_WriteCryptedProfileString(L"k", file.c_str(), L"S", L"V", L"x")) << what;
    EXPECT_EQ(ReadText(nullptr, file.c_str(), L"S", L"V", L"def", 20), L"def") << what;
    wchar_t buf[20] = L"junk";
    Tavona_ReadCryptedProfileString(L"k", file.c_str(), L"S", L"V", L"plain", buf, 20);
    EXPECT_STREQ(buf, L"plain") << what;
    EXPECT_EQ(Tavona_IsRegistryKeyAvailable(nullptr, nullptr, file.c_str(), L"S"), 0) << what;
    Tavona_DeleteRegistryKey(nullptr, nullptr, file.c_str(), L"S");
  }
  // A key path of 1000 characters or more is refused too, not cut to the root.
  EXPECT_EQ(Tavona_WriteStringToRegistry(kUser, std::wstring(995, 'k').c_str(), nullptr, L"Section",
                                         L"stray", L"1"), ERROR_FILENAME_EXCED_RANGE);
  EXPECT_EQ(RawValue(L"", L"stray"), L"<missing>");
}

// A colour typed in and added: it comes back, and all sixteen custom colours
// are written, the first replaced by it.
TEST_F(Settings, ColorDialogStoresChoiceAndCustomColors) {
  RegDeleteTreeW(kUser, kCustom);
  COLORREF color = RGB(200, 100, 50);
  int rc = tvui::RunModal([&] { return Tavona_ColorDialog(nullptr, &color); }, [](tvui::Session &s) {
    HWND dlg = s.WaitAnyDialog();
    s.SetText(dlg, COLOR_RED, L"12");
    s.SetText(dlg, COLOR_GREEN, L"34");
    s.SetText(dlg, COLOR_BLUE, L"56");
    s.Click(dlg, COLOR_ADD);
    s.Screenshot(dlg, L"settings_color_dialog");
    s.Click(dlg, IDOK);
    s.WaitClosed(dlg);
  });
  EXPECT_EQ(rc, 1);
  EXPECT_EQ(color, RGB(12, 34, 56));
  EXPECT_EQ(RawValue(kCustom, L"Color01"), L"12,34,56");
  EXPECT_EQ(RawValue(kCustom, L"Color16"), L"250,48,53");
  RegDeleteTreeW(kUser, kCustom);
}

}  // namespace
