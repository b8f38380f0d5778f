// The states a project can be in, with their texts from the string table, and the current one. Nothing
// is kept on disk: where the number is stored is up to the caller.
//
//   CProjektStatus status;
//   status.SetHandle(LibraryModule());
//   status.Load();
//   status.SetStatus(4);
//   status.GetStatus();   // "Vilande"
#ifndef VELMORA_PROJECT_PROJEKT_STATUS_H_
#define VELMORA_PROJECT_PROJEKT_STATUS_H_

#include "velmora/core/list0.h"
#include "velmora/export.h"
#include "velmora/platform/types.h"
#include "velmora/text/string.h"

namespace velmora {

struct projektstatustype {
  int nummer;        // status number
  wchar_t text[80];  // status text
};

// Not marked as a whole: without a virtual function of its own its table of virtual functions is the
// client's.
class VELMORA_TEMPLATE_API CProjektStatus : public list0<projektstatustype> {
 public:
  static constexpr int kUnknown = 999;

  int m_nStatus = kUnknown;  // the current status
  CString m_text;            // for clients
  int m_bFound = 0;          // 1 once SetStatus or Find has found its record
  HINSTANCE m_hInst = nullptr;

  // The module whose string table holds the texts. Before Load: without it the texts are empty.
  void SetHandle(HINSTANCE module) { m_hInst = module; }
  // At most 254 characters; empty when there is no module or it lacks the string.
  VELMORA_API CString TxLoadString(unsigned id);

  // Appends the standard states 0 to 5 and 999 to an empty list; leaves one with records as it is.
  VELMORA_API void Load();

  // Appends (`where` 1) or inserts before the current record (any other) a copy of `rec`, without one a
  // record of zeros. Returns 0.
  VELMORA_API int Ny(int where, const projektstatustype* rec = nullptr);

  // Makes `number` the current status and its record the current one. A number that no record has makes
  // the status 999. Returns 0; -1 when the list is empty, the status is then `number` all the same.
  VELMORA_API int SetStatus(int number);
  // Makes the record with this text, letters without regard to case, the current one and returns its
  // number; 999 when there is none. The status stays.
  VELMORA_API int Find(const CString& text);

  // The text of the current status, empty on an empty list. Callers rely on it being that of the record
  // at place m_nStatus, from 0, whatever the records' numbers (test GetStatusAnswersByPlace). Beyond
  // the end the status becomes 999, with the text for that.
  VELMORA_API CString GetStatus();

 private:
  template <class Matches>
  bool Seek(Matches matches);
};

}  // namespace velmora

#endif  // VELMORA_PROJECT_PROJEKT_STATUS_H_
