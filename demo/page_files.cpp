// Files: a typed path assembled and taken apart as the user types, a file
// loaded into a buffer, and the EXIF date of a picture.
#include <tavona/tavona32.h>

#include <commdlg.h>

#include <cstdio>
#include <string>
#include <vector>

#include "pages.h"
#include "ui.h"

namespace {

enum : int {
  kPath = 100,
  kName,
  kExt,
  kFull,
  kKeep,
  kFile,
  kQuiet,
  kLoad,
  kPicture,
  kExif,
  kChoose,
};

// A check box row turned into a push button (the form lays out check boxes
// only).
std::wstring Quoted(const std::wstring &s) { return L"\"" + s + L"\""; }

class FilesPage : public demo::Page {
 public:
  explicit FilesPage(HWND parent) : Page(parent) {
    demo::Form f(*this, {L"Path:", L"Name:", L"Extension:", L"Assembled:", L"Taken apart:",
                         L"Typed name:", L"In program dir:", L"Wildcard:", L"File:", L"Result:",
                         L"Content:", L"Picture:", L"Taken on:"});
    f.BeginGroup(L"Assemble and take apart (Tavona_Assemble_FileName, Tavona_Strip...)");
    f.Row(L"Path:");
    path_ = f.Edit(kPath, L"C:\\Data\\", 0);
    f.Row(L"Name:");
    name_ = f.Edit(kName, L"report", 0);
    f.Row(L"Extension:");
    ext_ = f.Edit(kExt, L".txt", demo::DuX(60));
    f.Note(L"a leading dot is dropped; empty gives a trailing dot");
    f.Row(L"Assembled:");
    assembled_ = f.ReadOnly(0);
    f.Row(L"Taken apart:");
    apart_ = f.ReadOnly(0);
    f.Row(L"Typed name:");
    full_ = f.Edit(kFull, L"sub\\notes.old\\readme", 0);
    f.Row(L"");
    keep_ = f.Check(kKeep, L"Keep absolute names (flag 1)", false);
    f.Row(L"In program dir:");
    moved_ = f.ReadOnly(0);
    f.Row(L"Wildcard:");
    wildcard_ = f.ReadOnly(0);
    f.EndGroup();

    f.BeginGroup(L"Load a file (Tavona_LoadFileToBuffer)");
    f.Row(L"File:");
    file_ = f.Edit(kFile, L"C:\\windows\\win.ini", 0);
    f.Row(L"");
    quiet_ = f.Check(kQuiet, L"Quiet (no message when it cannot be opened)", false);
    f.Button(kLoad, L"Load");
    f.Row(L"Result:");
    loaded_ = f.ReadOnly(0);
    f.Row(L"Content:");
    content_ = f.ReadOnly(0);
    f.EndGroup();

    f.BeginGroup(L"Exposure date (Tavona_GetExifExposureDateTimeFromJpegFile)");
    f.Row(L"Picture:");
    picture_ = f.Edit(kPicture, L"", 0);
    f.Row(L"");
    f.Button(kChoose, L"Choose...");
    f.Button(kExif, L"Read date");
    f.Row(L"Taken on:");
    taken_ = f.ReadOnly(0);
    f.EndGroup();
    f.Finish();

    ready_ = true;
    UpdateNames();
    Load(true);
  }

 protected:
  void OnCommand(int id, int code) override {
    if (!ready_) return;
    if (code == EN_CHANGE && (id == kPath || id == kName || id == kExt || id == kFull)) UpdateNames();
    if (code != BN_CLICKED) return;
    if (id == kKeep) UpdateNames();
    if (id == kLoad) Load(false);
    if (id == kExif) ReadDate();
    if (id == kChoose) Choose();
  }

 private:
  void UpdateNames() {
    std::wstring path = demo::GetText(path_), name = demo::GetText(name_),
                 ext = demo::GetText(ext_), full = demo::GetText(full_);
    wchar_t buf[MAX_PATH];
    if (Tavona_Assemble_FileName(buf, path.c_str(), name.c_str(), ext.c_str(), MAX_PATH) != 0) {
      demo::SetText(assembled_, L"-1: longer than 260 characters");
      demo::SetText(apart_, L"");
    } else {
      demo::SetText(assembled_, buf);
      wchar_t dir[MAX_PATH], bare[MAX_PATH], extension[MAX_PATH];
      lstrcpynW(dir, buf, MAX_PATH);
      lstrcpynW(bare, buf, MAX_PATH);
      Tavona_StripFileName(dir);
      Tavona_StripPath(bare);
      Tavona_GetExtension(buf, extension, MAX_PATH);
      std::wstring exists = Tavona_DoesFileExist(buf) ? L"  (exists)" : L"";
      demo::SetText(apart_, L"directory " + Quoted(dir) + L", name " + Quoted(bare) +
                                L", extension " + Quoted(extension) + exists);
    }

    bool keep = SendMessageW(keep_, BM_GETCHECK, 0, 0) == BST_CHECKED;
    lstrcpynW(buf, full.c_str(), MAX_PATH);
    int rc = Tavona_AddPath(buf, MAX_PATH, L"[MODULEPATH]", keep ? 1 : 0, nullptr);
    demo::SetText(moved_, rc == -1 ? std::wstring(L"-1: too long")
                                   : std::wstring(buf) + L"  (result " + std::to_wstring(rc) + L")");
    lstrcpynW(buf, full.c_str(), MAX_PATH);
    rc = Tavona_ConvertFilenameToWildcard(buf, MAX_PATH);
    demo::SetText(wildcard_, rc == -1 ? std::wstring(L"-1: too long") : std::wstring(buf));
  }

  // The first load, while the page is built, never shows a message.
  void Load(bool first) {
    std::wstring file = demo::GetText(file_);
    UINT quiet = first || SendMessageW(quiet_, BM_GETCHECK, 0, 0) == BST_CHECKED ? 1 : 0;
    // One byte more than shown, so that the text is always terminated.
    std::vector<char> buffer(201);
    int count = Tavona_LoadFileToBuffer(file.c_str(), buffer.data(), 201, quiet);
    ULONGLONG size = Tavona_GetFileSize64(file.c_str());
    if (count < 0) {
      demo::SetText(loaded_, L"-1: the file cannot be read");
      demo::SetText(content_, L"");
      return;
    }
    demo::SetText(loaded_, std::to_wstring(count) + L" bytes read of " + std::to_wstring(size));
    std::wstring shown;
    for (int i = 0; i < count && i < 200; ++i) {
      unsigned char c = static_cast<unsigned char>(buffer[i]);
      shown += c >= 32 && c < 127 ? static_cast<wchar_t>(c) : L'\x00B7';
    }
    demo::SetText(content_, shown);
  }

  void Choose() {
    wchar_t file[MAX_PATH] = L"";
    OPENFILENAMEW ofn = {};
    ofn.lStructSize = sizeof ofn;
    ofn.hwndOwner = hwnd();
    ofn.lpstrFilter = L"Pictures (*.jpg;*.jpeg;*.tif;*.tiff)\0*.jpg;*.jpeg;*.tif;*.tiff\0"
                      L"All files\0*.*\0";
    ofn.lpstrFile = file;
    ofn.nMaxFile = MAX_PATH;
    ofn.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY;
    if (!GetOpenFileNameW(&ofn)) return;
    demo::SetText(picture_, file);
    ReadDate();
  }

  void ReadDate() {
    std::wstring picture = demo::GetText(picture_);
    DateTimeStruct when = {};
    if (Tavona_GetExifExposureDateTimeFromJpegFile(picture.c_str(), &when) != 0) {
      demo::SetText(taken_, L"1: no EXIF exposure date");
      return;
    }
    wchar_t text[80];
    swprintf(text, 80, L"%04d-%02d-%02d %02d:%02d:%02d", when.year, when.month, when.day,
             when.hour, when.minute, when.second);
    demo::SetText(taken_, text);
  }

  HWND path_, name_, ext_, assembled_, apart_, full_, keep_, moved_, wildcard_;
  HWND file_, quiet_, loaded_, content_, picture_, taken_;
  bool ready_ = false;
};

}  // namespace

HWND CreateFilesPage(HWND parent) { return (new FilesPage(parent))->hwnd(); }
