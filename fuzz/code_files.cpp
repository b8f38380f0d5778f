// The content as each kind of code file: the facade delivers the model's codes, into buffers of any size,
// and entries that are rewritten read back. Argument: the size.
#include <algorithm>

#include "fuzz/support/project_settings.h"
#include "velmora/settings/code_files.h"

namespace velmora::fuzz {
namespace {

using Kind = SettingsFileKind;

constexpr int kLargeSize = 5000;  // more than any line here has

// The codes that the facade delivers.
std::vector<CString> Delivered(CTundrilInst* facade, Kind kind, int section, const CString& path, int size) {
  std::vector<CString> codes;
  // Of exactly this size, so that a sanitizer sees what is written after their end.
  const auto room = static_cast<size_t>(size);
  std::vector<wchar_t> a(room), b(room), c(room);
  double n[3] = {};
  int max = 0, step = 0;
  for (int result = 1; result != 0;) {
    const bool limits = section == kClassSection;
    if (kind == Kind::kObjects)
      result = 1 + facade->KodfilDatRead(a.data(), size, b.data(), size);
    else if (kind == Kind::kEnvironment)
      result = 1 + facade->MiljkodRead(section, a.data(), size, b.data(), size, limits ? &max : nullptr,
                                       limits ? &step : nullptr);
    else if (kind == Kind::kLines)
      result = facade->LinkodRead(a.data(), size, b.data(), size, c.data(), size, &n[0], &max);
    else
      result = facade->StampParRead(path, a.data(), size, b.data(), size, &n[0], &n[1], &n[2]);
    Require(result == -2 || (result >= 0 && result <= 3), "a known result");
    if (result > 0) codes.emplace_back(a.data());
  }
  return codes;
}

std::vector<CString> Expected(const CodeEntries& entries, Kind kind, int section, int size) {
  std::vector<CString> codes;
  for (const CodeEntry& entry : entries) {
    if (kind == Kind::kObjects ? entry.fields[0].IsEmpty() : entry.section != section) continue;
    const bool shortened =
        kind == Kind::kLines && static_cast<int>(GroupOfLineCode(entry.code.GetView())) > 1;
    codes.push_back((shortened ? entry.code.Mid(kPvLength) : entry.code).Left(size - 1));
  }
  return codes;
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
                "the facade delivers the model's codes");
    if (file.can_rewrite) TryRewrite(input, kind, path, file);
    if (sections) TryUpdate(&settings.facade, input, file);
  }
}

}  // namespace velmora::fuzz
