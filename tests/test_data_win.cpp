// Scrambled profile values, temporary names and resource IDs against the
// real system and resource library, and the scrambling test dialog.
#include <gtest/gtest.h>
#include <tavona/text.h>

#include <cstdio>

#include "frame/globals.h"
#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

HMODULE LoadResources(const wchar_t *lang) {
  return LoadLibraryExW((BinDir() + lang + L"\\tavona32Res.dll").c_str(), nullptr,
                        LOAD_LIBRARY_AS_DATAFILE);
}

std::wstring TempDir() {
  wchar_t dir[MAX_PATH];
  GetTempPathW(MAX_PATH, dir);
  return dir;
}

TEST(CryptedProfile, RoundTripAndDefaults) {
  std::wstring ini = TempDir() + L"tavona_crypt_test.ini";
  // Scrambled characters go beyond any code page: the file must be UTF-16.
  if (FILE *f = _wfopen(ini.c_str(), L"wb")) {
    std::fwrite("\xFF\xFE", 1, 2, f);
    std::fclose(f);
  }
  // Escaped, a scrambled character takes 1 to 4: 498 always fit the 2000.
  const std::wstring longest(498, L'x');
  for (const wchar_t *value : {L"secret", L"with \"quotes\" and  spaces ", L"\x00e4\x20ac\x4e2d",
                               L"", longest.c_str()}) {
    ASSERT_NE(Tavona_WriteCryptedProfileString(L"key", ini.c_str(), L"S", L"v", value), FALSE);
    wchar_t raw[4000];
    GetPrivateProfileStringW(L"S", L"v", L"<missing>", raw, 4000, ini.c_str());
    std::wstring stored = raw;
    if (*value) {  // neither the text nor a blank or quote to be seen
      EXPECT_EQ(stored.find(L"secret"), stored.npos) << Narrow(raw);
      EXPECT_EQ(stored.find_first_of(L" \""), stored.npos) << Narrow(raw);
    }
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

TEST(TemporaryFileName, CreatesAUniqueFile) {
  const std::wstring dir = TempDir();
  wchar_t a[MAX_PATH], small[8] = L"zzzzzzz";
  CreateTemporaryFileName(a, MAX_PATH, L"TVT");
  EXPECT_EQ(std::wstring(a).rfind(dir + L"TVT", 0), 0u) << Narrow(a);
  EXPECT_TRUE(DeleteFileW(a)) << Narrow(a) << " was made";
  // A name that does not fit leaves the buffer empty (the file is made).
  CreateTemporaryFileName(small, 8, L"TVS");
  EXPECT_STREQ(small, L"");
  WIN32_FIND_DATAW found;  // the files the short buffer could not name
  HANDLE find = FindFirstFileW((dir + L"TVS*.tmp").c_str(), &found);
  for (BOOL more = find != INVALID_HANDLE_VALUE; more; more = FindNextFileW(find, &found))
    DeleteFileW((dir + found.cFileName).c_str());
  if (find != INVALID_HANDLE_VALUE) FindClose(find);
}

TEST(ResourceIds, OfTheResourceLibrary) {
  HMODULE en = LoadResources(L"en");
  ASSERT_NE(en, nullptr);
  std::vector<INT> ids(5000, 0x5A5A5A5A);
  int strings = Tavona_GetListOfResourceIds(en, 6, ids.data(), 4990);
  ASSERT_GT(strings, 10);
  for (int i = 0; i < strings; ++i) {
    wchar_t text[8];
    EXPECT_GT(LoadStringW(en, ids[i], text, 8), 0) << "string " << ids[i];
  }
  EXPECT_EQ(ids[strings], 0x5A5A5A5A);
  int dialogs = Tavona_GetListOfResourceIds(en, 5, ids.data(), 4990);
  EXPECT_NE(std::find(ids.begin(), ids.begin() + dialogs, IDD_CRYPT_TEST), ids.begin() + dialogs);
  EXPECT_EQ(Tavona_GetListOfResourceIds(en, 5, ids.data(), 2), dialogs > 1 ? 1 : dialogs);

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
  FreeLibrary(en);
}

// The dialog shows the text, its scrambled form and the text restored,
// each as hexadecimal codes, after every change of key or text.
TEST(CryptDialog, ShowsScrambledLines) {
  tv::InitPortableGlobals();
  const std::wstring fox = L"The quick brown fox jumps over the lazy dog, again and again and again";
  for (const wchar_t *lang : {L"en", L"de"}) {
    HMODULE res = LoadResources(lang);
    ASSERT_NE(res, nullptr);
    tv::g.resources = res;
    const int button = lang[0] == L'e' ? IDOK : IDCANCEL;  // one of each
    int rc = tvui::RunModal(Tavona_CryptDia, [&](tvui::Session &s) {
      HWND dlg = s.WaitAnyDialog();
      s.SetText(dlg, IDC_CRYPT_KEY, L"");
      s.SetText(dlg, IDC_CRYPT_TEXT, L"A\x20ac");
      wchar_t scrambled[] = L"A\x20ac";
      Tavona_Crypt(L"", scrambled);
      EXPECT_EQ(s.Text(dlg, IDC_CRYPT_PLAIN_HEX), L"41 20AC ");
      EXPECT_EQ(s.Text(dlg, IDC_CRYPT_SCRAMBLED), scrambled);
      EXPECT_EQ(s.Text(dlg, IDC_CRYPT_SCRAMBLED_HEX).substr(0, 3), L"B3 ");
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
    FreeLibrary(res);
  }
}

}  // namespace
