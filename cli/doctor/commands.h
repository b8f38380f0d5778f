// `velmora doctor`: everything that the command's other checks find, in one place.
#ifndef VELMORA_CLI_DOCTOR_COMMANDS_H_
#define VELMORA_CLI_DOCTOR_COMMANDS_H_

namespace CLI {
class App;
}

namespace velmora::cli {

void AddDoctorCommand(CLI::App* doctor);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_DOCTOR_COMMANDS_H_
