#include "cli/codes/code_file_on_disk.h"

#include "cli/context/losses.h"
#include "cli/context/settings_context.h"
#include "cli/terminal/absolute_path.h"
#include "cli/terminal/error.h"
#include "cli/terminal/questions.h"
#include "velmora/platform/files.h"

namespace velmora::cli {
namespace {

CString NameOf(SettingsFileKind kind) {
  return kind == SettingsFileKind::kObjects       ? CProjPath::Kodfil
         : kind == SettingsFileKind::kEnvironment ? CProjPath::Miljkod
                                                  : CProjPath::Linkod;
}

}  // namespace

std::vector<CodeField> FieldsOf(SettingsFileKind kind) {
  switch (kind) {
    case SettingsFileKind::kObjects:
      return {{"text"}};
    case SettingsFileKind::kEnvironment:
      return {{"text"}, {"max", true}, {"step", true}};
    case SettingsFileKind::kLines:
      return {{"word"}, {"number", true}, {"value", true}, {"text"}};
    default:
      return {{"word"}, {"first", true}, {"second", true}, {"third", true}};
  }
}

CodeFileOnDisk::CodeFileOnDisk(const CodesOptions& options, bool may_be_missing) : kind_(options.kind) {
  if (kind_ == SettingsFileKind::kStamp) {
    path_ = PathFromSystem(AbsolutePath(options.file));
    if (may_be_missing && !FileOrFolderExists(path_)) return;
  } else {
    const SettingsContext context(options.project);
    const SettingsPlace place = context.RequirePlace(NameOf(kind_));
    path_ = place.path;
    place_ = place.name;
    question_ = context.SharedQuestion(place);
  }
  file_ = ReadCodeFile(kind_, TextLinesOf(path_));
}

std::string CodeFileOnDisk::Where() const {
  return PathForDisplay(path_) + (place_.empty() ? "" : " (" + place_ + ")");
}

void CodeFileOnDisk::Rewrite(const CodeEntries& entries, const CodesOptions& options) const {
  if (!file_.can_rewrite)
    throw Refusal(
        At(PathForDisplay(path_), file_.findings.front().text + "; add one first; nothing was written"));
  RefuseLosses(PathForDisplay(path_), file_.findings, options.force);
  if (!question_.empty()) Confirm(question_, options.shared, "--shared");
  if (!ReplaceCodes(kind_, path_, entries)) RefuseUnwritten(path_);
}

}  // namespace velmora::cli
