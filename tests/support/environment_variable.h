// An environment variable of the process for as long as this lives.
#ifndef VELMORA_TESTS_SUPPORT_ENVIRONMENT_VARIABLE_H_
#define VELMORA_TESTS_SUPPORT_ENVIRONMENT_VARIABLE_H_

#include <optional>

#include "velmora/text/string.h"

namespace velmora {

class EnvironmentVariable {
 public:
  // A path is written as this system writes it. Nothing: the variable is not set.
  EnvironmentVariable(const CString& name, const std::optional<CString>& value);
  ~EnvironmentVariable();
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

 private:
  CString name_;
  std::optional<CString> previous_;
};

}  // namespace velmora

#endif  // VELMORA_TESTS_SUPPORT_ENVIRONMENT_VARIABLE_H_
