// A parameter file's settings, with the values that hold where it has none.
#ifndef VELMORA_CLI_SETTINGS_PARAMETERS_H_
#define VELMORA_CLI_SETTINGS_PARAMETERS_H_

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "velmora/settings/default_settings.h"
#include "velmora/settings/key_index.h"
#include "velmora/text/string.h"

namespace velmora::cli {

struct ParameterFile {
  CString name;
  std::span<const DefaultSetting> defaults;
  bool rig = false;  // lines of two words, as JB23.PAR; else of "key=value"
};

// Letters without regard to case; a file of another name is one of "key=value" without defaults.
ParameterFile ParameterFileNamed(const CString& name);

struct Setting {
  CString key;
  CString value;                    // the file's, else the built-in one
  std::optional<CString> built_in;  // nothing when the key has none
  bool stored = false;              // in the file, with a value
};

// The keys that have a default in their usual order, then the file's others in its own.
class Settings {
 public:
  // An empty `path` is a file that does not exist. Throws a Refusal when it cannot be read.
  Settings(const ParameterFile& file, const CString& path);

  const std::vector<Setting>& All() const { return all_; }
  // Letters without regard to case; null when there is none.
  const Setting* Find(const CString& key) const;

 private:
  void Add(const Setting& setting);

  std::vector<Setting> all_;
  KeyIndex places_;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_SETTINGS_PARAMETERS_H_
