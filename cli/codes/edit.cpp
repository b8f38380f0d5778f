#include <algorithm>

#include "cli/codes/code_file_on_disk.h"
#include "cli/codes/commands.h"
#include "cli/terminal/error.h"
#include "velmora/platform/files.h"
#include "velmora/settings/miljkod_format.h"
#include "velmora/text/letters.h"

namespace velmora::cli {
namespace {

bool IsStamp(const CodesOptions& options) { return options.kind == TextFileKind::kStamp; }

int SectionOf(const CodesOptions& options) {
  const auto* const found = std::find(std::begin(kSections), std::end(kSections), options.section);
  return options.section.empty() ? 0 : static_cast<int>(found - std::begin(kSections)) + 1;
}

bool Matches(const CodeEntry& entry, const CodesOptions& options) {
  const int section = SectionOf(options);
  return entry.code == FromUtf8(options.code) && (section == 0 || entry.section == section);
}

// The entry meant; the end when there is none. Throws a Refusal when it could be several.
CodeEntries::iterator Find(CodeEntries* entries, const CodesOptions& options, const CodeFileOnDisk& codes) {
  const auto matches = [&](const CodeEntry& entry) { return Matches(entry, options); };
  const auto found = std::find_if(entries->begin(), entries->end(), matches);
  if (found == entries->end()) return found;
  const auto other = std::find_if(found + 1, entries->end(), matches);
  if (other == entries->end()) return found;
  const std::string lines = std::to_string(found->line) + " and " + std::to_string(other->line);
  throw Refusal(At(PathForDisplay(codes.Path()),
                   Quoted(options.code) + " stands in lines " + lines +
                       (found->section != other->section ? "; --section says which is meant"
                                                         : "; take one of them out by hand first")));
}

[[noreturn]] void RefuseUnknown(const CodesOptions& options, const CodeFileOnDisk& codes) {
  const std::string area = NameOfKind(options.kind);
  throw Refusal(At(PathForDisplay(codes.Path()), "has no code " + Quoted(options.code) + "; velmora codes " +
                                                     area + " list lists them, velmora codes " + area +
                                                     " add adds one"));
}

void TakeFields(const CodesOptions& options, const CodeFile& file, CodeEntry* entry) {
  for (size_t i = 0; i < file.fields.size(); ++i) {
    const auto given = options.fields.find(file.fields[i].name);
    if (given == options.fields.end()) continue;
    const CString text = FromUtf8(given->second);
    // Blanks at the ends are not read back; a line end is refused, not dropped.
    entry->fields[i] = text.GetView().find_first_of(L"\r\n") == std::wstring_view::npos
                           ? CString(TrimBlanks(text.GetView()))
                           : text;
  }
}

CodeEntry NewEntry(const CodesOptions& options, const CodeFile& file) {
  CodeEntry entry{0, SectionOf(options), FromUtf8(options.code), {}};
  entry.fields.resize(file.fields.size());
  for (size_t i = 0; i < file.fields.size(); ++i) {
    const std::string name = file.fields[i].name;
    if (name == "value") entry.fields[i] = L"0";
    if (name == "third") entry.fields[i] = L"3";
    if (entry.section == kClassSection && name == "max") entry.fields[i].Format(L"%d", kUsualMax);
    if (entry.section == kClassSection && name == "step") entry.fields[i].Format(L"%d", kUsualStep);
  }
  TakeFields(options, file, &entry);
  return entry;
}

std::string Described(const CodeEntry& entry) {
  CString text = entry.code;
  for (const CString& field : entry.fields)
    if (!field.IsEmpty()) text += L" " + field;
  return Printable(ToUtf8(text));
}

// Puts the changed entries into the file and says what was done.
void Finish(const CodesOptions& options, CodeFileOnDisk* codes, const CodeEntries& entries,
            const CodeEntry& entry, const std::string& done) {
  codes->Rewrite(entries, options.force);
  OutputFile sink("");
  sink.Write(Described(entry) + ": " + done + " " + codes->Where() + "\n");
  sink.Finish();
}

void RequireEntry(const CodeFileOnDisk& codes, const CodeEntry& entry) {
  codes.File().require(entry);
  RequireCharacters(codes.Path(), entry.code);
  for (const CString& field : entry.fields) RequireCharacters(codes.Path(), field);
}

void NoteFirstWord(const CodesOptions& options, const CodeEntry& entry) {
  if (options.kind == TextFileKind::kObjects && entry.fields[0].Find(L' ') >= 0)
    Warn("programs read only the first word of the text: " +
         Quoted(ToUtf8(entry.fields[0].Left(entry.fields[0].Find(L' ')))));
}

void Append(const CodesOptions& options, CodeFileOnDisk* codes, CodeEntries entries) {
  const CodeEntry entry = NewEntry(options, codes->File());
  RequireEntry(*codes, entry);
  const auto behind = std::find_if(entries.begin(), entries.end(),
                                   [&](const CodeEntry& other) { return other.section > entry.section; });
  entries.insert(behind, entry);
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
  if (options.fields.empty()) throw Refusal("nothing to change was given; --help tells what there is");
  const CodeEntry before = *entry;
  TakeFields(options, codes.File(), &*entry);
  if (entry->SameContent(before)) {
    OutputFile sink("");
    sink.Write(Described(before) + ": stands like this already in " + codes.Where() + "\n");
    sink.Finish();
    return;
  }
  RequireEntry(codes, *entry);
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
  Finish(options, &codes, entries, entry, "taken out of");
}

}  // namespace velmora::cli
