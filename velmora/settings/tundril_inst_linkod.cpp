// LINKOD.PAR, a line a call.
#include "velmora/project/proj_path.h"
#include "velmora/settings/code_lines.h"
#include "velmora/settings/code_stream.h"
#include "velmora/settings/field_text.h"
#include "velmora/settings/settings_file.h"
#include "velmora/settings/tundril_inst.h"
#include "velmora/text/numbers.h"

namespace velmora {

int CTundrilInst::LinkodRead(wchar_t* code, int codeSize, wchar_t* word, int wordSize, wchar_t* text,
                             int textSize, double* number, int* value) {
  if (!IsCodeFileOpen()) {
    const CString path = FindSettingsFile(ini_, project_, CProjPath::Linkod);
    if (path.IsEmpty()) return 0;
    m_pCodeFile =
        OpenCodeFile(path, L"Läsning av Tundril - Linkod.dat inställningar", SettingsFileKind::kLines);
    if (m_pCodeFile == nullptr) return -1;
  }
  CString line;
  if (!NextCodeLine(&line)) return 0;
  const std::optional<CodeEntry> entry = ParseLineCode(line.GetView());
  if (!entry) return -2;
  const LineCodeGroup group = GroupOfLineCode(entry->code.GetView());
  const size_t prefix = group == LineCodeGroup::kOrdinary ? 0 : kPvLength;
  CopyToBuffer(code, codeSize, entry->code.GetView().substr(prefix));
  CopyToBuffer(word, wordSize, entry->fields[kLineWord].GetView());
  CopyToBuffer(text, textSize, entry->fields[kLineText].GetView());
  if (number != nullptr) *number = ParseNumber(entry->fields[kLineNumber].GetView()).value_or(0);
  if (value != nullptr && !NumberScanner(entry->fields[kLineValue].GetView()).Next(value)) *value = 0;
  return static_cast<int>(group);
}

int CTundrilInst::LinkodWrite(int mode, const wchar_t* code, const wchar_t* word, const wchar_t* number,
                              const wchar_t* text, const wchar_t* value) {
  if (mode == 1) {
    const CString path = FindSettingsFile(ini_, project_, CProjPath::Linkod);
    EndCodeFile();
    if (!path.IsEmpty())
      m_pCodeFile = RewriteCodeFile(path, path, L"Skrivning av Tundril - Linkod.par inställningar");
    return 0;
  }
  if (!IsCodeFileOpen()) return -1;
  CString fields;
  switch (mode) {
    case 2:
      fields.Format(L"%s %s %s", CString(code), CString(word), CString(number));
      m_pCodeFile->Write(FormatLineCode(fields.GetView(), CString(text).GetView()).GetView());
      break;
    case 4:
      fields.Format(L"PV%s %s %s %s", CString(code), CString(word), CString(number), CString(value));
      m_pCodeFile->Write(FormatLineCode(fields.GetView(), CString(text).GetView()).GetView());
      break;
    case 5:
      FinishCodeFile(L"*\n");
      break;
    default:
      break;
  }
  return 0;
}

}  // namespace velmora
