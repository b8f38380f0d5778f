// The arguments, standard streams and interruption of a command-line program.
#ifndef VELMORA_PLATFORM_CONSOLE_H_
#define VELMORA_PLATFORM_CONSOLE_H_

#include <cstddef>
#include <string>
#include <vector>

namespace velmora {

// The arguments after the program's name, in UTF-8; on POSIX systems the bytes that main received.
std::vector<std::string> ProgramArguments(int argc, char** argv);

// Makes the standard streams binary and sets a Windows console to UTF-8: output is UTF-8 with plain line
// feeds everywhere.
void PrepareStandardStreams();

// A file's name or another argument as it is typed in the system's shell: quoted where that is needed, and
// one that begins like an option after "./".
std::string ShellArgument(const std::string& text);

bool StandardInputIsTerminal();
bool StandardErrorIsTerminal();

enum class StandardStream { kOutput, kError };
// The columns of the terminal that the stream is; 0 when it is none, or one that does not say.
size_t TerminalWidth(StandardStream stream);
// Whether the stream is a terminal that shows colours, and the user has not set NO_COLOR.
bool ShowsColours(StandardStream stream);

// From now on what ends the process from outside first removes the files that it has not completed
// (FileReplacement): Ctrl-C, SIGTERM, SIGHUP, on Windows also the closing of the console or the session.
void RemoveUnfinishedFilesAtInterrupt();

// While an object of it exists, the first Ctrl-C (or SIGTERM) is recorded instead of ending the process; the
// second one ends it.
class Interrupt {
 public:
  Interrupt();
  ~Interrupt();
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;

  static bool Requested();
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_CONSOLE_H_
