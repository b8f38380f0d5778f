#include "velmora/platform/profile_text.h"

#include <algorithm>

#include "velmora/platform/text_units.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr wchar_t kOldEndOfFile = 0x1A;

struct Line {
  std::string_view content;
  std::string_view end;  // CR LF, LF, CR; empty at the end of the file
  std::wstring text;     // without the blanks around it
};

// Walks the lines of a profile.
class LineReader {
 public:
  explicit LineReader(std::string_view profile) : rest_(profile), encoding_(EncodingFromMark(profile)) {
    rest_.remove_prefix(ByteOrderMark(encoding_).size());
    unit_ = UnitSize(encoding_);
  }

  TextEncoding Encoding() const { return encoding_; }
  // False when the profile ends with half a character, after which nothing can be added.
  bool EndsWhole() const { return rest_.size() % unit_ == 0; }

  bool Next(Line* line) {
    if (rest_.empty()) return false;
    size_t size = 0;
    while (size < rest_.size() && !UnitIs(size, '\r') && !UnitIs(size, '\n')) size += unit_;
    size = std::min(size, rest_.size());
    const size_t end = size + EndSize(size);
    line->content = rest_.substr(0, size);
    line->end = rest_.substr(size, end - size);
    line->text.clear();
    AppendDecoded(line->content, encoding_, &line->text);
    line->text.resize(std::min(line->text.find(L'\0'), line->text.size()));
    line->text = TrimProfileBlanks(line->text);
    rest_.remove_prefix(end);
    return true;
  }

 private:
  bool UnitIs(size_t at, char c) const { return velmora::UnitIs(rest_, at, c, encoding_); }
  size_t EndSize(size_t at) const {
    if (at >= rest_.size()) return 0;
    return UnitIs(at, '\r') && UnitIs(at + unit_, '\n') ? 2 * unit_ : unit_;
  }

  std::string_view rest_;
  TextEncoding encoding_;
  size_t unit_ = 1;
};

// The section's name when the line is a section header.
std::optional<std::wstring_view> SectionOf(std::wstring_view line) {
  const size_t end = line.rfind(L']');
  if (!line.starts_with(L'[') || end == std::wstring_view::npos) return std::nullopt;
  return TrimProfileBlanks(line.substr(1, end - 1));
}

struct Entry {
  std::wstring_view key;
  std::wstring_view value;  // with its quotes
};

// Of a line that is not a section header.
Entry EntryOf(std::wstring_view line) {
  if (line.starts_with(L';')) return {};
  const size_t split = std::min(line.find(L'='), line.size());
  return {TrimProfileBlanks(line.substr(0, split)),
          TrimProfileBlanks(line.substr(std::min(split + 1, line.size())))};
}

std::wstring_view Unquoted(std::wstring_view value) {
  const bool quoted =
      value.size() >= 2 && value.front() == value.back() && (value.front() == L'"' || value.front() == L'\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

// The position of a key, or where it would be inserted.
struct KeyPosition {
  bool section_found = false;
  bool key_found = false;
  Line line;                   // the key's
  std::string_view first_end;  // the file's first line end
  std::string_view last_end;   // of the section's last line that is not blank, or the file's last
  size_t insert_at = 0;        // after that line, in bytes
};

KeyPosition FindKey(std::string_view profile, LineReader* lines, std::wstring_view section,
                    std::wstring_view key) {
  KeyPosition position;
  bool inside = false;
  Line line;
  while (lines->Next(&line)) {
    if (position.first_end.empty()) position.first_end = line.end;
    if (const auto name = SectionOf(line.text)) {
      if (inside) return position;
      inside = position.section_found = !section.empty() && EqualNoCase(*name, section);
    } else if (inside && !key.empty() && EqualNoCase(EntryOf(line.text).key, key)) {
      position.key_found = true;
      position.line = line;
      return position;
    }
    if (inside && line.text.empty()) continue;
    position.last_end = line.end;
    position.insert_at = static_cast<size_t>(line.end.data() + line.end.size() - profile.data());
  }
  return position;
}

bool HasLineBreak(std::wstring_view text) {
  return text.find_first_of(std::wstring_view(L"\r\n\0", 3)) != std::wstring_view::npos;
}

}  // namespace

std::wstring_view TrimProfileBlanks(std::wstring_view text) {
  const auto is_blank = [](wchar_t c) { return IsBlank(c) || c == kOldEndOfFile; };
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
  return text;
}

std::optional<std::wstring> FindProfileValue(std::string_view profile, std::wstring_view section,
                                             std::wstring_view key) {
  const CString keys[] = {CString(key)};
  return FindProfileValues(profile, section, keys)[0];
}

std::vector<std::optional<std::wstring>> FindProfileValues(std::string_view profile,
                                                           std::wstring_view section,
                                                           std::span<const CString> keys) {
  section = TrimProfileBlanks(section);
  std::vector<std::optional<std::wstring>> values(keys.size());
  size_t left = keys.size();
  bool inside = false;
  LineReader lines(profile);
  for (Line line; left > 0 && lines.Next(&line);) {
    if (const auto name = SectionOf(line.text)) {
      if (inside) break;
      inside = !section.empty() && EqualNoCase(*name, section);
      continue;
    }
    if (!inside) continue;
    const Entry entry = EntryOf(line.text);
    for (size_t i = 0; i < keys.size(); ++i) {
      const std::wstring_view key = TrimProfileBlanks(keys[i].GetView());
      if (values[i] || key.empty() || !EqualNoCase(entry.key, key)) continue;
      values[i] = Unquoted(entry.value);
      --left;
    }
  }
  return values;
}

ProfileChange ChangeProfile(std::string_view profile, std::wstring_view section, std::wstring_view key,
                            std::optional<std::wstring_view> value, std::string* changed) {
  section = TrimProfileBlanks(section);
  key = TrimProfileBlanks(key);
  LineReader lines(profile);
  if (!lines.EndsWhole()) return ProfileChange::kRefused;
  const KeyPosition position = FindKey(profile, &lines, section, key);
  const TextEncoding encoding = lines.Encoding();
  const auto offset = [&](const char* at) { return static_cast<size_t>(at - profile.data()); };

  if (position.key_found) {
    const Entry entry = EntryOf(position.line.text);
    if (value && entry.value == *value) return ProfileChange::kNothingToDo;
    std::string line;
    if (value) {
      // The key keeps its spelling.
      std::wstring text(entry.key);
      text.append(L"=").append(*value);
      if (!AppendEncoded(text, encoding, &line)) return ProfileChange::kRefused;
      line += position.line.end;
    }
    const size_t begin = offset(position.line.content.data());
    const size_t end = begin + position.line.content.size() + position.line.end.size();
    *changed = std::string(profile.substr(0, begin)) + line + std::string(profile.substr(end));
    return ProfileChange::kDone;
  }

  if (!value) return ProfileChange::kNothingToDo;
  std::string end(position.last_end.empty() ? position.first_end : position.last_end);
  std::string added;
  if (end.empty()) static_cast<void>(AppendEncoded(L"\r\n", encoding, &end));
  const size_t mark = ByteOrderMark(encoding).size();
  const size_t at = position.section_found ? position.insert_at : std::max(profile.size(), mark);
  if (at > mark && position.last_end.empty()) added += end;
  const auto add_line = [&](std::wstring_view text) {
    const bool encoded = AppendEncoded(text, encoding, &added);
    added += end;
    return encoded;
  };
  if (!position.section_found && !add_line(L"[" + std::wstring(section) + L"]"))
    return ProfileChange::kRefused;
  if (!add_line(std::wstring(key) + L"=" + std::wstring(*value))) return ProfileChange::kRefused;
  *changed = std::string(profile).insert(std::min(at, profile.size()), added);
  return ProfileChange::kDone;
}

bool BeginsWithLineFeedEnds(std::string_view profile) {
  LineReader lines(profile);
  Line line;
  return lines.Next(&line) && line.end.find('\n') != std::string_view::npos &&
         line.end.find('\r') == std::string_view::npos;
}

bool ProfileCanHold(std::wstring_view section, std::wstring_view key,
                    std::optional<std::wstring_view> value) {
  section = TrimProfileBlanks(section);
  key = TrimProfileBlanks(key);
  if (section.empty() || HasLineBreak(section) || section.find(L']') != std::wstring_view::npos) return false;
  if (key.empty() || HasLineBreak(key) || key.find(L'=') != std::wstring_view::npos) return false;
  if (key.starts_with(L'[') || key.starts_with(L';')) return false;
  return !value || !HasLineBreak(*value);
}

}  // namespace velmora
