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

struct dirsorttype {
  wchar_t namn[260];     // name, spelled as on disk
  wchar_t kortnamn[13];  // short name: the system's 8.3 name, else the first 12 characters of the name
  wchar_t datum[13];     // local day of the last change, "2024-03-09"; outside 1970..2037 "1970-01-01"
  wchar_t tid[6];        // its time of day, "08.05"
  int filstorlek;        // size in bytes, the low 32 bits; 1 to 999 as 1000
};

class VELMORA_API CDirSort : public list0<dirsorttype> {
 public:
  int m_nVal = 0;  // for derived classes: the `val` of the Init that runs

  // Lists what matches `pattern`, a path with wildcards, and sorts. With `clear` 1 the list is emptied
  // first; otherwise the new entries come behind the old ones and all are sorted together. Folders, "."
  // and ".." among them, are listed with `folders` 1 only. When nothing on disk matches, the list is not
  // sorted. The current element afterwards is any: start with Home.
  //
  // A pattern with a point that does not end in "*" or "?" lists only names that end as it does from its
  // last point on, without regard to case.
  //
  // Returns 0, or -1 after a status-bar text when an entry could not be added; the list is then unsorted
  // and m_nVal keeps `val`. What the list throws passes through.
  //
  //   key     order
  //    1      name, rising: names that begin with a number first, by that number; then by the text with
  //           a to z raised
  //   -1      name, falling: by the number only. Names with the same number, or with none, come out in
  //           the reverse of their order before
  //    2, -2  size, rising
  //    3, -3  as 1 and -1 on the day: falling, only the year decides
  //   other   as the system delivers them
  int Init(const wchar_t* pattern, int key, int clear, int val, int folders);
  int Init(const CString& pattern, int key, int clear, int val, int folders) {
    return Init(pattern.GetString(), key, clear, val, folders);
  }

 protected:
  int Sortval(int key) override;
};

}  // namespace velmora

#endif  // VELMORA_PROJECT_DIR_SORT_H_
