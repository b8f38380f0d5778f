// Names by which the roads of a file are told apart.
#ifndef VELMORA_EXCHANGE_ROAD_NAMES_H_
#define VELMORA_EXCHANGE_ROAD_NAMES_H_

#include <string>
#include <vector>

#include "velmora/exchange/road.h"

namespace velmora::exchange {

// Appends its suffix, which begins with a blank, to a name that several roads have. One of several roads
// without a name is named by its suffix.
void MakeNamesUnique(const std::vector<std::string>& suffixes, std::vector<ImportedRoad>* roads);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_ROAD_NAMES_H_
