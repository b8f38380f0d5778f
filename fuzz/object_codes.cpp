// KODFIL.DAT: reading into buffers of any size, and a rewrite that keeps the header. Argument: the size.
#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora::fuzz {
namespace {

using Entries = std::vector<std::pair<CString, CString>>;

// As they come in buffers of this size.
Entries Read(CTundrilInst* facade, int size) {
  Entries entries;
  std::vector<wchar_t> code(static_cast<size_t>(size));
  std::vector<wchar_t> text(static_cast<size_t>(size));
  while (facade->KodfilDatRead(code.data(), size, text.data(), size) == 0)
    entries.emplace_back(CString(code.data()), CString(text.data()));
  return entries;
}

Entries Cut(Entries entries, int size) {
  for (auto& [code, text] : entries) {
    code = code.Left(size - 1);
    text = text.Left(size - 1);
  }
  return entries;
}

}  // namespace

void Run(const Input& input) {
  CProjPath project;
  project.SetPath(Scratch(L"").Left(Scratch(L"").GetLength() - 1));
  const CString path = Put(L"KODFIL.DAT", input.File());
  std::vector<CString> header;
  Entries expected;
  bool in_header = true;
  for (const CString& line : LinesOf(path)) {
    const std::vector<CString> words = WordsOf(UpToZero(line));
    if (in_header) header.push_back(line);
    if (!in_header && words.size() > 1) expected.emplace_back(words[0], words[1]);
    in_header = in_header && line.GetAt(0) != L'*';
  }
  CTundrilInst facade;
  facade.Init(nullptr, &project);
  const int size = 1 + static_cast<int>(input.Bytes(0).empty() ? 5 : input.Bytes(0)[0] & 0x3F);
  Require(Read(&facade, size) == Cut(expected, size), "every entry is read, cut to its buffer");
  constexpr int kLarge = 5000;
  Require(Read(&facade, kLarge) == expected, "a second sequence reads the same");

  facade.KodfilDatWrite(1, nullptr, nullptr);
  for (const auto& [code, text] : expected) facade.KodfilDatWrite(0, code, text);
  facade.KodfilDatWrite(2, nullptr, nullptr);
  std::vector<CString> lines = LinesOf(path);
  Require(lines.size() == header.size() + expected.size() + 1, "a line for each entry and the end");
  lines.resize(header.size());
  Require(lines == header, "the header is kept");
  Require(in_header || Read(&facade, kLarge) == expected, "what was written is read");
}

}  // namespace velmora::fuzz
