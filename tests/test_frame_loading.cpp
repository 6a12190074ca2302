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
struct Layout {
  explicit Layout(const Folders &resources) {
    static int serial = 0;
    dir = TempPath(L"tavona_load_") + std::to_wstring(GetCurrentProcessId()) + L"_" +
          std::to_wstring(++serial) + L"\\";
    CreateDirectoryW(dir.c_str(), nullptr);
    EXPECT_TRUE(CopyFileW((BinDir() + L"tavona32.dll").c_str(), Library().c_str(), FALSE));
    for (const auto &[folder, lang] : resources) {
      std::wstring target = folder.empty() ? dir : dir + folder + L"\\";
      CreateDirectoryW(target.c_str(), nullptr);
      EXPECT_TRUE(CopyFileW((BinDir() + lang + L"\\tavona32Res.dll").c_str(),
                            (target + L"tavona32Res.dll").c_str(), FALSE));
    }
  }
  ~Layout() { RemoveTree(dir.substr(0, dir.size() - 1)); }
  std::wstring Library() const { return dir + L"tavona32.dll"; }
  std::wstring dir;
};

// Loads the copy and unloads it again: the path of the resource library it
// chose, "" for none, "not loaded" when the copy did not load.
std::wstring LoadAndInspect(const std::wstring &library) {
  HMODULE lib = LoadLibraryW(library.c_str());
  if (!lib) return L"not loaded";
  auto getRes = reinterpret_cast<HMODULE(WINAPI *)()>(
      reinterpret_cast<void *>(GetProcAddress(lib, "Tavona_GetResourceModule")));
  wchar_t path[MAX_PATH] = {};
  if (HMODULE res = getRes ? getRes() : nullptr) GetModuleFileNameW(res, path, MAX_PATH);
  FreeLibrary(lib);
  return path;
}

void SetLanguage(const wchar_t *value) {
  // The library reads the variable through the shared C runtime.
  _wputenv((std::wstring(L"VEL_LANGUAGE=") + (value ? value : L"")).c_str());
}

struct LanguageFixture : ::testing::Test {
  void TearDown() override { SetLanguage(nullptr); }
};

// Which folder is chosen for each value of VEL_LANGUAGE and each layout.
TEST_F(LanguageFixture, ProbingOrder) {
  struct Case {
    const wchar_t *language;
    Folders layout;
    std::wstring expectedSuffix;  // relative to the folder of the copy
  } cases[] = {
      // the full locale name wins over the user-interface language, then
      // the language alone, then English
      {L"de-DE", {{L"de-DE", L"de"}, {L"de", L"en"}, {L"en", L"en"}}, L"de-DE\\tavona32Res.dll"},
      {L"de-DE", {{L"de", L"de"}, {L"en", L"en"}}, L"de\\tavona32Res.dll"},
      {L"de-DE", {{L"en", L"en"}}, L"en\\tavona32Res.dll"},
      // an unknown name's short name stays empty, so the second probe is
      // the library's own folder (a doubled backslash)
      {L"no_such_language", {{L"", L"de"}}, L"tavona32Res.dll"},
  };
  for (const Case &c : cases) {
    SetLanguage(c.language);
    Layout layout(c.layout);
    std::wstring path = LoadAndInspect(layout.Library());
    for (size_t at; (at = path.find(L"\\\\")) != std::wstring::npos;) path.erase(at, 1);
    EXPECT_EQ(path, layout.dir + c.expectedSuffix) << Narrow(c.language);
  }
}

// Without any language folder the library says so once and still loads.
TEST_F(LanguageFixture, MissingResourceLibraryShowsFatalBox) {
  SetLanguage(L"de-DE");
  Layout layout(Folders{});
  int boxes = 0;
  tvui::Script script = [&](tvui::Session &s) {
    tvui::Box box = s.WaitMessageBox(L"Fatal Error: File not found");
    ++boxes;
    EXPECT_EQ(box.text, layout.dir + L"en\\tavona32Res.dll");
    EXPECT_EQ(box.icon, UINT(MB_ICONHAND));
    EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
    s.Screenshot(box.hwnd, L"frame_fatal_box");
    s.Answer(box, IDOK);
  };
  EXPECT_EQ(tvui::RunModal([&] { return LoadAndInspect(layout.Library()); }, script), L"")
      << "loaded, without a resource library";
  EXPECT_EQ(boxes, 1);
}

}  // namespace
