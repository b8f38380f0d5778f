#include "fuzz/support/code_rows.h"

#include <algorithm>

#include "fuzz/support/scratch.h"
#include "velmora/text/numbers.h"

namespace velmora::fuzz {

ProjectSettings::ProjectSettings() {
  project.SetPath(ScratchFolder());
  facade.Init(nullptr, &project);
}

bool Row::operator==(const Row& other) const {
  return kind == other.kind && texts == other.texts &&
         std::equal(numbers.begin(), numbers.end(), other.numbers.begin(), other.numbers.end(), Same);
}

Rows Cut(Rows rows, int size) {
  for (Row& row : rows)
    for (CString& text : row.texts) text = text.Left(size - 1);
  return rows;
}

int SmallSize(const Input& input) { return 1 + (input.Bytes(0).empty() ? 5 : input.Bytes(0)[0] & 0x3F); }

size_t LinesBeforeEnd(const CString& path) {
  const std::vector<CString> lines = LinesOf(path);
  const auto is_star = [](const CString& line) { return line.GetAt(0) == L'*'; };
  return static_cast<size_t>(std::find_if(lines.begin(), lines.end(), is_star) - lines.begin());
}

CString AsText(double number) {
  const std::string text = FormatShortest(number);
  return CString(std::wstring_view(std::wstring(text.begin(), text.end())));
}

}  // namespace velmora::fuzz
