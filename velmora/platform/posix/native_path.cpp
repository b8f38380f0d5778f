#include "velmora/platform/posix/native_path.h"

#include <dirent.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <memory>

#include "velmora/platform/posix/disk_calls.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr char32_t kByteEscape = 0xDC00;

bool IsByteEscape(char32_t c) {
  return (c >= kByteEscape + 0x80 && c <= kByteEscape + 0xFF) || c == kByteEscape + '\\';
}

void AppendText(std::string_view bytes, std::wstring* text) {
  while (!bytes.empty()) {
    char32_t c = 0;
    const size_t length = DecodeUtf8Sequence(bytes, &c);
    AppendWide(length > 0 ? c : kByteEscape + static_cast<unsigned char>(bytes.front()), text);
    bytes.remove_prefix(length > 0 ? length : 1);
  }
}

std::string HomeFolder() {
  const char* home = std::getenv("HOME");
  if (home != nullptr && *home != '\0') return home;
  std::array<char, 4096> buffer{};
  passwd entry{};
  passwd* found = nullptr;
  getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
  return found == nullptr || entry.pw_dir == nullptr ? std::string() : entry.pw_dir;
}

// The folder that the user has named for a drive; empty without one.
std::string NamedDriveFolder(char lower_letter) {
  const std::string variable = std::string("VELMORA_DRIVE_") + static_cast<char>(lower_letter - 'a' + 'A');
  const char* folder = std::getenv(variable.c_str());
  return folder == nullptr ? std::string() : folder;
}

std::string OwnDriveFolder(char lower_letter) {
  const std::string data = UserDataFolder();
  return data.empty() ? data : data + "/velmora/drive_" + lower_letter;
}

std::string DriveFolder(char lower_letter) {
  const std::string named = NamedDriveFolder(lower_letter);
  return named.empty() ? OwnDriveFolder(lower_letter) : named;
}

// 'a' to 'z' when `path` begins with a drive, as in "X:" and "X:/name" but not "X:name", else 0.
char DriveLetter(std::string_view path) {
  if (path.size() < 2 || path[1] != ':' || (path.size() > 2 && path[2] != '/')) return 0;
  const char c = static_cast<char>(path[0] | 0x20);
  return c >= 'a' && c <= 'z' ? c : '\0';
}

// Resolves "." and ".." by name in a path after its drive letter, as Windows does, where separators in a row
// are one and a drive's root has no parent. A separator at the end stays.
std::string WithoutDots(std::string_view path) {
  std::string plain;
  for (size_t start = 0; start < path.size();) {
    const size_t end = std::min(path.find('/', start), path.size());
    const std::string_view name = path.substr(start, end - start);
    if (name == "..")
      plain.resize(plain.empty() ? 0 : plain.rfind('/'));
    else if (!name.empty() && name != ".")
      plain.append("/").append(name);
    start = end + 1;
  }
  return path.ends_with('/') ? plain + "/" : plain;
}

// The path with slashes, without the prefix "\\?\" of a drive. Nothing for invalid text.
std::optional<std::string> SlashedPath(const CString& path) {
  constexpr std::string_view kPrefix = "//?/";
  std::optional<std::string> bytes = NativeBytes(path.GetView());
  if (bytes && bytes->starts_with(kPrefix) &&
      DriveLetter(std::string_view(*bytes).substr(kPrefix.size())) != 0)
    bytes->erase(0, kPrefix.size());
  return bytes;
}

// Of slashed paths; nothing without a drive.
std::optional<std::string> DrivePathOf(const std::string& path) {
  if (DriveLetter(path) == 0) return std::nullopt;
  return path.substr(0, 2) + WithoutDots(std::string_view(path).substr(2));
}

// The entry of `folder` that equals `name` without regard to case; of several the first by code point.
std::optional<std::string> EntryIgnoringCase(const std::string& folder, std::string_view name) {
  const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(folder.empty() ? "." : folder.c_str()), closedir);
  if (!listing) return std::nullopt;
  const std::wstring wanted = TextFromName(name);
  std::wstring best_text;
  std::optional<std::string> best;
  while (const dirent* entry = readdir(listing.get())) {
    std::wstring text = TextFromName(entry->d_name);
    if (!EqualNoCase(text, wanted) || (best && best_text <= text)) continue;
    best = entry->d_name;
    best_text = std::move(text);
  }
  return best;
}

// Replaces each name by the matching entry, up to the first name without one.
std::string MatchNames(const std::string& path) {
  // No entry has a longer path, and looking its names up one by one takes long.
  if (HasEntry(path) || path.size() >= PATH_MAX) return path;
  std::string matched;
  for (size_t at = 0; at < path.size();) {
    if (path[at] == '/') {
      matched += path[at++];
      continue;
    }
    const size_t end = std::min(path.find('/', at), path.size());
    const std::string_view name = std::string_view(path).substr(at, end - at);
    std::string as_spelled = matched + std::string(name);
    if (HasEntry(as_spelled)) {
      matched = std::move(as_spelled);
    } else if (const std::optional<std::string> entry = EntryIgnoringCase(matched, name)) {
      matched += *entry;
    } else {
      return matched + path.substr(at);
    }
    at = end;
  }
  return matched;
}

}  // namespace

bool HasEntry(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0;
}

std::optional<std::string> NativeBytes(std::wstring_view text) {
  if (text.starts_with(kAsSpelled)) text.remove_prefix(1);
  std::string bytes;
  bytes.reserve(text.size());
  for (const wchar_t unit : text) {
    const auto c = static_cast<char32_t>(unit);
    if (IsByteEscape(c)) {
      bytes.push_back(static_cast<char>(c - kByteEscape));
    } else if (c == 0 || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
      return std::nullopt;
    } else if (c < 0x80) {
      bytes.push_back(c == '\\' ? '/' : static_cast<char>(c));
    } else {
      AppendUtf8(c, &bytes);
    }
  }
  return bytes;
}

std::wstring TextFromName(std::string_view name) {
  std::wstring text;
  AppendText(name, &text);
  for (wchar_t& c : text)
    if (c == L'\\') c = static_cast<wchar_t>(kByteEscape + '\\');
  return text;
}

std::wstring TextFromNativePath(std::string_view path) {
  std::wstring text;
  AppendText(path, &text);
  for (wchar_t& c : text)
    if (c == L'/') c = L'\\';
  return text;
}

std::string UserDataFolder() {
  const char* data = std::getenv("XDG_DATA_HOME");
  // The XDG rules say that a relative path is ignored.
  if (data != nullptr && *data == '/') return data;
  const std::string home = HomeFolder();
  return home.empty() ? home : home + "/.local/share";
}

std::optional<std::string> PlainDrivePath(const CString& path) {
  const std::optional<std::string> bytes = SlashedPath(path);
  return bytes ? DrivePathOf(*bytes) : std::nullopt;
}

std::string PathAsGiven(const CString& path) {
  std::optional<std::string> bytes = SlashedPath(path);
  if (!bytes) return {};
  const std::optional<std::string> drive_path = DrivePathOf(*bytes);
  if (!drive_path) return *std::move(bytes);
  const std::string folder = DriveFolder(DriveLetter(*drive_path));
  return folder.empty() ? folder : folder + drive_path->substr(2);
}

std::string NativePath(const CString& path) {
  const std::string given = PathAsGiven(path);
  return path.GetView().starts_with(kAsSpelled) ? given : MatchNames(given);
}

std::string NativePathToCreate(const CString& path) {
  const char letter = DriveLetter(SlashedPath(path).value_or(std::string()));
  if (letter != 0 && NamedDriveFolder(letter).empty() && !HasEntry(OwnDriveFolder(letter)))
    (void)MakeFolders(OwnDriveFolder(letter));  // when this fails, the creation fails too
  return NativePath(path);
}

}  // namespace velmora
