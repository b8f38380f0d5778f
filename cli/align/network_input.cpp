#include "cli/align/network_input.h"

#include <algorithm>
#include <map>
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
    if (name == "-") throw WrongUsage("standard input cannot be one of several roads; give its file");
    const CString path = PathFromSystem(name);
    if (IsFolder(path))
      AddFolder(name, path);
    else if (IsGeoPackage(name))
      AddLayer(name);
    else
      AddFile(name, path, false);
  }

  NetworkInput Finish() {
    ReadFiles();
    passed_over_.Finish("files with a profile only");
    unusable_.Finish("that cannot be used");
    if (unusable_.Any()) throw ExitWith{1};
    if (input_.roads.empty()) throw Refusal("no road to place points on: every file has a profile only");
    return std::move(input_);
  }

 private:
  struct File {
    std::string name;
    size_t road;
    bool in_folder;
  };

  void AddFile(const std::string& name, const CString& path, bool in_folder) {
    waiting_.push_back({name, input_.roads.size(), in_folder});
    paths_.push_back(path);
    input_.files.push_back(name);
    input_.roads.emplace_back();
  }

  void AddFolder(const std::string& name, const CString& path) {
    const size_t before = waiting_.size();
    for (const FoundFile& file : FindFiles(JoinPath(path, L"*.vl")))
      if (file.status.kind != FileKind::kFolder && EndingOfName(ToUtf8(file.name)) == ".vl")
        AddFile(PathForDisplay(JoinPath(path, file.name)), JoinPath(path, file.name), true);
    if (waiting_.size() == before)
      throw Refusal(
          At(name, "is a folder without alignment files (*.vl); give the files' folder or the files"));
  }

  void AddLayer(const std::string& name) {
    const std::string file = FileOfList(name);
    exchange::ImportOptions options;
    if (name.size() > file.size()) options.layer = name.substr(file.size() + 1);
    input_.files.push_back(file);
    for (exchange::ImportedRoad& road : ReadRoads(FormatOf(file), file, options)) {
      exchange::FinishImport(options.fit, 0, &road);
      if (road.refused) {
        const auto why = std::find_if(road.findings.begin(), road.findings.end(),
                                      [](const Finding& finding) { return finding.misread; });
        unusable_.Add(At(name, Quoted(road.road.name) +
                                   (why == road.findings.end() ? " cannot be read" : ": " + why->text)));
        continue;
      }
      input_.roads.push_back({road.road.name, std::move(road.road.plan), std::move(road.road.profile)});
    }
  }

  void ReadFiles() {
    std::map<std::string, int> times;
    const auto short_name = [](const std::string& name) { return ToUtf8(NameOfPath(PathFromSystem(name))); };
    for (const File& file : waiting_) ++times[short_name(file.name)];
    std::vector<RoadFile> read = ReadRoadFiles(paths_, threads_);
    std::vector<bool> drop(input_.roads.size());
    for (size_t i = 0; i < read.size(); ++i) {
      const File& file = waiting_[i];
      const bool profile_only = read[i].problem && file.in_folder && !read[i].profile.empty();
      if (read[i].problem)
        (profile_only ? passed_over_ : unusable_)
            .Add(At(file.name, read[i].problem->line, read[i].problem->text));
      drop[file.road] = read[i].problem.has_value();
      const std::string name = short_name(file.name);
      input_.roads[file.road] = {times[name] > 1 ? file.name : name, std::move(read[i].plan),
                                 std::move(read[i].profile)};
    }
    size_t kept = 0;
    for (size_t i = 0; i < input_.roads.size(); ++i)
      if (!drop[i]) std::swap(input_.roads[kept++], input_.roads[i]);
    input_.roads.resize(kept);
  }

  int threads_;
  NetworkInput input_;
  std::vector<File> waiting_;
  std::vector<CString> paths_;
  ManyLines passed_over_{Warn};
  ManyLines unusable_{PrintError};
};

}  // namespace

bool IsNetwork(const std::vector<std::string>& names) {
  return names.size() != 1 || IsFolder(PathFromSystem(names[0])) || IsGeoPackage(names[0]);
}

NetworkInput ReadNetwork(const std::vector<std::string>& names, int threads) {
  Reader reader(threads);
  for (const std::string& name : names) reader.Add(name);
  return reader.Finish();
}

}  // namespace velmora::cli
