// Values of options that are stations, numbers or pairs of them.
#ifndef VELMORA_CLI_ALIGN_OPTION_VALUES_H_
#define VELMORA_CLI_ALIGN_OPTION_VALUES_H_

#include <CLI/CLI.hpp>
#include <string>
#include <utility>

#include "cli/align/commands.h"

namespace velmora::cli {

// These throw a CLI::ValidationError for another text.
double ToStation(const std::string& text);
double ToNumber(const std::string& text);
double ToDistance(const std::string& text);  // not negative
// "a:b", the lower limit first, each half read by `read`.
Limits ToLimits(const std::string& text, double (*read)(const std::string&));
// "a:b" or "x,y", each half read by `read`.
std::pair<double, double> ToPair(const std::string& text, char separator, double (*read)(const std::string&));

// An option with one value, handed to `take`, whose ValidationErrors get the option's name.
template <class Take>
CLI::Option* AddValue(CLI::App* verb, const std::string& name, const std::string& metavar,
                      const std::string& help, Take take) {
  const auto take_named = [name, take = std::move(take)](const std::string& text) {
    try {
      take(text);
    } catch (const CLI::ValidationError& error) {
      throw CLI::ValidationError(name, error.what());
    }
  };
  return verb->add_option_function<std::string>(name, take_named, help)->type_name(metavar)->type_size(1);
}

void AddAlignmentFile(CLI::App* verb, std::string* file);
CLI::Option* AddMaxOffset(CLI::App* verb, double* metres);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_OPTION_VALUES_H_
