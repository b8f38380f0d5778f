#include "cli/settings/rig_lines.h"

#include <algorithm>

#include "velmora/settings/code_format.h"
#include "velmora/settings/default_settings.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/text/letters.h"

namespace velmora::cli {
namespace {

// A line that stands for no values: the placeholder that a project's copy is made with, or nothing.
bool IsVacant(const TextLine& line) {
  return (line.number == 1 && IsStarLine(line.text.GetView())) || TrimBlanks(line.text.GetView()).empty();
}

}  // namespace

void KeepFindingsOfWrite(const CString& key, const TextLines& lines, LineFindings* findings) {
  const int own = PlaceOfJb23Key(key.GetView()).line;
  for (LineFinding& finding : *findings)
    if (finding.line != own && !lines[static_cast<size_t>(finding.line) - 1].cut) finding.lost = false;
}

std::string FillRigLines(SettingsContext* context, const CString& path, const CString& key) {
  const TextLines lines = TextLinesOf(path);
  const int own = PlaceOfJb23Key(key.GetView()).line;
  std::vector<int> filled;
  for (int number = 1; number <= own; ++number) {
    const auto index = static_cast<size_t>(number) - 1;
    if (index < lines.size() && !IsVacant(lines[index])) continue;
    const Jb23Keys keys = Jb23KeysOfLine(number);
    CTundrilInst settings = context->Facade();
    for (const wchar_t* missing : {keys.scale, keys.step})
      settings.Jb23WriteKey(missing, DefaultValue(Jb23Defaults(), missing));
    filled.push_back(number);
  }
  if (filled.empty()) return "";
  const TextLines after = TextLinesOf(path);
  if (std::any_of(filled.begin(), filled.end(), [&](int number) {
        const auto index = static_cast<size_t>(number) - 1;
        return index >= after.size() || IsVacant(after[index]);
      }))
    RefuseUnwritten(path);
  std::string numbers;
  for (const int number : filled) numbers += (numbers.empty() ? "" : ", ") + std::to_string(number);
  return "The built-in values were written too, to the lines that were missing: " + numbers + "\n";
}

}  // namespace velmora::cli
