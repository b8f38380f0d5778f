// Roads in LandXML 1.2: alignments with their profiles.
//
// A point is "north east" or "north east elevation", or a reference to a CgPoint. An arc is its start,
// centre, end and direction of rotation; a point of a profile is "station elevation" where the grades meet.
#ifndef VELMORA_EXCHANGE_LANDXML_H_
#define VELMORA_EXCHANGE_LANDXML_H_

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "velmora/exchange/road.h"
#include "velmora/exchange/sink.h"
#include "velmora/platform/xml_reader.h"

namespace velmora::exchange {

// Returns a note on points whose ids could not be their names; empty without one.
std::string WriteLandXml(const ExportInput& input, const Sink& sink);

// Reads all alignments of a file, whatever else it holds. `open` starts the file anew: it is read a second
// time where points are given by reference. A problem that ended reading is returned; *roads is then
// incomplete.
using OpenSource = std::function<ByteSource()>;
std::optional<XmlProblem> ReadLandXml(const OpenSource& open, const ImportOptions& options,
                                      std::vector<ImportedRoad>* roads);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_LANDXML_H_
