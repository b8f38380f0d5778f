// Title-block files: reading into buffers of any size, and writing. Argument: the size.
#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/settings/tundril_inst.h"
#include "velmora/text/numbers.h"

namespace velmora::fuzz {
namespace {

struct Field {
  int result = 0;
  CString name, word;
  double numbers[3] = {};
};

std::vector<Field> Read(CTundrilInst* facade, const CString& path, int size) {
  std::vector<Field> fields;
  std::vector<wchar_t> name(static_cast<size_t>(size)), word(name);
  for (;;) {
    Field field;
    double* const n = field.numbers;
    field.result = facade->StampParRead(path, name.data(), size, word.data(), size, &n[0], &n[1], &n[2]);
    if (field.result == 0) return fields;
    Require(field.result == 1 || field.result == -2, "a kind of line");
    if (field.result == 1) {
      field.name = name.data();
      field.word = word.data();
    }
    fields.push_back(field);
  }
}

CString Shortest(double number) {
  const std::string text = FormatShortest(number);
  return CString(std::wstring_view(std::wstring(text.begin(), text.end())));
}

}  // namespace

void Run(const Input& input) {
  const CString path = Put(L"STAMPEL1.DAT", input.File());
  CTundrilInst facade;
  const int size = 1 + static_cast<int>(input.Bytes(0).empty() ? 5 : input.Bytes(0)[0] & 0x3F);
  const std::vector<Field> cut = Read(&facade, path, size);
  std::vector<Field> fields = Read(&facade, path, 5000);
  const std::vector<CString> lines = LinesOf(path);
  const auto end =
      std::find_if(lines.begin(), lines.end(), [](const CString& line) { return line.GetAt(0) == L'*'; });
  Require(fields.size() == static_cast<size_t>(end - lines.begin()), "each line before the end is told");
  Require(cut.size() == fields.size(), "whatever the buffers hold");
  for (size_t i = 0; i < fields.size(); ++i)
    Require(cut[i].name == fields[i].name.Left(size - 1) && cut[i].word == fields[i].word.Left(size - 1),
            "texts are cut to their buffers");

  // A name that begins so is only found behind a blank, which is not written.
  std::erase_if(fields, [&](const Field& field) {
    return field.result != 1 || field.name.GetAt(0) == L'*' || !CanHold(input.File(), field.name.GetView());
  });
  facade.StampParWrite(path, 1, nullptr, nullptr, nullptr, nullptr, nullptr);
  for (const Field& f : fields)
    facade.StampParWrite(path, 2, f.name, f.word, Shortest(f.numbers[0]), Shortest(f.numbers[1]),
                         Shortest(f.numbers[2]));
  facade.StampParWrite(path, 3, nullptr, nullptr, nullptr, nullptr, nullptr);
  const std::vector<Field> again = Read(&facade, path, 5000);
  Require(again.size() == fields.size(), "what was written is read");
  for (size_t i = 0; i < fields.size(); ++i) {
    Require(again[i].name == fields[i].name && again[i].word == fields[i].word, "as it was");
    for (size_t k = 0; k < 3; ++k)
      Require(Same(again[i].numbers[k], fields[i].numbers[k]), "with its numbers");
  }
}

}  // namespace velmora::fuzz
