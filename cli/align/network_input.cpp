#include "cli/align/network_input.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "cli/align/exchange_formats.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/road_files.h"
#include "velmora/common/paths.h"
#include "velmora/exchange/import.h"
#include "velmora/lists/list_source.h"
#include "velmora/platform/files.h"

namespace velmora::cli {
namespace {

constexpr char kGeoPackage[] = ".gpkg";

bool IsGeoPackage(const std::string& name) { return EndingOfName(FileOfList(name)) == kGeoPackage; }

// Prints the first of many lines about single files or roads, and then how many more there are.
class ManyLines {
 public:
  explicit ManyLines(void (*print)(const std::string&)) : print_(print) {}
  void Add(const std::string& line) {
    constexpr int kShown = 20;
    if (++count_ <= kShown) print_(line);
    if (count_ > kShown) ++left_;
  }
  void Finish(const std::string& what) const {
    if (left_ > 0) print_("and " + std::to_string(left_) + " more " + what);
  }
  bool Any() const { return count_ > 0; }

 private:
  void (*print_)(const std::string&);
  int count_ = 0;
  int left_ = 0;
};

class Reader {
 public:
  explicit Reader(int threads) : threads_(threads) {}

  void Add(const std::string& name) {
    const CString path = PathFromSystem(name);
    if (IsFolder(path))
      AddFolder(name, path);
    else if (IsGeoPackage(name))
      AddLayer(name);
    else
      AddFile(name, path, false, RealPath(path));
  }

  NetworkInput Finish() {
    ReadFiles();
    repeated_.Finish("that are given more than once");
    passed_over_.Finish("files that are skipped");
    incomplete_.Finish("roads that are read in part");
    unusable_.Finish("that cannot be used");
    if (unusable_.Any()) throw ExitWith{1};
    std::erase_if(roads_, [](const Road& road) { return road.is_dropped; });
    if (roads_.empty()) throw Refusal("no road to place points on: every file is skipped");
    TellApart();
    return std::move(input_);
  }

 private:
  struct Road {
    NamedRoad named;
    std::string full_name;  // that no other road has
    bool is_dropped = false;
  };
  struct File {
    std::string name;
    size_t road;
    bool in_folder;
  };

  // Whether the file or folder, by its path without links, or a layer of a file has been added before.
  // `layer` names one that comes with the whole file.
  bool IsRepeated(const std::string& name, const CString& place, const std::string& layer = "") {
    const auto [first, is_new] = added_.try_emplace(std::wstring(place.GetView()), name);
    if (is_new) return false;
    const auto has_layer = [](const std::string& given) { return FileOfList(given) != given; };
    const bool is_part = has_layer(name) && !has_layer(first->second);
    repeated_.Add(At(name, (layer.empty() ? "" : "layer " + Quoted(layer) + " ") +
                               (first->second == name ? "is given more than once"
                                : is_part             ? "is a layer of " + Quoted(first->second)
                                                      : "is the same as " + Quoted(first->second)) +
                               "; it is read once"));
    return true;
  }

  static CString PlaceOfLayer(const CString& real_path, const std::string& layer) {
    return real_path + L":" + FromUtf8(layer).MakeUpper();
  }

  // Drops the roads of layers that have been added by their own names, not of those whose names within the
  // file differ in the case of letters only.
  void DropRepeatedLayers(const std::string& name, const CString& real_path,
                          std::vector<exchange::ImportedRoad>* roads) {
    std::map<std::string, bool> repeated;  // by layer
    for (const exchange::ImportedRoad& road : *roads)
      repeated.try_emplace(road.layer,
                           added_.contains(std::wstring(PlaceOfLayer(real_path, road.layer).GetView())));
    for (const auto& [layer, is_repeated] : repeated)
      if (const CString place = PlaceOfLayer(real_path, layer); is_repeated)
        IsRepeated(name, place, layer);
      else
        added_.try_emplace(std::wstring(place.GetView()), name);
    std::erase_if(*roads, [&](const exchange::ImportedRoad& road) { return repeated.at(road.layer); });
  }

  void AddFile(const std::string& name, const CString& path, bool in_folder,
               const std::optional<CString>& real_path) {
    if (real_path && IsRepeated(name, *real_path)) return;
    waiting_.push_back({name, roads_.size(), in_folder});
    paths_.push_back(path);
    input_.files.push_back(name);
    roads_.emplace_back();
  }

  void AddFolder(const std::string& name, const CString& path) {
    const std::optional<CString> real_path = RealPath(path);
    if (real_path && IsRepeated(name, *real_path)) return;
    bool any = false;
    for (const FoundFile& file : FindFiles(JoinPath(path, L"*.vl"))) {
      if (file.status.kind == FileKind::kFolder || EndingOfName(ToUtf8(file.name)) != ".vl") continue;
      any = true;
      const CString file_path = JoinPath(path, file.name);
      if (file.status.kind != FileKind::kFile)
        passed_over_.Add(At(PathForDisplay(file_path), "is skipped: it is a pipe or a device, not a file"));
      else
        AddFile(PathForDisplay(file_path), file_path, true,
                file.may_be_link || !real_path ? RealPath(file_path) : JoinPath(*real_path, file.name));
    }
    if (!any)
      throw Refusal(
          At(name, "is a folder without alignment files (*.vl); give the files' folder or the files"));
  }

  void AddLayer(const std::string& name) {
    const std::string file = FileOfList(name);
    exchange::ImportOptions options;
    if (name.size() > file.size()) options.layer = name.substr(file.size() + 1);
    const std::optional<CString> real_path = RealPath(PathFromSystem(file));
    if (real_path &&
        IsRepeated(name, options.layer.empty() ? *real_path : PlaceOfLayer(*real_path, options.layer)))
      return;
    input_.files.push_back(file);
    std::vector<exchange::ImportedRoad> roads = ReadRoads(FormatOf(file), file, options);
    if (roads.empty()) unusable_.Add(At(name, options.layer.empty() ? "has no roads" : "layer has no roads"));
    if (real_path && options.layer.empty()) DropRepeatedLayers(name, *real_path, &roads);
    for (exchange::ImportedRoad& road : roads) {
      const Findings of_file = road.findings;
      exchange::FinishImport(options.fit, 0, &road);
      if (road.refused) {
        const auto why = std::find_if(road.findings.begin(), road.findings.end(),
                                      [](const Finding& finding) { return finding.misread; });
        unusable_.Add(At(name, Quoted(road.road.name) +
                                   (why == road.findings.end() ? " cannot be read" : ": " + why->text)));
        continue;
      }
      if (!of_file.empty())
        incomplete_.Add(At(name, of_file[0].line, Quoted(road.road.name) + ": " + of_file[0].text));
      roads_.push_back({{road.road.name, std::move(road.road.plan), std::move(road.road.profile)},
                        At(name, road.road.name)});
    }
  }

  void ReadFiles() {
    std::vector<RoadFile> read = ReadRoadFiles(paths_, threads_);
    for (size_t i = 0; i < read.size(); ++i) {
      const File& file = waiting_[i];
      const bool profile_only = read[i].problem && file.in_folder && !read[i].profile.empty();
      if (read[i].problem)
        (profile_only ? passed_over_ : unusable_)
            .Add(At(file.name, read[i].problem->line, read[i].problem->text));
      else if (const std::optional<Finding> skipped = read[i].skipped.Note())
        incomplete_.Add(At(file.name, skipped->line, skipped->text));
      roads_[file.road] = {{ToUtf8(NameOfPath(PathFromSystem(file.name))), std::move(read[i].plan),
                            std::move(read[i].profile)},
                           file.name,
                           read[i].problem.has_value()};
    }
  }

  // Gives roads of equal names their full ones.
  void TellApart() {
    std::map<std::string, int> times;
    for (const Road& road : roads_) ++times[road.named.name];
    for (Road& road : roads_) {
      if (times[road.named.name] > 1) road.named.name = std::move(road.full_name);
      input_.roads.push_back(std::move(road.named));
    }
  }

  int threads_;
  NetworkInput input_;                         // without its roads until the end
  std::vector<Road> roads_;                    // those of waiting_ empty until they are read
  std::map<std::wstring, std::string> added_;  // names by paths without links
  std::vector<File> waiting_;
  std::vector<CString> paths_;
  ManyLines repeated_{Warn};
  ManyLines passed_over_{Warn};
  ManyLines incomplete_{Warn};
  ManyLines unusable_{PrintError};
};

}  // namespace

bool IsNetwork(const std::vector<std::string>& names) {
  return names.size() != 1 || IsFolder(PathFromSystem(names[0])) || IsGeoPackage(names[0]);
}

NetworkInput ReadNetwork(const std::vector<std::string>& names, int threads) {
  if (names == std::vector<std::string>{"-"})
    throw WrongUsage("--within needs the road's file; it does not read standard input");
  if (std::find(names.begin(), names.end(), "-") != names.end())
    throw WrongUsage("standard input cannot be one of several roads; give its file");
  Reader reader(threads);
  for (const std::string& name : names) reader.Add(name);
  return reader.Finish();
}

}  // namespace velmora::cli
