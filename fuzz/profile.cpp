// Private profiles: reading values, and changes that affect no other line. Arguments: section, key and value,
// three times. The same bytes are read as an installation's ini file.
#include <cstdlib>
#include <set>

#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/platform/profile.h"
#include "velmora/platform/profile_text.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"

namespace velmora::fuzz {
namespace {

constexpr size_t kMost = 12;  // names
constexpr size_t kLongest = 254;

// Some possible names of sections and keys.
void FindNames(std::string_view bytes, std::set<std::wstring>* sections, std::set<std::wstring>* keys) {
  std::wstring text;
  AppendDecoded(bytes, EncodingFromMark(bytes), &text);
  for (size_t start = 0; start < text.size();) {
    const size_t end = std::min(text.find_first_of(L"\r\n", start), text.size());
    const std::wstring line(TrimBlanks(std::wstring_view(text).substr(start, end - start)));
    if (line.starts_with(L'[') && sections->size() < kMost)
      sections->insert(line.substr(1, line.rfind(L']') - 1));
    if (!line.starts_with(L'[') && keys->size() < kMost) keys->insert(line.substr(0, line.find(L'=')));
    start = end + 1;
  }
}

std::wstring AsRead(std::wstring_view value) {
  value = TrimProfileBlanks(value);
  const bool quoted =
      value.size() > 1 && value.front() == value.back() && (value.front() == L'"' || value.front() == L'\'');
  return std::wstring(quoted ? value.substr(1, value.size() - 2) : value).substr(0, kLongest);
}

bool IsSame(std::wstring_view a, const CString& b) {
  return EqualNoCase(TrimProfileBlanks(a), TrimProfileBlanks(b.GetView()));
}

// The files differ in one line of the old one.
void RequireOneLineChanged(std::string_view before, std::string_view after) {
  if (IsUtf16(EncodingFromMark(before))) return;
  const auto differ = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  before.remove_prefix(static_cast<size_t>(differ.first - before.begin()));
  after.remove_prefix(static_cast<size_t>(differ.second - after.begin()));
  const auto ends = std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend());
  before.remove_suffix(static_cast<size_t>(ends.first - before.rbegin()));
  Require(std::count(before.begin(), before.end(), '\n') <= 1, "no other line changes");
}

void Change(const CString& path, const CString& section, const CString& key, const CString& value) {
  const std::string before = ReadBytes(path);
  std::set<std::wstring> sections, keys;
  FindNames(before, &sections, &keys);

  const bool written = WriteProfile(section, key, value.IsEmpty() ? nullptr : value.GetString(), path);
  const std::string after = ReadBytes(path);
  RequireOneLineChanged(before, after);
  Require(written || before == after, "a refused write leaves the file unchanged");
  if (written && !value.IsEmpty())
    Require(ReadProfile(section, key, path).GetView() == AsRead(value.GetView()), "a written value is read");
  for (const std::wstring& s : sections)
    for (const std::wstring& k : keys)
      if (!IsSame(s, section) || !IsSame(k, key))
        Require(FindProfileValue(after, s, k) == FindProfileValue(before, s, k),
                "other values are unchanged");
}

}  // namespace

void Run(const Input& input) {
  const CString path = Put(L"Velmora.ini", input.File());
  setenv("TUNDRIL", PathForDisplay(Scratch(L"")).c_str(), 1);
  CTundrilIni ini;
  ini.Init(1);
  for (size_t i = 0; i + 2 < std::min<size_t>(input.Arguments(), 9); i += 3)
    Change(path, input.Text(i), input.Text(i + 1), input.Text(i + 2));
}

}  // namespace velmora::fuzz
