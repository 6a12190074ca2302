// The assembly and strip routines on random names and sizes: no access
// beyond the sizes given, and the results keep their rules.
#include <tavona/files.h>

#include <cstring>

#include "fuzzutil.h"

namespace {

const char16_t kAlphabet[] = u"ab.\\/:  .x\\";

bool IsSep(WCHAR c) { return c == '\\' || c == '/'; }

// An exact-size copy of text in a buffer of size units (at least the text).
fuzz::Exact<WCHAR> *Copy(const fuzz::WStr &text, size_t size) {
  auto *b = new fuzz::Exact<WCHAR>(size);
  std::memcpy(b->get(), text.c_str(), (text.size() + 1) * sizeof(WCHAR));
  return b;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  uint8_t choice = in.Byte();
  int dstSize = in.Byte() | (in.Byte() & 1) << 8;  // 0 to 511
  uint8_t nulls = in.Byte();
  fuzz::WStr path = in.Text(kAlphabet, 300), name = in.Text(kAlphabet, 300),
             ext = in.Text(kAlphabet, 300);

  fuzz::Exact<WCHAR> p(path.size() + 1), n(name.size() + 1), e(ext.size() + 1);
  std::memcpy(p.get(), path.c_str(), (path.size() + 1) * sizeof(WCHAR));
  std::memcpy(n.get(), name.c_str(), (name.size() + 1) * sizeof(WCHAR));
  std::memcpy(e.get(), ext.c_str(), (ext.size() + 1) * sizeof(WCHAR));

  switch (choice % 6) {
    case 0: {
      fuzz::Exact<WCHAR> dst(dstSize ? dstSize : 1);
      int rc = Tavona_Assemble_FileName(dst.get(), nulls & 1 ? nullptr : p.get(),
                                        nulls & 2 ? nullptr : n.get(), nulls & 4 ? nullptr : e.get(),
                                        dstSize);
      if (rc == 0 && dstSize > 0) {
        size_t len = 0;
        while (dst.get()[len]) ++len;
        fuzz::Check(len < 260 && static_cast<int>(len) < dstSize, "assembled length");
      }
      break;
    }
    case 1: {  // in place, destination and name one buffer
      size_t room = name.size() + 1 + static_cast<size_t>(dstSize);
      fuzz::Exact<WCHAR> *b = Copy(name, room);
      Tavona_AddPath(b->get(), static_cast<int>(room), p.get(), nulls & 1, nullptr);
      delete b;
      break;
    }
    case 2: {
      fuzz::Exact<WCHAR> dst(dstSize ? dstSize : 1);
      Tavona_GetExtension(n.get(), dst.get(), dstSize);
      Tavona_CheckExtension(n.get(), e.get());
      Tavona_GetFileNameDisplay(dst.get(), dstSize, n.get(), 0, 0);
      break;
    }
    case 3: {
      Tavona_StripFileName(n.get());
      size_t len = 0;
      while (n.get()[len]) ++len;
      fuzz::Check(len <= name.size(), "strip file name only shortens");
      Tavona_StripPath(p.get());
      for (WCHAR *q = p.get(); *q; ++q) fuzz::Check(!IsSep(*q) && *q != ':', "path stripped");
      break;
    }
    case 4: {
      Tavona_StripTrailingSlashes(n.get());
      size_t len = 0;
      while (n.get()[len]) ++len;
      fuzz::Check(len == 0 || !IsSep(n.get()[len - 1]), "slashes");
      WCHAR *dot = Tavona_StripExtension(e.get());
      fuzz::Check(!dot || *dot == 0, "extension cut");
      break;
    }
    case 5: {
      size_t room = name.size() + 1 + static_cast<size_t>(dstSize);
      fuzz::Exact<WCHAR> *b = Copy(name, room);
      Tavona_ConvertFilenameToWildcard(b->get(), static_cast<int>(room));
      delete b;
      Tavona_IsFileNamePure(n.get());
      Tavona_IsFilePathAbsolute(n.get());
      break;
    }
  }
  return 0;
}
