// Whole-file sizes, loads and saves. Every open is announced to the tracer
// first, so that support staff can see which files an application touches.
#include <tavona/files.h>

#include "files/tracer.h"
#include "frame/handles.h"
#include "frame/report.h"
#include "base/wstr.h"
#include "tvres.h"

namespace {

constexpr int kOpenMessageSize = 280;
// ReadFile and WriteFile take 32-bit counts; larger transfers go in pieces.
constexpr DWORD kChunk = 1u << 30;

enum class Access { Read, Write };

// Traces the open (the message is composed even when tracing is off) and
// opens the file.
tv::unique_hfile Open(const WCHAR *name, Access access, int line) {
  WCHAR message[kOpenMessageSize];
  message[0] = 0;
  tv::Appender text(message, kOpenMessageSize);
  text.Append(TEXT("Open File: "));
  text.Append(name);
  if (vel::Tracer::Enabled(tv::kFileTraceChannel))
    vel::Tracer::Trace(tv::kFileTraceChannel, 3, 1021, "file", line, message);
  if (access == Access::Read)
    return tv::unique_hfile(CreateFileW(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
  return tv::unique_hfile(CreateFileW(name, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool Size(HANDLE file, ULONGLONG *size) {
  LARGE_INTEGER li;
  if (!GetFileSizeEx(file, &li)) return false;
  *size = static_cast<ULONGLONG>(li.QuadPart);
  return true;
}

// Read errors are not checked: what arrived is what the caller gets.
void ReadAll(HANDLE file, BYTE *dst, ULONGLONG count) {
  while (count > 0) {
    DWORD piece = count > kChunk ? kChunk : static_cast<DWORD>(count);
    DWORD got = 0;
    if (!ReadFile(file, dst, piece, &got, nullptr) || got == 0) return;
    dst += got;
    count -= got;
  }
}

bool WriteAll(HANDLE file, const BYTE *src, ULONGLONG count) {
  do {
    DWORD piece = count > kChunk ? kChunk : static_cast<DWORD>(count);
    DWORD written = 0;
    if (!WriteFile(file, src, piece, &written, nullptr)) return false;
    // A short write is not treated as a failure.
    if (written == 0 && piece > 0) return true;
    src += written;
    count -= written;
  } while (count > 0);
  return true;
}

ULONGLONG SizeOf(const WCHAR *name, int line) {
  if (!name) return 0;
  tv::unique_hfile file = Open(name, Access::Read, line);
  ULONGLONG size = 0;
  if (!file || !Size(file.get(), &size)) return 0;
  return size;
}

}  // namespace

DWORD WINAPI Tavona_GetFileSize(const WCHAR *name) {
  return static_cast<DWORD>(SizeOf(name, __LINE__));
}

ULONGLONG WINAPI Tavona_GetFileSize64(const WCHAR *name) { return SizeOf(name, __LINE__); }

INT WINAPI Tavona_LoadFileToBuffer(const WCHAR *name, void *buffer, INT bufferSize, UINT quiet) {
  if (!buffer || bufferSize < 2 || tv::IsBlank(name)) return -1;
  BYTE *bytes = static_cast<BYTE *>(buffer);
  bytes[0] = 0;
  tv::unique_hfile file = Open(name, Access::Read, __LINE__);
  if (!file) {
    if (!(quiet & 1)) tv::ReportError(IDS_ERR_FILE_OPEN, name);
    return -1;
  }
  ULONGLONG size;
  if (!Size(file.get(), &size)) return -1;
  // The low 32 bits, compared as a signed number: a file of 4 GiB + 10
  // bytes reads 10. Where they read as negative the file is surely longer
  // than the buffer, which is then filled.
  INT low = static_cast<INT>(static_cast<DWORD>(size));
  INT count = low < 0 || low > bufferSize ? bufferSize : low;
  ReadAll(file.get(), bytes, static_cast<DWORD>(count));
  if (count < bufferSize) bytes[count] = 0;
  return count;
}

HGLOBAL WINAPI Tavona_LoadFileToMemory(const WCHAR *name, UINT quiet) {
  if (tv::IsBlank(name)) return nullptr;
  tv::unique_hfile file = Open(name, Access::Read, __LINE__);
  if (!file) {
    if (!(quiet & 1)) tv::ReportError(IDS_ERR_FILE_OPEN, name);
    return nullptr;
  }
  ULONGLONG size;
  if (!Size(file.get(), &size)) return nullptr;
  tv::unique_hglobal block;
  if (size < static_cast<SIZE_T>(-1))
    block.reset(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, static_cast<SIZE_T>(size + 1)));
  if (!block) {
    tv::ReportError(IDS_ERR_OUT_OF_MEMORY);
    return nullptr;
  }
  {
    tv::global_lock<BYTE> data(block.get());
    if (!data.get()) {
      tv::ReportError(IDS_ERR_OUT_OF_MEMORY);
      return nullptr;
    }
    ReadAll(file.get(), data.get(), size);
  }
  return block.release();
}

INT WINAPI Tavona_SaveBufferToFile(const WCHAR *name, const void *buffer, DWORD count,
                                   UINT quiet) {
  // Nothing to do is not an error.
  if (!buffer || tv::IsBlank(name)) return 0;
  tv::unique_hfile file = Open(name, Access::Write, __LINE__);
  if (!file) {
    if (!(quiet & 1)) tv::ReportError(IDS_ERR_FILE_SAVE, name);
    return -1;
  }
  return WriteAll(file.get(), static_cast<const BYTE *>(buffer), count) ? 0 : -1;
}

INT WINAPI Tavona_SaveMemoryToFile(HGLOBAL memory, const WCHAR *name, UINT quiet) {
  if (!memory || tv::IsBlank(name)) return 0;
  tv::unique_hfile file = Open(name, Access::Write, __LINE__);
  if (!file) {
    if (!(quiet & 1)) tv::ReportError(IDS_ERR_FILE_SAVE, name);
    return -1;
  }
  tv::global_lock<BYTE> data(memory);
  if (!data) return -1;
  return WriteAll(file.get(), data.get(), data.size()) ? 0 : -1;
}
