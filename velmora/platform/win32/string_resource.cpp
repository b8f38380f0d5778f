#include "velmora/platform/string_resource.h"

namespace velmora {
namespace {

// Lies in the module, as the strings do.
const char kOurs = 0;

}  // namespace

HINSTANCE ModuleWithStrings() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&kOurs), &module);
  return module;
}

CString LoadModuleString(HINSTANCE module, unsigned id) {
  // A null module would be the program's own; the system looks at the low 16 bits only.
  if (module == nullptr || id > 0xFFFF) return {};
  // With a length of 0 the system tells where the text lies instead of copying it.
  const wchar_t* text = nullptr;
  const int length = LoadStringW(module, id, reinterpret_cast<LPWSTR>(&text), 0);
  if (length > 0) return CString(text, length);
  // A program that the library is linked into has no resources of ours.
  const wchar_t* compiled = module == ModuleWithStrings() ? CompiledString(id) : nullptr;
  return compiled == nullptr ? CString() : CString(compiled);
}

}  // namespace velmora
