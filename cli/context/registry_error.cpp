#include "cli/context/registry_error.h"

#include "cli/terminal/error.h"
#include "velmora/platform/registry_store.h"

namespace velmora::cli {

std::string RegistryErrorText(int error) {
  switch (error) {
    case kRegistryNotFound:
      return "no such key or value";
    case kRegistryDenied:
      return "access is denied";
    case kRegistryDamaged:
      return "the registry file is damaged or not a velmora registry; name another with VELMORA_REGISTRY";
    case kRegistryCannotOpen:
    case kRegistryCannotRead:
    case kRegistryCannotWrite:
      return "the registry file cannot be used; check the path in VELMORA_REGISTRY and its permissions";
    case kRegistryBadArgument:
      return "a name or text is too long for the registry";
    case kRegistryBadPath:
      return "the key begins with two separators; write HKLM\\SOFTWARE\\Name";
    case kRegistryBusy:
      return "the registry is locked by another program; try again";
    case kRegistryDiskFull:
      return "the disk is full";
    default:
      return "error " + std::to_string(error);
  }
}

std::string RegistryProblem() {
  RegistryKey key;
  const int error = key.Open(HKEY_LOCAL_MACHINE, L"SOFTWARE", KEY_READ);
  return error == kRegistryDone || error == kRegistryNotFound ? "" : RegistryErrorText(error);
}

void RequireReadableRegistry() {
  if (const std::string problem = RegistryProblem(); !problem.empty())
    throw Refusal("the registry: " + problem);
}

}  // namespace velmora::cli
