// Roads of LandXML files, with and without spirals and feet. Argument: the largest error of arcs for spirals,
// mm.
#include "velmora/exchange/landxml.h"

#include "fuzz/support/imported.h"
#include "fuzz/support/input.h"

namespace velmora::fuzz {

void Run(const Input& input) {
  const std::string& bytes = input.File();
  const auto open = [&]() -> ByteSource {
    return [&bytes, at = size_t{0}](std::span<char> buffer) mutable {
      const size_t count = bytes.copy(buffer.data(), buffer.size(), at);
      at += count;
      return static_cast<std::int64_t>(count);
    };
  };
  exchange::ImportOptions options;
  if (const double error = input.Number(0); error > 0) {
    options.spirals_as_arcs = error / 1000;
    options.metres_per_foot = 0.3048;
    options.internal_stations = true;
  }
  std::vector<exchange::ImportedRoad> roads;
  const auto problem = exchange::ReadLandXml(open, options, &roads);
  Require(!problem || !problem->text.empty(), "a problem says something");
  RequireImportable(std::move(roads));
}

}  // namespace velmora::fuzz
