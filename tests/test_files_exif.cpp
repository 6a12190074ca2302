// EXIF exposure dates of real pictures (the files_pictures fixture) through
// the own reader, and on Windows through the export (GDI+ first).
#include <gtest/gtest.h>
#include <tavona/files.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "datetest.h"
#include "files/exif.h"

namespace {

// The own reader on the bytes given, in an exact-size copy so that the
// sanitizer sees any read past them.
template <typename Bytes>
int OwnReader(const Bytes &bytes, DateTimeStruct *when) {
  std::unique_ptr<char[]> exact(new char[bytes.size()]);
  std::copy(bytes.begin(), bytes.end(), exact.get());
  tv::exif::MemorySource src(exact.get(), bytes.size());
  return tv::exif::ReadDateTimeOriginal(src, when);
}

TEST(FilesExif, RealPictures) {
  const char *dir = std::getenv("TAVONA_PICTURES");
  ASSERT_TRUE(dir) << "TAVONA_PICTURES is not set (files_pictures fixture)";
  const DateTimeStruct untouched = {-1, -1, -1, -1, -1, -1};
  struct Row { const char *file; int rc; DateTimeStruct expect; };  // day, month, year, h, m, s
  const Row rows[] = {
      {"full.jpg", 0, {4, 7, 2015, 18, 30, 5}}, {"full_le.jpg", 0, {4, 7, 2015, 18, 30, 5}},
      {"year.jpg", 0, {0, 0, 2015, 0, 0, 0}},   {"be.tif", 0, {3, 2, 2001, 4, 5, 6}},
      {"le.tif", 0, {3, 2, 2001, 4, 5, 6}},     {"none.jpg", 1, untouched},
      {"truncated.jpg", 1, untouched},          {"value_cut.jpg", 1, untouched},
      {"text.jpg", 1, untouched},               {"missing.jpg", 1, untouched},
  };
  for (const Row &r : rows) {
    std::string path = std::string(dir) + "/" + r.file;
    std::ifstream in(path, std::ios::binary);
    std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    DateTimeStruct own = untouched;
    EXPECT_EQ(OwnReader(bytes, &own), r.rc) << r.file << " (own reader)";
    EXPECT_EQ(Show(own), Show(r.expect)) << r.file << " (own reader)";
#ifdef _WIN32
    // The export agrees, whatever GDI+ did.
    DateTimeStruct got = untouched;
    std::wstring wide(path.begin(), path.end());
    EXPECT_EQ(Tavona_GetExifExposureDateTimeFromJpegFile(wide.c_str(), &got), r.rc) << r.file;
    EXPECT_EQ(Show(got), Show(r.expect)) << r.file;
#endif
  }
}

// The date text as the C runtime's scanf reads "%4d:%2d:%2d %2d:%2d:%2d".
TEST(FilesExif, DateText) {
  struct Row { const char *text; int fields; int expect[6]; };  // year, month, day, h, m, s
  const Row rows[] = {
      {"2015:07:04 18:30:05", 6, {2015, 7, 4, 18, 30, 5}}, {"2015", 1, {2015, 0, 0, 0, 0, 0}},
      {"2015:07:04    18:30", 5, {2015, 7, 4, 18, 30, 0}},
      {"2015:07:0418:30:05", 6, {2015, 7, 4, 18, 30, 5}},  // no blank needed
      {"20150704", 1, {2015, 0, 0, 0, 0, 0}},               // width 4, then no colon
      {"  2015: 7: 4", 3, {2015, 7, 4, 0, 0, 0}},            // blanks before numbers
      {"-015:+7:04", 3, {-15, 7, 4, 0, 0, 0}}, {"x2015", 0, {}},
  };
  for (const Row &r : rows) {
    int f[6] = {0, 0, 0, 0, 0, 0};
    EXPECT_EQ(tv::exif::ScanDateTime(r.text, f), r.fields) << "'" << r.text << "'";
    for (int i = 0; i < 6; ++i) EXPECT_EQ(f[i], r.expect[i]) << "'" << r.text << "' field " << i;
    DateTimeStruct d = {9, 9, 9, 9, 9, 9};
    EXPECT_EQ(tv::exif::DateTimeFromText(r.text, &d), r.fields ? 0 : 1) << "'" << r.text << "'";
    EXPECT_TRUE(r.fields || d.year == 9) << "untouched: '" << r.text << "'";
  }
}

}  // namespace
