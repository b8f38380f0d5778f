#include "tests/support/environment_variable.h"

#include <cstdlib>

namespace velmora {
namespace {

// Through the run time, which tells the system too. An empty value unsets.
void Set(const CString& name, const std::optional<CString>& value) {
  _wputenv_s(name, value.value_or(CString()).GetString());
}

}  // namespace

EnvironmentVariable::EnvironmentVariable(const CString& name, const std::optional<CString>& value)
    : name_(name) {
  if (const wchar_t* previous = _wgetenv(name)) previous_ = CString(previous);
  Set(name, value);
}

EnvironmentVariable::~EnvironmentVariable() { Set(name_, previous_); }

}  // namespace velmora
