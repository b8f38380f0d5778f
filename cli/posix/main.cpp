#include "cli/command.h"

int main(int argc, char** argv) {
  return velmora::cli::RunCommand(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
}
