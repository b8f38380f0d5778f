// `velmora formats`.
#ifndef VELMORA_CLI_FORMATS_COMMANDS_H_
#define VELMORA_CLI_FORMATS_COMMANDS_H_

namespace CLI {
class App;
}

namespace velmora::cli {

void AddFormatsCommand(CLI::App* formats);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_FORMATS_COMMANDS_H_
