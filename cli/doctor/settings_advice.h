// What the findings of a settings or code file mean, and the commands that correct them.
#ifndef VELMORA_CLI_DOCTOR_SETTINGS_ADVICE_H_
#define VELMORA_CLI_DOCTOR_SETTINGS_ADVICE_H_

#include <string>

#include "cli/doctor/report.h"
#include "velmora/settings/settings_text.h"

namespace velmora::cli {

// Where a file is: in a project or another folder, or shared by the projects of the installation.
enum class Owner { kFolder, kInstallation };

// Adds what is wrong with the file's lines. `shown` is its path as commands name it.
void DiagnoseSettings(SettingsFileKind kind, const TextLines& lines, const std::string& shown, Owner owner,
                      DoctorReport* report);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_DOCTOR_SETTINGS_ADVICE_H_
