// The verbs of `velmora points`.
#ifndef VELMORA_CLI_POINTS_SHOW_H_
#define VELMORA_CLI_POINTS_SHOW_H_

namespace CLI {
class App;
}

namespace velmora::cli {

void AddPointsCommands(CLI::App* points);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_POINTS_SHOW_H_
