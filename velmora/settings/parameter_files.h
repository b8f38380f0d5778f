// A parameter file as a whole: TUNDRIL.CFG, TUNDRIL.PAR, KARSK.PAR or JB23.PAR. Nothing is shown.
#ifndef VELMORA_SETTINGS_PARAMETER_FILES_H_
#define VELMORA_SETTINGS_PARAMETER_FILES_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "velmora/common/finding.h"
#include "velmora/settings/default_settings.h"
#include "velmora/settings/key_index.h"
#include "velmora/settings/settings_text.h"
#include "velmora/text/string.h"

namespace velmora {

struct ParameterFile {
  CString name;
  std::span<const DefaultSetting> defaults;
  bool rig = false;  // two values a line, as JB23.PAR; else "key=value"
};
// Letters without regard to case; a file of another name is one of "key=value" without defaults.
ParameterFile ParameterFileNamed(const CString& name);

// What a file says, line by line: equal keys as often as they are there, lines that are skipped left out.
struct StoredSetting {
  CString key;
  CString value;
  std::int64_t line = 0;
  bool first = true;  // of the settings with this key, letters without regard to case
  // Whatever the lines.
  bool operator==(const StoredSetting& other) const { return key == other.key && value == other.value; }
};
struct StoredSettings {
  std::vector<StoredSetting> settings;
  Findings findings;  // by line
};
StoredSettings ReadStoredSettings(bool rig, const TextLines& lines);

struct Setting {
  CString key;
  CString value;                    // the file's, else the built-in one
  std::optional<CString> built_in;  // nothing when the key has none
  bool stored = false;              // in the file, with a value
  std::int64_t line = 0;            // of that value
};

// The keys that have a default in their usual order, then the file's others in its own. Of equal keys in the
// file the first one counts, with or without a value.
class Settings {
 public:
  Settings(const ParameterFile& file, const TextLines& lines);

  const std::vector<Setting>& All() const { return all_; }
  const Findings& FileFindings() const { return findings_; }
  // Letters without regard to case; null when there is none.
  const Setting* Find(const CString& key) const;
  // "; did you mean "SKALA"?", for the end of a message about a key that is not there; else nothing.
  std::string DidYouMeanKey(const CString& key) const;

 private:
  void Add(const Setting& setting);

  std::vector<Setting> all_;
  Findings findings_;
  KeyIndex index_;
};

}  // namespace velmora

#endif  // VELMORA_SETTINGS_PARAMETER_FILES_H_
