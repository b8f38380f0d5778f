// The values that settings have where no file says otherwise.
#ifndef VELMORA_SETTINGS_DEFAULT_SETTINGS_H_
#define VELMORA_SETTINGS_DEFAULT_SETTINGS_H_

#include <span>
#include <string_view>

namespace velmora {

struct DefaultSetting {
  const wchar_t* key;
  const wchar_t* value;
};

// In the order in which programs list them.
std::span<const DefaultSetting> TundrilDefaults();  // TUNDRIL.PAR
std::span<const DefaultSetting> Jb23Defaults();     // JB23.PAR
std::span<const DefaultSetting> KarskDefaults();    // KARSK.PAR

// The value of the first entry with this key, letters without regard to case; empty without one.
const wchar_t* DefaultValue(std::span<const DefaultSetting> settings, std::wstring_view key);

}  // namespace velmora

#endif  // VELMORA_SETTINGS_DEFAULT_SETTINGS_H_
