#include "velmora/platform/profile_file.h"

#include <algorithm>
#include <optional>
#include <string>

#include "velmora/platform/files.h"
#include "velmora/platform/profile_text.h"

namespace velmora {
namespace {

constexpr size_t kLargestProfile = size_t{64} << 20;
constexpr size_t kChunk = size_t{16} << 10;

// The first `limit` bytes at least; nothing when the file cannot be read.
std::optional<std::string> ReadStart(const CString& path, size_t limit) {
  const auto status = GetFileStatus(path);
  InputFile file;
  if (!status || status->kind != FileKind::kFile || !file.Open(path)) return std::nullopt;
  std::string bytes;
  while (bytes.size() < limit) {
    const size_t before = bytes.size();
    bytes.resize(before + kChunk);
    const std::int64_t count = file.Read(std::span(bytes).subspan(before));
    if (count < 0) return std::nullopt;
    bytes.resize(before + static_cast<size_t>(count));
    if (count == 0) break;
  }
  return bytes;
}

}  // namespace

std::optional<std::string> ReadProfileBytes(const CString& path) {
  auto bytes = ReadStart(path, kLargestProfile);
  if (bytes && bytes->size() >= kLargestProfile) return std::nullopt;
  return bytes;
}

TextEncoding ProfileEncoding(const CString& path) {
  return EncodingFromMark(ReadStart(path, kLongestMark).value_or(std::string()));
}

std::vector<CString> ReadProfileFile(const CString& section, std::span<const CString> keys,
                                     const CString& path) {
  std::vector<CString> values(keys.size());
  const auto bytes = ReadProfileBytes(path);
  if (!bytes) return values;
  const auto found = FindProfileValues(*bytes, section.GetView(), keys);
  for (size_t i = 0; i < keys.size(); ++i)
    if (found[i]) values[i] = CString(std::wstring_view(*found[i]).substr(0, kLongestProfileValue));
  return values;
}

bool WriteProfileFile(const CString& section, const CString& key, const wchar_t* value, const CString& path) {
  // Begin() holds the lock: nobody else replaces the file before Commit().
  FileReplacement file;
  if (!file.Begin(path)) return false;
  std::string old;
  if (FileOrFolderExists(path)) {
    auto bytes = ReadProfileBytes(path);
    if (!bytes) return false;
    old = std::move(*bytes);
  }
  std::string changed;
  const std::optional<std::wstring_view> text =
      value == nullptr ? std::nullopt : std::optional<std::wstring_view>(value);
  switch (ChangeProfile(old, section.GetView(), key.GetView(), text, &changed)) {
    case ProfileChange::kNothingToDo:
      return true;
    case ProfileChange::kRefused:
      return false;
    case ProfileChange::kDone:
      break;
  }
  return file.Write(changed) && file.Commit();
}

bool IsBareFileName(const CString& file) {
  return file.GetView().find_first_of(L"\\/:") == std::wstring_view::npos;
}

}  // namespace velmora
