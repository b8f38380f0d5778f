// --verbose: which files are read and written.
#ifndef VELMORA_CLI_TERMINAL_FILE_LOG_H_
#define VELMORA_CLI_TERMINAL_FILE_LOG_H_

namespace velmora::cli {

// From now on prints the full name of each file when it is opened for the first time, and of each that is
// replaced or removed.
void LogFiles();

}  // namespace velmora::cli

#endif  // VELMORA_CLI_TERMINAL_FILE_LOG_H_
