#include "velmora/alignment/road_files.h"

#include <algorithm>
#include <mutex>
#include <utility>

#include "velmora/alignment/alignment_file.h"
#include "velmora/alignment/combined_reader.h"
#include "velmora/platform/in_threads.h"
#include "velmora/platform/whole_file.h"

namespace velmora {
namespace {

// Reads one file after the other, with the same memory.
class RoadFileReader {
 public:
  // Valid until the next one is read.
  const RoadFile& Read(const CString& name);

 private:
  bool Open(const CString& name) {
    return reader_.Open(name, TextReader::Guess::kWindows1252, InputFile::Accept::kRegularFiles);
  }
  void FindProblem(const CString& name);

  TextReader reader_;
  RoadFile road_;
};

const RoadFile& RoadFileReader::Read(const CString& name) {
  road_.plan.clear();
  road_.profile.clear();
  road_.problem.reset();
  road_.skipped = {};
  if (!Open(name)) {
    road_.problem = Finding{0, WhyUnopened(name)};
    return road_;
  }
  LineLosses losses;
  ReadCombined(
      reader_,
      [&](LineKind kind, const kovltype& point) {
        (kind == LineKind::kPlanPoint ? road_.plan : road_.profile).push_back(point);
      },
      [&](int number, LineKind kind, const CString& line) {
        if (kind == LineKind::kSeparator || kind == LineKind::kUnreadable)
          road_.skipped.Add(kind, losses.Check(number, kind, line));
      });
  if (reader_.Failed() || road_.plan.size() < 2) FindProblem(name);
  return road_;
}

// Reads the file once more for what is wrong with it.
void RoadFileReader::FindProblem(const CString& name) {
  AlignmentFile file;
  if (!Open(name))
    road_.problem = Finding{0, WhyUnopened(name)};
  else
    road_.problem = ReadAlignmentFile(reader_, &file);
  if (!road_.problem) road_.problem = ProblemOfPlan(file);
  road_.plan.clear();
  if (!road_.problem) road_.plan = std::move(file.plan);  // another program has written it meanwhile
  road_.profile = std::move(file.profile);
  road_.skipped = file.skipped_lines;
}

// Copies the points to the last piece, or to a new one where they do not fit it.
std::span<const kovltype> Keep(const std::vector<kovltype>& points,
                               std::vector<LargeVector<kovltype>>* pieces) {
  constexpr size_t kLeast = size_t{1} << 11;
  constexpr size_t kMost = size_t{1} << 17;
  if (pieces->empty() || pieces->back().capacity() - pieces->back().size() < points.size()) {
    const size_t room = pieces->empty() ? kLeast : std::min(pieces->back().capacity() * 2, kMost);
    pieces->emplace_back().reserve(std::max(room, points.size()));
  }
  LargeVector<kovltype>& piece = pieces->back();
  piece.insert(piece.end(), points.begin(), points.end());
  return std::span<const kovltype>(piece).last(points.size());
}

}  // namespace

std::vector<RoadFile> ReadRoadFiles(std::span<const CString> files, int threads) {
  std::vector<RoadFile> roads(files.size());
  InThreads(
      files.size(), threads, [] { return RoadFileReader(); },
      [&](size_t i, RoadFileReader& reader) { roads[i] = reader.Read(files[i]); });
  return roads;
}

RoadPlans::RoadPlans(std::span<const CString> files, int threads) : plans_(files.size()) {
  struct Thread {
    RoadFileReader reader;
    std::vector<LargeVector<kovltype>>* pieces;
  };
  std::mutex mutex;
  const auto make = [&]() -> Thread {
    const std::lock_guard lock(mutex);
    return {{}, &pieces_.emplace_back()};
  };
  InThreads(files.size(), threads, make, [&](size_t i, Thread& thread) {
    plans_[i] = Keep(thread.reader.Read(files[i]).plan, thread.pieces);
  });
}

}  // namespace velmora
