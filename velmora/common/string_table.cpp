#include "velmora/common/string_table.h"

#include "velmora/platform/string_resource.h"

namespace velmora {

HINSTANCE LibraryModule() { return ModuleWithStrings(); }
CString LoadText(HINSTANCE module, unsigned id) { return LoadModuleString(module, id); }

}  // namespace velmora
