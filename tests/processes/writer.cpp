// Writes generation after generation until it is killed: writer FOLDER FIRST STEP. A write that fails ends
// it, and says so in a file.
#include <cstdlib>
#include <string>

#include "tests/processes/generations.h"
#include "tests/support/test_files.h"
#include "velmora/common/messages.h"
#include "velmora/platform/files.h"

int main(int count, char** arguments) {
  using namespace velmora;
  if (count != 4) return 2;
  SetMessageBoxHandler([](const MessageBoxCall&) { return IDOK; });
  const CString folder = PathFromSystem(arguments[1]);
  const int step = std::atoi(arguments[3]);
  for (int number = std::atoi(arguments[2]);; number += step) {
    if (WriteGeneration(folder, number)) continue;
    WriteBytes(folder + L"\\FAILED", std::to_string(number));
    return 1;
  }
}
