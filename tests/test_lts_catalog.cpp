// The portable side of assistance and the gettext bridge: the line list,
// the log headers, log -> PO template, and the PO catalog with its errors.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/host/hostplat.h"
#include "testutil.h"
#include "translation/catalog.h"
#include "tvres.h"

namespace {

using Bytes = std::string;

// A log as assistance writes it: single-byte separators and headers,
// UTF-16LE lines.
struct Log {
  Bytes bytes;
  Log &Header(const char *h) {
    if (!bytes.empty()) bytes += "\r\n\r\n";
    bytes += std::string(h) + "\r\n";
    return *this;
  }
  Log &Line(const WStr &s) {
    for (WCHAR c : s + u"\r\n") bytes += {char(c & 0xFF), char(c >> 8)};
    return *this;
  }
};

std::string Export(const Bytes &log, const WCHAR *modules, tv::CatalogProblem &problem,
                   int &entries) {
  tv::Growing<char> out;
  entries = tv::ExportCatalog(reinterpret_cast<const unsigned char *>(log.data()), log.size(), modules,
                              out, problem);
  return std::string(out.Data() ? out.Data() : "", out.Size());
}

const char kPotHeader[] =
    "# Texts collected by translation assistance.\n"
    "msgid \"\"\n"
    "msgstr \"\"\n"
    "\"Project-Id-Version: tavona32\\n\"\n"
             "\"PO-Revision-Date: YEAR-MO-DA HO:MI+ZONE\\n\"\n"
             "\"Last-Translator: FULL NAME <EMAIL@ADDRESS>\\n\"\n"
             "\"Language-Team: LANGUAGE <LL@li.org>\\n\"\n"
             "\"Language: \\n\"\n"
    "\"MIME-Version: 1.0\\n\"\n"
    "\"Content-Type: text/plain; charset=UTF-8\\n\"\n"
    "\"Content-Transfer-Encoding: 8bit\\n\"\n";

TEST(LtsLineList, DuplicatesFullListAndWriting) {
  LtsLineList *list = tv::LineListCreate(3);
  ASSERT_NE(list, nullptr);
  EXPECT_TRUE(tv::LineListAdd(list, u"A=1"));
  EXPECT_TRUE(tv::LineListAdd(list, u"B=2"));
  EXPECT_TRUE(tv::LineListAdd(list, u"A=1"));
  EXPECT_EQ(tv::LineListFind(list, u"a=1"), -1);  // case counts
  tv::plat::host::SetResString(IDS_ERR_LIST_FULL, u"!OC The list is full.");
  int before = tv::plat::host::LastMessage().count;
  EXPECT_FALSE(tv::LineListAdd(list, u"C=3"));
  EXPECT_EQ(tv::plat::host::LastMessage().count, before + 1);
  EXPECT_NE(tv::plat::host::LastMessage().text.find(u"full"), std::u16string::npos);

  Bytes written;
  auto sink = [](void *s, const void *b, size_t n) {
    static_cast<Bytes *>(s)->append(static_cast<const char *>(b), n);
    return true;
  };
  EXPECT_EQ(tv::LineListWrite(list, sink, &written), 0);
  EXPECT_EQ(written, Log().Line(u"A=1").Line(u"B=2").Line(u"A=1").bytes);
  EXPECT_EQ(tv::LineListWrite(list, [](void *, const void *, size_t) { return false; }, nullptr), -1);
  tv::LineListDestroy(list);
}

TEST(LtsLog, HeadersAreTheBytesOfANarrowPrint) {
  struct Row {
    const WCHAR *module, *section;
    Bytes header;
  } rows[] = {
      {u"GENERAL", u"STRINGS", "[G-S]\r\n"},
      {u"\u00C4rger", u"MENU", "[\xC4-M]\r\n"},   // one byte, then the zero byte
      {u"\u0100x", u"DIALOGS", "[-D]\r\n"},       // low byte zero: nothing
      {u"\u4E2D", u"MENU", "[\x2D\x4E-M]\r\n"},   // both bytes, then the terminator
  };
  for (const Row &r : rows) {
    char out[64];
    int n = tv::LtsHeaderBytes(r.module, r.section, out, sizeof out);
    EXPECT_EQ(Bytes(out, n), r.header) << Narrow(r.module);
  }
}

TEST(LtsCatalogExport, LogToTemplate) {
  Log log;
  log.Header("[T-S]")
      .Line(u"XOK_0509C774=&OK")
      .Line(u"ID_A=Save")
      .Line(u"ID_B=Save")  // same text, another key: one entry
      .Line(u"TWO_00000000=\\x20first\\nsecond \"q\" C:\\\\x")
      .Header("[T-D]")
      .Line(u"XOK_0509C774=&OK")
      .Header("[G-M]")
      .Line(u"DATEI_1=Datei \u00F6ffnen");
  tv::CatalogProblem problem;
  int entries = 0;
  std::string pot = Export(log.bytes, u"TAVONADLL|GENERAL", problem, entries);
  EXPECT_EQ(problem.error, tv::CatalogError::kNone) << problem.line;
  EXPECT_EQ(entries, 5);
  EXPECT_EQ(pot, std::string(kPotHeader) +
                     "\n#. XOK_0509C774\nmsgctxt \"TAVONADLL|STRINGS\"\nmsgid \"&OK\"\nmsgstr \"\"\n"
                     "\n#. ID_A\n#. ID_B\nmsgctxt \"TAVONADLL|STRINGS\"\nmsgid \"Save\"\nmsgstr \"\"\n"
                     "\n#. TWO_00000000\nmsgctxt \"TAVONADLL|STRINGS\"\nmsgid \"\"\n"
                     "\" first\\n\"\n\"second \\\"q\\\" C:\\\\x\"\nmsgstr \"\"\n"
                     "\n#. XOK_0509C774\nmsgctxt \"TAVONADLL|DIALOGS\"\nmsgid \"&OK\"\nmsgstr \"\"\n"
                     "\n#. DATEI_1\nmsgctxt \"GENERAL|MENU\"\nmsgid \"Datei \xC3\xB6" "ffnen\"\nmsgstr \"\"\n");
}

TEST(LtsCatalogExport, DamagedLogs) {
  struct Row {
    const char *what;
    Bytes log;
    const WCHAR *modules;
    tv::CatalogError error;
    int line;
  } rows[] = {
      {"line before a header", Log().Line(u"A=b").bytes, nullptr, tv::CatalogError::kLogNoHeader, 1},
      {"unknown module", Log().Header("[G-S]").Line(u"A=b").Header("[X-S]").bytes, u"GENERAL",
       tv::CatalogError::kLogModule, 5},
      {"unterminated line", Log().Header("[G-S]").bytes + Bytes("A\0=\0b\0", 6), nullptr,
       tv::CatalogError::kLogLine, 2},
      {"open header", Bytes("[G-S"), nullptr, tv::CatalogError::kLogHeader, 1},
  };
  for (const Row &r : rows) {
    tv::CatalogProblem problem;
    int entries = 0;
    Export(r.log, r.modules, problem, entries);
    EXPECT_EQ(entries, -1) << r.what;
    EXPECT_EQ(problem.error, r.error) << r.what;
    EXPECT_EQ(problem.line, r.line) << r.what;
  }
}

bool Load(tv::Catalog &c, const std::string &po, tv::CatalogProblem &problem) {
  return c.Load(reinterpret_cast<const unsigned char *>(po.data()), po.size(), problem);
}

std::string Found(const tv::Catalog &c, const WCHAR *m, const WCHAR *s, const WCHAR *k) {
  const WCHAR *t = c.Find(m, s, k);
  return t ? Narrow(t) : "(none)";
}

TEST(LtsCatalog, TranslatedFile) {
  std::string po = std::string("\xEF\xBB\xBF") + kPotHeader +
                   "\n#. XOK_0509C774\nmsgctxt \"TAVONADLL|STRINGS\"\nmsgid \"&OK\"\nmsgstr \"&Jawohl\"\n"
                   "\n# translator's note\n#. ID_A\n#. ID_B\n#: somewhere\nmsgctxt \"TAVONADLL|STRINGS\"\n"
                   "msgid \"Save\"\nmsgstr \"Sichern\"\n"
                   "#, fuzzy, c-format\nmsgctxt \"TAVONADLL|DIALOGS\"\nmsgid \"&OK\"\nmsgstr \"Fuzzy\"\n"
                   "msgctxt \"TAVONADLL|MENU\"\nmsgid \"Open\"\nmsgstr \"\"\n"
                   "msgctxt \"G|S\"\nmsgid \"\"\n\"Two\\n\"\n  \"lines\"\nmsgstr \"\"\n\"Zwei\\n\" \n"
                   "\"Zeilen \\\"\\t\\\\\\101\\x42\xC3\xA4\"\r\n"
                   "#~ msgctxt \"G|S\"\n#~ msgid \"Old\"\n#~ msgstr \"Alt\"\n";
  tv::Catalog c;
  tv::CatalogProblem problem;
  ASSERT_TRUE(Load(c, po, problem)) << int(problem.error) << " line " << problem.line;
  EXPECT_EQ(c.Count(), 3);
  EXPECT_EQ(Found(c, u"TAVONADLL", u"STRINGS", u"XOK_0509C774"), "&Jawohl");
  EXPECT_EQ(Found(c, u"TAVONADLL", u"STRINGS", u"ID_B"), "Sichern");
  EXPECT_EQ(Found(c, u"TAVONADLL", u"DIALOGS", u"XOK_0509C774"), "(none)");  // fuzzy
  EXPECT_EQ(Found(c, u"TAVONADLL", u"MENU", u"OPEN_5FF98468"), "(none)");    // untranslated
  // Without an extracted comment the key is derived from msgid.
  EXPECT_EQ(Found(c, u"G", u"S", u"TWOLINES_34FA36C2"), "Zwei\\u000AZeilen \"\\u0009\\AB\\u00E4");
}

TEST(LtsCatalog, DamagedFiles) {
  const std::string e = "msgctxt \"G|S\"\n";
  struct Row {
    const char *what;
    std::string po;
    tv::CatalogError error;
    int line;
  } rows[] = {
      {"missing quote", e + "msgid \"a\nmsgstr \"b\"\n", tv::CatalogError::kMissingQuote, 2},
      {"duplicate", e + "msgid \"a\"\nmsgstr \"b\"\n\n" + e + "msgid \"a\"\nmsgstr \"c\"\n",
       tv::CatalogError::kDuplicate, 5},
      {"invalid UTF-8", e + "msgid \"a\"\nmsgstr \"\xC3(\"\n", tv::CatalogError::kBadUtf8, 3},
      {"escaped invalid UTF-8", e + "msgid \"a\"\nmsgstr \"\\377\"\n", tv::CatalogError::kBadUtf8, 1},
      {"unknown escape", e + "msgid \"a\\q\"\n", tv::CatalogError::kBadEscape, 2},
      {"plural", e + "msgid \"a\"\nmsgid_plural \"as\"\n", tv::CatalogError::kPlural, 3},
      {"no context", "msgid \"a\"\nmsgstr \"b\"\n", tv::CatalogError::kNoContext, 1},
      {"msgstr missing", e + "msgid \"a\"\n\n" + e, tv::CatalogError::kUnexpected, 4},
      {"msgstr missing at the end", e + "msgid \"a\"\n", tv::CatalogError::kNoMsgstr, 1},
      {"stray text", e + "msgid \"a\" x\n", tv::CatalogError::kUnexpected, 2},
      {"charset", "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=ISO-8859-1\\n\"\n",
       tv::CatalogError::kCharset, 1},
  };
  for (const Row &r : rows) {
    tv::Catalog c;
    tv::CatalogProblem problem;
    EXPECT_FALSE(Load(c, r.po, problem)) << r.what;
    EXPECT_EQ(int(problem.error), int(r.error)) << r.what;
    EXPECT_EQ(problem.line, r.line) << r.what;
  }
}

TEST(LtsCatalog, AnswersSurviveTheDecoding) {
  struct Row {
    const WCHAR *text;
    int size;
    const char *out;
  } rows[] = {{u"C:\\dir", 20, "C:\\\\dir"}, {u"a\\b", 3, "a"},  // the pair is not split
              {u"a\\b", 4, "a\\\\"},         {u"", 1, ""}};
  for (const Row &r : rows) {
    GuardedBuffer<WCHAR> out(r.size);
    tv::EscapeBackslashes(r.text, out.data(), r.size);
    EXPECT_TRUE(Narrow(out.Text()) == r.out && out.Intact()) << Narrow(r.text) << " size " << r.size;
  }
}

}  // namespace
