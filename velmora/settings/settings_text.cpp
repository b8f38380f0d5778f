#include "velmora/settings/settings_text.h"

#include <algorithm>
#include <optional>

#include "velmora/platform/files.h"
#include "velmora/platform/whole_file.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/code_files.h"
#include "velmora/settings/parameter_files.h"
#include "velmora/settings/settings_reader.h"
#include "velmora/text/quoted.h"

namespace velmora {
namespace {

constexpr size_t kMostLines = size_t{1} << 17;  // as many as a list of settings holds
constexpr char kTooLarge[] = "is too large for a settings or code file; is it one?";

}  // namespace

SettingsFileKind KindByName(const CString& name) {
  const struct {
    const wchar_t* name;
    SettingsFileKind kind;
  } kNames[] = {{CProjPath::Kodfil, SettingsFileKind::kObjects},
                {CProjPath::Miljkod, SettingsFileKind::kEnvironment},
                {CProjPath::Linkod, SettingsFileKind::kLines},
                {CProjPath::Jb23ParNamn, SettingsFileKind::kRig}};
  for (const auto& known : kNames)
    if (name.CompareNoCase(known.name) == 0) return known.kind;
  const CString end = name.Right(4);
  return end.CompareNoCase(L".PAR") == 0 || end.CompareNoCase(L".CFG") == 0 ? SettingsFileKind::kSettings
                                                                            : SettingsFileKind::kStamp;
}

std::string WhyNotEncodable(const CString& path, const CString& text) {
  TextReader reader;
  const TextEncoding encoding = reader.Open(path) ? reader.Encoding() : TextEncoding::kWindows1252;
  std::string bytes;
  if (AppendEncoded(text.GetView(), encoding, &bytes)) return {};
  return "the file's encoding lacks a character of " + Quoted(text.GetView());
}

Findings CheckSettingsText(SettingsFileKind kind, const TextLines& lines) {
  const bool rig = kind == SettingsFileKind::kRig;
  if (rig || kind == SettingsFileKind::kSettings) return ReadStoredSettings(rig, lines).findings;
  return ReadCodeFile(kind, lines).findings;
}

void CompleteFindings(const TextLines& lines, Findings* findings) {
  for (const TextLine& line : lines)
    if (line.cut) findings->push_back({line.number, "holds a zero byte, and what follows it is not read"});
  if (!lines.empty() && lines.back().tail) findings->push_back(UnreadTail(lines.back().number));
  std::stable_sort(findings->begin(), findings->end(),
                   [](const Finding& a, const Finding& b) { return a.line < b.line; });
}

std::string ReadTextLines(const CString& path, TextLines* lines) {
  const std::optional<FileStatus> status = GetFileStatus(path);
  if (path.IsEmpty()) return "a file name is missing";
  if (!status) return WhyNotFound(path, "no such file");
  if (status->kind == FileKind::kFolder) return "is a folder where a file is expected; move it away";
  if (status->kind == FileKind::kOther) return "is not a regular file";
  if (status->size > SettingsReader::kLargestFile) return kTooLarge;
  SettingsReader reader;
  if (!reader.Open(path)) return "cannot be read; check its permissions";
  TextLine line;
  while (reader.ReadLine(&line.text)) {
    ++line.number;
    line.cut = reader.LineWasCut();
    if (lines->size() == kMostLines) return kTooLarge;
    lines->push_back(line);
  }
  if (reader.HasTail()) {
    if (lines->empty()) lines->emplace_back().number = 1;
    lines->back().tail = true;
  }
  return reader.Failed() ? "cannot be read to its end; is it a text file?" : "";
}

}  // namespace velmora
