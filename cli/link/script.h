// What the stand-in for the field-data program plays, to each client for itself.
//
//   line := 'greet' blank number blank item   a greeting; then waits until the client listens anew
//         | 'send' blank text                 text on the item that the client listens on
//         | 'wait' blank milliseconds
//         | 'end'                             the stand-in ends at once, as a program that is killed
//         | '#' anything | nothing
//
// A script begins when the client listens for the first time.
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

// How far one client is.
class ScriptPlayer {
 public:
  using Time = std::chrono::steady_clock::time_point;

  explicit ScriptPlayer(const std::vector<ScriptStep>& steps) : steps_(&steps) {}

  void Listens(const std::string& item);
  void ListensNoMore(const std::string& item);
  const std::string& Item() const { return item_; }
  // The next step that sends or ends and whose time has come.
  const ScriptStep* Next(Time now);

 private:
  const std::vector<ScriptStep>* steps_;
  size_t at_ = 0;
  std::string item_;      // empty: listens on none
  bool greeted_ = false;  // and has not answered
  std::optional<Time> pause_end_;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_LINK_SCRIPT_H_
