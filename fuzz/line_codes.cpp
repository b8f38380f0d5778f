// LINKOD.PAR: reading into buffers of any size, and writing. Argument: the size.
#include "fuzz/support/code_rows.h"
#include "fuzz/support/scratch.h"

namespace velmora::fuzz {
namespace {

Rows Read(CTundrilInst* facade, int size) {
  return ReadRows(3, size, [&](auto& b, std::vector<double>* numbers) {
    double number = 0;
    int value = 0;
    const int kind =
        facade->LinkodRead(b[0].data(), size, b[1].data(), size, b[2].data(), size, &number, &value);
    Require(kind == -2 || (kind >= 0 && kind <= 3), "a kind of line");
    // An ordinary code is written without its integer.
    if (kind > 0) numbers->push_back(number);
    if (kind > 1) numbers->push_back(value);
    return kind;
  });
}

// Whether the line has room for the fields, with a blank to the description, and is neither an end nor a
// mark.
bool CanBeWritten(const Row& row, const std::string& file) {
  if (row.kind < 0 || row.texts[0].IsEmpty() || row.texts[0].GetAt(0) == L'*') return false;
  int length = row.texts[0].GetLength() + row.texts[1].GetLength();
  for (const double number : row.numbers) length += AsText(number).GetLength();
  return length < 42 && CanHold(file, row.texts[0].GetView());
}

}  // namespace

void Run(const Input& input) {
  const CString path = Put(L"LINKOD.PAR", input.File());
  ProjectSettings settings;
  CTundrilInst& facade = settings.facade;
  const int size = SmallSize(input);
  const Rows cut = Read(&facade, size);
  Rows rows = Read(&facade, kLargeSize);
  Require(rows.size() == LinesBeforeEnd(path), "each line before the end is told");
  Require(cut == Cut(rows, size), "texts are cut to their buffers");

  std::erase_if(rows, [&](const Row& row) { return !CanBeWritten(row, input.File()); });
  facade.LinkodWrite(1, nullptr, nullptr, nullptr, nullptr, nullptr);
  for (const Row& row : rows)
    facade.LinkodWrite(row.kind == 1 ? 2 : 4, row.texts[0], row.texts[1], AsText(row.numbers[0]),
                       row.texts[2], AsText(row.numbers.back()));
  facade.LinkodWrite(5, nullptr, nullptr, nullptr, nullptr, nullptr);
  Require(Read(&facade, kLargeSize) == rows, "what was written is read");
}

}  // namespace velmora::fuzz
