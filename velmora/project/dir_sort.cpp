#include "velmora/project/dir_sort.h"

#include <utility>

#include "velmora/common/messages.h"
#include "velmora/platform/files.h"
#include "velmora/project/dir_entry.h"

namespace velmora {

int CDirSort::Init(const wchar_t* pattern, int key, int clear, int val, int folders) {
  const int val_before = std::exchange(m_nVal, val);
  if (Home() == 0 && clear == 1) {
    while (Delete() == 0) {
    }
  }
  const CString searched = pattern;
  const std::wstring_view ending = RequiredEnding(searched.GetView());
  const std::vector<FoundFile> found = FindFiles(searched);
  for (const FoundFile& file : found) {
    if (!EndsWithNoCase(file.name.GetView(), ending)) continue;
    if (file.status.kind == FileKind::kFolder && folders != 1) continue;
    if (Ny(1) < 0) {
      ShowStatus(L"Otillräckligt minnesutrymme (Dirsort)");
      return -1;
    }
    FillEntry(file, pael);
  }
  if (!found.empty()) Sortera(key);
  m_nVal = val_before;
  return 0;
}

int CDirSort::Sortval(int key) { return CompareEntries(*pmark, *pael, key); }

}  // namespace velmora
