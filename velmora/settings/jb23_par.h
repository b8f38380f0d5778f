// The parameters of a sounding rig: a scale and a step for each of its quantities, by name.
#ifndef VELMORA_SETTINGS_JB23_PAR_H_
#define VELMORA_SETTINGS_JB23_PAR_H_

#include "velmora/export.h"
#include "velmora/settings/key_value_list.h"
#include "velmora/settings/tundril_par.h"
#include "velmora/text/string.h"

namespace velmora {

// Read from JB23.PAR (jb23_format.h), each line two records; written by CTundrilInst::Jb23WriteKey only.
class VELMORA_API CJb23Par : public KeyValueList<partype> {
 public:
  // The project's file, else the one beside TUNDRIL.CFG, else the one in the program folder. An
  // unreadable one gives a message and an empty list.
  CJb23Par(CTundrilIni* ini, CProjPath* proj);
  ~CJb23Par() override = default;

  // In memory only. 0; -1 as CTundrilCFG::WriteKey.
  int WriteKey(const CString& key, const CString& value) {
    return PutKey(key, value) == Put::kRefused ? -1 : 0;
  }

  // Always empty: callers rely on looking for the file themselves (tests/settings/file_cases.txt).
  CString GetParFilNamn() { return {}; }

 private:
  bool Load(const CString& path);
};

}  // namespace velmora

#endif  // VELMORA_SETTINGS_JB23_PAR_H_
