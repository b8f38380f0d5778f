#include "velmora/platform/string_resource.h"

namespace velmora {
namespace {

// An address in the module.
const char kOurs = 0;

}  // namespace

HINSTANCE ModuleWithStrings() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&kOurs), &module);
  return module;
}

CString LoadModuleString(HINSTANCE module, unsigned id) {
  // For a null module the system would search the program; of the number it uses the low 16 bits only.
  if (module == nullptr || id > 0xFFFF) return {};
  // With a length of 0 the system returns a pointer to the text.
  const wchar_t* text = nullptr;
  const int length = LoadStringW(module, id, reinterpret_cast<LPWSTR>(&text), 0);
  if (length > 0) return CString(text, length);
  // A program with the static library has no resources of the library.
  const wchar_t* compiled = module == ModuleWithStrings() ? CompiledString(id) : nullptr;
  return compiled == nullptr ? CString() : CString(compiled);
}

}  // namespace velmora
