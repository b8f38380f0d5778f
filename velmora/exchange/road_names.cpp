#include "velmora/exchange/road_names.h"

#include <map>

namespace velmora::exchange {

void MakeNamesUnique(const std::vector<std::string>& suffixes, std::vector<ImportedRoad>* roads) {
  std::map<std::string, int> named;
  for (const ImportedRoad& road : *roads) ++named[road.road.name];
  for (size_t i = 0; i < roads->size(); ++i) {
    std::string& name = (*roads)[i].road.name;
    // One of several without a name could not be chosen.
    const auto found = named.find(name);
    const bool is_taken = found != named.end() && found->second > 1;
    if (name.empty() ? roads->size() > 1 : is_taken) name += suffixes[i].substr(name.empty() ? 1 : 0);
  }
}

}  // namespace velmora::exchange
