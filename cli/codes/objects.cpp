// KODFIL.DAT
#include <algorithm>

#include "cli/codes/code_file.h"
#include "cli/terminal/error.h"
#include "velmora/platform/files.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/code_format.h"
#include "velmora/settings/field_text.h"
#include "velmora/text/letters.h"

namespace velmora::cli {
namespace {

constexpr char kNoHeaderEnd[] = "has no line \"*\" to end its header, so no entry is read";

bool HasHeaderEnd(const TextLines& lines) {
  return std::any_of(lines.begin(), lines.end(),
                     [](const TextLine& line) { return IsStarLine(line.text.GetView()); });
}

CodeEntries Parse(const TextLines& lines, LineFindings* findings) {
  CodeEntries entries;
  if (!HasHeaderEnd(lines)) findings->push_back({0, kNoHeaderEnd});
  bool header = true;
  for (const TextLine& line : lines) {
    if (header) {
      header = !IsStarLine(line.text.GetView());
      continue;
    }
    std::wstring_view rest = line.text.GetView();
    const CString code = TakeWord(&rest);
    const CString text = TrimBlanks(rest);
    if (code.IsEmpty() || (text.IsEmpty() && code == L"*")) continue;
    if (text.IsEmpty())
      findings->push_back(
          {line.number, "is skipped, having no text behind " + QuotedPart(code.GetView()), true, false});
    std::wstring_view words = text.GetView();
    const std::wstring_view first = TakeWord(&words);
    if (!words.empty())
      findings->push_back(
          {line.number, "only the first word of the text is read: " + QuotedPart(first), true, false});
    entries.push_back({line.number, 0, code, {text}});
  }
  return entries;
}

void Require(const CodeEntry& entry) {
  RequireWord("the code", entry.code);
  RequireOneLine("the text", entry.fields[0]);
  if (entry.fields[0].IsEmpty()) RefuseEntry("a code without a text is skipped on reading");
}

void Write(CTundrilInst* facade, const CString& path, const CodeEntries& entries) {
  if (!HasHeaderEnd(TextLinesOf(path)))
    throw Refusal(
        At(PathForDisplay(path), std::string(kNoHeaderEnd) + "; put one in first, nothing was written"));
  if (entries.empty()) facade->KodfilDatWrite(3, L"", L"");
  for (size_t i = 0; i < entries.size(); ++i) {
    const bool first = i == 0;
    const bool last = i + 1 == entries.size();
    facade->KodfilDatWrite(first && last ? 3
                           : last        ? 2
                           : first       ? 1
                                         : 0,
                           entries[i].code, entries[i].fields[0]);
  }
}

}  // namespace

CodeFile ObjectCodes() {
  return {TextFileKind::kObjects, CProjPath::Kodfil, {{"text"}}, Parse, Require, Write};
}

}  // namespace velmora::cli
