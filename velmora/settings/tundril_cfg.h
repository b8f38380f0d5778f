// The main program's configuration: a file of lines "key=value", held in memory and written back whole.
//
//   CTundrilCFG cfg(&ini);
//   CString language = cfg.ReadKey(L"SPRAK");
//   cfg.WriteKey(L"ENHET", L"METER");
//
// On disk the lines are Windows-1252 with CR LF. The first "=" ends the key, nothing is trimmed; a line
// without a key is left out. A line whose key has 40 characters or more, or its value 259 or more, is an
// empty record that is never found and not written back. Two objects on one file do not see each other's
// writes.
#ifndef VELMORA_SETTINGS_TUNDRIL_CFG_H_
#define VELMORA_SETTINGS_TUNDRIL_CFG_H_

#include "velmora/export.h"
#include "velmora/settings/key_value_list.h"
#include "velmora/text/string.h"

namespace velmora {

class CTundrilIni;

// A setting.
struct cfgtype {
  wchar_t nyckel[kKeyRoom];   // key
  wchar_t varde[kValueRoom];  // value
};

class VELMORA_API CTundrilCFG : public KeyValueList<cfgtype> {
 public:
  // The file CProjPath::TundrilCfgNamn in the folder of the ini file; without an ini file directly below
  // the root.
  explicit CTundrilCFG(CTundrilIni* ini);
  // `program` is named in the caption of the message that an unreadable file gives. An empty path: the
  // list lives in memory only.
  CTundrilCFG(const wchar_t* program, const wchar_t* path);
  ~CTundrilCFG() override = default;

  // Stores the value and writes the file, in which keys with an empty value are left out. Returns 0; -1
  // when
  //   the key is empty or has 40 characters or more: nothing changes
  //   the value has 260 characters or more: a new key stays in memory, without value
  //   the file cannot be written, or was there and could not be read: the change stays in memory, also a
  //   letter that the file's encoding lacks, and no later write succeeds before it is replaced
  // The file on disk is then as it was. A line end or, in the key, a "=" is written unchanged and is read
  // back as something else.
  int WriteKey(const CString& key, const CString& value);

 protected:
  // Reads the file; a missing one is not an error. Always 0.
  int Init(const wchar_t* program, const wchar_t* path);

 private:
  CString path_;
  bool unreadable_ = false;
};

}  // namespace velmora

#endif  // VELMORA_SETTINGS_TUNDRIL_CFG_H_
