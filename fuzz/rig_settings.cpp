// JB23.PAR: its records, its values on disk, and writes that leave every other line. Arguments: a value, then
// keys that it is written under.
#include "fuzz/support/code_rows.h"
#include "fuzz/support/scratch.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/settings/jb23_par.h"

namespace velmora::fuzz {
namespace {

CString Word(const CString& line, bool second) {
  const std::vector<CString> words = WordsOf(UpToZero(line));
  return words.size() > (second ? 1 : 0) ? words[second ? 1 : 0] : CString();
}

CString Cut(const CString& word) { return word.Left(255); }

void RequireRecords(CProjPath* project, const std::vector<CString>& lines) {
  CJb23Par records(nullptr, project);
  size_t i = 0;
  for (int at = records.Home(); at == 0; at = records++ == nullptr ? -1 : 0, ++i) {
    Require(i / 2 < lines.size(), "two records a line");
    Require(FieldText(records.pael->varde) == Cut(Word(lines[i / 2], i % 2 != 0)).GetView(), "their values");
  }
  Require(i == 2 * lines.size() || lines.size() > 4096, "all of them");
}

void RequireOneLineChanges(const std::vector<CString>& before, const std::vector<CString>& after, int line) {
  const size_t at = std::min(static_cast<size_t>(line) - 1, before.size());
  Require(after.size() == std::max(before.size(), at + 1), "a missing line is added");
  for (size_t i = 0; i < before.size(); ++i)
    Require(i == at || after[i] == before[i], "every other line is kept");
}

}  // namespace

void Run(const Input& input) {
  ProjectSettings settings;
  const CString path = Put(L"JB23.PAR", input.File());
  std::vector<CString> lines = LinesOf(path);
  RequireRecords(&settings.project, lines);
  CTundrilInst& facade = settings.facade;
  for (const size_t i : {0U, 1U, 8U, 10U}) {
    const CString line = i < lines.size() ? lines[i] : CString();
    Require(facade.Jb23ReadKey(kJb23Lines[i].scale) == Word(line, false), "a scale is a line's first word");
    Require(facade.Jb23ReadKey(kJb23Lines[i].step) == Word(line, true), "a step is its second");
  }
  const CString value = input.Text(0);
  for (size_t i = 1; i < input.Arguments(); ++i) {
    const CString key = input.Text(i);
    const std::string before = ReadBytes(path);
    facade.Jb23WriteKey(key, value);
    const Jb23Place place = PlaceOfJb23Key(key.GetView());
    const bool at_start = place.line == 1 && !place.step;
    if (!CanHold(before, (at_start ? value : L" " + value).GetView())) {
      Require(ReadBytes(path) == before, "a refused write leaves the file");
      continue;
    }
    const std::vector<CString> after = LinesOf(path);
    RequireOneLineChanges(lines, after, place.line);
    const auto line = static_cast<size_t>(place.line) - 1;
    const bool whole = line >= lines.size() || lines[line].Find(L'\0') < 0;
    const bool scale_is_there = !place.step || line >= lines.size() || !Word(lines[line], false).IsEmpty();
    if (line <= lines.size() && whole && scale_is_there && WordsOf(value).size() == 1)
      Require(facade.Jb23ReadKey(key) == WordsOf(value)[0], "what was written is read");
    lines = after;
    facade.WriteKey(L"JB23.PAR", key, value);
    lines = LinesOf(path);
  }
}

}  // namespace velmora::fuzz
