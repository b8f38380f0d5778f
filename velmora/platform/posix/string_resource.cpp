#include "velmora/platform/string_resource.h"

namespace velmora {
namespace {

struct ModuleString {
  unsigned id;
  const wchar_t* text;
};

constexpr ModuleString kStrings[] = {
#define VELMORA_STRING(id, text) {id, L##text},
#include "velmora/platform/strings.inc"
#undef VELMORA_STRING
};

}  // namespace

// There is one module with strings; any address of it serves as its handle.
HINSTANCE ModuleWithStrings() { return reinterpret_cast<HINSTANCE>(const_cast<ModuleString*>(kStrings)); }

CString LoadModuleString(HINSTANCE module, unsigned id) {
  if (module != ModuleWithStrings()) return {};
  for (const ModuleString& entry : kStrings)
    if (entry.id == id) return entry.text;
  return {};
}

}  // namespace velmora
