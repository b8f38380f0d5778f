// The section SYSTEM of Velmora.ini.
#ifndef VELMORA_ENVIRONMENT_SYSTEM_KEYS_H_
#define VELMORA_ENVIRONMENT_SYSTEM_KEYS_H_

namespace velmora {

class CTundrilIni;

enum class SystemKeySet {
  kPlain,  // as Init reads them
  kSetUp,  // as InitXPWay does: one key by another name, and two more
};

// Reads each key with the object's ReadKey into its field.
void ReadSystemKeys(SystemKeySet set, CTundrilIni* ini);

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_SYSTEM_KEYS_H_
