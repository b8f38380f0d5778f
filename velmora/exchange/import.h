// The way from what a format's reader found to a road that can be written.
#ifndef VELMORA_EXCHANGE_IMPORT_H_
#define VELMORA_EXCHANGE_IMPORT_H_

#include <cstdint>
#include <string>

#include "velmora/exchange/road.h"

namespace velmora::exchange {

// Adds a finding about an element that is imported, or, with Refuse, that forbids the import. After
// kMostRoadFindings further ones are dropped.
inline constexpr size_t kMostRoadFindings = 1000;
void Note(std::int64_t line, std::string text, ImportedRoad* road);
void Refuse(std::int64_t line, std::string text, ImportedRoad* road);

// Splits arcs for the four decimals of bulges that the suite writes, sets stations from `start` where the
// file has none, measures the distance to what was read, and notes the faults of the result's points.
void FinishImport(double fit, double start, ImportedRoad* road);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_IMPORT_H_
