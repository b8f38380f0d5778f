#include "cli/report/setup.h"

#include "cli/context/project_folder.h"
#include "cli/context/settings_context.h"
#include "cli/output/creation_time.h"
#include "cli/settings/commands.h"
#include "cli/terminal/absolute_path.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/drawing/scale.h"
#include "velmora/environment/running_program.h"
#include "velmora/platform/files.h"
#include "velmora/text/numbers.h"
#include "velmora/text/utc_text.h"

namespace velmora::cli {
namespace {

constexpr char kUsualFormat[] = "A3";
constexpr double kUsualScale = 1000;
constexpr double kUsualHeightScale = 100;

CString FolderOf(const CString& path) { return path.Left(path.ReverseFind(L'\\')); }

// The project whose folder for data, or whose own folder, the file lies in; empty when there is none.
CString ProjectAround(const std::string& file) {
  if (file == "-") return {};
  const CString path = PathFromSystem(AbsolutePath(file));
  const CString folder = FolderOf(path);
  if (NameOfPath(folder).CompareNoCase(CProjPath::TundrilDbfKat) == 0) return FolderOf(folder);
  return IsFolder(folder + L"\\" + CProjPath::TundrilDbfKat) ? folder : CString();
}

// The keys of the project's TUNDRIL.PAR.
class ProjectSettings {
 public:
  explicit ProjectSettings(const std::string& project)
      : context_(project),
        file_(ParameterFileNamed(FromUtf8(kUsualFile))),
        places_(context_.PlacesOf(file_.name)),
        in_use_(PlaceInUse(places_)),
        settings_(SettingsIn(file_, in_use_ == nullptr ? CString() : in_use_->path)) {}

  struct Found {
    std::string text;
    std::string from;   // for people
    std::string where;  // the file to correct; empty for a built-in value
  };
  Found Get(const char* key) const {
    const Setting* setting = settings_.Find(FromUtf8(key));
    if (setting == nullptr) return {};
    const std::string value = ToUtf8(setting->value);
    const std::string name = ToUtf8(file_.name);
    if (!setting->stored || in_use_ == nullptr) return {value, std::string(key) + " built in", ""};
    const std::string path = PathForDisplay(in_use_->path);
    return {value, std::string(key) + " in " + path, path};
  }
  // The path of another settings file; empty when there is none.
  CString Find(const CString& name) const {
    const std::vector<SettingsPlace> places = context_.PlacesOf(name);
    const SettingsPlace* place = PlaceInUse(places);
    return place == nullptr ? CString() : place->path;
  }

 private:
  SettingsContext context_;
  ParameterFile file_;
  std::vector<SettingsPlace> places_;
  const SettingsPlace* in_use_;
  Settings settings_;
};

std::string TextOf(const std::optional<double>& scale) {
  return scale ? drawing::ScaleText(*scale) : "MAX (the largest that fits)";
}

// Here, or in UTC where SOURCE_DATE_EPOCH gives it.
std::string Today() {
  const std::optional<std::int64_t> fixed = FixedTime();
  return fixed ? UtcDate(*fixed) : ToUtf8(TodayText());
}

class Finder {
 public:
  explicit Finder(const ReportOptions& options) : options_(options) {}

  ReportSetup Find() {
    FindProject();
    FindFormat();
    setup_.sheets.scale = FindScale("scale", options_.scale, "LSKALA", kUsualScale);
    setup_.sheets.height_scale =
        FindScale("height scale", options_.height_scale, "HSKALA", kUsualHeightScale);
    if (options_.stations) {
      setup_.sheets.first_station = options_.stations->low;
      setup_.sheets.last_station = options_.stations->high;
      Add("stations",
          FormatShortest(options_.stations->low) + " to " + FormatShortest(options_.stations->high),
          "--stations");
    } else {
      Add("stations", "the whole road", "usual");
    }
    FindDecimals();
    FindStamp();
    setup_.date = options_.date.empty() ? Today() : options_.date;
    Add("date", setup_.date, !options_.date.empty() ? "--date" : FixedTime() ? "SOURCE_DATE_EPOCH" : "today");
    setup_.author = options_.author;
    if (!setup_.author.empty()) Add("author", setup_.author, "--author");
    return std::move(setup_);
  }

 private:
  void Add(std::string key, std::string value, std::string from) {
    setup_.lines.push_back({std::move(key), std::move(value), std::move(from)});
  }

  void FindProject() {
    CString folder;
    if (!options_.project.empty()) {
      folder = ExistingProjectFolder(options_.project);
    } else if (!options_.no_project) {
      folder = ProjectAround(options_.file);
    }
    if (folder.IsEmpty()) {
      Add("project", "none", options_.no_project ? "--no-project" : "FILE is not in one");
      return;
    }
    setup_.project = PathForDisplay(folder);
    Add("project", setup_.project, options_.project.empty() ? "FILE is in it" : "--project");
    settings_.emplace(setup_.project);
    CProjPath paths;
    paths.SetPath(folder);
    if (IsFolder(paths.m_RitKat)) setup_.drawing_folder = PathForDisplay(paths.m_RitKat);
  }

  void FindFormat() {
    const std::string name = options_.format.empty() ? kUsualFormat : options_.format;
    const CRitningsFormat formats;
    const int index = formats.Format2Index(FromUtf8(name).MakeUpper());
    if (index < 0) {
      std::string known;
      for (int i = 0; i < formats.antal; ++i)
        known += (i == 0 ? "" : ", ") + ToUtf8(CString(formats.formater[i].namn));
      throw Refusal(Quoted(name) + " is not a sheet format; use one of " + known);
    }
    setup_.sheets.format = formats.formater[index];
    Add("format", ToUtf8(setup_.sheets.format.namn), options_.format.empty() ? "usual" : "--format");
  }

  // In the project's file "MAX" is the largest that fits.
  std::optional<double> FindScale(const char* what, const std::optional<ScaleOption>& given, const char* key,
                                  double usual) {
    std::optional<ScaleOption> option = ScaleOption{.denominator = usual};
    std::string from = "usual";
    if (given) {
      option = given;
      from = std::string("--") + (key[0] == 'H' ? "height-scale" : "scale");
    } else if (settings_) {
      const ProjectSettings::Found found = settings_->Get(key);
      from = found.from;
      option = ParseScale(found.text);
      if (!option)
        throw Refusal((found.where.empty() ? "" : found.where + ": ") + key + " is " + Quoted(found.text) +
                      ", which is not a scale; correct it or give " +
                      (key[0] == 'H' ? "--height-scale" : "--scale"));
    }
    const std::optional<double> scale = option->largest ? std::nullopt : std::optional(option->denominator);
    Add(what, TextOf(scale), from);
    return scale;
  }

  void FindDecimals() {
    constexpr int kMostDecimals = 4;
    std::string from = "usual";
    if (settings_) {
      const ProjectSettings::Found found = settings_->Get("DECIMAL");
      const std::optional<double> number = ParseWholeNumber(FromUtf8(found.text).GetView());
      if (number && *number >= 0 && *number <= kMostDecimals) {
        setup_.sheets.decimals = static_cast<int>(*number);
        from = found.from;
      } else {
        from += "; DECIMAL is " + Quoted(found.text);
      }
    }
    Add("decimals of levels", std::to_string(setup_.sheets.decimals), from);
  }

  // STAMPVAL says which of the files STAMPEL1.DAT, STAMPEL2.DAT ... has the title block's fields.
  void FindStamp() {
    if (!options_.stamp.empty()) {
      setup_.stamp_file = options_.stamp;
      Add("title block", setup_.stamp_file, "--stamp");
      return;
    }
    if (settings_) {
      const ProjectSettings::Found chosen = settings_->Get("STAMPVAL");
      const CString path = settings_->Find(L"STAMPEL" + FromUtf8(chosen.text) + L".DAT");
      if (!path.IsEmpty()) {
        setup_.stamp_file = PathForDisplay(path);
        Add("title block", setup_.stamp_file, chosen.from);
        return;
      }
      Add("title block", "the command's own", "no STAMPEL" + chosen.text + ".DAT (" + chosen.from + ")");
      return;
    }
    Add("title block", "the command's own", "usual");
  }

  const ReportOptions& options_;
  ReportSetup setup_;
  std::optional<ProjectSettings> settings_;
};

}  // namespace

std::optional<ScaleOption> ParseScale(const std::string& text) {
  constexpr double kMost = 1e6;
  if (FromUtf8(text).CompareNoCase(L"MAX") == 0) return ScaleOption{.largest = true};
  const std::optional<double> number =
      ParseWholeNumber(FromUtf8(text.starts_with("1:") ? text.substr(2) : text).GetView());
  if (!number || !(*number >= 1 && *number <= kMost)) return std::nullopt;
  return ScaleOption{.denominator = *number};
}

ReportSetup FindReportSetup(const ReportOptions& options) { return Finder(options).Find(); }

}  // namespace velmora::cli
