// LINKOD.PAR: reading into buffers of any size, and writing. Argument: the size.
#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/tundril_inst.h"
#include "velmora/text/numbers.h"

namespace velmora::fuzz {
namespace {

struct Code {
  int kind = 0;
  CString code, word, text;
  double number = 0;
  int value = 0;
};

CString Shortest(double number) {
  const std::string text = FormatShortest(number);
  return CString(std::wstring_view(std::wstring(text.begin(), text.end())));
}

CString Decimal(int value) {
  CString text;
  text.Format(L"%d", value);
  return text;
}

std::vector<Code> Read(CTundrilInst* facade, int size) {
  std::vector<Code> codes;
  std::vector<wchar_t> code(static_cast<size_t>(size)), word(code), text(code);
  for (;;) {
    Code read;
    read.kind = facade->LinkodRead(code.data(), size, word.data(), size, text.data(), size, &read.number,
                                   &read.value);
    if (read.kind == 0) return codes;
    Require(read.kind == -2 || (read.kind >= 1 && read.kind <= 3), "a kind of line");
    if (read.kind > 0) {
      read.code = code.data();
      read.word = word.data();
      read.text = text.data();
    }
    codes.push_back(read);
  }
}

// Whether the line has room for the fields, with a blank to the description, and is no end.
bool Fits(const Code& code) {
  const CString fields = code.code + code.word + Shortest(code.number) + Decimal(code.value);
  return code.kind > 0 && code.code.GetAt(0) != L'*' && !code.code.IsEmpty() && fields.GetLength() < 42;
}

void Write(CTundrilInst* facade, const std::vector<Code>& codes) {
  facade->LinkodWrite(1, nullptr, nullptr, nullptr, nullptr, nullptr);
  for (const Code& code : codes)
    facade->LinkodWrite(code.kind == 1 ? 2 : 4, code.code, code.word, Shortest(code.number), code.text,
                        Decimal(code.value));
  facade->LinkodWrite(5, nullptr, nullptr, nullptr, nullptr, nullptr);
}

}  // namespace

void Run(const Input& input) {
  CProjPath project;
  project.SetPath(Scratch(L"").Left(Scratch(L"").GetLength() - 1));
  const CString path = Put(L"LINKOD.PAR", input.File());
  CTundrilInst facade;
  facade.Init(nullptr, &project);
  const int size = 1 + static_cast<int>(input.Bytes(0).empty() ? 5 : input.Bytes(0)[0] & 0x3F);
  const std::vector<Code> cut = Read(&facade, size);
  std::vector<Code> codes = Read(&facade, 5000);
  const std::vector<CString> lines = LinesOf(path);
  const auto end =
      std::find_if(lines.begin(), lines.end(), [](const CString& line) { return line.GetAt(0) == L'*'; });
  Require(codes.size() == static_cast<size_t>(end - lines.begin()), "each line before the end is told");
  Require(cut.size() == codes.size(), "whatever the buffers hold");
  for (size_t i = 0; i < codes.size(); ++i)
    Require(cut[i].kind == codes[i].kind && cut[i].code == codes[i].code.Left(size - 1) &&
                cut[i].word == codes[i].word.Left(size - 1) && cut[i].text == codes[i].text.Left(size - 1),
            "texts are cut to their buffers");

  std::erase_if(codes,
                [&](const Code& code) { return !Fits(code) || !CanHold(input.File(), code.code.GetView()); });
  Write(&facade, codes);
  const std::vector<Code> again = Read(&facade, 5000);
  Require(again.size() == codes.size(), "what was written is read");
  for (size_t i = 0; i < codes.size(); ++i)
    Require(again[i].kind == codes[i].kind && again[i].code == codes[i].code &&
                again[i].word == codes[i].word && again[i].text == codes[i].text &&
                Same(again[i].number, codes[i].number) &&
                (codes[i].kind == 1 || again[i].value == codes[i].value),
            "as it was");
}

}  // namespace velmora::fuzz
