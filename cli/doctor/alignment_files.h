// Alignments, area files and support points: what their findings mean, and the commands that correct them.
#ifndef VELMORA_CLI_DOCTOR_ALIGNMENT_FILES_H_
#define VELMORA_CLI_DOCTOR_ALIGNMENT_FILES_H_

#include <string>

#include "cli/doctor/report.h"
#include "velmora/text/string.h"

namespace velmora::cli {

// `shown` is the file's path as commands name it.
void DiagnoseAlignment(std::string bytes, const std::string& shown, DoctorReport* report);
void DiagnoseSupportPoints(std::string bytes, const std::string& shown, DoctorReport* report);
// A project's area file, which names an alignment in its own folder.
void DiagnoseArea(const CString& path, const std::string& shown, DoctorReport* report);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_DOCTOR_ALIGNMENT_FILES_H_
