// Choosing the resource library at load: copies of tavona32.dll are loaded
// at run time from folders laid out for each case.
#include "testutil.h"
#include "uidriver.h"

#include <gtest/gtest.h>

#include <stdlib.h>

#include <string>
#include <vector>

namespace {

// (language folder, language of the resource library copied into it)
using Folders = std::vector<std::pair<std::wstring, std::wstring>>;

// A fresh folder under the temporary folder holding a copy of the library
// and resource libraries in the given language folders ("" = beside it).
class Layout {
 public:
  explicit Layout(const Folders &resources) {
    wchar_t tmp[MAX_PATH];
    GetTempPathW(MAX_PATH, tmp);
    static int serial = 0;
    dir_ = std::wstring(tmp) + L"tavona_load_" + std::to_wstring(GetCurrentProcessId()) + L"_" +
           std::to_wstring(++serial) + L"\\";
    CreateDirectoryW(dir_.c_str(), nullptr);
    EXPECT_TRUE(CopyFileW((BinDir() + L"tavona32.dll").c_str(), (dir_ + L"tavona32.dll").c_str(), FALSE));
    // resources: (folder name, language of the copy: en or de)
    for (const auto &[folder, lang] : resources) {
      std::wstring target = dir_;
      if (!folder.empty()) {
        target += folder + L"\\";
        CreateDirectoryW(target.c_str(), nullptr);
      }
      EXPECT_TRUE(CopyFileW((BinDir() + lang + L"\\tavona32Res.dll").c_str(),
                            (target + L"tavona32Res.dll").c_str(), FALSE));
    }
  }
  ~Layout() {
    // Best effort; the folders live in the test prefix's temporary folder.
    WIN32_FIND_DATAW fd;
    std::vector<std::wstring> dirs = {dir_};
    for (size_t i = 0; i < dirs.size(); ++i) {
      HANDLE h = FindFirstFileW((dirs[i] + L"*").c_str(), &fd);
      if (h == INVALID_HANDLE_VALUE) continue;
      do {
        std::wstring name = fd.cFileName;
        if (name == L"." || name == L"..") continue;
        if (fd.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
          dirs.push_back(dirs[i] + name + L"\\");
        else
          DeleteFileW((dirs[i] + name).c_str());
      } while (FindNextFileW(h, &fd));
      FindClose(h);
    }
    for (size_t i = dirs.size(); i-- > 0;) RemoveDirectoryW(dirs[i].c_str());
  }
  const std::wstring &Dir() const { return dir_; }
  std::wstring Library() const { return dir_ + L"tavona32.dll"; }

 private:
  std::wstring dir_;
};

struct Loaded {
  HMODULE library = nullptr;
  std::wstring resourcePath;  // empty when no resource library was loaded
  std::wstring caption;       // string 1500 of it
};

// Loads the copy, reads what it chose, and unloads it again.
Loaded LoadAndInspect(const std::wstring &library) {
  Loaded r;
  r.library = LoadLibraryW(library.c_str());
  if (!r.library) return r;
  auto getRes = reinterpret_cast<HMODULE(WINAPI *)()>(
      reinterpret_cast<void *>(GetProcAddress(r.library, "Tavona_GetResourceModule")));
  if (HMODULE res = getRes ? getRes() : nullptr) {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(res, path, MAX_PATH);
    r.resourcePath = path;
    wchar_t caption[100] = {};
    LoadStringW(res, 1500, caption, 100);
    r.caption = caption;
  }
  FreeLibrary(r.library);
  return r;
}

void SetLanguage(const wchar_t *value) {
  // The library reads the variable through the shared C runtime.
  std::wstring assignment = std::wstring(L"VEL_LANGUAGE=") + (value ? value : L"");
  _wputenv(assignment.c_str());
}

struct LanguageFixture : ::testing::Test {
  void TearDown() override { SetLanguage(nullptr); }
};

std::string Utf8(const std::wstring &s) { return std::string(s.begin(), s.end()); }

// Which folder is chosen for each value of VEL_LANGUAGE and each layout.
TEST_F(LanguageFixture, ProbingOrder) {
  struct Case {
    const wchar_t *language;
    Folders layout;
    std::wstring expectedSuffix;  // relative to the folder of the copy
    const wchar_t *expectedLang;  // which resource library that is
  } cases[] = {
      // the full locale name wins over the user-interface language
      {L"de-DE", {{L"de-DE", L"de"}, {L"de", L"en"}, {L"en", L"en"}}, L"de-DE\\tavona32Res.dll", L"de"},
      // then the language alone
      {L"de-DE", {{L"de", L"de"}, {L"en", L"en"}}, L"de\\tavona32Res.dll", L"de"},
      // then English
      {L"de-DE", {{L"en", L"en"}}, L"en\\tavona32Res.dll", L"en"},
      // an unknown name falls back to "en"
      {L"no_such_language", {{L"en", L"en"}, {L"de", L"de"}}, L"en\\tavona32Res.dll", L"en"},
  };
  for (const Case &c : cases) {
    SetLanguage(c.language);
    Layout layout(c.layout);
    Loaded r = LoadAndInspect(layout.Library());
    ASSERT_NE(r.library, nullptr) << Utf8(c.language);
    EXPECT_EQ(r.resourcePath, layout.Dir() + c.expectedSuffix) << Utf8(c.language);
    wchar_t want[100] = {};
    LoadStringW(LoadLibraryExW((BinDir() + c.expectedLang + L"\\tavona32Res.dll").c_str(), nullptr,
                               LOAD_LIBRARY_AS_DATAFILE),
                1500, want, 100);
    EXPECT_EQ(r.caption, want) << Utf8(c.language);
  }
}

// For an unknown language the short name stays empty, so the second probe is
// the library's own folder with a doubled backslash.
TEST_F(LanguageFixture, UnknownLanguageProbesOwnFolder) {
  SetLanguage(L"no_such_language");
  Layout layout(Folders{{L"", L"de"}});
  Loaded r = LoadAndInspect(layout.Library());
  ASSERT_NE(r.library, nullptr);
  ASSERT_FALSE(r.resourcePath.empty());
  std::wstring tail = r.resourcePath.substr(r.resourcePath.size() - 16);
  EXPECT_EQ(tail, L"\\tavona32Res.dll");
  EXPECT_EQ(r.resourcePath.find(L"\\en\\"), std::wstring::npos) << Utf8(r.resourcePath);
}

// Without any language folder the library says so once and still loads.
TEST_F(LanguageFixture, MissingResourceLibraryShowsFatalBox) {
  SetLanguage(L"de-DE");
  Layout layout(Folders{});
  std::wstring expectedPath = layout.Dir() + L"en\\tavona32Res.dll";
  int boxes = 0;
  Loaded r = tvui::RunModal([&] { return LoadAndInspect(layout.Library()); },
                            [&](tvui::Session &s) {
                              tvui::Box box = s.WaitMessageBox(L"Fatal Error: File not found");
                              ++boxes;
                              EXPECT_EQ(box.text, expectedPath);
                              EXPECT_EQ(box.icon, UINT(MB_ICONHAND));
                              EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
                              s.Screenshot(box.hwnd, L"frame_fatal_box");
                              s.Answer(box, IDOK);
                            });
  EXPECT_EQ(boxes, 1);
  EXPECT_NE(r.library, nullptr);
  EXPECT_TRUE(r.resourcePath.empty());
}

}  // namespace
