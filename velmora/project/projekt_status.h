// The states of a project with their texts from the string table, and the current state. Nothing is stored on
// disk; the caller stores the number.
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

// A state of a project.
struct projektstatustype {
  int nummer;        // status number
  wchar_t text[80];  // status text
};

// Not marked as a whole: without a virtual function of its own its table of virtual functions is the
// client's.
class VELMORA_TEMPLATE_API CProjektStatus : public list0<projektstatustype> {
 public:
  static constexpr int kUnknown = 999;  // the status of a project without one of the list's

  int m_nStatus = kUnknown;     // the current status
  CString m_text;               // for clients
  int m_bFound = 0;             // 1 once SetStatus or Find has found its record
  HINSTANCE m_hInst = nullptr;  // of SetHandle

  // The module with the string table. Call it before Load: without it the texts are empty.
  void SetHandle(HINSTANCE module) { m_hInst = module; }
  // At most 254 characters; empty when there is no module or it lacks the string.
  VELMORA_API CString TxLoadString(unsigned id);

  // Appends the standard states 0 to 5 and 999 to an empty list; otherwise does nothing.
  VELMORA_API void Load();

  // Adds a copy of `rec`, or a zeroed record, at the end (`where` 1) or before the current record (any other
  // value). Returns 0.
  VELMORA_API int Ny(int where, const projektstatustype* rec = nullptr);

  // Makes `number` the current status and its record the current one. Without such a record the status is
  // 999. Returns 0; -1 when the list is empty (the status is then `number`).
  VELMORA_API int SetStatus(int number);
  // Makes the record with this text, compared without regard to case, the current one and returns its number;
  // 999 when there is none. The status is unchanged.
  VELMORA_API int Find(const CString& text);

  // The text of the current status, empty on an empty list. Required: it is the text of the record at index
  // m_nStatus, whatever the records' numbers (test GetStatusAnswersByPlace). Beyond the end the status
  // becomes 999, with its text.
  VELMORA_API CString GetStatus();

 private:
  template <class Matches>
  bool Seek(Matches matches);
};

}  // namespace velmora

#endif  // VELMORA_PROJECT_PROJEKT_STATUS_H_
