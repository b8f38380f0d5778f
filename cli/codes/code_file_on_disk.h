// A code file as a command finds it, and how the command shows its entries.
#ifndef VELMORA_CLI_CODES_CODE_FILE_ON_DISK_H_
#define VELMORA_CLI_CODES_CODE_FILE_ON_DISK_H_

#include <string>
#include <vector>

#include "cli/codes/commands.h"
#include "cli/context/settings_lines.h"
#include "velmora/settings/code_files.h"

namespace velmora::cli {

struct CodeField {
  const char* name;
  bool number = false;
};
// The fields of an entry, in the library's order.
std::vector<CodeField> FieldsOf(SettingsFileKind kind);

class CodeFileOnDisk {
 public:
  // Finds and reads the file that the options mean. Throws a Refusal when there is none that can be read;
  // a title-block file may be missing when it is to be written.
  CodeFileOnDisk(const CodesOptions& options, bool may_be_missing);

  const CodeEntries& Entries() const { return file_.entries; }
  const Findings& FileFindings() const { return file_.findings; }
  // "/inst/KODFIL.DAT (project copy)"
  std::string Where() const;
  const CString& Path() const { return path_; }

  // Replaces the entries. Throws a Refusal when they cannot be written, when, unless forced, the file would
  // lose something, and when the user does not agree to change a file that projects share.
  void Rewrite(const CodeEntries& entries, const CodesOptions& options) const;

 private:
  SettingsFileKind kind_;
  CString path_;
  std::string place_;     // empty for a title-block file, which is named by its path
  std::string question_;  // before a change; empty for a file of its own
  CodeFile file_;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CODES_CODE_FILE_ON_DISK_H_
