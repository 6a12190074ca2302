// Scrambled profile values and resource IDs against the real system and
// resource library, and the scrambling test dialog.
#include <gtest/gtest.h>
#include <tavona/text.h>

#include <cstdio>

#include "frame/globals.h"
#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

TEST(CryptedProfile, RoundTripAndDefaults) {
  std::wstring ini = TempPath(L"tavona_crypt_test.ini");
  // Scrambled characters go beyond any code page: the file must be UTF-16.
  if (FILE *f = _wfopen(ini.c_str(), L"wb")) {
    std::fwrite("\xFF\xFE", 1, 2, f);
    std::fclose(f);
  }
  // Escaped, a scrambled character takes 1 to 4: 498 always fit the 2000.
  const std::wstring longest(498, L'x');
  for (const wchar_t *value : {L"secret \"quoted\" \x00e4\x20ac\x4e2d", longest.c_str()}) {
    ASSERT_NE(Tavona_WriteCryptedProfileString(L"key", ini.c_str(), L"S", L"v", value), FALSE);
    wchar_t raw[4000];
    GetPrivateProfileStringW(L"S", L"v", L"<missing>", raw, 4000, ini.c_str());
    std::wstring stored = raw;  // neither the text nor a blank or quote to be seen
    EXPECT_EQ(stored.find(L"secret"), stored.npos) << Narrow(raw);
    EXPECT_EQ(stored.find_first_of(L" \""), stored.npos) << Narrow(raw);
    std::vector<wchar_t> out(2100, L'z');
    Tavona_ReadCryptedProfileString(L"key", ini.c_str(), L"S", L"v", L"def", out.data(), 2100);
    EXPECT_EQ(std::wstring(out.data()), value) << Narrow(value);
  }
  // A missing value gives the default as it stands, never unscrambled.
  wchar_t out[50];
  Tavona_ReadCryptedProfileString(L"key", ini.c_str(), L"S", L"none", L"plain \\x41", out, 50);
  EXPECT_STREQ(out, L"plain \\x41");
  DeleteFileW(ini.c_str());
}

TEST(ResourceIds, OfTheResourceLibrary) {
  HMODULE en = LanguageResources(L"en");
  ASSERT_NE(en, nullptr);
  // The store limit is capacity - 1, checked after each string ID but
  // before each dialog ID.
  struct Row {
    UINT type, capacity;
    int expect;
  } rows[] = {{6, 1, 1}, {5, 1, 0}, {4, 1, 0}, {6, 3, 2}, {5, 0, 0}, {7, 10, -1}, {3, 10, -1}};
  for (const Row &r : rows) {
    std::vector<INT> few(12, 0x5A5A5A5A);
    EXPECT_EQ(Tavona_GetListOfResourceIds(en, r.type, few.data(), r.capacity), r.expect)
        << "type " << r.type << " capacity " << r.capacity;
    EXPECT_EQ(few[std::max(r.capacity, 1u)], 0x5A5A5A5A) << "type " << r.type;
  }
}

// The dialog shows the text, its scrambled form and the text restored,
// each as hexadecimal codes, after every change of key or text.
TEST(CryptDialog, ShowsScrambledLines) {
  tv::InitPortableGlobals();
  const std::wstring fox = L"The quick brown fox jumps over the lazy dog, again and again and again";
  for (const wchar_t *lang : {L"en", L"de"}) {
    HMODULE res = LanguageResources(lang);
    ASSERT_NE(res, nullptr);
    tv::g.resources = res;
    const int button = lang[0] == L'e' ? IDOK : IDCANCEL;  // one of each
    int rc = tvui::RunModal(Tavona_CryptDia, [&](tvui::Session &s) {
      HWND dlg = s.WaitAnyDialog();
      s.SetText(dlg, IDC_CRYPT_KEY, L"");
      s.SetText(dlg, IDC_CRYPT_TEXT, L"A\x20ac");
      EXPECT_EQ(s.Text(dlg, IDC_CRYPT_PLAIN_HEX), L"41 20AC ");
      EXPECT_EQ(s.Text(dlg, IDC_CRYPT_SCRAMBLED_HEX).substr(0, 3), L"B3 ");  // Crypt.KnownValues
      EXPECT_EQ(s.Text(dlg, IDC_CRYPT_RESTORED), L"A\x20ac");
      // 70 characters: the hexadecimal line stops at 65 codes.
      s.SetText(dlg, IDC_CRYPT_KEY, L"Geheim");
      s.SetText(dlg, IDC_CRYPT_TEXT, fox);
      EXPECT_EQ(s.Text(dlg, IDC_CRYPT_PLAIN_HEX).size(), 65u * 3);
      EXPECT_EQ(s.Text(dlg, IDC_CRYPT_RESTORED), fox);
      s.Screenshot(dlg, std::wstring(L"data_crypt_dialog_") + lang);
      s.Click(dlg, button);
      s.WaitClosed(dlg);
    });
    EXPECT_EQ(rc, button) << Narrow(lang);
    tv::g.resources = nullptr;
  }
}

}  // namespace
