#include "velmora/platform/string_resource.h"

namespace velmora {

const wchar_t* CompiledString(unsigned id) {
  switch (id) {
#define VELMORA_STRING(number, text) \
  case number:                       \
    return L##text;
#include "velmora/platform/strings.inc"
#undef VELMORA_STRING
    default:
      return nullptr;
  }
}

}  // namespace velmora
