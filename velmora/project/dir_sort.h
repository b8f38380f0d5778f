// A folder's files and folders as a sorted list.
//
//   CDirSort list;
//   list.Init(L"C:\\P\\*.DAT", 1, 1, 0, 0);   // the .DAT files of C:\P by name
//   for (int ok = list.Home(); ok == 0; ok = list++ ? 0 : -1) use(list.pael->namn);
#ifndef VELMORA_PROJECT_DIR_SORT_H_
#define VELMORA_PROJECT_DIR_SORT_H_

#include "velmora/core/list0.h"
#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

// An entry of a folder.
struct dirsorttype {
  wchar_t namn[260];     // name, spelled as on disk
  wchar_t kortnamn[13];  // short name: the system's 8.3 name, else the first 12 characters of the name
  wchar_t datum[13];     // local day of the last change, "2024-03-09"; outside 1970..2037 "1970-01-01"
  wchar_t tid[6];        // its time of day, "08.05"
  int filstorlek;        // size in bytes, the low 32 bits; 1 to 999 as 1000
};

// The entries of one folder or, with several calls of Init, of several.
class VELMORA_API CDirSort : public list0<dirsorttype> {
 public:
  int m_nVal = 0;  // for derived classes: the `val` of the Init that runs

  // Lists the entries that match `pattern`, a path with wildcards, and sorts. With `clear` 1 the list is
  // emptied first; otherwise new entries are appended and all are sorted together. Folders, including "."
  // and "..", are listed with `folders` 1 only. When nothing on disk matches, the list is not sorted. The
  // current element afterwards is unspecified: start with Home.
  //
  // A pattern with a point that does not end in "*" or "?" lists only names with the same extension, without
  // regard to case.
  //
  // Returns 0, or -1 after a status-bar text when an entry could not be added; the list is then unsorted
  // and m_nVal keeps `val`. Exceptions of the list pass through.
  //
  //   key     order
  //    1      name, ascending: by the number at its start, names without one after most others; then by the
  //           text with a to z as capitals
  //   -1      name, descending: by the number only. Names with the same number, or without one, are in the
  //           reverse of their previous order
  //    2, -2  size, ascending
  //    3, -3  as 1 and -1 by the day: descending, only the year counts
  //   other   in the system's order @{
  int Init(const wchar_t* pattern, int key, int clear, int val, int folders);
  int Init(const CString& pattern, int key, int clear, int val, int folders) {
    return Init(pattern.GetString(), key, clear, val, folders);
  }
  // @}

 protected:
  int Sortval(int key) override;
};

}  // namespace velmora

#endif  // VELMORA_PROJECT_DIR_SORT_H_
