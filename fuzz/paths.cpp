// Translation of the suite's paths, and of names on the disk.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/platform/files.h"
#include "velmora/platform/posix/native_path.h"
#include "velmora/text/codepage.h"

namespace velmora::fuzz {
namespace {

// Whether a path that begins with the folder stays in it, by its names.
bool StaysInside(const std::string& path, const std::string& folder) {
  if (!path.starts_with(folder)) return false;
  int depth = 0;
  for (const auto& part : std::filesystem::path(path.substr(folder.size())).relative_path()) {
    depth += part == ".." ? -1 : part == "." || part.empty() ? 0 : 1;
    if (depth < 0) return false;
  }
  return true;
}

void RequireDriveHolds(std::wstring_view text, const std::string& drive) {
  const std::string native = NativePath(CString(text));
  const bool absolute = text.size() == 2 || (text.size() > 2 && (text[2] == L'\\' || text[2] == L'/'));
  if (!native.empty() && absolute) Require(StaysInside(native, drive), "a drive's paths stay in its folder");
}

// A file of this name is listed, and opened by the listed name.
void RequireFound(std::string name) {
  std::erase(name, '/');
  name = name.substr(0, 200).c_str();
  if (name.empty() || name == "." || name == "..") return;
  const CString folder = Scratch(L"names");
  MakeFolder(folder);
  const std::string path = PathForDisplay(folder) + "/" + name;
  FILE* const file = std::fopen(path.c_str(), "w");
  if (file == nullptr) return;
  std::fclose(file);
  const std::vector<FoundFile> found = FindFiles(folder + L"\\*");
  Require(found.size() == 3 && found[2].name.GetView() == TextFromName(name), "the name is listed");
  const CString listed = folder + L"\\" + found[2].name;
  Require(NativePath(listed) == path, "and finds its file");
  CString other = found[2].name;
  if (name.find('\\') == std::string::npos)
    Require(FileOrFolderExists(folder + L"\\" + other.MakeUpper()), "in capitals too");
  Require(RemoveWholeFile(listed), "and removes it");
}

}  // namespace

void Run(const Input& input) {
  const CString drive = Scratch(L"drive");
  MakeFolder(drive);
  const std::string native_drive = PathForDisplay(drive);
  setenv("VELMORA_DRIVE_C", native_drive.c_str(), 1);
  const std::string& bytes = input.File();
  const CString text = PathFromSystem(bytes);
  if (bytes.find('\0') == std::string::npos && bytes.find('\\') == std::string::npos)
    Require(PathForDisplay(text) == bytes, "the system's names survive");
  NativePath(text);
  std::wstring decoded;
  AppendDecoded(bytes, TextEncoding::kUtf8, &decoded);
  RequireDriveHolds(L"C:" + decoded, native_drive);
  RequireDriveHolds(L"c:\\" + decoded, native_drive);
  RequireDriveHolds(L"C:/x\\..\\" + decoded, native_drive);
  RequireFound(bytes);
  const size_t split = decoded.find(L'\n');
  if (split == std::wstring::npos) return;
  const std::wstring name = decoded.substr(0, split);
  MatchesWildcard(decoded.substr(split + 1), name);
  if (name.find_first_of(L"*?.") == std::wstring::npos)
    Require(MatchesWildcard(name, name), "a name matches itself");
  Require(MatchesWildcard(name, L"*") && MatchesWildcard(name, L"*.*"), "and every pattern for all");
}

}  // namespace velmora::fuzz
