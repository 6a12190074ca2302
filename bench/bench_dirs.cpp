// Directory trees: Tavona_CopyDirectories on 2,000 files of mixed sizes
// (about 54 MB, not the 200 MB of a real backup, so that a run stays short
// under wine) against a plain FindFirstFileW/CopyFileW walk, and the
// statistics of 20,000 files against a plain enumeration. The trees lie in
// the build folder beside bin\ and are removed afterwards.
#include <tavona/files.h>

#include <cstdio>
#include <string>
#include <vector>

#include "bench.h"

namespace {

using WStr = std::wstring;

void WriteFileOfSize(const WStr &path, DWORD size, const std::vector<char> &block) {
  HANDLE h = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  if (h == INVALID_HANDLE_VALUE) return;
  for (DWORD left = size; left > 0;) {
    DWORD n = left < block.size() ? left : static_cast<DWORD>(block.size()), w = 0;
    WriteFile(h, block.data(), n, &w, nullptr);
    left -= n;
  }
  CloseHandle(h);
}

// dirs x subdirs directories of perDir files each; every tenth file has
// big bytes, the others small ones that vary.
void MakeTree(const WStr &root, int dirs, int subdirs, int perDir, DWORD big, DWORD small) {
  std::vector<char> block(1 << 16, 'x');
  CreateDirectoryW(root.c_str(), nullptr);
  int n = 0;
  for (int d = 0; d < dirs; ++d) {
    WStr dir = root + L"\\d" + std::to_wstring(d);
    CreateDirectoryW(dir.c_str(), nullptr);
    for (int s = 0; s < subdirs; ++s) {
      WStr sub = dir + L"\\s" + std::to_wstring(s);
      CreateDirectoryW(sub.c_str(), nullptr);
      for (int f = 0; f < perDir; ++f, ++n) {
        DWORD size = n % 10 == 0 ? big : small ? (n * 7919u) % small + 100 : 0;
        WriteFileOfSize(sub + L"\\f" + std::to_wstring(f) + L".dat", size, block);
      }
    }
  }
}

bool IsDots(const wchar_t *name) {
  return name[0] == '.' && (!name[1] || (name[1] == '.' && !name[2]));
}

void RemoveTree(const WStr &dir) {
  WIN32_FIND_DATAW fd;
  HANDLE h = FindFirstFileW((dir + L"\\*").c_str(), &fd);
  if (h != INVALID_HANDLE_VALUE) {
    do {
      if (IsDots(fd.cFileName)) continue;
      WStr path = dir + L"\\" + fd.cFileName;
      if (fd.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
        RemoveTree(path);
      else
        DeleteFileW(path.c_str());
    } while (FindNextFileW(h, &fd));
    FindClose(h);
  }
  RemoveDirectoryW(dir.c_str());
}

// The plain copy: every file of every directory, replacing.
void PlainCopy(const WStr &src, const WStr &dst) {
  CreateDirectoryW(dst.c_str(), nullptr);
  WIN32_FIND_DATAW fd;
  HANDLE h = FindFirstFileW((src + L"\\*.*").c_str(), &fd);
  if (h == INVALID_HANDLE_VALUE) return;
  do {
    if (fd.cFileName[0] == '.') continue;
    WStr from = src + L"\\" + fd.cFileName, to = dst + L"\\" + fd.cFileName;
    if (fd.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
      PlainCopy(from, to);
    else
      CopyFileW(from.c_str(), to.c_str(), FALSE);
  } while (FindNextFileW(h, &fd));
  FindClose(h);
}

// The plain count: files and bytes.
void PlainCount(const WStr &dir, long long &files, long long &bytes) {
  WIN32_FIND_DATAW fd;
  HANDLE h = FindFirstFileW((dir + L"\\*.*").c_str(), &fd);
  if (h == INVALID_HANDLE_VALUE) return;
  do {
    if (fd.cFileName[0] == '.') continue;
    if (fd.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
      PlainCount(dir + L"\\" + fd.cFileName, files, bytes);
    } else {
      ++files;
      bytes += fd.nFileSizeLow;
    }
  } while (FindNextFileW(h, &fd));
  FindClose(h);
}

}  // namespace

int main() {
  wchar_t self[MAX_PATH];
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  WStr build = self;
  build = build.substr(0, build.rfind(L'\\'));      // bin
  build = build.substr(0, build.rfind(L'\\') + 1);  // the build folder
  const WStr copyRoot = build + L"bench_dirs_copy", countRoot = build + L"bench_dirs_count";
  RemoveTree(copyRoot);
  RemoveTree(countRoot);

  // 2,000 files: 200 of 200 KB and 1,800 of 100 B to 16 KB.
  CreateDirectoryW(copyRoot.c_str(), nullptr);
  const WStr src = copyRoot + L"\\src", lib = copyRoot + L"\\lib", ref = copyRoot + L"\\ref";
  MakeTree(src, 4, 5, 100, 200u << 10, 16u << 10);
  COPYDIRCTL c = {};
  c.flags = TAVONA_COPY_RECURSE;
  // The calibrating run of each side creates its copy, the timed rounds
  // replace it. The goal is a ratio of at most 1.1; like the other file
  // system measurements under wine it swings with the machine's load, so it
  // is reported, not enforced.
  bench::Compare(
      "Tavona_CopyDirectories 2,000 files",
      [&] { Tavona_CopyDirectories(src.c_str(), lib.c_str(), &c, nullptr, 0); },
      [&] { PlainCopy(src, ref); }, 0, 3);
  std::printf("copy tree: %d files, %d KB\n", c.filesCopied, c.kilobytesCopied);
  RemoveTree(copyRoot);

  // 20,000 files in 40 directories.
  MakeTree(countRoot, 8, 5, 500, 0, 0);
  DIRSTATISTIC stat;
  long long files = 0, bytes = 0;
  bench::Compare(
      "Tavona_DirectoriesStatistic 20,000 files",
      [&] { Tavona_DirectoriesStatistic(countRoot.c_str(), &stat, TRUE); },
      [&] {
        files = bytes = 0;
        PlainCount(countRoot, files, bytes);
      },
      0, 3);
  std::printf("statistics: %d files (plain count %lld)\n", stat.files, files);
  RemoveTree(countRoot);
  return bench::ExitCode();
}
