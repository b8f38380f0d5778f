#include "cli/command.h"
#include "velmora/platform/console.h"

int main(int argc, char** argv) {
  velmora::PrepareStandardStreams();
  velmora::RemoveUnfinishedFilesAtInterrupt();
  return velmora::cli::RunCommand(velmora::ProgramArguments(argc, argv));
}
