// The code files as tables of entries, each with what the library needs to write it again.
#ifndef VELMORA_CLI_CODES_CODE_FILE_H_
#define VELMORA_CLI_CODES_CODE_FILE_H_

#include <string>
#include <vector>

#include "cli/codes/check.h"
#include "cli/codes/line_finding.h"
#include "cli/input/text_lines.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora::cli {

struct CodeEntry {
  std::int64_t line = 0;  // 0 for a new one
  int section = 0;        // of MILJKOD.DAT, else 0
  CString code;
  std::vector<CString> fields;  // as CodeFile names them

  bool SameContent(const CodeEntry& other) const {
    return section == other.section && code == other.code && fields == other.fields;
  }
};
using CodeEntries = std::vector<CodeEntry>;

struct CodeField {
  const char* name;
  bool number = false;
};

struct CodeFile {
  TextFileKind kind;
  CString name;  // empty: any
  std::vector<CodeField> fields;
  // Every entry, whole even where programs read only a part of it, and what is wrong with the lines.
  CodeEntries (*parse)(const TextLines& lines, LineFindings* findings);
  // Throws a Refusal for an entry that would not read back as it is.
  void (*require)(const CodeEntry& entry);
  // The library's whole sequence. Whether it was carried out shows only in the file.
  void (*write)(CTundrilInst* facade, const CString& path, const CodeEntries& entries);
};

CodeFile ObjectCodes();
CodeFile EnvironmentCodes();
CodeFile LineCodes();
CodeFile StampFields();
CodeFile CodeFileOf(TextFileKind kind);

// What every kind asks of a code and a text. They throw a Refusal that says what `what` ("the code") is.
void RequireWord(const std::string& what, const CString& word);
void RequireOneLine(const std::string& what, const CString& text);
[[noreturn]] void RefuseEntry(const std::string& what);

// Takes a number off the front of the text, as it is written; empty when none stands there.
CString TakeReal(std::wstring_view* rest);
CString TakeInteger(std::wstring_view* rest);

// The lines before the line "*" that ends a file, without empty ones. Those behind it are findings.
TextLines LinesBeforeEnd(const TextLines& lines, LineFindings* findings);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CODES_CODE_FILE_H_
