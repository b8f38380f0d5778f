// What the section SYSTEM of Velmora.ini says about an installation.
#ifndef VELMORA_ENVIRONMENT_SYSTEM_KEYS_H_
#define VELMORA_ENVIRONMENT_SYSTEM_KEYS_H_

namespace velmora {

class CTundrilIni;

enum class SystemKeySet {
  kPlain,  // as Init reads them
  kSetUp,  // as InitXPWay does: one key under another name, two more
};

// Reads each key through the object's ReadKey and takes it over into its field.
void ReadSystemKeys(SystemKeySet set, CTundrilIni* ini);

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_SYSTEM_KEYS_H_
