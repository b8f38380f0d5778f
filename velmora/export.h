// Marks what the shared library shows to its clients. Programs that are linked with a static build define
// VELMORA_STATIC, as the build files do for them.
#ifndef VELMORA_EXPORT_H_
#define VELMORA_EXPORT_H_

#include "velmora/portability.h"

// VELMORA_API: a class or function of the shared library. VELMORA_TEMPLATE_API: a template, or a class that
// is defined in its header alone; they are instantiated where they are used, in the library and in its
// clients alike. Where the system shares such types between modules (not Windows) they are exported, so that
// both sides have one type.
#if defined(_WIN32) && defined(VELMORA_STATIC)
#define VELMORA_API
#elif defined(VELMORA_BUILDING)
#define VELMORA_API VELMORA_SYMBOL_EXPORT
#else
#define VELMORA_API VELMORA_SYMBOL_IMPORT
#endif
#ifdef _WIN32
#define VELMORA_TEMPLATE_API
#else
#define VELMORA_TEMPLATE_API VELMORA_SYMBOL_EXPORT
#endif

#endif  // VELMORA_EXPORT_H_
