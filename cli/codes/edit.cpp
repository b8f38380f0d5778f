#include <algorithm>

#include "cli/codes/code_file_on_disk.h"
#include "cli/codes/commands.h"
#include "cli/terminal/error.h"
#include "velmora/platform/files.h"
#include "velmora/text/letters.h"
#include "velmora/text/nearest.h"

namespace velmora::cli {
namespace {

bool IsStamp(const CodesOptions& options) { return options.kind == SettingsFileKind::kStamp; }

int SectionOf(const CodesOptions& options) {
  const auto* const found = std::find(std::begin(kSections), std::end(kSections), options.section);
  return options.section.empty() ? 0 : static_cast<int>(found - std::begin(kSections)) + 1;
}

bool Matches(const CodeEntry& entry, const CodesOptions& options) {
  const int section = SectionOf(options);
  return entry.code == FromUtf8(options.code) && (section == 0 || entry.section == section);
}

// The entry that the options name; the end without one. Throws a Refusal when there are several.
CodeEntries::iterator Find(CodeEntries* entries, const CodesOptions& options, const CodeFileOnDisk& codes) {
  const auto matches = [&](const CodeEntry& entry) { return Matches(entry, options); };
  const auto found = std::find_if(entries->begin(), entries->end(), matches);
  if (found == entries->end()) return found;
  const auto other = std::find_if(found + 1, entries->end(), matches);
  if (other == entries->end()) return found;
  const std::string lines = std::to_string(found->line) + " and " + std::to_string(other->line);
  throw Refusal(At(PathForDisplay(codes.Path()),
                   Quoted(options.code) + " is in lines " + lines +
                       (options.kind == SettingsFileKind::kEnvironment && found->section != other->section
                            ? "; choose one with --section"
                            : "; remove one of them by hand first")));
}

[[noreturn]] void RefuseUnknown(const CodesOptions& options, const CodeFileOnDisk& codes) {
  const std::string area = NameOfKind(options.kind);
  std::vector<std::string> known;
  for (const CodeEntry& entry : codes.Entries()) known.push_back(ToUtf8(entry.code));
  throw Refusal(At(PathForDisplay(codes.Path()), "has no code " + Quoted(options.code) + "; velmora codes " +
                                                     area + " list lists them, velmora codes " + area +
                                                     " add adds one" + DidYouMean(options.code, known)));
}

void TakeFields(const CodesOptions& options, CodeEntry* entry) {
  const std::vector<CodeField> fields = FieldsOf(options.kind);
  for (size_t i = 0; i < fields.size(); ++i) {
    const auto given = options.fields.find(fields[i].name);
    if (given == options.fields.end()) continue;
    const CString text = FromUtf8(given->second);
    // Blanks at the ends are not read back; a line end is refused, not dropped.
    entry->fields[i] = text.GetView().find_first_of(L"\r\n") == std::wstring_view::npos
                           ? CString(TrimBlanks(text.GetView()))
                           : text;
  }
}

CodeEntry NewEntry(const CodesOptions& options) {
  CodeEntry entry{0, SectionOf(options), FromUtf8(options.code), {}};
  entry.fields.resize(FieldsOf(options.kind).size());
  if (options.kind == SettingsFileKind::kLines) entry.fields[kLineValue] = L"0";
  if (options.kind == SettingsFileKind::kStamp) entry.fields[kStampThird] = L"3";
  if (entry.section == kClassSection) {
    entry.fields[kMiljkodMax].Format(L"%d", kUsualMax);
    entry.fields[kMiljkodStep].Format(L"%d", kUsualStep);
  }
  TakeFields(options, &entry);
  return entry;
}

std::string Described(const CodeEntry& entry) {
  CString text = entry.code;
  for (const CString& field : entry.fields)
    if (!field.IsEmpty()) text += L" " + field;
  return Printable(ToUtf8(text));
}

// Writes the changed entries and reports what was done.
void Finish(const CodesOptions& options, CodeFileOnDisk* codes, const CodeEntries& entries,
            const CodeEntry& entry, const std::string& done) {
  codes->Rewrite(entries, options);
  OutputFile output;
  output.Write(Described(entry) + ": " + done + " " + codes->Where() + "\n");
  output.Finish();
}

void RequireEntry(const CodesOptions& options, const CodeFileOnDisk& codes, const CodeEntry& entry) {
  const std::string why = WhyRefused(options.kind, entry);
  if (!why.empty()) throw Refusal(why + "; nothing was written");
  RequireCharacters(codes.Path(), entry.code);
  for (const CString& field : entry.fields) RequireCharacters(codes.Path(), field);
}

void NoteFirstWord(const CodesOptions& options, const CodeEntry& entry) {
  if (options.kind == SettingsFileKind::kObjects && entry.fields[0].Find(L' ') >= 0)
    Warn("programs read only the first word of the text: " +
         Quoted(ToUtf8(entry.fields[0].Left(entry.fields[0].Find(L' ')))));
}

void Append(const CodesOptions& options, CodeFileOnDisk* codes, CodeEntries entries) {
  const CodeEntry entry = NewEntry(options);
  RequireEntry(options, *codes, entry);
  const auto next = std::find_if(entries.begin(), entries.end(),
                                 [&](const CodeEntry& other) { return other.section > entry.section; });
  entries.insert(next, entry);
  Finish(options, codes, entries, entry, "added to");
  NoteFirstWord(options, entry);
}

}  // namespace

void CodesAdd(const CodesOptions& options) {
  CodeFileOnDisk codes(options, false);
  CodeEntries entries = codes.Entries();
  const auto there = Find(&entries, options, codes);
  if (there != entries.end())
    throw Refusal(At(PathForDisplay(codes.Path()), there->line,
                     "has the code " + Quoted(options.code) + " already; velmora codes " +
                         NameOfKind(options.kind) + " set changes it"));
  Append(options, &codes, entries);
}

void CodesSet(const CodesOptions& options) {
  CodeFileOnDisk codes(options, IsStamp(options));
  CodeEntries entries = codes.Entries();
  const auto entry = Find(&entries, options, codes);
  if (entry == entries.end() && !IsStamp(options)) RefuseUnknown(options, codes);
  if (entry == entries.end()) {
    Append(options, &codes, entries);
    return;
  }
  if (options.fields.empty()) throw Refusal("nothing to change was given; --help lists the fields");
  const CodeEntry before = *entry;
  TakeFields(options, &*entry);
  // A line that is not read as it is written is written anew.
  const Findings& found = codes.FileFindings();
  const bool clean = std::none_of(found.begin(), found.end(),
                                  [&](const Finding& finding) { return finding.line == before.line; });
  if (clean && entry->SameContent(before)) {
    OutputFile output;
    output.Write(Described(before) + ": already so in " + codes.Where() + "\n");
    output.Finish();
    return;
  }
  RequireEntry(options, codes, *entry);
  Finish(options, &codes, entries, *entry, "written to");
  NoteFirstWord(options, *entry);
}

void CodesRemove(const CodesOptions& options) {
  CodeFileOnDisk codes(options, false);
  CodeEntries entries = codes.Entries();
  const auto found = Find(&entries, options, codes);
  if (found == entries.end()) RefuseUnknown(options, codes);
  const CodeEntry entry = *found;
  entries.erase(found);
  Finish(options, &codes, entries, entry, "removed from");
}

void CodesUpdate(const CodesOptions& options) {
  const CodeFileOnDisk codes(options, false);
  // Before the file is changed: both can refuse.
  OutputFile output(options.output.file, {PathForDisplay(codes.Path())});
  const OutputFormat format = options.output.Format();
  const CodeEntries missing = MissingMiljkods(codes.Entries());
  if (!missing.empty()) {
    CodeEntries entries = codes.Entries();
    entries.insert(entries.end(), missing.begin(), missing.end());
    codes.Rewrite(entries, options);
  }
  if (format == OutputFormat::kTable)
    output.Write(codes.Where() +
                 (missing.empty() ? ": has every code that programs rely on\n" : ", added:\n\n"));
  if (format != OutputFormat::kTable || !missing.empty()) {
    RecordWriter records(output, format, {{"section", "section"}, {"code", "code"}, {"text", "text"}});
    for (const CodeEntry& code : missing)
      records.Row({std::string(kSections[static_cast<size_t>(code.section) - 1]), ToUtf8(code.code),
                   ToUtf8(code.fields[kMiljkodText])});
    records.Finish();
  }
  output.Finish();
}

}  // namespace velmora::cli
