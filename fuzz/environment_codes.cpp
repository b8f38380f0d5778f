// MILJKOD.DAT: reading into buffers of any size, and the rewrite that adds the required codes. Argument: the
// size.
#include <algorithm>
#include <array>

#include "fuzz/support/code_rows.h"
#include "fuzz/support/scratch.h"
#include "velmora/settings/miljkod_format.h"
#include "velmora/text/letters.h"

namespace velmora::fuzz {
namespace {

Rows Read(CTundrilInst* facade, int section, int size, bool limits) {
  return ReadRows(2, size, [&](auto& buffers, std::vector<double>* numbers) {
    int max = 0;
    int step = 0;
    if (facade->MiljkodRead(section, buffers[0].data(), size, buffers[1].data(), size,
                            limits ? &max : nullptr, limits ? &step : nullptr) != 0)
      return 0;
    if (limits) *numbers = {static_cast<double>(max), static_cast<double>(step)};
    Require(!limits || (max >= 0 && max <= 100'000 && step > 0 && step <= 100'000),
            "limits are within bounds");
    return 1;
  });
}

// A section as its lines have it.
Rows Expected(const std::vector<CString>& lines, int section) {
  Rows rows;
  int stars = 0;
  for (const CString& line : lines) {
    if (line.GetAt(0) == L'*') ++stars;
    const CString text = UpToZero(line);
    const std::vector<CString> words = WordsOf(text);
    if (stars != section + 1 || line.GetAt(0) == L'*' || words.empty() || words[0].GetLength() > 4) continue;
    const std::wstring_view rest = TrimBlanks(text.GetView()).substr(words[0].GetView().size());
    rows.push_back({1, {words[0], CString(TrimBlanks(rest))}, {}});
  }
  return rows;
}

// What a rewrite cannot keep: at the start of its line it would end the section, and a class without a text
// takes its limits for one.
bool IsUnstable(const Row& row) { return row.texts[0].GetAt(0) == L'*' || row.texts[1].IsEmpty(); }

}  // namespace

void Run(const Input& input) {
  const CString path = Put(L"MILJKOD.DAT", input.File());
  const std::vector<CString> lines = LinesOf(path);
  ProjectSettings settings;
  CTundrilInst& facade = settings.facade;
  const int size = SmallSize(input);
  std::array<Rows, 4> rows;
  bool stable = true;
  for (int section = 0; section < 4; ++section) {
    Require(Read(&facade, section, size, false) == Cut(Expected(lines, section), size),
            "every entry is read");
    Rows& read = rows[static_cast<size_t>(section)];
    read = Read(&facade, section, kLargeSize, section == kClassSection);
    stable = stable && std::none_of(read.begin(), read.end(), IsUnstable);
  }
  facade.MiljkodUppdatX();
  const std::string updated = ReadBytes(path);
  if (!stable) return;
  for (const RequiredMiljkod& code : kRequiredMiljkods) {
    Rows& expected = rows[static_cast<size_t>(code.section)];
    Row row{1, {code.name, code.text}, {}};
    if (code.section == kClassSection)
      row.numbers = {static_cast<double>(code.limits.max), static_cast<double>(code.limits.step)};
    const auto is_it = [&](const Row& other) { return other.texts[0] == code.name; };
    if (std::none_of(expected.begin(), expected.end(), is_it)) expected.push_back(row);
    Require(Read(&facade, code.section, kLargeSize, code.section == kClassSection) == expected,
            "nothing is lost, what was missing is there");
  }
  facade.MiljkodUppdatX();
  Require(ReadBytes(path) == updated, "a complete file is left alone");
}

}  // namespace velmora::fuzz
