// MILJKOD.DAT: reading into buffers of any size, and the rewrite that adds the required codes. Argument: the
// size.
#include <array>

#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/miljkod_format.h"
#include "velmora/settings/tundril_inst.h"
#include "velmora/text/letters.h"

namespace velmora::fuzz {
namespace {

struct Entry {
  CString name;
  CString text;
  int max = 0;
  int step = 0;
  bool operator==(const Entry& other) const {
    return name == other.name && text == other.text && max == other.max && step == other.step;
  }
};
using Entries = std::vector<Entry>;

Entries Read(CTundrilInst* facade, int section, int size, bool with_limits) {
  Entries entries;
  std::vector<wchar_t> name(static_cast<size_t>(size));
  std::vector<wchar_t> text(static_cast<size_t>(size));
  Entry entry;
  while (facade->MiljkodRead(section, name.data(), size, text.data(), size,
                             with_limits ? &entry.max : nullptr, with_limits ? &entry.step : nullptr) == 0) {
    entry.name = name.data();
    entry.text = text.data();
    Require(
        !with_limits || (entry.max >= 0 && entry.max <= 100'000 && entry.step > 0 && entry.step <= 100'000),
        "limits within bounds");
    entries.push_back(entry);
  }
  return entries;
}

// The entries of a section as its lines have them.
Entries Expected(const std::vector<CString>& lines, int section) {
  Entries entries;
  int stars = 0;
  for (const CString& line : lines) {
    if (line.GetAt(0) == L'*') ++stars;
    const CString text = UpToZero(line);
    const std::vector<CString> words = WordsOf(text);
    if (stars != section + 1 || line.GetAt(0) == L'*' || words.empty() || words[0].GetLength() > 4) continue;
    const std::wstring_view whole = TrimBlanks(text.GetView());
    const std::wstring_view rest = whole.substr(static_cast<size_t>(words[0].GetLength()));
    entries.push_back({words[0], CString(TrimBlanks(rest)), 0, 0});
  }
  return entries;
}

Entries Cut(Entries entries, int size) {
  for (Entry& entry : entries) {
    entry.name = entry.name.Left(size - 1);
    entry.text = entry.text.Left(size - 1);
  }
  return entries;
}

// What a rewrite cannot keep: alone at the start of a line it would end the section, and a class without
// a text takes its limits for one.
bool IsUnstable(const Entry& entry) { return entry.name.GetAt(0) == L'*' || entry.text.IsEmpty(); }

}  // namespace

void Run(const Input& input) {
  constexpr int kLarge = 5000;
  CProjPath project;
  project.SetPath(Scratch(L"").Left(Scratch(L"").GetLength() - 1));
  const CString path = Put(L"MILJKOD.DAT", input.File());
  CTundrilInst facade;
  facade.Init(nullptr, &project);
  const int size = 1 + static_cast<int>(input.Bytes(0).empty() ? 5 : input.Bytes(0)[0] & 0x3F);
  const std::vector<CString> lines = LinesOf(path);
  std::array<Entries, 4> before;
  bool stable = true;
  for (int section = 0; section < 4; ++section) {
    Require(Read(&facade, section, size, false) == Cut(Expected(lines, section), size),
            "every entry is read");
    before[static_cast<size_t>(section)] = Read(&facade, section, kLarge, section == kClassSection);
    for (const Entry& entry : before[static_cast<size_t>(section)]) stable = stable && !IsUnstable(entry);
  }
  facade.MiljkodUppdatX();
  const std::string updated = ReadBytes(path);
  if (!stable) return;
  for (const RequiredMiljkod& code : kRequiredMiljkods) {
    Entries& expected = before[static_cast<size_t>(code.section)];
    const bool there =
        std::any_of(expected.begin(), expected.end(), [&](const Entry& e) { return e.name == code.name; });
    const bool is_class = code.section == kClassSection;
    if (!there)
      expected.push_back(
          {code.name, code.text, is_class ? code.limits.max : 0, is_class ? code.limits.step : 0});
    Require(Read(&facade, code.section, kLarge, is_class) == expected,
            "nothing is lost, what was missing is there");
  }
  facade.MiljkodUppdatX();
  Require(ReadBytes(path) == updated, "a complete file is left alone");
}

}  // namespace velmora::fuzz
