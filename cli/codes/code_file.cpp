#include "cli/codes/code_file.h"

#include "cli/terminal/error.h"
#include "velmora/settings/code_format.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

template <class Number>
CString Take(std::wstring_view* rest) {
  NumberScanner scanner(*rest);
  Number value{};
  if (!scanner.Next(&value)) return {};
  const std::wstring_view text = rest->substr(0, rest->size() - scanner.Rest().size());
  *rest = scanner.Rest();
  return TrimBlanks(text);
}

}  // namespace

CodeFile CodeFileOf(TextFileKind kind) {
  switch (kind) {
    case TextFileKind::kObjects:
      return ObjectCodes();
    case TextFileKind::kEnvironment:
      return EnvironmentCodes();
    case TextFileKind::kLines:
      return LineCodes();
    default:
      return StampFields();
  }
}

void RefuseEntry(const std::string& what) { throw Refusal(what + "; nothing was written"); }

void RequireWord(const std::string& what, const CString& word) {
  const std::wstring_view text = word.GetView();
  const bool one = !text.empty() && text.find_first_of(L" \t\n\v\f\r") == std::wstring_view::npos;
  if (!one) RefuseEntry(what + " is one word without blanks");
  if (IsStarLine(text)) RefuseEntry(what + " does not begin with \"*\", as the lines between entries do");
}

void RequireOneLine(const std::string& what, const CString& text) {
  if (text.GetView().find_first_of(L"\r\n") != std::wstring_view::npos)
    RefuseEntry(what + " has no line ends");
}

CString TakeReal(std::wstring_view* rest) { return Take<double>(rest); }
CString TakeInteger(std::wstring_view* rest) { return Take<int>(rest); }

TextLines LinesBeforeEnd(const TextLines& lines, LineFindings* findings) {
  TextLines before;
  bool ended = false;
  for (const TextLine& line : lines) {
    const std::wstring_view text = line.text.GetView();
    if (TrimBlanks(text).empty()) continue;
    if (ended)
      findings->push_back(
          {line.number, "stands behind the line \"*\" and is never read: " + QuotedPart(text)});
    else if (IsStarLine(text))
      ended = true;
    else
      before.push_back(line);
  }
  return before;
}

}  // namespace velmora::cli
