// The field-data program's stand-in as a process of its own, on a bus of its own, and what it has seen.
#ifndef VELMORA_TESTS_LINK_STAND_IN_H_
#define VELMORA_TESTS_LINK_STAND_IN_H_

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <sstream>
#include <string>

#include "tests/link/test_bus.h"
#include "tests/support/background_command.h"
#include "tests/support/run_command.h"
#include "velmora/link/dde_com.h"

namespace velmora::testing {

// Handles what comes until it is so. False when it has not come to that within ten seconds.
inline bool HandleUntil(const std::function<bool()>& done) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!done() && std::chrono::steady_clock::now() < end) CDdeCom::HandlePending(20);
  return done();
}

class WithStandIn : public ::testing::Test {
 protected:
  void TearDown() override { CDdeCom::Close(); }

  // Starts it with this script; it is ready when this returns.
  void Serve(const std::string& script) {
    server_.reset();
    WriteBytes(folder_.File(L"script.txt"), script);
    const CString seen = folder_.File(L"seen");
    WriteBytes(seen, "");  // what an earlier one has seen is no sign of this one
    server_ = std::make_unique<BackgroundCommand>(
        std::vector<std::string>{VelmoraCommand(), "link", "serve", "--csv", "--script",
                                 AsArgument(folder_.File(L"script.txt"))},
        seen);
    ASSERT_TRUE(HandleUntil([&] { return ReadBytes(seen).find("text\n") != std::string::npos; }))
        << ReadBytes(seen);
  }
  void KillServer() { server_.reset(); }

  // What the stand-in has seen, each line "event,item,text" with the first client's number left out.
  std::string Seen() const {
    std::string all = ReadBytes(folder_.File(L"seen"));
    all.erase(0, all.find('\n') + 1);
    for (size_t at = 0; at < all.size(); at = all.find('\n', at) + 1)
      if (all.compare(at, 2, "1,") == 0) all.erase(at, 2);
    return all;
  }
  // The lines of it that are of this event.
  std::string Seen(const std::string& event) const {
    std::istringstream all(Seen());
    std::string lines;
    for (std::string line; std::getline(all, line);)
      if (line.starts_with(event + ",")) lines += line + "\n";
    return lines;
  }
  bool Sees(const std::string& line) const {
    return HandleUntil([&] { return ("\n" + Seen()).find("\n" + line + "\n") != std::string::npos; });
  }

  TestBus bus_;

 private:
  TemporaryFolder folder_;
  std::unique_ptr<BackgroundCommand> server_;
};

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_LINK_STAND_IN_H_
