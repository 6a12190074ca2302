// The tracing interface that the file routines announce their opens to.
// Channels are off unless named in the environment variable TAVONA_TRACE
// (comma-separated, case ignored, "*" for all); an enabled record goes to
// the debugger output and, when TAVONA_TRACE_FILE names a file, is appended
// there as one UTF-8 line. Both variables are read at every call.
#pragma once

#include <tavona/tvbase.h>

namespace vel {

class Tracer {
 public:
  static bool Enabled(const WCHAR *channel);
  // One event: its type and number, the source file and line that sent it
  // and a message. Nothing happens when the channel is off.
  static void Trace(const WCHAR *channel, int eventType, int eventNumber, const char *sourceFile,
                    int sourceLine, const WCHAR *message);
};

}  // namespace vel

namespace tv {

// The channel of the file routines, and their open event.
inline constexpr const WCHAR *kFileTraceChannel = TEXT("Vel.Framework.Print");

// Size of the longest trace line written (longer ones are cut).
inline constexpr int kTraceLineSize = 1024;

// The text of one record as it is written (without line end).
void FormatTraceLine(WCHAR *line, int size, const WCHAR *channel, int eventType, int eventNumber,
                     const char *sourceFile, int sourceLine, const WCHAR *message);

// UTF-16 to UTF-8; unpaired surrogates become U+FFFD. Writes at most size
// bytes, never a partial character, and returns the count written.
int ToUtf8(const WCHAR *text, int length, char *out, int size);

}  // namespace tv
