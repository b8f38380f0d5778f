#include "tests/support/environment_variable.h"

#include <cstdlib>

#include "velmora/platform/files.h"

namespace velmora {
namespace {

void Set(const CString& name, const std::optional<CString>& value) {
  const std::string variable = ToUtf8(name);
  if (value)
    setenv(variable.c_str(), PathForDisplay(*value).c_str(), /*overwrite=*/1);
  else
    unsetenv(variable.c_str());
}

}  // namespace

EnvironmentVariable::EnvironmentVariable(const CString& name, const std::optional<CString>& value)
    : name_(name) {
  if (const char* previous = std::getenv(ToUtf8(name).c_str())) previous_ = PathFromSystem(previous);
  Set(name, value);
}

EnvironmentVariable::~EnvironmentVariable() { Set(name_, previous_); }

}  // namespace velmora
