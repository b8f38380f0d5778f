// The installation and the current user's files in it.
#ifndef VELMORA_CLI_DOCTOR_INSTALLATION_H_
#define VELMORA_CLI_DOCTOR_INSTALLATION_H_

#include "cli/doctor/content.h"

namespace velmora::cli {

void CheckInstallation(ContentCheck* content, DoctorReport* report);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_DOCTOR_INSTALLATION_H_
