// A code file as a command found it.
#ifndef VELMORA_CLI_CODES_CODE_FILE_ON_DISK_H_
#define VELMORA_CLI_CODES_CODE_FILE_ON_DISK_H_

#include <memory>
#include <string>

#include "cli/codes/code_file.h"
#include "cli/codes/commands.h"
#include "cli/context/settings_context.h"

namespace velmora::cli {

class CodeFileOnDisk {
 public:
  // Finds and reads the file that the options mean. Throws a Refusal when there is none that can be read;
  // a stamp file may be missing when it is to be written.
  CodeFileOnDisk(const CodesOptions& options, bool may_be_missing);

  const CodeFile& File() const { return file_; }
  const CodeEntries& Entries() const { return entries_; }
  const LineFindings& Findings() const { return findings_; }
  // "/inst/KODFIL.DAT (project copy)"
  std::string Where() const;
  const CString& Path() const { return path_; }
  CTundrilInst Facade() { return context_ ? context_->Facade() : CTundrilInst(); }

  // Throws a Refusal when the file would lose something by being written again, and is not forced.
  void RequireRewritable(bool force) const { RefuseLosses(path_, findings_, force); }
  // The same, then writes the entries and reads them back. Throws a Refusal when they were not written,
  // and, unless forced, when others are read.
  void Rewrite(const CodeEntries& entries, bool force);

 private:
  CodeEntries Read(LineFindings* findings) const;

  CodeFile file_;
  std::unique_ptr<SettingsContext> context_;  // null for a stamp file, which is named by its path
  CString path_;
  std::string place_;
  LineFindings findings_;
  CodeEntries entries_;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CODES_CODE_FILE_ON_DISK_H_
