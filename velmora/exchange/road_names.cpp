#include "velmora/exchange/road_names.h"

#include <map>

namespace velmora::exchange {

void MakeNamesUnique(const std::vector<std::string>& suffixes, std::vector<ImportedRoad>* roads) {
  std::map<std::string, int> named;
  for (const ImportedRoad& road : *roads) ++named[road.road.name];
  for (size_t i = 0; i < roads->size(); ++i) {
    std::string& name = (*roads)[i].road.name;
    if (const auto found = named.find(name); found != named.end() && found->second > 1) name += suffixes[i];
  }
}

}  // namespace velmora::exchange
