#include "velmora/platform/profile.h"

#include <iterator>
#include <optional>
#include <string>

#include "velmora/platform/files.h"
#include "velmora/platform/profile_file.h"
#include "velmora/platform/profile_text.h"
#include "velmora/platform/types.h"

namespace velmora {
namespace {

CString Trimmed(const CString& text) { return CString(TrimProfileBlanks(text.GetView())); }

// Where the system looks.
CString ProfilePath(const CString& file) {
  if (file.IsEmpty() || !IsBareFileName(file)) return file;
  wchar_t folder[MAX_PATH] = L"";
  const UINT length = GetSystemWindowsDirectoryW(folder, MAX_PATH);
  return length > 0 && length < MAX_PATH ? CString(folder) + L"\\" + file : file;
}

// The system reads and writes the user's code page, and UTF-16 where a mark says so. Files in
// Windows-1252 for users of another code page, and those with other marks, are ours.
bool SystemKnows(TextEncoding encoding) {
  return encoding == TextEncoding::kUtf16Le || (encoding == TextEncoding::kWindows1252 && GetACP() == 1252);
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
  if (!SystemKnows(ProfileEncoding(path))) return ReadProfileFile(section, key, path);
  wchar_t value[kLongestProfileValue + 1] = L"";
  GetPrivateProfileStringW(trimmed_section, trimmed_key, L"", value, static_cast<DWORD>(std::size(value)),
                           file);
  return value;
}

bool WriteProfile(const CString& section, const CString& key, const wchar_t* value, const CString& file) {
  const std::optional<std::wstring_view> text =
      value == nullptr ? std::nullopt : std::optional<std::wstring_view>(value);
  const CString path = ProfilePath(file);
  if (path.IsEmpty() || !ProfileCanHold(section.GetView(), key.GetView(), text)) return false;
  const auto status = GetFileStatus(path);
  if (status && (status->kind != FileKind::kFile || status->write_protected)) return false;
  const TextEncoding encoding = ProfileEncoding(path);
  if (!SystemKnows(encoding)) return WriteProfileFile(section, key, value, path);
  // The system would write a question mark.
  if (!CanEncode(section, encoding) || !CanEncode(key, encoding) || !CanEncode(CString(value), encoding))
    return false;
  return WritePrivateProfileStringW(Trimmed(section), Trimmed(key), value, file) != FALSE;
}

}  // namespace velmora
