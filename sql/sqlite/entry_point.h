// Marks the function by which SQLite loads the extension; nothing else of it is shown.
#ifndef SQL_SQLITE_ENTRY_POINT_H_
#define SQL_SQLITE_ENTRY_POINT_H_

#if defined(_WIN32)
#define VELMORA_ENTRY __declspec(dllexport)
#else
#define VELMORA_ENTRY __attribute__((visibility("default")))
#endif

#endif  // SQL_SQLITE_ENTRY_POINT_H_
