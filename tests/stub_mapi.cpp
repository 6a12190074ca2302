// Stands in for MAPI32.DLL: MAPISendMail writes a transcript of the message
// it receives (one "field=value" line each, recipients and files in order)
// and answers what the test asked for (0 until told otherwise).
#include <windows.h>

#include <mapi.h>

#include <cstdio>
#include <cstring>

namespace {

char transcript[65536];
size_t used = 0;
ULONG answer = 0;
int calls = 0;

void Line(const char *field, const char *value) {
  int n = std::snprintf(transcript + used, sizeof transcript - used, "%s=%s\n", field,
                        value ? value : "(null)");
  if (n > 0) used += size_t(n) < sizeof transcript - used ? size_t(n) : sizeof transcript - used - 1;
}

void Number(const char *field, unsigned long long value) {
  char text[32];
  std::snprintf(text, sizeof text, "%llu", value);
  Line(field, text);
}

}  // namespace

extern "C" {

__declspec(dllexport) ULONG WINAPI MAPISendMail(LHANDLE session, ULONG_PTR ui, lpMapiMessage m,
                                                FLAGS flags, ULONG reserved) {
  ++calls;
  used = 0;
  transcript[0] = 0;
  Number("session", session);
  Line("owner", ui ? "window" : "none");
  Number("flags", flags);
  Number("reserved", reserved);
  Number("message.reserved", m->ulReserved);
  Line("subject", m->lpszSubject);
  Line("note", m->lpszNoteText);
  Line("type", m->lpszMessageType);
  Line("date", m->lpszDateReceived);
  Line("conversation", m->lpszConversationID);
  Number("message.flags", m->flFlags);
  if (m->lpOriginator) {
    Number("originator.class", m->lpOriginator->ulRecipClass);
    Line("originator.name", m->lpOriginator->lpszName);
  }
  for (ULONG i = 0; i < m->nRecipCount; ++i) {
    char field[32];
    std::snprintf(field, sizeof field, "recip.%lu", m->lpRecips[i].ulRecipClass);
    Line(field, m->lpRecips[i].lpszName);
  }
  for (ULONG i = 0; i < m->nFileCount; ++i) {
    Line("file", m->lpFiles[i].lpszPathName);
    Number("file.position", m->lpFiles[i].nPosition);
  }
  return answer;
}

__declspec(dllexport) void WINAPI StubMapi_SetAnswer(ULONG value) { answer = value; }

// The transcript of the last call; *count receives the number of calls.
__declspec(dllexport) const char *WINAPI StubMapi_Last(int *count) {
  *count = calls;
  return transcript;
}

}  // extern "C"
