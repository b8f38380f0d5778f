#include "cli/context/project_folder.h"
#include "cli/context/settings_context.h"
#include "cli/settings/commands.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"

namespace velmora::cli {
namespace {

// The file that both sides are read as: --file, else by the name of a given file.
ParameterFile FileOf(const SettingsOptions& options) {
  if (!options.file.empty()) return ParameterFileNamed(FromUtf8(options.file));
  std::optional<ParameterFile> file;
  for (const std::string* side : {&options.a, &options.b}) {
    if (IsFolder(ProjectFolder(*side))) continue;
    const ParameterFile named = ParameterFileNamed(NameOfPath(ProjectFolder(*side)));
    const bool both_known = file && !file->defaults.empty() && !named.defaults.empty();
    if (both_known && file->name != named.name)
      throw Refusal(Quoted(options.a) + " and " + Quoted(options.b) +
                    " are files of two kinds; choose one of the kinds for both with --file");
    if (!file || file->defaults.empty()) file = named;
  }
  return file ? *file : ParameterFileNamed(CProjPath::TundrilParNamn);
}

// The file that a side means: what a project's programs find, or a file alone. Empty when there is none.
CString PathOf(const std::string& side, const ParameterFile& file) {
  if (!IsFolder(ProjectFolder(side))) return ProjectFolder(side);
  const std::vector<SettingsPlace> places = SettingsContext(side).PlacesOf(file.name);
  const SettingsPlace* place = PlaceInUse(places);
  return place == nullptr ? CString() : place->path;
}

Cell ValueCell(const Setting* setting) { return setting == nullptr ? Cell() : Cell(ToUtf8(setting->value)); }

std::string SourceOf(const Setting* setting) {
  if (setting == nullptr) return "-";
  return setting->stored ? "file" : setting->built_in ? "built in" : "-";
}

std::string ShownPath(const CString& path) { return path.IsEmpty() ? "no file" : PathForDisplay(path); }

}  // namespace

void SettingsDiff(const SettingsOptions& options) {
  const ParameterFile file = FileOf(options);
  const CString path_a = PathOf(options.a, file);
  const CString path_b = PathOf(options.b, file);
  const Settings a = SettingsIn(file, path_a);
  const Settings b = SettingsIn(file, path_b);
  std::vector<CString> keys;
  for (const Setting& setting : a.All()) keys.push_back(setting.key);
  for (const Setting& setting : b.All())
    if (a.Find(setting.key) == nullptr) keys.push_back(setting.key);

  OutputFile output(options.output.file, {PathForDisplay(path_a), PathForDisplay(path_b)});
  const OutputFormat format = options.output.Format();
  const bool table = format == OutputFormat::kTable;
  if (table) output.Write("A: " + ShownPath(path_a) + "\nB: " + ShownPath(path_b) + "\n\n");
  RecordWriter records(output, format,
                       {{"key", "key"},
                        {"a", "A"},
                        {"a_from", "from"},
                        {"b", "B"},
                        {"b_from", "from"},
                        {"default", "default"}});
  std::int64_t different = 0;
  for (const CString& key : keys) {
    const Setting* in_a = a.Find(key);
    const Setting* in_b = b.Find(key);
    if (in_a != nullptr && in_b != nullptr && in_a->value == in_b->value) continue;
    ++different;
    const std::optional<CString>& built_in = (in_a != nullptr ? in_a : in_b)->built_in;
    records.Row({ToUtf8(key), ValueCell(in_a), SourceOf(in_a), ValueCell(in_b), SourceOf(in_b),
                 built_in ? Cell(ToUtf8(*built_in)) : Cell()});
  }
  if (!table || different > 0) records.Finish();
  if (table && different == 0)
    output.Write("All " + std::to_string(keys.size()) + " keys have the same values.\n");
  output.Finish();
  if (different > 0) throw ExitWith{1};
}

}  // namespace velmora::cli
