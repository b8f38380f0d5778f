// MILJKOD.DAT, an entry a call, and the codes that must be in it.
#include <algorithm>
#include <optional>

#include "velmora/common/last_message.h"
#include "velmora/common/messages.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/code_files.h"
#include "velmora/settings/code_stream.h"
#include "velmora/settings/field_text.h"
#include "velmora/settings/settings_file.h"
#include "velmora/settings/tundril_inst.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr wchar_t kReading[] = L"Läsning av Tundril - Miljkod.dat inställningar";
constexpr wchar_t kWriting[] = L"Skrivning av Tundril - Miljkod.dat inställningar";

constexpr size_t kMostEntries = size_t{1} << 17;  // of a section that is rewritten

std::shared_ptr<CodeStream> OpenSection(const CString& path, int section) {
  return OpenCodeFile(path, kReading, SettingsFileKind::kEnvironment, section);
}

// The next entry of the section; nothing at its end.
std::optional<CodeEntry> NextEntry(CodeStream* stream, bool with_limits) {
  for (CString line; stream->ReadEntryLine(&line);) {
    std::optional<CodeEntry> entry = ParseMiljkod(line.GetView(), with_limits);
    if (entry) return entry;
    if (!TrimBlanks(line.GetView()).empty())
      ShowMessage(FormatForUser(L"Fel rad, namn är för långt\n%s", line), MB_OK);
  }
  return std::nullopt;
}

// Appends a whole section. False when the file cannot be read to the section's end, or holds more than the
// suite writes.
bool ReadSection(const CString& path, int section, CodeEntries* entries) {
  const std::shared_ptr<CodeStream> stream = OpenSection(path, section);
  if (stream == nullptr) return false;
  const size_t before = entries->size();
  while (std::optional<CodeEntry> entry = NextEntry(stream.get(), section == kClassSection)) {
    if (entries->size() - before == kMostEntries) return false;
    entry->section = section;
    entries->push_back(*std::move(entry));
  }
  return !stream->ReadFailed();
}

}  // namespace

int CTundrilInst::MiljkodRead(int section, wchar_t* name, int nameSize, wchar_t* text, int textSize, int* max,
                              int* steg) {
  if (!IsCodeFileOpen()) {
    const CString path = FindSettingsFile(ini_, project_, CProjPath::Miljkod);
    if (path.IsEmpty()) return -1;
    m_pCodeFile = OpenSection(path, section);
    if (m_pCodeFile == nullptr) return -1;
  }
  const bool with_limits = max != nullptr && steg != nullptr;
  const std::optional<CodeEntry> entry = NextEntry(m_pCodeFile.get(), with_limits);
  if (!entry) {
    EndCodeFile();
    return -1;
  }
  CopyToBuffer(name, nameSize, entry->code.GetView());
  CopyToBuffer(text, textSize, entry->fields[kMiljkodText].GetView());
  if (with_limits) {
    const MiljkodLimits limits = LimitsOf(*entry);
    *max = limits.max;
    *steg = limits.step;
  }
  return 0;
}

int CTundrilInst::MiljKodWrite(int mode, const wchar_t* name, const wchar_t* text, int max, int steg) {
  if (mode == 1) {
    const CString path = FindSettingsFile(ini_, project_, CProjPath::Miljkod);
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
  const CString path = FindSettingsFile(ini_, project_, CProjPath::Miljkod);
  if (path.IsEmpty()) return 0;
  EndCodeFile();

  CodeEntries entries;
  bool readable = true;
  for (const int section : {kMethodSection, kInterpretationSection, kClassSection})
    readable = ReadSection(path, section, &entries) && readable;
  const CodeEntries missing = MissingMiljkods(entries);
  if (missing.empty()) return 0;
  entries.insert(entries.end(), missing.begin(), missing.end());
  // What could not be read, and entries that a rewrite leaves out, would be lost.
  const bool whole = readable && std::none_of(entries.begin(), entries.end(), [](const CodeEntry& entry) {
                       return IsLostAsStarLine(SettingsFileKind::kEnvironment, entry);
                     });
  if (!whole || !ReplaceCodes(SettingsFileKind::kEnvironment, path, entries)) ShowUnwritable(path, kWriting);
  return 0;
}

}  // namespace velmora
