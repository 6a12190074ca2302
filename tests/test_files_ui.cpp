// The boxes a user sees when a file cannot be loaded or saved: the whole
// way from the file routine through the error reporter to a real message box.
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <functional>

#include "testutil.h"
#include "uidriver.h"

namespace {

TEST(FilesUi, LoadAndSaveFailuresShowTheirBoxes) {
  wchar_t tmp[MAX_PATH];
  GetTempPathW(MAX_PATH, tmp);
  const std::wstring missing = std::wstring(tmp) + L"tavona no such file.txt";
  const std::wstring held = std::wstring(tmp) + L"tavona held file.txt";
  DeleteFileW(missing.c_str());
  Tavona_SetErrorHandlingMode(0);
  HANDLE reader = CreateFileW(held.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              nullptr, CREATE_ALWAYS, 0, nullptr);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  char buf[8];
  struct Row { const wchar_t *shot; std::function<int()> call; const std::wstring &name; };
  const Row rows[] = {
      {L"files_load", [&] { return Tavona_LoadFileToBuffer(missing.c_str(), buf, 8, 0); }, missing},
      {L"files_save", [&] { return Tavona_SaveBufferToFile(held.c_str(), "x", 1, 0); }, held},
  };
  for (const Row &r : rows) {
    int rc = tvui::RunModal(r.call, [&](tvui::Session &s) {
      tvui::Box box = s.WaitMessageBox(L"Tavona - Error");
      EXPECT_NE(box.text.find(r.name), std::wstring::npos) << Narrow(r.shot) << ": " << Narrow(box.text);
      EXPECT_EQ(box.icon, UINT(MB_ICONHAND)) << Narrow(r.shot);
      s.Screenshot(box.hwnd, r.shot);
      s.Answer(box, IDOK);
    });
    EXPECT_EQ(rc, -1) << Narrow(r.shot);
  }
  CloseHandle(reader);
  DeleteFileW(held.c_str());
}

}  // namespace
