// Marks what the shared library shows to its clients. Programs that are linked with a static build define
// VELMORA_STATIC, as the build files do for them.
#ifndef VELMORA_EXPORT_H_
#define VELMORA_EXPORT_H_

// VELMORA_API: a class or function of the shared library. VELMORA_TEMPLATE_API: a template, or a class that
// is defined in its header alone; they are instantiated where they are used, in the library and in its
// clients alike.
#if defined(_WIN32)
#if defined(VELMORA_STATIC)
#define VELMORA_API
#elif defined(VELMORA_BUILDING)
#define VELMORA_API __declspec(dllexport)
#else
#define VELMORA_API __declspec(dllimport)
#endif
#define VELMORA_TEMPLATE_API
#else
// What the library shows.
#define VELMORA_API __attribute__((visibility("default")))
// What is instantiated where it is used, and is one type there and in the library.
#define VELMORA_TEMPLATE_API __attribute__((visibility("default")))
#endif

#endif  // VELMORA_EXPORT_H_
