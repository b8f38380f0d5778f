// KODFIL.DAT: reading into buffers of any size, and a rewrite that keeps the header. Argument: the size.
#include "fuzz/support/code_rows.h"
#include "fuzz/support/scratch.h"

namespace velmora::fuzz {
namespace {

Rows Read(CTundrilInst* facade, int size) {
  return ReadRows(2, size, [&](auto& buffers, auto*) {
    return facade->KodfilDatRead(buffers[0].data(), size, buffers[1].data(), size) == 0 ? 1 : 0;
  });
}

}  // namespace

void Run(const Input& input) {
  const CString path = Put(L"KODFIL.DAT", input.File());
  std::vector<CString> header;
  Rows expected;
  bool in_header = true;
  for (const CString& line : LinesOf(path)) {
    const std::vector<CString> words = WordsOf(UpToZero(line));
    if (in_header) header.push_back(line);
    if (!in_header && words.size() > 1) expected.push_back({1, {words[0], words[1]}, {}});
    in_header = in_header && line.GetAt(0) != L'*';
  }
  ProjectSettings settings;
  const int size = SmallSize(input);
  Require(Read(&settings.facade, size) == Cut(expected, size), "every entry is read, cut to its buffer");
  Require(Read(&settings.facade, kLargeSize) == expected, "a second sequence reads the same");

  settings.facade.KodfilDatWrite(1, nullptr, nullptr);
  for (const Row& row : expected) settings.facade.KodfilDatWrite(0, row.texts[0], row.texts[1]);
  settings.facade.KodfilDatWrite(2, nullptr, nullptr);
  std::vector<CString> lines = LinesOf(path);
  Require(lines.size() == header.size() + expected.size() + 1, "a line for each entry and the end");
  lines.resize(header.size());
  Require(lines == header, "the header is kept");
  Require(in_header || Read(&settings.facade, kLargeSize) == expected, "what was written is read");
}

}  // namespace velmora::fuzz
