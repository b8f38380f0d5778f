// MILJKOD.DAT, an entry a call, and the codes that must be in it.
#include <array>
#include <vector>

#include "velmora/project/proj_path.h"
#include "velmora/settings/code_format.h"
#include "velmora/settings/code_stream.h"
#include "velmora/settings/field_text.h"
#include "velmora/settings/miljkod_format.h"
#include "velmora/settings/settings_file.h"
#include "velmora/settings/settings_messages.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora {
namespace {

constexpr wchar_t kReading[] = L"Läsning av Tundril - Miljkod.dat inställningar";
constexpr wchar_t kWriting[] = L"Skrivning av Tundril - Miljkod.dat inställningar";

struct Entry {
  CString name;
  CString text;
  MiljkodLimits limits;
};
using Section = std::vector<Entry>;
constexpr size_t kMostEntries = size_t{1} << 17;  // of a section that is rewritten

std::shared_ptr<CodeStream> OpenSection(const CString& path, int section) {
  std::shared_ptr<CodeStream> stream = OpenCodeFile(path, kReading);
  if (stream == nullptr) return nullptr;
  int stars = 0;
  for (CString line; stars <= section && stream->ReadLine(&line);)
    if (IsStarLine(line.GetView())) ++stars;
  return stream;
}

// The next entry of the section; false at its end.
bool NextEntry(CodeStream* stream, Entry* entry, bool with_limits) {
  for (CString line; stream->ReadLine(&line) && !IsStarLine(line.GetView());) {
    const MiljkodLine parsed = ParseMiljkodLine(line.GetView());
    if (parsed.kind == MiljkodLine::Kind::kTooLong)
      ShowMessage(FormatForUser(L"Fel rad, namn är för långt\n%s", line), MB_OK);
    if (parsed.kind != MiljkodLine::Kind::kEntry) continue;
    *entry = {parsed.name, parsed.text, {}};
    if (with_limits) entry->limits = TakeMiljkodLimits(&entry->text);
    return true;
  }
  return false;
}

// A whole section. False when the file cannot be read to the section's end, or holds more than any suite
// wrote.
bool ReadSection(const CString& path, int number, Section* section) {
  const std::shared_ptr<CodeStream> stream = OpenSection(path, number);
  if (stream == nullptr) return false;
  for (Entry entry; NextEntry(stream.get(), &entry, number == kClassSection);) {
    if (section->size() == kMostEntries) return false;
    section->push_back(entry);
  }
  return !stream->ReadFailed();
}

// Appends the code when its section has none of that name.
bool AddRequired(const RequiredMiljkod& code, Section* section) {
  for (const Entry& entry : *section)
    if (entry.name == code.name) return false;
  section->push_back({code.name, code.text, code.limits});
  return true;
}

}  // namespace

int CTundrilInst::MiljkodRead(int section, wchar_t* name, int nameSize, wchar_t* text, int textSize, int* max,
                              int* steg) {
  if (!IsCodeFileOpen()) {
    const CString path = FirstExisting(SettingsFilePaths(ini_, project_, CProjPath::Miljkod));
    if (path.IsEmpty()) return -1;
    m_pCodeFile = OpenSection(path, section);
    if (m_pCodeFile == nullptr) return -1;
  }
  Entry entry;
  const bool with_limits = max != nullptr && steg != nullptr;
  if (!NextEntry(m_pCodeFile.get(), &entry, with_limits)) {
    EndCodeFile();
    return -1;
  }
  CopyToBuffer(name, nameSize, entry.name.GetView());
  CopyToBuffer(text, textSize, entry.text.GetView());
  if (with_limits) {
    *max = entry.limits.max;
    *steg = entry.limits.step;
  }
  return 0;
}

int CTundrilInst::MiljKodWrite(int mode, const wchar_t* name, const wchar_t* text, int max, int steg) {
  if (mode == 1) {
    const CString path = FirstExisting(SettingsFilePaths(ini_, project_, CProjPath::Miljkod));
    EndCodeFile();
    if (!path.IsEmpty()) m_pCodeFile = RewriteCodeFile(path, path, kWriting);
    if (m_pCodeFile != nullptr) m_pCodeFile->Write(L"*\n*\n");
    return 0;
  }
  if (!IsCodeFileOpen()) return -1;
  const CString entry_name = name;
  const CString entry_text = text;
  switch (mode) {
    case 2:
    case 4:
      m_pCodeFile->Write(FormatCode(entry_name.GetView(), entry_text.GetView()).GetView());
      break;
    case 3:
    case 5:
      m_pCodeFile->Write(L"*\n");
      break;
    case 6:
      m_pCodeFile->Write(
          FormatMiljkodClass(entry_name.GetView(), entry_text.GetView(), {max, steg}).GetView());
      break;
    case 7:
      FinishCodeFile(L"*\n");
      break;
    default:
      break;
  }
  return 0;
}

int CTundrilInst::MiljkodUppdatX() {
  const CString path = FirstExisting(SettingsFilePaths(ini_, project_, CProjPath::Miljkod));
  if (path.IsEmpty()) return 0;
  EndCodeFile();

  std::array<Section, kRequiredMiljkods.size()> sections;
  bool readable = true;
  bool complete = true;
  for (size_t i = 0; i < sections.size(); ++i) {
    readable = ReadSection(path, kRequiredMiljkods[i].section, &sections[i]) && readable;
    if (AddRequired(kRequiredMiljkods[i], &sections[i])) complete = false;
  }
  if (complete) return 0;
  // What could not be read would be lost.
  if (!readable) {
    TellUnwritable(path, kWriting);
    return 0;
  }
  constexpr std::array<int, 3> kEntry = {2, 4, 6};  // modes of MiljKodWrite
  constexpr std::array<int, 3> kEnd = {3, 5, 7};
  MiljKodWrite(1, L"", L"", 0, 0);
  for (size_t i = 0; i < sections.size(); ++i) {
    for (const Entry& entry : sections[i])
      MiljKodWrite(kEntry[i], entry.name, entry.text, entry.limits.max, entry.limits.step);
    MiljKodWrite(kEnd[i], L"", L"", 0, 0);
  }
  return 0;
}

}  // namespace velmora
