#include "velmora/platform/profile.h"

#include <iterator>
#include <optional>
#include <string>

#include "velmora/platform/files.h"
#include "velmora/platform/profile_file.h"
#include "velmora/platform/profile_text.h"
#include "velmora/platform/types.h"
#include "velmora/text/codepage.h"

namespace velmora {
namespace {

CString Trimmed(const CString& text) { return CString(TrimProfileBlanks(text.GetView())); }

// The path that the system uses.
CString ProfilePath(const CString& file) {
  if (file.IsEmpty() || !IsBareFileName(file)) return file;
  wchar_t folder[MAX_PATH] = L"";
  const UINT length = GetSystemWindowsDirectoryW(folder, MAX_PATH);
  return length > 0 && length < MAX_PATH ? CString(folder) + L"\\" + file : file;
}

// The system reads and writes the user's code page, and UTF-16 with a mark. Other files are read and written
// by profile_file.h.
bool SystemKnows(TextEncoding encoding) {
  return encoding == TextEncoding::kUtf16Le || (encoding == TextEncoding::kWindows1252 && GetACP() == 1252);
}

// The system changes the file in place, which a crash can interrupt. It gets a copy of a fixed name instead,
// and the copy's content replaces the file in one step.
bool WriteThroughCopy(const CString& section, const CString& key, const wchar_t* value, const CString& path) {
  // Begin() holds the lock on the file and the copy until Commit().
  FileReplacement file;
  if (!file.Begin(path)) return false;
  const CString copy = path + L".velmora-ini";
  const bool there = FileOrFolderExists(path) ? CopyWholeFile(path, copy, /*keep_existing=*/false)
                                              : !FileOrFolderExists(copy) || RemoveWholeFile(copy);
  bool done = there && WritePrivateProfileStringW(section, key, value, copy) != FALSE;
  if (done && FileOrFolderExists(copy)) {
    const std::optional<std::string> changed = ReadProfileBytes(copy);
    done = changed && file.Write(*changed) && file.Commit();
  }
  (void)RemoveWholeFile(copy);
  return done;
}

bool CanEncode(const CString& text, TextEncoding encoding) {
  std::string ignored;
  return AppendEncoded(text.GetView(), encoding, &ignored);
}

}  // namespace

CString ReadProfile(const CString& section, const CString& key, const CString& file) {
  const CString path = ProfilePath(file);
  const CString trimmed_section = Trimmed(section);
  const CString trimmed_key = Trimmed(key);
  if (path.IsEmpty() || trimmed_section.IsEmpty() || trimmed_key.IsEmpty()) return {};
  if (!SystemKnows(ProfileEncoding(path))) return ReadProfileFile(section, std::span(&key, 1), path)[0];
  wchar_t value[kLongestProfileValue + 1] = L"";
  GetPrivateProfileStringW(trimmed_section, trimmed_key, L"", value, static_cast<DWORD>(std::size(value)),
                           file);
  return value;
}

std::vector<CString> ReadProfileKeys(const CString& section, std::span<const CString> keys,
                                     const CString& file) {
  const CString path = ProfilePath(file);
  if (!path.IsEmpty() && !SystemKnows(ProfileEncoding(path))) return ReadProfileFile(section, keys, path);
  std::vector<CString> values;
  for (const CString& key : keys) values.push_back(ReadProfile(section, key, file));
  return values;
}

bool WriteProfile(const CString& section, const CString& key, const wchar_t* value, const CString& file) {
  const std::optional<std::wstring_view> text =
      value == nullptr ? std::nullopt : std::optional<std::wstring_view>(value);
  const CString path = ProfilePath(file);
  if (path.IsEmpty() || !ProfileCanHold(section.GetView(), key.GetView(), text)) return false;
  const auto status = GetFileStatus(path);
  if (status && (status->kind != FileKind::kFile || status->write_protected)) return false;
  // An unreadable file is not treated as one without a mark.
  const std::optional<std::string> bytes = status ? ReadProfileBytes(path) : std::string();
  if (!bytes) return false;
  const TextEncoding encoding = EncodingFromMark(*bytes);
  // The system would end added lines in CR LF.
  if (!SystemKnows(encoding) || BeginsWithLineFeedEnds(*bytes))
    return WriteProfileFile(section, key, value, path);
  // The system would replace other characters by "?".
  if (!CanEncode(section, encoding) || !CanEncode(key, encoding) || !CanEncode(CString(value), encoding))
    return false;
  // Files without a folder may be mapped to the registry by the system.
  if (IsBareFileName(file))
    return WritePrivateProfileStringW(Trimmed(section), Trimmed(key), value, file) != FALSE;
  return WriteThroughCopy(Trimmed(section), Trimmed(key), value, file);
}

}  // namespace velmora
