// A project's own copies of the settings and code files.
#include "cli/context/settings_context.h"
#include "cli/settings/commands.h"
#include "cli/terminal/error.h"
#include "cli/terminal/questions.h"
#include "velmora/platform/files.h"
#include "velmora/settings/project_copies.h"
#include "velmora/settings/settings_file.h"

namespace velmora::cli {
namespace {

std::vector<ProjectCopy> FilesMeant(const SettingsOptions& options) {
  return options.stones ? std::vector<ProjectCopy>{StoneProjectCopy()} : ProjectCopies();
}

std::string ShownFolder(SettingsContext& context) { return PathForDisplay(context.Project()->m_ProjKat); }

// Refuses the installation's own folders: there is nothing to copy, and deleting would lose its files.
void RequireOwnFolder(SettingsContext& context) {
  const std::string folder = ShownFolder(context);
  for (const CString* installed : {&context.Ini()->m_cfgDir, &context.Ini()->m_programDir})
    if (!installed->IsEmpty() && IsSameFile(PathFromSystem(folder), *installed))
      throw Refusal(
          At(folder, "holds the installation's own settings and is not a project; give another --project"));
}

// The project's files that `overwrite` replaces, in a line.
std::string Replaced(const SettingsOptions& options, SettingsContext& context) {
  std::string names;
  for (const ProjectCopy& file : FilesMeant(options)) {
    if (!options.overwrite || !file.replaceable || !FileOrFolderExists(file.PathIn(*context.Project())))
      continue;
    names += (names.empty() ? "" : ", ") + ToUtf8(file.name);
    if (FindSettingsFile(context.Ini(), nullptr, file.name).IsEmpty())
      names += " (by an empty one, as the installation has none)";
  }
  return names;
}

// What -o may not replace: the project's files and those that they are copies of.
std::vector<std::string> Paths(const std::vector<ProjectCopy>& files, const SettingsContext& context) {
  std::vector<std::string> paths;
  for (const ProjectCopy& file : files)
    for (const SettingsPlace& place : context.PlacesOf(file.name))
      paths.push_back(PathForDisplay(place.path));
  return paths;
}

std::string Shown(CopyDone done, bool existed) {
  switch (done) {
    case CopyDone::kKept:
      return "kept";
    case CopyDone::kBlocked:
      return "not made, a folder has its name";
    case CopyDone::kNone:
      return "not made, the installation has none";
    case CopyDone::kMade:
      return "made empty";
    case CopyDone::kCopied:
      return "copied";
    case CopyDone::kReplaced:
      return "replaced";
    default:
      return existed ? "could not be replaced" : "could not be made";
  }
}

}  // namespace

void LocalCreate(const SettingsOptions& options) {
  SettingsContext context(options.project);
  RequireOwnFolder(context);
  const std::string replaced = Replaced(options, context);
  if (!replaced.empty()) Confirm(At(ShownFolder(context), "replace " + replaced + "?"), options.yes);

  OutputFile output(options.output.file, Paths(FilesMeant(options), context));
  RecordWriter records(output, options.output.Format(),
                       {{"file", "file"}, {"done", "done"}, {"source", "from"}});
  bool failed = false;
  for (const ProjectCopy& file : FilesMeant(options)) {
    const CString source = FindSettingsFile(context.Ini(), nullptr, file.name);
    const bool existed = FileOrFolderExists(file.PathIn(*context.Project()));
    const CopyDone done = MakeProjectCopy(context.Ini(), *context.Project(), file, options.overwrite);
    const bool copied = done == CopyDone::kCopied || done == CopyDone::kReplaced;
    failed = failed || done == CopyDone::kFailed || done == CopyDone::kBlocked;
    records.Row({ToUtf8(file.name), Shown(done, existed), copied ? PathForDisplay(source) : std::string()});
  }
  records.Finish();
  output.Finish();
  if (failed)
    throw Refusal(At(ShownFolder(context),
                     "some files could not be written: a folder of that name, no permission there, or the "
                     "disk is full"));
}

void LocalRemove(const SettingsOptions& options) {
  SettingsContext context(options.project);
  RequireOwnFolder(context);
  std::vector<ProjectCopy> files = FilesMeant(options);
  std::erase_if(
      files, [&](const ProjectCopy& file) { return !FileOrFolderExists(file.PathIn(*context.Project())); });
  std::string names;
  for (const ProjectCopy& file : files) names += (names.empty() ? "" : ", ") + ToUtf8(file.name);
  if (files.empty()) throw Refusal(At(ShownFolder(context), "has none of these files of its own"));
  Confirm(At(ShownFolder(context), "delete " + names + "?"), options.yes);

  OutputFile output(options.output.file, Paths(files, context));
  RecordWriter records(output, options.output.Format(), {{"file", "file"}, {"done", "done"}});
  bool failed = false;
  for (const ProjectCopy& file : files) {
    const bool gone = RemoveWholeFile(file.PathIn(*context.Project()));
    failed = failed || !gone;
    records.Row({ToUtf8(file.name), std::string(gone ? "deleted" : "could not be deleted")});
  }
  records.Finish();
  output.Finish();
  if (failed)
    throw Refusal(At(ShownFolder(context),
                     "some files could not be deleted: write-protected, a folder of that name, or no "
                     "permission there"));
}

void LocalStatus(const SettingsOptions& options) {
  SettingsContext context(options.project);
  std::vector<ProjectCopy> files = FilesMeant(options);
  if (!options.stones) files.push_back(StoneProjectCopy());
  OutputFile output(options.output.file, Paths(files, context));
  RecordWriter records(output, options.output.Format(),
                       {{"file", "file"}, {"state", "state"}, {"path", "path"}});
  for (const ProjectCopy& file : files) {
    const std::vector<SettingsPlace> places = context.PlacesOf(file.name);
    const SettingsPlace* place = PlaceInUse(places);
    records.Row({ToUtf8(file.name),
                 std::string(place == nullptr    ? "none"
                             : place->of_project ? "project copy"
                                                 : "central"),
                 place == nullptr ? Cell() : Cell(PathForDisplay(place->path))});
  }
  records.Finish();
  output.Finish();
}

}  // namespace velmora::cli
