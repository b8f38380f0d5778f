// The command run in an environment of the test's own, and what tests ask of its answers.
#ifndef VELMORA_TESTS_CLI_INSTALLED_COMMAND_H_
#define VELMORA_TESTS_CLI_INSTALLED_COMMAND_H_

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/environment/installed.h"
#include "tests/support/run_command.h"

namespace velmora::testing {

using nlohmann::json;

class InstalledCommand : public Installed {
 protected:
  InstalledCommand() { RegisterDataFolders(); }
  std::string Argument(const CString& name) const { return AsArgument(At(name)); }

  static void ExpectRefused(const Ran& ran, const std::string& what) {
    EXPECT_EQ(ran.status, 1) << ran.out << ran.err;
    EXPECT_NE(ran.err.find(what), std::string::npos) << ran.err;
    EXPECT_EQ(ran.err.find('\n') + 1, ran.err.size()) << ran.err;
  }
  // The row of a JSON array whose `key` is `value`.
  static json RowOf(const std::string& rows, const char* key, const std::string& value) {
    for (const json& row : json::parse(rows))
      if (row[key] == value) return row;
    return {};
  }
};

// The sample installation, brought to the user, and a project "proj" with nothing of its own.
class SampleCommand : public InstalledCommand {
 protected:
  SampleCommand() {
    // What the installation registers goes with the test.
    Register(HKEY_LOCAL_MACHINE, kR20, L"InstallPath", L"");
    Register(HKEY_LOCAL_MACHINE, kR20, L"Package", L"");
    EXPECT_EQ(RunVelmora({"env", "install", "--to", Argument(L"inst")}).status, 0);
    EXPECT_EQ(RunVelmora({"env", "sync"}).status, 0);
    MakeFolders(L"proj");
  }

  // A command for the project.
  Ran InProject(std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), {"--project", Argument(L"proj")});
    return RunVelmora(arguments);
  }
  // A file's lines in UTF-8, read here byte by byte: Windows-1252, each ended by CR LF.
  static std::vector<std::string> Lines(const CString& path) {
    std::vector<std::string> lines;
    std::string line;
    const std::string bytes = ReadBytes(path);
    for (size_t i = 0; i < bytes.size(); ++i) {
      const auto byte = static_cast<unsigned char>(bytes[i]);
      if (byte == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') {
        lines.push_back(line);
        line.clear();
        ++i;
      } else if (byte < 0x80) {
        line += bytes[i];
      } else {  // the letters used here are those of Latin-1
        line += static_cast<char>(0xC0 | byte >> 6);
        line += static_cast<char>(0x80 | (byte & 0x3F));
      }
    }
    if (!line.empty()) lines.push_back(line + " (no line end)");
    return lines;
  }
};

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_CLI_INSTALLED_COMMAND_H_
