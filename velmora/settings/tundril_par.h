// A program's parameter file: lines "key=value" as in the configuration (tundril_cfg.h). A project's own
// copy hides the installation's entirely.
#ifndef VELMORA_SETTINGS_TUNDRIL_PAR_H_
#define VELMORA_SETTINGS_TUNDRIL_PAR_H_

#include "velmora/export.h"
#include "velmora/settings/key_value_list.h"
#include "velmora/text/string.h"

namespace velmora {

class CProjPath;
class CTundrilIni;

// A parameter.
struct partype {
  wchar_t nyckel[kKeyRoom];   // key
  wchar_t varde[kValueRoom];  // value
};

class VELMORA_API CTundrilPAR : public KeyValueList<partype> {
 public:
  // Reads TUNDRIL.PAR: the project's, else the one beside TUNDRIL.CFG, else the one in the program
  // folder; without any the list is empty and lives in memory only. Either pointer may be null.
  CTundrilPAR(CTundrilIni* ini, CProjPath* proj);
  // `which` 1 reads KARSK.PAR in the same way; with any other number the object is empty, without a path.
  // Callers rely on 0 being no other: it looks at TUNDRIL.PAR, message and all, and keeps nothing of it
  // (tests/settings/file_cases.txt).
  CTundrilPAR(CTundrilIni* ini, CProjPath* proj, int which);
  ~CTundrilPAR() override = default;

  // As CTundrilCFG::WriteKey, but a value that is stored already writes nothing, also when only memory has
  // it after a failed write, and a file that cannot be written is reported in a message box.
  int WriteKey(const CString& key, const CString& value);

  // The file that was read; empty when there was none.
  CString GetParFilNamn() { return path_; }

 private:
  void Load(CTundrilIni* ini, const CString& project_copy, const CString& name, const wchar_t* caption);

  CString path_;
  bool unreadable_ = false;
};

}  // namespace velmora

#endif  // VELMORA_SETTINGS_TUNDRIL_PAR_H_
