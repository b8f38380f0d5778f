// The section SYSTEM of Velmora.ini.
#ifndef VELMORA_ENVIRONMENT_SYSTEM_KEYS_H_
#define VELMORA_ENVIRONMENT_SYSTEM_KEYS_H_

#include <span>
#include <vector>

#include "velmora/text/string.h"

namespace velmora {

class CTundrilIni;

enum class SystemKeySet {
  kPlain,  // as Init reads them
  kSetUp,  // as InitXPWay does: one key by another name, and two more
};

// Reads each key into its field, as the object's ReadKey gives it.
void ReadSystemKeys(SystemKeySet set, CTundrilIni* ini);

// All their names.
std::vector<CString> SystemKeyNames();

// What the object's ReadKey gives for each of several keys of a section, where the system allows from one
// reading of the file.
std::vector<CString> ReadKeys(const CTundrilIni& ini, const CString& section, std::span<const CString> keys);

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_SYSTEM_KEYS_H_
