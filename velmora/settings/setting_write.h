// One setting written to a parameter file: whether it can be, what else that changes, and the write. Nothing
// is shown.
#ifndef VELMORA_SETTINGS_SETTING_WRITE_H_
#define VELMORA_SETTINGS_SETTING_WRITE_H_

#include <string>
#include <vector>

#include "velmora/settings/jb23_format.h"
#include "velmora/settings/parameter_files.h"

namespace velmora {

// For a user: why the setting would not be read back as given; empty when it would.
std::string WhyUnreadable(const ParameterFile& file, const CString& key, const CString& value);
// For a user: why no program reads the value as the number, or as "MAX" of a scale, that the key has built
// in; empty when they do.
std::string WhyNoNumber(const ParameterFile& file, const CString& key, const CString& value);

// What of the file is lost when the key is written. Of JB23.PAR only the key's own line is written anew, the
// others are copied; elsewhere a line "key=" gets the value.
Findings LossesOfWrite(const ParameterFile& file, const TextLines& lines, const Findings& findings,
                       const CString& key);

// Writes the value; an empty one removes the key. A missing file is made. Lines of JB23.PAR that are missing
// before the key's own get their built-in values, and their numbers are appended to *filled.
// False when the file cannot be read or written; it is then as it was.
[[nodiscard]] bool WriteSetting(const ParameterFile& file, const CString& path, const CString& key,
                                const CString& value, std::vector<int>* filled);

// Rewrites JB23.PAR with a value in its field; all other lines are copied. A field beyond the last line goes
// to the line after it, whatever its number, with "0" for that line's other value. A missing file is made by
// the first line's scale only. With `filled` the lines up to the field's that are missing, empty or a
// placeholder "*" get their built-in values first, and their numbers are appended to it.
// False when nothing was written.
[[nodiscard]] bool WriteJb23Value(const CString& path, const Jb23Field& field, const CString& value,
                                  std::vector<int>* filled = nullptr);

}  // namespace velmora

#endif  // VELMORA_SETTINGS_SETTING_WRITE_H_
