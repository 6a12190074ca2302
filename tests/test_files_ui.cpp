// The box a user sees when a file cannot be loaded: the whole way from the
// file routine through the error reporter to a real message box (saving
// reports through the same reporter: test_files_io).
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include "testutil.h"
#include "uidriver.h"

namespace {

TEST(FilesUi, LoadFailureShowsItsBox) {
  const std::wstring missing = TempPath(L"tavona no such file.txt");
  DeleteFileW(missing.c_str());
  Tavona_SetErrorHandlingMode(0);
  char buf[8];
  int rc = tvui::RunModal([&] { return Tavona_LoadFileToBuffer(missing.c_str(), buf, 8, 0); },
                          [&](tvui::Session &s) {
    tvui::Box box = s.WaitMessageBox(L"Tavona - Error");
    EXPECT_NE(box.text.find(missing), std::wstring::npos) << Narrow(box.text);
    EXPECT_EQ(box.icon, UINT(MB_ICONHAND));
    s.Screenshot(box.hwnd, L"files_load");
    s.Answer(box, IDOK);
  });
  EXPECT_EQ(rc, -1);
}

}  // namespace
