// What the registry's error numbers mean to a user.
#ifndef VELMORA_CLI_CONTEXT_REGISTRY_ERROR_H_
#define VELMORA_CLI_CONTEXT_REGISTRY_ERROR_H_

#include <string>

namespace velmora::cli {

// "the disk is full"
std::string RegistryErrorText(int error);
// Why the registry as a whole cannot be read; empty when it can. One that does not exist yet can.
std::string RegistryProblem();
// Throws a Refusal when it cannot.
void RequireReadableRegistry();

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CONTEXT_REGISTRY_ERROR_H_
