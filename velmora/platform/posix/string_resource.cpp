#include "velmora/platform/string_resource.h"

namespace velmora {

// Any address in the module serves as its handle.
HINSTANCE ModuleWithStrings() {
  static char module;
  return reinterpret_cast<HINSTANCE>(&module);
}

CString LoadModuleString(HINSTANCE module, unsigned id) {
  const wchar_t* text = module == ModuleWithStrings() ? CompiledString(id) : nullptr;
  return text == nullptr ? CString() : CString(text);
}

}  // namespace velmora
