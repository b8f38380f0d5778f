// What files that nobody's programs wrote cost: each reader with files of one character, of 1, 10 and 100 MB,
// and of a few characters or one line over and over, of 1 and 10 MB.
//
//   hostile_bench [--small] [--json FILE] [--folder DIR] [--only TEXT] [--pattern NAME]
//
// Each reading is a process of its own. A row shows milliseconds of the processor a megabyte and the most
// memory beyond what an empty file takes. Marked are a time a megabyte of the largest file above twice that
// of the one before, unless it is below kShort in all, a time a megabyte above kSlow, and a memory above
// kTimes times the file and kConstant beside it. --only and --pattern pick readers and patterns. The files
// lie in memory (/dev/shm) unless a folder is named. Ends with 1 when a row is marked.
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/hostile/readers.h"
#include "bench/hostile/trial.h"
#include "bench/measure.h"
#include "velmora/common/messages.h"
#include "velmora/platform/files.h"
#include "velmora/settings/tundril_cfg.h"

namespace velmora::bench {
namespace {

namespace fs = std::filesystem;

constexpr double kShort = 0.2;     // s
constexpr double kSlow = 1;        // s a MB
constexpr double kTimes = 4;       // times the file
constexpr double kConstant = 200;  // MB
constexpr double kMegabyte = 1 << 20;

struct Settings {
  bool small = false;
  std::vector<int> sizes = {1, 10, 100};  // MB
  std::string json;
  std::string folder = "/dev/shm";
  std::string only;     // in a reader's name
  std::string pattern;  // empty: all
};

struct Pattern {
  const char* name;
  std::string bytes;   // over and over
  bool small = false;  // for the small run too
  // Longer files of lines show nothing that those of line feeds do not, and take a minute each.
  int Largest() const { return bytes.size() == 1 ? 100 : 10; }
};

// A line of fields in quotes, just as long as a row may be.
std::string Fields() {
  std::string fields;
  while (fields.size() < 1000000) fields += "\"\",";
  return fields;
}

std::vector<Pattern> Patterns() {
  return {{"x", "x", true},
          {"LF", "\n", true},
          {"CR", "\r"},
          {"=", "="},
          {"*", "*"},
          {"blank", " "},
          {"digit", "1"},
          {"NUL", std::string(1, '\0')},
          {"FF", "\xFF"},
          {"quote", "\""},
          {"comma", ","},
          {"fields", "\"\","},
          {"numbers", "1 "},
          {"fields LF", Fields() + "\n"},
          {"x LF", "x\n", true},
          {"* LF", "*\n"},
          {"a= LF", "a=\n"},
          {"digits LF", "0 0 0 0\n", true},
          {"words LF", "aaaaa b 1 1 1\n"}};
}

struct Row {
  std::string reader;
  std::string pattern;
  std::vector<Trial> trials;  // by size, memory beyond the empty file's
  std::string mark;
};

class HostileBench {
 public:
  explicit HostileBench(Settings settings)
      : settings_(std::move(settings)), folder_(settings_.folder + "/velmora-hostile") {
    fs::remove_all(folder_);
    fs::create_directories(Project() / "TUNDRIL.DBF");
    SetMessageBoxHandler([](const MessageBoxCall&) { return IDOK; });
    SetStatusBarHandler([](const CString&) { return true; });
    setenv("XDG_DATA_HOME", (folder_ / "data").c_str(), 1);
  }
  ~HostileBench() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }
  HostileBench(const HostileBench&) = delete;
  HostileBench& operator=(const HostileBench&) = delete;

  int Run() {
    std::printf("Hostile files, ms of the processor a MB and the most MB of memory\n%s\n\n%-26s %-10s",
                Machine().c_str(), "", "");
    for (const int size : settings_.sizes) std::printf(" %5d MB", size);
    for (const int size : settings_.sizes) std::printf(" %5d MB", size);
    std::printf("\n");
    for (const Pattern& pattern : Patterns()) {
      const bool wanted =
          settings_.pattern.empty() ? pattern.small || !settings_.small : settings_.pattern == pattern.name;
      if (!wanted) continue;
      WriteFile(Source(0), {}, 0);
      for (const int size : settings_.sizes) WriteFile(Source(size), pattern.bytes, size);
      for (const Reader& reader : Readers())
        if (reader.name.find(settings_.only) != std::string::npos) Measure(reader, pattern);
    }
    if (settings_.only.empty() && settings_.pattern.empty()) LookUps();
    return WriteJson() && marked_ == 0 ? 0 : 1;
  }

 private:
  fs::path Project() const { return folder_ / "project"; }
  fs::path Source(int megabytes) const { return folder_ / std::to_string(megabytes); }

  static void WriteFile(const fs::path& path, const std::string& bytes, int megabytes) {
    std::ofstream out(path, std::ios::binary);
    std::string piece;
    while (!bytes.empty() && piece.size() + bytes.size() <= (size_t{1} << 20)) piece += bytes;
    for (int i = 0; i < megabytes; ++i) out << piece;
    if (!out.flush()) {
      std::fprintf(stderr, "hostile_bench: %s: cannot be written; name a folder with room: --folder DIR\n",
                   path.c_str());
      std::exit(1);
    }
  }

  // The file gets a further name, so that what a reader replaces is its own.
  Trial RunWith(const Reader& reader, int megabytes) const {
    const fs::path file = Project() / reader.file;
    fs::remove(file);
    fs::create_hard_link(Source(megabytes), file);
    for (const auto& [name, text] : reader.beside) std::ofstream(Project() / name, std::ios::binary) << text;
    const CString folder = PathFromSystem(Project().string());
    const Trial trial = RunAlone([&] { reader.read(folder); });
    for (const auto& entry : fs::directory_iterator(Project())) fs::remove_all(entry.path());
    fs::create_directories(Project() / "TUNDRIL.DBF");
    return trial;
  }

  static std::string Decimal(double value, int decimals) {
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
  }

  void Measure(const Reader& reader, const Pattern& pattern) {
    Row row{reader.name, pattern.name, {}, {}};
    const double nothing = RunWith(reader, 0).megabytes;
    for (const int size : settings_.sizes) {
      if (size > pattern.Largest()) continue;
      Trial trial = RunWith(reader, size);
      trial.megabytes = std::max(trial.megabytes - nothing, 0.0);
      if (!trial.failure.empty()) row.mark += " " + trial.failure;
      if (trial.megabytes > kTimes * size + kConstant) row.mark += " memory";
      row.trials.push_back(trial);
    }
    const size_t last = row.trials.size() - 1;
    const double ratio = row.trials[last].seconds * settings_.sizes[last - 1] /
                         std::max(row.trials[last - 1].seconds * settings_.sizes[last], 1e-9);
    const double slowest = std::max(row.trials[last].seconds / settings_.sizes[last],
                                    row.trials[last - 1].seconds / settings_.sizes[last - 1]);
    if ((ratio > 2 && row.trials[last].seconds > kShort) || slowest > kSlow) row.mark += " time";
    std::printf("%-26s %-10s", row.reader.c_str(), row.pattern.c_str());
    for (size_t i = 0; i < settings_.sizes.size(); ++i)
      std::printf(" %8s",
                  i > last ? "" : Decimal(row.trials[i].seconds * 1e3 / settings_.sizes[i], 2).c_str());
    for (size_t i = 0; i < settings_.sizes.size(); ++i)
      std::printf(" %8s", i > last ? "" : Decimal(row.trials[i].megabytes, 1).c_str());
    std::printf("%s\n", row.mark.empty() ? "" : ("  <-" + row.mark).c_str());
    std::fflush(stdout);
    if (!row.mark.empty()) ++marked_;
    rows_.push_back(std::move(row));
  }

  // What is asked of a file of many keys.
  void LookUps() {
    std::printf("\nLook-ups among keys, ns each\n");
    for (const int keys : {1'000, 10'000, 100'000}) {
      CTundrilCFG cfg(L"bench", L"");
      const auto key = [](int i) {
        CString name;
        name.Format(L"KEY%d", i);
        return name;
      };
      const double fill = Seconds([&] {
        for (int i = 0; i < keys; ++i) cfg.WriteKey(key(i), L"value");
      });
      const double find = Seconds([&] {
        for (int i = 0; i < keys; ++i) cfg.FindKey(key(static_cast<int>((i * 7919LL) % keys)));
      });
      const int walked = std::min(keys, 20);
      const double walk = Seconds([&] {
        for (int i = 0; i < walked; ++i) {
          cfg.FindKey(key(static_cast<int>((i * 7919LL) % keys)));
          cfg++;
        }
      });
      const double each = 1e9 / keys;
      std::printf("%7d keys: written %.0f, found %.0f, found after a step in the list %.0f\n", keys,
                  fill * each, find * each, walk * 1e9 / walked);
      look_ups_ += (look_ups_.empty() ? "" : ",\n");
      look_ups_ += "  {\"keys\": " + std::to_string(keys) +
                   ", \"written_ns\": " + std::to_string(fill * each) +
                   ", \"found_ns\": " + std::to_string(find * each) +
                   ", \"found_after_step_ns\": " + std::to_string(walk * 1e9 / walked) + "}";
    }
  }

  bool WriteJson() const {
    if (settings_.json.empty()) return true;
    std::ofstream out(settings_.json);
    out << "{\"machine\": \"" << Machine() << "\",\n \"rows\": [";
    const char* between = "\n";
    for (const Row& row : rows_) {
      std::string pattern = row.pattern == "\"" ? "quote" : row.pattern;
      out << between << "  {\"reader\": \"" << row.reader << "\", \"pattern\": \"" << pattern
          << "\", \"sizes\": [";
      for (size_t i = 0; i < row.trials.size(); ++i)
        out << (i == 0 ? "" : ", ") << "{\"mb\": " << settings_.sizes[i]
            << ", \"seconds\": " << row.trials[i].seconds << ", \"memory_mb\": " << row.trials[i].megabytes
            << "}";
      out << "], \"mark\": \"" << row.mark << "\"}";
      between = ",\n";
    }
    out << "\n ],\n \"look_ups\": [\n" << look_ups_ << "\n]}\n";
    return static_cast<bool>(out.flush());
  }

  Settings settings_;
  fs::path folder_;
  std::vector<Row> rows_;
  std::string look_ups_;
  int marked_ = 0;
};

}  // namespace
}  // namespace velmora::bench

int main(int argc, char** argv) {
  velmora::bench::Settings settings;
  if (!velmora::bench::ReadOptions(argc, argv, {{"--small", &settings.small}},
                                   {{"--json", &settings.json},
                                    {"--folder", &settings.folder},
                                    {"--only", &settings.only},
                                    {"--pattern", &settings.pattern}})) {
    std::fprintf(stderr,
                 "hostile_bench [--small] [--json FILE] [--folder DIR] [--only TEXT] [--pattern NAME]\n");
    return 2;
  }
  if (settings.small) settings.sizes = {1, 4};
  return velmora::bench::HostileBench(settings).Run();
}
