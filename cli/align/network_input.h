// The roads of a network as the commands read them: alignment files, folders of them, layers of GeoPackages.
#ifndef VELMORA_CLI_ALIGN_NETWORK_INPUT_H_
#define VELMORA_CLI_ALIGN_NETWORK_INPUT_H_

#include <string>
#include <vector>

#include "velmora/alignment/alignment_point.h"

namespace velmora::cli {

struct NamedRoad {
  std::string name;
  std::vector<kovltype> plan;
  std::vector<kovltype> profile;
};

// Whether the names stand for a network: more than one, a folder or a GeoPackage.
bool IsNetwork(const std::vector<std::string>& names);

struct NetworkInput {
  std::vector<NamedRoad> roads;    // in the order of the names, in a folder by name
  std::vector<std::string> files;  // that were read
};

// A folder stands for its files *.vl, of which pipes, devices and those with a profile only are skipped
// with a note; "x.gpkg[:LAYER]" for the alignments of a layer. What is given more than once is read once,
// with a note; so is a layer that is given beside its whole file. A road of which lines are skipped gets a
// note too. A road's name is its file's or that of the feature; where roads' names are equal, the file as the
// user wrote it, with the feature's name behind it. Prints a line for each file that cannot be read and then
// throws ExitWith: with a road missing, points beside it would be given to another one.
NetworkInput ReadNetwork(const std::vector<std::string>& names, int threads);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_NETWORK_INPUT_H_
