#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>

#include "cli/command.h"
#include "velmora/text/codepage.h"

int wmain(int argc, wchar_t** argv) {
  // Output is UTF-8 with plain line feeds, in a file and on a console alike.
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  SetConsoleOutputCP(CP_UTF8);
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) arguments.push_back(velmora::Utf8FromWide(argv[i]));
  return velmora::cli::RunCommand(std::move(arguments));
}
