#include "cli/align/option_values.h"

#include <optional>

#include "cli/terminal/completes.h"
#include "velmora/alignment/station_text.h"
#include "velmora/text/codepage.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {

double ToStation(const std::string& text) {
  const std::optional<double> station = ParseStation(text);
  if (!station) throw CLI::ValidationError("\"" + text + "\" is not a station; write 1250.5 or 1/250.500");
  return *station;
}

double ToNumber(const std::string& text) {
  const std::optional<double> number = ParseWholeNumber(WideFromUtf8(text));
  if (!number) throw CLI::ValidationError("\"" + text + "\" is not a number");
  return *number;
}

std::pair<double, double> ToPair(const std::string& text, char separator,
                                 double (*read)(const std::string&)) {
  const size_t cut = text.find(separator);
  if (cut == std::string::npos)
    throw CLI::ValidationError("\"" + text + "\" lacks the \"" + separator + "\" between its two numbers");
  return {read(text.substr(0, cut)), read(text.substr(cut + 1))};
}

Limits ToLimits(const std::string& text, double (*read)(const std::string&)) {
  const auto [low, high] = ToPair(text, ':', read);
  if (low > high) throw CLI::ValidationError("\"" + text + "\": the lower limit comes first");
  return {low, high};
}

void AddAlignmentFile(CLI::App* verb, std::string* file) {
  verb->add_option("FILE", *file, "Alignment file, single or combined with a profile")
      ->required()
      ->check(CompletesFile(".vl"));
}

double ToDistance(const std::string& text) {
  const double metres = ToNumber(text);
  if (metres < 0) throw CLI::ValidationError("\"" + text + "\": a distance cannot be negative");
  return metres;
}

CLI::Option* AddMaxOffset(CLI::App* verb, double* metres) {
  return AddValue(verb, "--max-offset", "M",
                  "Offset beyond which a point is far from the road (default: 500 m)",
                  [metres](const std::string& text) { *metres = ToDistance(text); });
}

}  // namespace velmora::cli
