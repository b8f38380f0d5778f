// What holds for every imported road, whatever the file.
#ifndef VELMORA_FUZZ_SUPPORT_IMPORTED_H_
#define VELMORA_FUZZ_SUPPORT_IMPORTED_H_

#include <vector>

#include "velmora/exchange/road.h"

namespace velmora::fuzz {

// Finishes the import of each road, and takes the alignment that is written back through all formats.
void RequireImportable(std::vector<exchange::ImportedRoad> roads);

}  // namespace velmora::fuzz

#endif  // VELMORA_FUZZ_SUPPORT_IMPORTED_H_
