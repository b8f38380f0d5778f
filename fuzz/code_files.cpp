// The content as each kind of code file: the facade delivers the model's entries, into buffers of any size,
// and entries that are rewritten read back. Argument: the size.
#include <algorithm>

#include "fuzz/support/project_settings.h"
#include "velmora/settings/code_files.h"
#include "velmora/text/numbers.h"

namespace velmora::fuzz {
namespace {

using Kind = SettingsFileKind;

constexpr int kLargeSize = 5000;  // more than any line here has

// What the facade delivers of an entry: its result and texts, and its numbers in the shortest form.
struct Row {
  int result = 0;
  std::vector<CString> texts;
  std::vector<std::string> numbers;
  bool operator==(const Row&) const = default;
};
using Rows = std::vector<Row>;

std::vector<std::string> Shortest(const std::vector<double>& numbers) {
  std::vector<std::string> texts;
  for (const double number : numbers) texts.push_back(FormatShortest(number));
  return texts;
}

Rows Delivered(CTundrilInst* facade, Kind kind, int section, const CString& path, int size) {
  Rows rows;
  for (;;) {
    // Of exactly this size, so that a sanitizer sees what is written after their end.
    const auto room = static_cast<size_t>(size);
    std::vector<wchar_t> a(room), b(room), c(room);
    double n[3] = {};
    int max = 0, step = 0;
    Row row;
    const bool limits = section == kClassSection;
    if (kind == Kind::kObjects)
      row.result = 1 + facade->KodfilDatRead(a.data(), size, b.data(), size);
    else if (kind == Kind::kEnvironment)
      row.result = 1 + facade->MiljkodRead(section, a.data(), size, b.data(), size, limits ? &max : nullptr,
                                           limits ? &step : nullptr);
    else if (kind == Kind::kLines)
      row.result = facade->LinkodRead(a.data(), size, b.data(), size, c.data(), size, &n[0], &max);
    else
      row.result = facade->StampParRead(path, a.data(), size, b.data(), size, &n[0], &n[1], &n[2]);
    if (row.result == 0) return rows;
    Require(row.result == -2 || (row.result > 0 && row.result <= 3), "a known result");
    if (row.result < 0) continue;
    row.texts = {a.data(), b.data()};
    if (kind == Kind::kLines) row.texts.emplace_back(c.data());
    if (limits) row.numbers = Shortest({static_cast<double>(max), static_cast<double>(step)});
    if (kind == Kind::kLines) row.numbers = Shortest({n[0], static_cast<double>(max)});
    if (kind == Kind::kStamp) row.numbers = Shortest({n[0], n[1], n[2]});
    rows.push_back(row);
  }
}

Rows Expected(const CodeEntries& entries, Kind kind, int section, int size) {
  Rows rows;
  for (const CodeEntry& entry : entries) {
    const std::vector<CString>& fields = entry.fields;
    if (entry.section != section || (kind == Kind::kObjects && fields[0].IsEmpty())) continue;
    Row row{1, {entry.code, fields[0]}, {}};
    std::vector<double> numbers;
    const auto take = [&](size_t first, size_t count) {
      for (size_t i = first; i < first + count; ++i)
        numbers.push_back(ParseNumber(fields[i].GetView()).value_or(-1));
    };
    if (kind == Kind::kObjects) row.texts[1] = WordsOf(fields[kObjectText])[0];
    if (section == kClassSection) take(kMiljkodMax, 2);
    if (kind == Kind::kStamp) take(kStampFirst, 3);
    if (kind == Kind::kLines) {
      take(kLineNumber, 2);
      row.texts.push_back(fields[kLineText]);
      row.result = static_cast<int>(GroupOfLineCode(entry.code.GetView()));
      if (row.result > 1) row.texts[0] = entry.code.Mid(kPvLength);
    }
    for (CString& text : row.texts) text = text.Left(size - 1);
    row.numbers = Shortest(numbers);
    rows.push_back(row);
  }
  return rows;
}

bool Same(const CodeEntries& a, const CodeEntries& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const CodeEntry& x, const CodeEntry& y) { return x.SameContent(y); });
}

// The entries that no finding says would be lost.
CodeEntries Kept(const CodeFile& file) {
  CodeEntries kept = file.entries;
  std::erase_if(kept, [&](const CodeEntry& entry) {
    return std::any_of(file.findings.begin(), file.findings.end(),
                       [&](const Finding& finding) { return finding.lost && finding.line == entry.line; });
  });
  return kept;
}

void TryRewrite(const Input& input, Kind kind, const CString& path, const CodeFile& file) {
  CodeEntries kept = Kept(file);
  if (!kept.empty()) kept.erase(kept.begin());  // so that the file changes
  const bool starts_with_entry = (kind == Kind::kLines || kind == Kind::kStamp) && !kept.empty();
  const bool can_hold = !starts_with_entry || CanHold(input.File(), FormatCodeLine(kind, kept[0]).GetView());
  Require(ReplaceCodes(kind, path, kept) == can_hold, "entries are written if their encoding holds them");
  if (!can_hold)
    Require(ReadBytes(path) == input.File(), "a refused rewrite leaves the file");
  else
    Require(Same(ReadCodeFile(kind, CheckedLines(kind, path)).entries, kept), "what was written is read");
}

void TryUpdate(CTundrilInst* facade, const Input& input, const CodeFile& file) {
  if (Kept(file).size() != file.entries.size()) return;
  const CString path = Put(L"MILJKOD.DAT", input.File());
  facade->MiljkodUppdatX();
  const CodeEntries updated =
      ReadCodeFile(Kind::kEnvironment, CheckedLines(Kind::kEnvironment, path)).entries;
  Require(MissingMiljkods(updated).empty(), "required codes are there");
  Require(updated.size() == file.entries.size() + MissingMiljkods(file.entries).size(), "no code is lost");
  const std::string bytes = ReadBytes(path);
  facade->MiljkodUppdatX();
  Require(ReadBytes(path) == bytes, "a complete file is left alone");
}

}  // namespace

void Run(const Input& input) {
  const int size = 1 + (input.Bytes(0).empty() ? 5 : input.Bytes(0)[0] & 0x3F);
  const std::pair<Kind, const wchar_t*> kKinds[] = {{Kind::kObjects, L"KODFIL.DAT"},
                                                    {Kind::kEnvironment, L"MILJKOD.DAT"},
                                                    {Kind::kLines, L"LINKOD.PAR"},
                                                    {Kind::kStamp, L"STAMPEL1.DAT"}};
  for (const auto& [kind, name] : kKinds) {
    const CString path = Put(name, input.File());
    const TextLines lines = CheckedLines(kind, path);
    const CodeFile file = ReadCodeFile(kind, lines);
    ProjectSettings settings;
    const bool sections = kind == Kind::kEnvironment;
    for (int section = sections ? 1 : 0; section <= (sections ? 3 : 0); ++section)
      for (const int room : {size, kLargeSize})
        Require(Delivered(&settings.facade, kind, section, path, room) ==
                    Expected(file.entries, kind, section, room),
                "the facade delivers the model's entries");
    if (file.can_rewrite) TryRewrite(input, kind, path, file);
    if (sections) TryUpdate(&settings.facade, input, file);
    if (kind != Kind::kObjects || !file.can_rewrite) continue;
    const TextLines after = CheckedLines(kind, path);
    for (size_t i = 0; i == 0 || !IsStarLine(lines[i - 1].text.GetView()); ++i)
      Require(after[i].text == lines[i].text, "the header is kept");
  }
}

}  // namespace velmora::fuzz
