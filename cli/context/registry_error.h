// What the registry's error numbers mean to a user.
#ifndef VELMORA_CLI_CONTEXT_REGISTRY_ERROR_H_
#define VELMORA_CLI_CONTEXT_REGISTRY_ERROR_H_

#include <string>

namespace velmora::cli {

// "the disk is full"
std::string RegistryErrorText(int error);
// Throws a Refusal when the registry as a whole cannot be read. One that does not exist yet can.
void RequireReadableRegistry();

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CONTEXT_REGISTRY_ERROR_H_
