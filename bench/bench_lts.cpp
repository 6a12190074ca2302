// LTS_TranslateDialog with the catalog provider on a window of 100 static
// and button controls, against setting the same translated texts with
// SetWindowTextW directly (the catalog translates both ways, so every call
// turns each text into the other language, as the reference does); then 10,000 controls against 100 controls a
// hundred times, which stays near 1 while the work is linear.
#include <tavona/translation.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "bench.h"

namespace {

struct Window {
  HWND parent = nullptr;
  std::vector<HWND> children;
  explicit Window(int controls) {
    parent = CreateWindowExW(0, L"STATIC", L"Caption", WS_POPUP, 0, 0, 400, 300, nullptr, nullptr,
                             nullptr, nullptr);
    for (int i = 0; i < controls; ++i) {
      std::wstring text = L"Text " + std::to_wstring(i % 100);
      children.push_back(CreateWindowExW(0, i % 2 ? L"BUTTON" : L"STATIC", text.c_str(), WS_CHILD,
                                         0, 0, 50, 10, parent, nullptr, nullptr, nullptr));
    }
  }
  ~Window() { DestroyWindow(parent); }
};

}  // namespace

int main() {
  wchar_t temp[MAX_PATH];
  GetTempPathW(MAX_PATH, temp);
  std::wstring po = std::wstring(temp) + L"bench_lts_de.po";
  {
    std::ofstream out(po.c_str(), std::ios::binary);
    out << "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n";
    auto entry = [&](const std::string &id, const std::string &str) {
      out << "\nmsgctxt \"BENCH|DIALOGS\"\nmsgid \"" << id << "\"\nmsgstr \"" << str << "\"\n";
    };
    entry("Caption", "Titel");
    entry("Titel", "Caption");
    for (int i = 0; i < 100; ++i) {
      std::string en = "Text " + std::to_string(i), de = "\xC3\x9C" "bersetzung " + std::to_string(i);
      entry(en, de);
      entry(de, en);
    }
  }
  if (Tavona_LtsLoadCatalog(po.c_str()) != 202) {
    std::printf("bench_lts: the catalog did not load\n");
    return 1;
  }
  std::vector<std::wstring> texts[2];
  for (int i = 0; i < 100; ++i) {
    texts[0].push_back(L"Text " + std::to_wstring(i));
    texts[1].push_back(L"\u00DCbersetzung " + std::to_wstring(i));
  }
  const wchar_t *captions[2] = {L"Caption", L"Titel"};
  int shown = 0;

  Window small(100);
  bench::Compare(
      "LTS_TranslateDialog, 100 controls, catalog provider",
      [&] { LTS_TranslateDialog(small.parent, L"BENCH", nullptr); },
      [&] {
        shown ^= 1;
        SetWindowTextW(small.parent, captions[shown]);
        for (size_t i = 0; i < small.children.size(); ++i)
          SetWindowTextW(small.children[i], texts[shown][i % 100].c_str());
      });

  Window large(10000);
  bench::Compare(
      "LTS_TranslateDialog, 10,000 controls / 100 controls x 100",
      [&] { LTS_TranslateDialog(large.parent, L"BENCH", nullptr); },
      [&] {
        for (int r = 0; r < 100; ++r) LTS_TranslateDialog(small.parent, L"BENCH", nullptr);
      },
      3.0);
  Tavona_LtsRemoveProvider();
  DeleteFileW(po.c_str());
  return bench::ExitCode();
}
