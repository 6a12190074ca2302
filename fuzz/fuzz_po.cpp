// The PO reader and the log reader on any bytes: no crash, no read past the
// input, a problem always has a line within the input; a template the
// exporter writes from a log reads back without a syntax error.
#include "translation/catalog.h"

#include "fuzzutil.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size < 1) return 0;
  bool asLog = data[0] & 1;
  fuzz::Exact<unsigned char> bytes(size - 1);
  for (size_t i = 1; i < size; ++i) bytes.get()[i - 1] = data[i];
  size_t lines = 1;
  for (size_t i = 0; i + 1 < size; ++i) lines += bytes.get()[i] == '\n';

  if (!asLog) {
    tv::Catalog catalog;
    tv::CatalogProblem problem;
    if (!catalog.Load(bytes.get(), size - 1, problem)) {
      fuzz::Check(problem.line >= 1 && static_cast<size_t>(problem.line) <= lines, "line in range");
    }
    catalog.Find(u"G", u"S", u"K");
    return 0;
  }
  tv::Growing<char> pot;
  tv::CatalogProblem problem;
  int entries = tv::ExportCatalog(bytes.get(), size - 1, u"GENERAL|TAVONADLL", pot, problem);
  if (entries < 0) {
    fuzz::Check(problem.line >= 1 && static_cast<size_t>(problem.line) <= size, "log line in range");
    return 0;
  }
  tv::Catalog back;
  bool ok = back.Load(reinterpret_cast<const unsigned char *>(pot.Data()), pot.Size(), problem);
  // Two texts under one explicit key are the only way a template of ours
  // cannot be read back.
  fuzz::Check(ok || problem.error == tv::CatalogError::kDuplicate, "template reads back");
  return 0;
}
