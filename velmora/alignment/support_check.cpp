#include "velmora/alignment/support_check.h"

#include <string>

#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"
#include "velmora/text/quoted.h"
#include "velmora/text/string.h"

namespace velmora {
namespace {

// The lines of a file, counted.
class Lines {
 public:
  explicit Lines(TextReader* reader) : reader_(reader) {}

  // Past the end the line is empty.
  bool Next() {
    line_.Empty();
    if (!reader_->ReadLine(&line_)) return false;
    ++number_;
    return true;
  }
  const CString& Line() const { return line_; }
  std::int64_t Number() const { return number_; }
  bool AtStar() const { return line_.GetAt(0) == L'*'; }
  // Whether the line is a number and nothing else: of "1O.5" the class reads the 1.
  bool HasNumber() const { return ParseWholeNumber(line_.GetView()).has_value(); }

 private:
  TextReader* reader_;
  CString line_;
  std::int64_t number_ = 0;
};

// What is wrong with the header; empty when nothing is.
std::string HeaderProblem(Lines* lines, std::int64_t* line) {
  constexpr int kValues = 6;
  for (int i = 1; i <= kValues; ++i) {
    const bool ended = !lines->Next();
    *line = ended ? lines->Number() + 1 : lines->Number();
    if (ended) return "ends within its header of six numbers; is it a support-point file?";
    if (i == kValues && lines->AtStar()) return "";
    if (!lines->HasNumber())
      return "is not a single number, as each of the first six lines of a support-point file is";
  }
  while (lines->Next() && !lines->Line().IsEmpty() && !lines->AtStar()) {
  }
  return "";
}

}  // namespace

SupportCheck CheckSupportPoints(TextReader* reader) {
  SupportCheck check;
  const auto add = [&](std::int64_t line, std::string text) {
    check.findings.Add({line, std::move(text), /*misread=*/true, /*lost=*/true});
  };
  Lines lines(reader);
  std::int64_t header_line = 0;
  if (const std::string problem = HeaderProblem(&lines, &header_line); !problem.empty()) {
    check.has_header = false;
    add(header_line, problem);
    return check;
  }
  while (lines.Next() && !lines.AtStar()) {
    if (lines.Line().CompareNoCase(L"gvy") == 0) {
      (void)(lines.Next() && lines.Next());
      continue;
    }
    check.has_level.push_back(lines.Next() && lines.HasNumber());
    if (!check.has_level.back())
      add(lines.Number(), Quoted(ToUtf8(lines.Line().Left(80))) + " is not the level of a support point");
    (void)lines.Next();
  }
  if (!lines.AtStar())
    check.findings.Add(reader->HasTail()
                           ? UnreadTail(lines.Number())
                           : Finding{lines.Number(),
                                     "is the last line; a line \"*\" must follow, and points can be missing",
                                     true, true, Repair::kFile});
  if (!reader->Failed()) return check;
  check.failed = true;
  check.findings = {};
  add(lines.Number() + 1, "reading stopped here: a read error, or a line too long for support points");
  return check;
}

}  // namespace velmora
