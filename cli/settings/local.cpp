// A project's own copies of the settings and code files.
#include <algorithm>
#include <cstdlib>

#include "cli/context/settings_context.h"
#include "cli/settings/commands.h"
#include "cli/terminal/error.h"
#include "cli/terminal/questions.h"
#include "velmora/common/paths.h"
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
    if (!installed->IsEmpty() && SameFile(folder, PathForDisplay(*installed)))
      throw Refusal(
          At(folder, "holds the installation's own settings and is not a project; give another --project"));
}

// A file and what is going to be done to it.
struct Planned {
  ProjectCopy file;
  CString path;
  CString source;  // the installation's; empty when it has none
  std::optional<FileStatus> before;
  bool replaced = false;
};

std::vector<Planned> Plan(const SettingsOptions& options, SettingsContext& context) {
  std::vector<Planned> plan;
  for (const ProjectCopy& file : FilesMeant(options)) {
    Planned planned{file, JoinPath(context.Project()->m_ProjKat, file.name), {}, {}};
    planned.source = FindSettingsFile(context.Ini(), nullptr, file.name);
    planned.before = GetFileStatus(planned.path);
    planned.replaced = planned.before && options.overwrite && file.replaceable;
    plan.push_back(planned);
  }
  return plan;
}

std::string Replaced(const std::vector<Planned>& plan) {
  std::string names;
  for (const Planned& planned : plan) {
    if (!planned.replaced) continue;
    names += (names.empty() ? "" : ", ") + ToUtf8(planned.file.name);
    if (planned.source.IsEmpty()) names += " (by an empty one, as the installation has none)";
  }
  return names;
}

bool Failed(const std::string& done) { return done.find("could not") != std::string::npos; }

// A copy keeps the time of what was copied, as exactly as the disk can.
bool IsCopy(const FileStatus& file, const FileStatus& source) {
  constexpr std::int64_t kCoarsest = 20'000'000;  // two seconds
  return file.size == source.size && std::abs(file.modified - source.modified) <= kCoarsest;
}

// The same for the content that a file gets where there is none to copy.
bool IsEmptyOne(const FileStatus& file, std::wstring_view content) {
  const auto line_ends = static_cast<size_t>(std::count(content.begin(), content.end(), L'\n'));
  return file.kind == FileKind::kFile && file.size == content.size() + line_ends;
}

// What was done to the file, judged by its state now.
std::string Done(const Planned& planned) {
  if (planned.before && !planned.replaced) return "kept";
  const std::optional<FileStatus> after = GetFileStatus(planned.path);
  if (planned.source.IsEmpty() && planned.file.default_content == nullptr)
    return after ? "kept" : "not made, the installation has none";
  const std::optional<FileStatus> source = GetFileStatus(planned.source);
  const bool good = planned.source.IsEmpty() ? after && IsEmptyOne(*after, planned.file.default_content)
                                             : after && source && IsCopy(*after, *source);
  if (!good) return planned.replaced ? "could not be replaced" : "could not be made";
  return planned.source.IsEmpty() ? "made empty" : planned.replaced ? "replaced" : "copied";
}

}  // namespace

void LocalCreate(const SettingsOptions& options) {
  SettingsContext context(options.project);
  RequireOwnFolder(context);
  const std::vector<Planned> plan = Plan(options, context);
  const std::string replaced = Replaced(plan);
  if (!replaced.empty()) Confirm(At(ShownFolder(context), "replace " + replaced + "?"), options.yes);

  CTundrilInst facade = context.Facade();
  if (options.stones)
    facade.CreateLokalStenFil(options.overwrite ? 1 : 0);
  else
    facade.CreateLokalaFiler(options.overwrite ? 1 : 0, 1);

  OutputFile output(options.output.file);
  RecordWriter records(output, options.output.Format(),
                       {{"file", "file"}, {"done", "done"}, {"source", "from"}});
  bool failed = false;
  for (const Planned& planned : plan) {
    const std::string done = Done(planned);
    const bool copied = done == "copied" || done == "replaced";
    failed = failed || Failed(done);
    records.Row({ToUtf8(planned.file.name), done, copied ? PathForDisplay(planned.source) : std::string()});
  }
  records.Finish();
  output.Finish();
  if (failed)
    throw Refusal(
        At(ShownFolder(context), "some files could not be written; check permissions and disk space"));
}

void LocalRemove(const SettingsOptions& options) {
  SettingsContext context(options.project);
  RequireOwnFolder(context);
  std::vector<Planned> plan = Plan(options, context);
  std::erase_if(plan, [](const Planned& planned) { return !planned.before; });
  std::string names;
  for (const Planned& planned : plan) names += (names.empty() ? "" : ", ") + ToUtf8(planned.file.name);
  if (plan.empty()) throw Refusal(At(ShownFolder(context), "has none of these files of its own"));
  Confirm(At(ShownFolder(context), "delete " + names + "?"), options.yes);

  CTundrilInst facade = context.Facade();
  if (options.stones)
    facade.RemoveLokalStenFil();
  else
    facade.RemoveLokalaFiler();

  OutputFile output(options.output.file);
  RecordWriter records(output, options.output.Format(), {{"file", "file"}, {"done", "done"}});
  bool failed = false;
  for (const Planned& planned : plan) {
    const bool gone = !FileOrFolderExists(planned.path);
    failed = failed || !gone;
    records.Row({ToUtf8(planned.file.name), std::string(gone ? "deleted" : "could not be deleted")});
  }
  records.Finish();
  output.Finish();
  if (failed)
    throw Refusal(At(ShownFolder(context),
                     "some files could not be deleted: a folder of that name, or no permission there"));
}

void LocalStatus(const SettingsOptions& options) {
  SettingsContext context(options.project);
  std::vector<ProjectCopy> files = FilesMeant(options);
  if (!options.stones) files.push_back(StoneProjectCopy());
  OutputFile output(options.output.file);
  RecordWriter records(output, options.output.Format(),
                       {{"file", "file"}, {"state", "state"}, {"path", "path"}});
  for (const ProjectCopy& file : files) {
    const std::vector<SettingsPlace> places = context.PlacesOf(file.name);
    const SettingsPlace* place = PlaceInUse(places);
    const bool own = place == &places.front();
    records.Row({ToUtf8(file.name),
                 std::string(place == nullptr ? "none"
                             : own            ? "project copy"
                                              : "central"),
                 place == nullptr ? Cell() : Cell(PathForDisplay(place->path))});
  }
  records.Finish();
  output.Finish();
}

}  // namespace velmora::cli
