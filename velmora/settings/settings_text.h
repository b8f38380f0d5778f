// The settings and code files as lines of text, and the findings in them.
#ifndef VELMORA_SETTINGS_SETTINGS_TEXT_H_
#define VELMORA_SETTINGS_SETTINGS_TEXT_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/common/finding.h"
#include "velmora/text/string.h"

namespace velmora {

// KODFIL.DAT, MILJKOD.DAT, LINKOD.PAR, a title-block file, "key=value" and JB23.PAR.
enum class SettingsFileKind { kObjects, kEnvironment, kLines, kStamp, kSettings, kRig };

// By the file's own name, else by its extension: .PAR and .CFG hold settings, all others a title block.
SettingsFileKind KindByName(const CString& name);

struct TextLine {
  std::int64_t number = 0;  // from 1
  CString text;
  bool cut = false;   // at a zero byte
  bool tail = false;  // the last line, before an end-of-file character and text that is not read
};
using TextLines = std::vector<TextLine>;

// Reads a file as far as 131,072 lines, as many as a list of settings holds. Empty when the whole file was
// read, else what is wrong with it; what was read until then is in `lines`. Shows nothing.
std::string ReadTextLines(const CString& path, TextLines* lines);

// For a user: that the encoding which the file has, or would get, lacks a character of the text; empty when
// it has them all.
std::string WhyNotEncodable(const CString& path, const CString& text);

// A line that begins with "*" ends a header, a section or a file.
constexpr bool IsStarLine(std::wstring_view line) { return !line.empty() && line.front() == L'*'; }

// What reading the file as this kind skips, cuts or misreads, and what a rewrite would lose, by line.
Findings CheckSettingsText(SettingsFileKind kind, const TextLines& lines);

// Adds what is found in lines of every kind, and sorts the findings by line.
void CompleteFindings(const TextLines& lines, Findings* findings);

}  // namespace velmora

#endif  // VELMORA_SETTINGS_SETTINGS_TEXT_H_
