#include "velmora/settings/code_files.h"

#include <algorithm>
#include <string>

#include "velmora/settings/code_stream.h"
#include "velmora/settings/settings_file.h"
#include "velmora/text/letters.h"
#include "velmora/text/quoted.h"

namespace velmora {
namespace {

void ReadEntry(SettingsFileKind kind, const TextLine& line, int section, CodeFile* file) {
  const auto before = static_cast<std::ptrdiff_t>(file->findings.size());
  const LineFindings found{line.number, &file->findings};
  std::optional<CodeEntry> entry = ParseCodeLine(kind, line.text.GetView(), section, found);
  if (!entry) return;
  const bool lost = std::any_of(file->findings.begin() + before, file->findings.end(),
                                [](const Finding& finding) { return finding.lost; });
  if (IsLostAsStarLine(kind, *entry))
    found.Add("begins with \"*\" behind a blank, which a rewrite cannot keep", line.text.GetView());
  else if (!lost && !ReadsBack(kind, *entry))
    found.Add("would be read differently after a rewrite", line.text.GetView(), false);
  entry->line = line.number;
  file->entries.push_back(*std::move(entry));
}

// A line in a section without entries.
void CheckUnread(SettingsFileKind kind, std::wstring_view line, int section, const LineFindings& found) {
  if (kind != SettingsFileKind::kEnvironment)
    found.Add("follows the line \"*\" and is never read", line);
  else if (section < 0)  // a comment; elsewhere a line looks like an entry
    found.Add("is in the header", TrimBlanks(line), false);
  else
    found.Add("is in section " + std::to_string(section) + (section == 0 ? "" : ", after the third"),
              TrimBlanks(line));
}

}  // namespace

CodeFile ReadCodeFile(SettingsFileKind kind, const TextLines& lines) {
  CodeFile file;
  CodeSections sections(kind);
  // A rewrite copies the header, so that its lines and marks are no findings.
  const bool has_free_header = kind == SettingsFileKind::kObjects;
  for (const TextLine& line : lines) {
    const LineFindings found{line.number, &file.findings};
    const std::wstring_view text = TrimBlanks(line.text.GetView());
    if (text.empty()) continue;
    if (sections.Pass(line.text.GetView())) {
      if (!has_free_header && text != L"*")
        found.Add("has a text after the \"*\", which is never read", text);
    } else if (sections.HoldsEntries()) {
      ReadEntry(kind, line, sections.Current(), &file);
    } else if (!has_free_header) {
      CheckUnread(kind, line.text.GetView(), sections.Current(), found);
    }
  }
  file.can_rewrite = sections.Current() >= 0 || !has_free_header;
  if (!file.can_rewrite)
    file.findings.push_back({0, "has no line \"*\" that ends its header, so no entry is read"});
  CompleteFindings(lines, &file.findings);
  return file;
}

bool ReplaceCodes(SettingsFileKind kind, const CString& path, const CodeEntries& entries) {
  const bool objects = kind == SettingsFileKind::kObjects;
  const bool sections = kind == SettingsFileKind::kEnvironment;
  CodeStream stream;
  if (!stream.BeginRewrite(path, nullptr, objects ? TemporaryPathFor(path) : CString())) return false;
  if (objects && !CopyKodfilHeader(path, &stream)) return false;
  int stars = sections ? -1 : 0;  // written; the header's does not count
  const auto begin = [&](int section) {
    for (; stars < section; ++stars) stream.Write(L"*\n");
  };
  std::vector<const CodeEntry*> ordered;
  for (const CodeEntry& entry : entries)
    if (!IsLostAsStarLine(kind, entry)) ordered.push_back(&entry);
  std::stable_sort(ordered.begin(), ordered.end(),
                   [](const CodeEntry* a, const CodeEntry* b) { return a->section < b->section; });
  for (const CodeEntry* entry : ordered) {
    begin(entry->section);
    stream.Write(FormatCodeLine(kind, *entry).GetView());
  }
  if (sections) begin(kClassSection);
  if (kind != SettingsFileKind::kStamp) stream.Write(L"*\n");
  return stream.IsOpen() && stream.Finish();
}

bool CopyKodfilHeader(const CString& from, CodeStream* to) {
  SettingsReader old;
  if (!old.Open(from)) return false;
  CodeSections sections(SettingsFileKind::kObjects);
  for (CString line; sections.Current() < 0 && old.ReadLine(&line, SettingsReader::Zeros::kKeep);) {
    sections.Pass(line.GetView());
    if (!to->Write((line + L'\n').GetView())) return true;  // the failure has been reported
  }
  return !old.Failed();
}

CodeEntries MissingMiljkods(const CodeEntries& entries) {
  CodeEntries missing = {{0, kMethodSection, L"X", {L"okänd metod, sammanställning", L"", L""}},
                         {0, kInterpretationSection, L"TOLK", {L"Tolkad klassificering", L"", L""}},
                         {0, kClassSection, L"FK", {L"Föroreningsklass", L"6", L"1"}}};
  std::erase_if(missing, [&](const CodeEntry& code) {
    return std::any_of(entries.begin(), entries.end(), [&](const CodeEntry& entry) {
      return entry.section == code.section && entry.code == code.code;
    });
  });
  return missing;
}

}  // namespace velmora
