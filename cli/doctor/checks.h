// What is checked of files of each kind: what their findings mean, and the commands that correct them.
// `shown` is the file's path as commands name it.
#ifndef VELMORA_CLI_DOCTOR_CHECKS_H_
#define VELMORA_CLI_DOCTOR_CHECKS_H_

#include <optional>
#include <string>
#include <string_view>

#include "cli/doctor/report.h"
#include "velmora/settings/settings_text.h"
#include "velmora/text/string.h"

namespace velmora::cli {

// alignment_files.cpp: alignments, support points, and a project's area file, which names an alignment in its
// own folder.
void DiagnoseAlignment(std::string bytes, const std::string& shown, DoctorReport* report);
void DiagnoseSupportPoints(std::string bytes, const std::string& shown, DoctorReport* report);
void DiagnoseArea(const CString& path, const std::string& shown, DoctorReport* report);

// Where a file is: in a project or another folder, or shared by the projects of the installation.
enum class Owner { kFolder, kInstallation };

// settings_advice.cpp: the lines of a settings or code file.
void DiagnoseSettings(SettingsFileKind kind, const TextLines& lines, const std::string& shown, Owner owner,
                      DoctorReport* report);

// text_encoding.cpp: a file that the suite's programs read as Windows-1252, and that begins with a byte-order
// mark or has letters that are UTF-8 without one.
std::optional<Diagnosis> CheckEncoding(const std::string& shown, std::string_view bytes);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_DOCTOR_CHECKS_H_
