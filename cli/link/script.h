// The script that the simulated field-data program runs for each client.
//
//   line := 'greet' blank number blank item   a greeting; then waits for the client's next Advise
//         | 'send' blank text                 text on the item that the client is advised on
//         | 'wait' blank milliseconds
//         | 'end'                             the server ends at once, without closing its conversations
//         | '#' anything | nothing
//
// It begins with the client's first Advise.
#ifndef VELMORA_CLI_LINK_SCRIPT_H_
#define VELMORA_CLI_LINK_SCRIPT_H_

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace velmora::cli {

struct ScriptStep {
  enum class Kind { kGreet, kSend, kWait, kEnd };
  Kind kind;
  std::string text;  // UTF-8
  int wait_ms = 0;
};

// Throws a Refusal that names file and line.
std::vector<ScriptStep> ReadScript(const std::string& file);

// Runs the script for one client.
class ScriptPlayer {
 public:
  using Time = std::chrono::steady_clock::time_point;

  explicit ScriptPlayer(const std::vector<ScriptStep>& steps) : steps_(&steps) {}

  void Advise(const std::string& item);
  void Unadvise(const std::string& item);
  const std::string& Item() const { return item_; }
  // The next greet, send or end that is due; null when there is none.
  const ScriptStep* Next(Time now);

 private:
  const std::vector<ScriptStep>* steps_;
  size_t at_ = 0;
  std::string item_;      // empty: none is advised
  bool greeted_ = false;  // and no Advise since
  std::optional<Time> pause_end_;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_LINK_SCRIPT_H_
