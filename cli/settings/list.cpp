#include <algorithm>

#include "cli/context/settings_context.h"
#include "cli/context/settings_lines.h"
#include "cli/settings/commands.h"
#include "cli/terminal/error.h"
#include "velmora/platform/files.h"
#include "velmora/text/counted.h"

namespace velmora::cli {
namespace {

// The settings of a parameter file, and where it is.
struct Listing {
  ParameterFile file;
  std::vector<SettingsPlace> places;
  const SettingsPlace* in_use;
  Settings settings;

  const char* SourceOf(const Setting& setting) const {
    return setting.stored ? in_use->name : setting.built_in ? "built in" : "-";
  }
};

Listing FindListing(const SettingsOptions& options) {
  const SettingsContext context(options.project);
  const ParameterFile file = ParameterFileNamed(FromUtf8(options.file.empty() ? kUsualFile : options.file));
  std::vector<SettingsPlace> places = context.PlacesOf(file.name);
  const SettingsPlace* in_use = PlaceInUse(places);
  const Settings settings = SettingsIn(file, in_use == nullptr ? CString() : in_use->path);
  return {file, std::move(places), in_use, settings};
}

bool Differs(const Setting& setting) { return setting.built_in && setting.value != *setting.built_in; }

std::string Note(const Setting& setting) {
  if (!setting.built_in) return "no default";
  return Differs(setting) ? "differs" : "";
}

std::string Heading(const Listing& listing) {
  const std::string name = ToUtf8(listing.file.name);
  if (listing.in_use == nullptr) {
    const std::string none = name + ": there is no such file";
    return none + (listing.file.defaults.empty() ? "" : "; all values are built in");
  }
  std::string text = name + ": " + PathForDisplay(listing.in_use->path) + " (" + listing.in_use->name + ")";
  for (const SettingsPlace& place : listing.places)
    if (place.exists && &place != listing.in_use) text += "\n  hides " + PathForDisplay(place.path);
  return text;
}

std::string Summary(const Listing& listing) {
  size_t stored = 0;
  size_t built_in = 0;
  size_t differing = 0;
  for (const Setting& setting : listing.settings.All()) {
    stored += setting.stored ? 1 : 0;
    built_in += !setting.stored && setting.built_in ? 1 : 0;
    differing += Differs(setting) ? 1 : 0;
  }
  std::string text = std::to_string(listing.settings.All().size()) + " keys: " + std::to_string(stored) +
                     " from the file, " + std::to_string(built_in) + " built in";
  if (!listing.file.defaults.empty())
    text += "; " + Counted(differing, "differs from its", "differ from their") + " default";
  return text;
}

bool IsMisread(const Settings& settings) {
  const Findings& findings = settings.FileFindings();
  return std::any_of(findings.begin(), findings.end(),
                     [](const Finding& finding) { return finding.misread; });
}

void WriteRows(const Listing& listing, const std::vector<const Setting*>& chosen, OutputFile* output,
               OutputFormat format) {
  RecordWriter records(*output, format,
                       {{"key", "key"},
                        {"value", "value"},
                        {"default", listing.file.defaults.empty() ? "" : "default"},
                        {"note", listing.file.defaults.empty() ? "" : "note", false, ""},
                        {"from", "from"}});
  for (const Setting* setting : chosen)
    records.Row({ToUtf8(setting->key), ToUtf8(setting->value),
                 setting->built_in ? Cell(ToUtf8(*setting->built_in)) : Cell(), Note(*setting),
                 std::string(listing.SourceOf(*setting))});
  records.Finish();
}

}  // namespace

Settings SettingsIn(const ParameterFile& file, const CString& path) {
  return {file, path.IsEmpty() ? TextLines() : TextLinesOf(path)};
}

void SettingsList(const SettingsOptions& options) {
  const Listing listing = FindListing(options);
  std::vector<const Setting*> chosen;
  for (const Setting& setting : listing.settings.All())
    if (!options.changed || Differs(setting) || !setting.built_in) chosen.push_back(&setting);
  std::vector<std::string> inputs;
  if (listing.in_use != nullptr) inputs.push_back(PathForDisplay(listing.in_use->path));
  OutputFile output(options.output.file, inputs);
  const OutputFormat format = options.output.Format();
  const bool table = format == OutputFormat::kTable;
  if (table) output.Write(Heading(listing) + "\n\n");
  if (!table || !chosen.empty()) WriteRows(listing, chosen, &output, format);
  if (table) output.Write((chosen.empty() ? "" : "\n") + Summary(listing) + "\n");
  output.Finish();
  if (listing.in_use != nullptr && IsMisread(listing.settings)) WarnUnread(listing.in_use->path);
}

void SettingsGet(const SettingsOptions& options) {
  const Listing listing = FindListing(options);
  const Setting* setting = listing.settings.Find(FromUtf8(options.key));
  if (setting == nullptr || (!setting->stored && !setting->built_in)) {
    const std::string problem = "no key " + Quoted(options.key) + ", and there is no default for it" +
                                listing.settings.DidYouMeanKey(FromUtf8(options.key));
    throw Refusal(listing.in_use == nullptr ? ToUtf8(listing.file.name) + ": " + problem
                                            : At(PathForDisplay(listing.in_use->path), "has " + problem));
  }
  OutputFile output;
  if (options.output.Format() == OutputFormat::kTable)
    output.Write(Printable(ToUtf8(setting->value)) + "\n");
  else
    WriteRows(listing, {setting}, &output, options.output.Format());
  output.Finish();
}

void SettingsWhere(const SettingsOptions& options) {
  const std::vector<CString> names = SettingsNames();
  const SettingsContext context(options.project);
  std::vector<std::string> paths;
  for (const CString& name : names)
    for (const SettingsPlace& place : context.PlacesOf(name)) paths.push_back(PathForDisplay(place.path));
  OutputFile output(options.output.file, paths);
  RecordWriter records(output, options.output.Format(),
                       {{"file", "file"}, {"state", "state"}, {"place", "place"}, {"path", "path"}});
  for (const CString& name : names) {
    if (!options.file.empty() && FromUtf8(options.file).CompareNoCase(name) != 0) continue;
    const std::vector<SettingsPlace> places = context.PlacesOf(name);
    const SettingsPlace* in_use = PlaceInUse(places);
    for (const SettingsPlace& place : places)
      records.Row({ToUtf8(name),
                   std::string(&place == in_use ? "in use"
                               : place.exists   ? "hidden"
                                                : "-"),
                   std::string(place.name), PathForDisplay(place.path)});
  }
  records.Finish();
  output.Finish();
  if (!context.HasInstallation())
    Warn("no installation found, so these are the usual folders; make one: velmora env install --to DIR");
}

}  // namespace velmora::cli
