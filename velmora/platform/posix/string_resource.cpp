#include "velmora/platform/string_resource.h"

namespace velmora {

// There is one module with strings; any address of it serves as its handle.
HINSTANCE ModuleWithStrings() {
  static char module;
  return reinterpret_cast<HINSTANCE>(&module);
}

CString LoadModuleString(HINSTANCE module, unsigned id) {
  const wchar_t* text = module == ModuleWithStrings() ? CompiledString(id) : nullptr;
  return text == nullptr ? CString() : CString(text);
}

}  // namespace velmora
