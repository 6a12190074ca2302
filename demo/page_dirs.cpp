// Directories: a copy with include and exclude patterns and overwrite rules
// behind the progress indicator, its statistics dialog, a count of the
// source beforehand, and the files that the patterns let through.
#include <tavona/tavona32.h>

#include <string>

#include "pages.h"
#include "ui.h"

namespace {

enum : int {
  kSource = 100,
  kDestination,
  kInclude,
  kExclude,
  kRecurse,
  kNewer,
  kNoOverwrite,
  kDryRun,
  kCopy,
  kStatistic,
  kCount,
  kScan,
  kFiles,
};

bool Checked(HWND b) { return SendMessageW(b, BM_GETCHECK, 0, 0) == BST_CHECKED; }

std::wstring ProgramFolder() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  Tavona_StripFileName(path);
  return path;
}

class DirsPage : public demo::Page {
 public:
  explicit DirsPage(HWND parent) : Page(parent) {
    demo::Form f(*this, {L"Sources:", L"Destinations:", L"Include:", L"Exclude:", L"Rules:",
                         L"Result:", L"Counted:", L"Passing files:"});
    f.BeginGroup(L"Copy trees (Tavona_CopyDirectoriesWithProgInd, Tavona_DisplayCopyStatistic)");
    f.Row(L"Sources:");
    std::wstring program = ProgramFolder(), copy = demo::TempPath(L"tavona demo copy");
    source_ = f.Edit(kSource, (program + L"\\en|" + program + L"\\de").c_str(), 0);
    f.Row(L"Destinations:");
    destination_ = f.Edit(kDestination, (copy + L"\\en|" + copy + L"\\de").c_str(), 0);
    f.Row(L"");
    f.Note(L"several folders separated by '|' here (line feeds in the call), taken in pairs");
    f.Row(L"Include:");
    include_ = f.Edit(kInclude, L"*.*", demo::DuX(90));
    f.Note(L"patterns separated by ';' here (tabs in the call); A*Z matches ABC");
    f.Row(L"Exclude:");
    exclude_ = f.Edit(kExclude, L"*.pdb;*.tmp", demo::DuX(90));
    f.Row(L"Rules:");
    recurse_ = f.Check(kRecurse, L"Subfolders", true);
    newer_ = f.Check(kNewer, L"Only newer files", false);
    noOverwrite_ = f.Check(kNoOverwrite, L"Never overwrite", false);
    dryRun_ = f.Check(kDryRun, L"Dry run", false);
    f.Row(L"");
    f.Button(kCopy, L"Copy");
    f.Button(kStatistic, L"Statistics...");
    f.Row(L"Result:");
    result_ = f.ReadOnly(0);
    f.EndGroup();

    f.BeginGroup(L"Before copying (Tavona_DirectoriesStatistic, Tavona_ScanFilesToBox)");
    f.Row(L"");
    f.Button(kCount, L"Count sources");
    f.Button(kScan, L"List passing files");
    f.Row(L"Counted:");
    counted_ = f.ReadOnly(0);
    f.Row(L"Passing files:");
    files_ = f.List(kFiles, 6, LBS_SORT);
    f.EndGroup();
    f.Finish();
  }

 protected:
  void OnCommand(int id, int code) override {
    if (code != BN_CLICKED) return;
    if (id == kCopy) Copy();
    if (id == kStatistic) Tavona_DisplayCopyStatistic(&ctl_, hwnd());
    if (id == kCount) Count();
    if (id == kScan) Scan();
  }

 private:
  // The edits take ';' for the tab of a pattern list, '|' for the line feed
  // of a directory list.
  static std::wstring Patterns(HWND edit) {
    std::wstring s = demo::GetText(edit);
    for (wchar_t &c : s)
      if (c == L';') c = L'\t';
    return s;
  }
  static std::wstring Lines(HWND edit) {
    std::wstring s = demo::GetText(edit);
    for (wchar_t &c : s)
      if (c == L'|') c = L'\n';
    return s;
  }

  void Copy() {
    include_text_ = Patterns(include_);
    exclude_text_ = Patterns(exclude_);
    ctl_.include = include_text_.c_str();
    ctl_.exclude = exclude_text_.c_str();
    ctl_.referenceDate = nullptr;
    ctl_.flags = (Checked(recurse_) ? TAVONA_COPY_RECURSE : 0) |
                 (Checked(newer_) ? TAVONA_COPY_NEWER_ONLY : 0) |
                 (Checked(noOverwrite_) ? TAVONA_COPY_NO_OVERWRITE : 0) |
                 (Checked(dryRun_) ? TAVONA_COPY_DRY_RUN : 0);
    INT rc = Tavona_CopyDirectoriesWithProgInd(Lines(source_).c_str(),
                                               Lines(destination_).c_str(), &ctl_,
                                               L"Copying", 0);
    demo::SetText(result_, std::wstring(rc == 1 ? L"1 done: " : L"2 aborted: ") +
                               std::to_wstring(ctl_.filesCopied) + L" of " +
                               std::to_wstring(ctl_.filesFound) + L" files copied, " +
                               std::to_wstring(ctl_.directoriesCreated) + L" folders created");
  }

  void Count() {
    DIRSTATISTIC stat;
    INT rc = Tavona_DirectoriesStatistic(Lines(source_).c_str(), &stat, Checked(recurse_));
    demo::SetText(counted_, std::to_wstring(rc) + L": " + std::to_wstring(stat.files) +
                                L" files, " + std::to_wstring(stat.kilobytes) + L" KB and " +
                                std::to_wstring(stat.bytes) + L" bytes");
  }

  void Scan() {
    SendMessageW(files_, LB_RESETCONTENT, 0, 0);
    std::wstring first = Lines(source_);
    first = first.substr(0, first.find(L'\n'));
    Tavona_ScanFilesToBox(files_, first.c_str(), Patterns(include_).c_str(),
                          Patterns(exclude_).c_str(), 0);
  }

  HWND source_, destination_, include_, exclude_, recurse_, newer_, noOverwrite_, dryRun_;
  HWND result_, counted_, files_;
  COPYDIRCTL ctl_ = {};
  std::wstring include_text_, exclude_text_;
};

}  // namespace

HWND CreateDirsPage(HWND parent) { return (new DirsPage(parent))->hwnd(); }
