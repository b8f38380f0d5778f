#include "tests/link/test_bus.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

#include "tests/support/background_command.h"
#include "tests/support/environment_variable.h"
#include "tests/support/test_files.h"
#include "velmora/platform/files.h"

namespace velmora::testing {

struct TestBus::System {
  TemporaryFolder folder;
  CString socket = folder.File(L"bus");
  EnvironmentVariable address{L"DBUS_SESSION_BUS_ADDRESS", L"unix:path=" + socket};
  BackgroundCommand daemon{{"dbus-daemon", "--session", "--nofork", "--nopidfile",
                            "--address=unix:path=" + PathForDisplay(socket)},
                           folder.File(L"log")};
};

TestBus::TestBus() : system_(std::make_unique<System>()) {
  for (int i = 0; i < 500 && !FileOrFolderExists(system_->socket); ++i) usleep(10'000);
  EXPECT_TRUE(FileOrFolderExists(system_->socket)) << ReadBytes(system_->folder.File(L"log"));
}

TestBus::~TestBus() = default;

void TestBus::Stop() { kill(static_cast<pid_t>(system_->daemon.Process()), SIGSTOP); }

bool TestBus::TellsAnswers() { return true; }

}  // namespace velmora::testing
