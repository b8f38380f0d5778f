// KODFIL.DAT, an entry a call.
#include "velmora/project/proj_path.h"
#include "velmora/settings/code_files.h"
#include "velmora/settings/code_stream.h"
#include "velmora/settings/field_text.h"
#include "velmora/settings/settings_file.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora {
namespace {

std::shared_ptr<CodeStream> BeginKodfil(const CString& path) {
  const CString temporary = TemporaryPathFor(path);
  const std::shared_ptr<CodeStream> stream = RewriteCodeFile(
      path, path + L"\n" + temporary, L"Skrivning av Tundril - kodfil.dat inställningar", temporary);
  if (stream != nullptr && !CopyKodfilHeader(path, stream.get())) stream->Fail();
  return stream;
}

}  // namespace

int CTundrilInst::KodfilDatRead(wchar_t* code, int codeSize, wchar_t* text, int textSize) {
  if (!IsCodeFileOpen()) {
    const CString path = FindSettingsFile(ini_, project_, CProjPath::Kodfil);
    if (path.IsEmpty()) return -1;
    m_pCodeFile =
        OpenCodeFile(path, L"Läsning av Velmora - kodfil.dat inställningar", SettingsFileKind::kObjects);
    if (m_pCodeFile == nullptr) return -1;
  }
  for (CString line; m_pCodeFile->ReadLine(&line);) {
    const std::optional<CodeEntry> entry = ParseObjectCode(line.GetView());
    if (!entry || entry->fields[kObjectText].IsEmpty()) continue;
    // Callers rely on receiving only the first word of the text (tests/settings/file_cases.txt).
    std::wstring_view whole = entry->fields[kObjectText].GetView();
    CopyToBuffer(code, codeSize, entry->code.GetView());
    CopyToBuffer(text, textSize, TakeWord(&whole));
    return 0;
  }
  EndCodeFile();
  return -1;
}

int CTundrilInst::KodfilDatWrite(int mode, const wchar_t* code, const wchar_t* text) {
  if (mode == 1 || mode == 3) {
    const CString path = FindSettingsFile(ini_, project_, CProjPath::Kodfil);
    EndCodeFile();
    if (!path.IsEmpty()) m_pCodeFile = BeginKodfil(path);
  }
  if (m_pCodeFile == nullptr) return 0;
  const CString entry = code;
  if (!entry.IsEmpty()) m_pCodeFile->Write(FormatCode(entry.GetView(), CString(text).GetView()).GetView());
  if (mode >= 2) FinishCodeFile(L"*\n");
  return 0;
}

}  // namespace velmora
