// Title-block files, a line a call.
#include "velmora/settings/code_lines.h"
#include "velmora/settings/code_stream.h"
#include "velmora/settings/field_text.h"
#include "velmora/settings/tundril_inst.h"
#include "velmora/text/numbers.h"

namespace velmora {

int CTundrilInst::StampParRead(const wchar_t* path, wchar_t* name, int nameSize, wchar_t* word, int wordSize,
                               double* first, double* second, double* third) {
  if (!IsCodeFileOpen()) {
    const CString file = path;
    if (file.IsEmpty()) return 0;
    m_pCodeFile = OpenCodeFile(file, L"Läsning av Tundril - Stämpel inställningar", SettingsFileKind::kStamp);
    if (m_pCodeFile == nullptr) return -1;
  }
  CString line;
  if (!NextCodeLine(&line)) return 0;
  const std::optional<CodeEntry> field = ParseStampField(line.GetView());
  if (!field) return -2;
  CopyToBuffer(name, nameSize, field->code.GetView());
  CopyToBuffer(word, wordSize, field->fields[kStampWord].GetView());
  double* const numbers[] = {first, second, third};
  for (size_t i = 0; i < 3; ++i)
    if (numbers[i] != nullptr)
      *numbers[i] = ParseNumber(field->fields[kStampFirst + i].GetView()).value_or(0);
  return 1;
}

int CTundrilInst::StampParWrite(const wchar_t* path, int mode, const wchar_t* name, const wchar_t* word,
                                const wchar_t* first, const wchar_t* second, const wchar_t* third) {
  if (mode == 1) {
    const CString file = path;
    if (file.IsEmpty()) return 0;
    EndCodeFile();
    m_pCodeFile = RewriteCodeFile(file, file, L"Skrivning av Tundril - Stämpel inställningar");
    return 0;
  }
  if (!IsCodeFileOpen()) return -1;
  if (mode == 2) {
    CString line;
    line.Format(L"%s %s %s %s %s\n", CString(name), CString(word), CString(first), CString(second),
                CString(third));
    m_pCodeFile->Write(line.GetView());
  } else if (mode == 3) {
    FinishCodeFile(L"");
  }
  return 0;
}

}  // namespace velmora
