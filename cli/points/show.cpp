#include "cli/points/show.h"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <memory>
#include <vector>

#include "cli/input/rows.h"
#include "cli/output/options.h"
#include "cli/output/records.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/stod_punkt.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

struct ShowOptions {
  std::string file;
  OutputOptions output;
};

// Checks what the library accepts silently: whether the file is one of support points, and which levels are
// not numbers.
class LevelCheck {
 public:
  explicit LevelCheck(const std::string& file) : file_(file) {
    if (!reader_.Open(PathFromSystem(file))) RefuseUnopened(file);
    CheckHeader();
    while (Next() && !AtStar()) {
      if (line_.CompareNoCase(L"gvy") == 0) {
        (void)(Next() && Next());
        continue;
      }
      good_.push_back(Next() && HasNumber());
      if (!good_.back() && trouble_++ == 0)
        first_ = At(file_, number_, Quoted(ToUtf8(line_.Left(80))) + " is not the level of a support point");
      (void)Next();
    }
    if (reader_.Failed())
      throw Refusal(At(file_, number_ + 1,
                       "reading stopped here: a read error, or a line too long for support points"));
  }

  bool HasLevel(size_t point) const { return point < good_.size() && good_[point]; }
  // Empty when every point has one.
  std::string Trouble() const {
    if (trouble_ == 0) return "";
    return first_ + "; " + std::to_string(trouble_) + (trouble_ == 1 ? " point has" : " points have") +
           " no level";
  }

 private:
  bool Next() {
    line_.Empty();
    if (!reader_.ReadLine(&line_)) return false;
    ++number_;
    return true;
  }
  bool AtStar() const { return line_.GetAt(0) == L'*'; }
  // Whether the line is a number and nothing else: of "1O.5" the library reads the 1.
  bool HasNumber() const {
    double value = 0;
    NumberScanner scanner(line_.GetView());
    return scanner.Next(&value) && TrimBlanks(scanner.Rest()).empty();
  }

  void CheckHeader() {
    constexpr int kValues = 6;
    for (int i = 1; i <= kValues; ++i) {
      if (!Next())
        throw Refusal(
            At(file_, number_ + 1, "ends within its header of six numbers; is it a support-point file?"));
      if (i == kValues && AtStar()) return;
      if (!HasNumber())
        throw Refusal(
            At(file_, number_,
               "is not a single number, as each of the first six lines of a support-point file is"));
    }
    while (Next() && !line_.IsEmpty() && !AtStar()) {
    }
  }

  std::string file_;
  TextReader reader_;
  CString line_;
  std::int64_t number_ = 0;
  std::vector<bool> good_;  // by point
  std::int64_t trouble_ = 0;
  std::string first_;
};

void ShowPoints(const ShowOptions& options) {
  const CString path = PathFromSystem(options.file);
  const std::optional<FileStatus> status = GetFileStatus(path);
  if (options.file == "-" || (status && status->kind == FileKind::kOther))
    throw Refusal("support points are read from a file on disk only; save them to one first");
  const LevelCheck check(options.file);
  CStodPunkt points(path);
  int count = 0;
  points.Where(&count);
  const OutputFormat format = options.output.Format();
  OutputFile output(options.output.file, {options.file});
  if (format == OutputFormat::kTable) {
    const double header[] = {points.huvud1, points.huvud2, points.huvud3,
                             points.huvud4, points.huvud5, points.huvud6};
    std::string line = "Header ";
    for (const double value : header) line += " " + FormatShortest(value);
    output.Write(line + "\n");
    if (points.gvy != 0) output.Write("gvy     " + FormatFixed(points.gvy, 4) + "\n");
    output.Write("\n");
  }
  RecordWriter records(output, format, {{"name", "name"}, {"level", "level", true}});
  size_t point = 0;
  for (int at = points.Home(); at == 0; at = points++ == nullptr ? -1 : 0)
    records.Row(
        {ToUtf8(points.pael->namn), check.HasLevel(point++) ? Cell(Number{points.pael->z, 4}) : Cell()});
  records.Finish();
  output.Finish();
  if (check.Trouble().empty()) return;
  Warn(check.Trouble());
  throw ExitWith{1};
}

}  // namespace

void AddPointsCommands(CLI::App& app) {
  CLI::App* points = app.add_subcommand("points", "Support points");
  points->require_subcommand(1);
  auto options = std::make_shared<ShowOptions>();
  CLI::App* verb = points->add_subcommand("show", "The points of a support-point file, with their levels");
  verb->add_option("FILE", options->file, "Support-point file")->required();
  AddOutputOptions(verb, &options->output);
  verb->callback([options] { ShowPoints(*options); });
}

}  // namespace velmora::cli
