// The fixed paper format table and the packing of a format's two
// dimensions into a box entry's item data. Portable.
#pragma once

#include <tavona/tvbase.h>

namespace tv::print {

struct PaperFormat {
  INT code;  // DMPAPER_...
  INT first, second;  // tenths of a millimetre
  const WCHAR *name;
};
extern const PaperFormat kPaperFormats[3];

// First dimension in the high 16 bits, second in the low 16 (tenths of a
// millimetre, each cut to 16 bits).
LPARAM PackPaper(INT first, INT second);
// The halves of packed item data in thousandths of a millimetre.
void UnpackPaper(LPARAM data, INT &first, INT &second);

// A registry value "first,second" (thousandths of a millimetre, read as
// _wtol reads them; a missing number is 0) as packed item data.
LPARAM PaperFromText(const WCHAR *text);

// Whether width x height (thousandths) is the packed format within one
// millimetre, in either orientation.
bool PaperMatches(LPARAM data, INT width, INT height);

}  // namespace tv::print
