#include <algorithm>

#include "cli/codes/code_file_on_disk.h"
#include "cli/codes/commands.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

// A number in JSON; elsewhere the text of the file.
Cell FieldCell(const CodeField& field, const CString& text) {
  if (text.IsEmpty() && field.number) return {};
  const std::optional<double> number = field.number ? ParseNumber(text.GetView()) : std::nullopt;
  if (number) return NumberAsText{*number, ToUtf8(text)};
  return ToUtf8(text);
}

std::string SectionName(int section) { return kSections[static_cast<size_t>(section) - 1]; }

// What is wrong with the line.
std::string NoteOf(const Findings& findings, std::int64_t line) {
  const auto at = std::lower_bound(findings.begin(), findings.end(), line,
                                   [](const Finding& finding, std::int64_t l) { return finding.line < l; });
  return at != findings.end() && at->line == line && at->misread ? at->text : "";
}

}  // namespace

void CodesList(const CodesOptions& options) {
  const CodeFileOnDisk codes(options, false);
  const std::vector<CodeField> fields = FieldsOf(options.kind);
  const bool sections = options.kind == SettingsFileKind::kEnvironment;
  std::vector<Column> columns = {{"line", "line", true}};
  if (sections) columns.push_back({"section", "section"});
  columns.push_back(options.kind == SettingsFileKind::kStamp ? Column{"field", "field"}
                                                             : Column{"code", "code"});
  for (const CodeField& field : fields) columns.push_back({field.name, field.name, field.number});
  const bool notes = std::any_of(codes.Entries().begin(), codes.Entries().end(), [&](const CodeEntry& entry) {
    return !NoteOf(codes.FileFindings(), entry.line).empty();
  });
  columns.push_back({"note", notes ? "note" : ""});

  OutputFile output(options.output.file, {PathForDisplay(codes.Path())});
  const OutputFormat format = options.output.Format();
  if (format == OutputFormat::kTable) output.Write(codes.Where() + "\n\n");
  RecordWriter records(output, format, columns);
  for (const CodeEntry& entry : codes.Entries()) {
    std::vector<Cell> cells = {entry.line};
    if (sections) cells.emplace_back(SectionName(entry.section));
    cells.emplace_back(ToUtf8(entry.code));
    for (size_t i = 0; i < fields.size(); ++i) cells.push_back(FieldCell(fields[i], entry.fields[i]));
    cells.emplace_back(NoteOf(codes.FileFindings(), entry.line));
    records.Row(cells);
  }
  records.Finish();
  output.Finish();
  const auto is_entry = [&](std::int64_t line) {
    const auto at = std::lower_bound(codes.Entries().begin(), codes.Entries().end(), line,
                                     [](const CodeEntry& entry, std::int64_t l) { return entry.line < l; });
    return at != codes.Entries().end() && at->line == line;
  };
  const bool unread =
      std::any_of(codes.FileFindings().begin(), codes.FileFindings().end(),
                  [&](const Finding& finding) { return finding.misread && !is_entry(finding.line); });
  if (unread) WarnUnread(codes.Path());
}

}  // namespace velmora::cli
