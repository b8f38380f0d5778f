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

void CheckStarLine(const TextLine& line, const LineFindings& found) {
  const std::wstring_view text = TrimBlanks(line.text.GetView());
  if (text != L"*") found.Add("has a text after the \"*\", which is never read", text);
}

// Entries follow a header, up to the end of the file.
void ReadAfterHeader(SettingsFileKind kind, const TextLines& lines, CodeFile* file) {
  auto line = std::find_if(lines.begin(), lines.end(),
                           [](const TextLine& other) { return IsStarLine(other.text.GetView()); });
  file->can_rewrite = line != lines.end();
  if (!file->can_rewrite)
    file->findings.push_back({0, "has no line \"*\" that ends its header, so no entry is read"});
  else
    for (int stars = 0; ++line != lines.end();)
      if (TrimBlanks(line->text.GetView()) == L"*")
        ++stars;
      else
        ReadEntry(kind, *line, stars, file);
}

// Entries in sections; a rewrite keeps sections 1 to 3 and nothing else.
void ReadSections(SettingsFileKind kind, const TextLines& lines, CodeFile* file) {
  int section = -1;
  for (const TextLine& line : lines) {
    const LineFindings found{line.number, &file->findings};
    const std::wstring_view text = TrimBlanks(line.text.GetView());
    if (IsStarLine(line.text.GetView())) {
      ++section;
      CheckStarLine(line, found);
    } else if (section >= kMethodSection && section <= kClassSection) {
      ReadEntry(kind, line, section, file);
    } else if (!text.empty()) {
      // A header is a comment; in another section a line looks like an entry.
      found.Add(section < 0
                    ? "is in the header"
                    : "is in section " + std::to_string(section) + (section == 0 ? "" : ", after the third"),
                text, section >= 0);
    }
  }
}

// Entries up to a line "*".
void ReadBeforeEnd(SettingsFileKind kind, const TextLines& lines, CodeFile* file) {
  bool ended = false;
  for (const TextLine& line : lines) {
    const std::wstring_view text = line.text.GetView();
    if (TrimBlanks(text).empty()) continue;
    const LineFindings found{line.number, &file->findings};
    if (ended)
      found.Add("follows the line \"*\" and is never read", text);
    else if (IsStarLine(text))
      CheckStarLine(line, found);
    else
      ReadEntry(kind, line, 0, file);
    ended = ended || IsStarLine(text);
  }
}

}  // namespace

CodeFile ReadCodeFile(SettingsFileKind kind, const TextLines& lines) {
  CodeFile file;
  if (kind == SettingsFileKind::kObjects)
    ReadAfterHeader(kind, lines, &file);
  else if (kind == SettingsFileKind::kEnvironment)
    ReadSections(kind, lines, &file);
  else
    ReadBeforeEnd(kind, lines, &file);
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
  bool star = false;
  for (CString line; !star && old.ReadLine(&line, SettingsReader::Zeros::kKeep);) {
    star = IsStarLine(line.GetView());
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
