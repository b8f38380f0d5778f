#include "velmora/platform/process.h"

#include <mutex>
#include <optional>

#include "velmora/platform/system_command_line.h"

namespace velmora {
namespace {

struct State {
  std::mutex mutex;
  std::optional<CString> command_line;  // set by SetCommandLine
  CString profile;
};

State& TheState() {
  static State state;
  return state;
}

}  // namespace

CString CommandLine() {
  State& state = TheState();
  const std::lock_guard<std::mutex> lock(state.mutex);
  return state.command_line ? *state.command_line : SystemCommandLine();
}

void SetCommandLine(const CString& text) {
  State& state = TheState();
  const std::lock_guard<std::mutex> lock(state.mutex);
  state.command_line = text;
  SetSystemCommandLine(text);
}

CString ApplicationProfile() {
  State& state = TheState();
  const std::lock_guard<std::mutex> lock(state.mutex);
  return state.profile;
}

void SetApplicationProfile(const CString& path) {
  State& state = TheState();
  const std::lock_guard<std::mutex> lock(state.mutex);
  state.profile = path;
}

}  // namespace velmora
