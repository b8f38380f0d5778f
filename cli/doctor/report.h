// What `velmora doctor` found and looked at.
#ifndef VELMORA_CLI_DOCTOR_REPORT_H_
#define VELMORA_CLI_DOCTOR_REPORT_H_

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "cli/context/diagnosis.h"
#include "cli/output/records.h"
#include "velmora/common/finding.h"

namespace velmora::cli {

inline constexpr char kRemoveEndMark[] =
    "programs do not see that text either; remove the character in an editor";

// Keeps kMostOfFile findings a file and kMostInAll in all files, and counts the others.
class DoctorReport {
 public:
  static constexpr std::int64_t kMostOfFile = 20;
  static constexpr std::int64_t kMostInAll = 10'000;

  void Add(Diagnosis found);
  // What was found about the entries of a folder, all of which is kept.
  void AddOfFolder(Diagnoses found);
  // The findings of one file, as `diagnose` explains each. `lister` is the command that lists all of them.
  template <class Diagnose>
  void AddAll(const std::string& file, const Findings& findings, const std::string& lister,
              Diagnose diagnose) {
    for (const Finding& finding : findings)
      if (HasRoom(file))
        Add(diagnose(finding));
      else
        LeaveOut(file, 1, lister);
  }
  void LeaveOut(const std::string& file, std::int64_t count, const std::string& lister);

  void CountChecked() { ++checked_; }
  void CountSkipped() { ++skipped_; }
  bool IsEmpty() const { return count_ == 0; }

  void Write(const OutputOptions& options, const std::vector<std::string>& inputs) const;

 private:
  struct OfFile {
    std::string name;
    Diagnoses kept;
    std::int64_t left_out = 0;
    std::string lister;
  };

  void Keep(Diagnosis found);
  bool HasRoom(const std::string& file) const;
  OfFile* Find(const std::string& file);
  Diagnoses Rows() const;
  std::string Summary() const;
  void WriteTable(OutputFile& output) const;
  void WriteJson(OutputFile& output) const;

  std::vector<OfFile> files_;  // in the order of their first finding
  std::map<std::string, size_t> places_;
  std::int64_t count_ = 0;  // of all findings
  std::int64_t kept_ = 0;
  std::int64_t unlisted_ = 0;  // in files beyond kMostInAll
  std::int64_t checked_ = 0;
  std::int64_t skipped_ = 0;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_DOCTOR_REPORT_H_
