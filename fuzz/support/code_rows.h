// The code files, whose readers are alike: an entry a call, its texts into buffers of the caller's.
#ifndef VELMORA_FUZZ_SUPPORT_CODE_ROWS_H_
#define VELMORA_FUZZ_SUPPORT_CODE_ROWS_H_

#include <string>
#include <vector>

#include "fuzz/support/input.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora::fuzz {

// The settings of a project that is the scratch folder.
struct ProjectSettings {
  ProjectSettings();
  CProjPath project;
  CTundrilInst facade;
};

struct Row {
  int kind = 0;  // 0: no further one; below: a line that is none
  std::vector<CString> texts;
  std::vector<double> numbers;
  bool operator==(const Row& other) const;
};
using Rows = std::vector<Row>;

// Texts cut to buffers of this size.
Rows Cut(Rows rows, int size);

// Characters of a buffer: by the first argument, and more than any line here has.
int SmallSize(const Input& input);
inline constexpr int kLargeSize = 5000;

// Reads a sequence to its end. `read` is given `texts` buffers, each of exactly `size` characters, and fills
// numbers; it returns the row's kind.
template <class Read>
Rows ReadRows(size_t texts, int size, Read read) {
  Rows rows;
  std::vector<std::vector<wchar_t>> buffers(texts, std::vector<wchar_t>(static_cast<size_t>(size)));
  for (;;) {
    Row row;
    row.kind = read(buffers, &row.numbers);
    if (row.kind == 0) return rows;
    if (row.kind > 0)
      for (const std::vector<wchar_t>& buffer : buffers) row.texts.emplace_back(buffer.data());
    rows.push_back(row);
  }
}

// How many lines stand before the first that begins with "*".
size_t LinesBeforeEnd(const CString& path);

// Numbers as text that reads back as they are.
CString AsText(double number);

}  // namespace velmora::fuzz

#endif  // VELMORA_FUZZ_SUPPORT_CODE_ROWS_H_
