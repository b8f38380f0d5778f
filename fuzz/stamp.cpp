// Title-block files: reading into buffers of any size, and writing. Argument: the size.
#include "fuzz/support/code_rows.h"
#include "fuzz/support/scratch.h"

namespace velmora::fuzz {
namespace {

Rows Read(CTundrilInst* facade, const CString& path, int size) {
  return ReadRows(2, size, [&](auto& b, std::vector<double>* numbers) {
    double n[3] = {};
    const int kind = facade->StampParRead(path, b[0].data(), size, b[1].data(), size, &n[0], &n[1], &n[2]);
    Require(kind == 0 || kind == 1 || kind == -2, "a kind of line");
    if (kind == 1) numbers->assign(n, n + 3);
    return kind;
  });
}

}  // namespace

void Run(const Input& input) {
  const CString path = Put(L"STAMPEL1.DAT", input.File());
  CTundrilInst facade;
  const int size = SmallSize(input);
  const Rows cut = Read(&facade, path, size);
  Rows rows = Read(&facade, path, kLargeSize);
  Require(rows.size() == LinesBeforeEnd(path), "each line before the end is told");
  Require(cut == Cut(rows, size), "texts are cut to their buffers");

  // A name that begins with "*" was found behind a blank, which is not written.
  std::erase_if(rows, [&](const Row& row) {
    return row.kind != 1 || row.texts[0].GetAt(0) == L'*' || !CanHold(input.File(), row.texts[0].GetView());
  });
  facade.StampParWrite(path, 1, nullptr, nullptr, nullptr, nullptr, nullptr);
  for (const Row& row : rows)
    facade.StampParWrite(path, 2, row.texts[0], row.texts[1], AsText(row.numbers[0]), AsText(row.numbers[1]),
                         AsText(row.numbers[2]));
  facade.StampParWrite(path, 3, nullptr, nullptr, nullptr, nullptr, nullptr);
  Require(Read(&facade, path, kLargeSize) == rows, "what was written is read");
}

}  // namespace velmora::fuzz
