#include "cli/terminal/error.h"

#include <cstdio>

#include "velmora/platform/console.h"
#include "velmora/platform/files.h"
#include "velmora/platform/whole_file.h"

namespace velmora::cli {
namespace {

bool g_quiet = false;

// `colour` is that of the program's name on a terminal.
void PrintLine(const char* colour, const std::string& text) {
  const std::string name = ShowsColours(StandardStream::kError)
                               ? std::string("\033[1;") + colour + "mvelmora:\033[0m "
                               : "velmora: ";
  const std::string line = name + Printable(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

std::string Name(const std::string& file) {
  return file == "-" ? "standard input" : file.empty() ? "\"\"" : file;
}

}  // namespace

std::string At(const std::string& file, const std::string& what) { return Name(file) + ": " + what; }

std::string At(const std::string& file, std::int64_t line, const std::string& what) {
  return line == 0 ? At(file, what) : Name(file) + ":" + std::to_string(line) + ": " + what;
}

std::string Printable(std::string_view text) {
  std::string line;
  for (size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
    const bool two_byte_control = byte == 0xC2 && next >= 0x80 && next < 0xA0;
    if (two_byte_control) ++i;
    if (byte == '\n')
      line += ' ';
    else if (byte < 0x20 || byte == 0x7F || two_byte_control)
      line += '?';
    else
      line += text[i];
  }
  return line;
}

void RefuseUnopened(const std::string& file) { throw Refusal(At(file, WhyUnopened(PathFromSystem(file)))); }

void Warn(const std::string& text) {
  if (!g_quiet) PrintLine("33", text);
}
void PrintError(const std::string& text) { PrintLine("31", text); }

void SetQuiet(bool quiet) { g_quiet = quiet; }
bool IsQuiet() { return g_quiet; }

}  // namespace velmora::cli
