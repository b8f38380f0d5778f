#include "cli/doctor/report.h"

#include <nlohmann/json.hpp>

#include "cli/terminal/error.h"

namespace velmora::cli {
namespace {

std::string Count(std::int64_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

bool DoctorReport::HasRoom(const std::string& file) const {
  if (kept_ >= kMostInAll) return false;
  const auto place = places_.find(file);
  return place == places_.end() || static_cast<std::int64_t>(files_[place->second].kept.size()) < kMostOfFile;
}

// Null for a file that is not listed.
DoctorReport::OfFile* DoctorReport::Find(const std::string& file) {
  if (const auto place = places_.find(file); place != places_.end()) return &files_[place->second];
  if (kept_ >= kMostInAll) return nullptr;
  places_[file] = files_.size();
  files_.push_back({file, {}, 0, ""});
  return &files_.back();
}

void DoctorReport::Add(Diagnosis found) {
  if (!HasRoom(found.file)) {
    LeaveOut(found.file, 1, "");
    return;
  }
  ++count_;
  ++kept_;
  OfFile* const file = Find(found.file);
  file->kept.push_back(std::move(found));
}

void DoctorReport::Add(Diagnoses found) {
  for (Diagnosis& each : found) Add(std::move(each));
}

void DoctorReport::LeaveOut(const std::string& file, std::int64_t count, const std::string& lister) {
  if (count == 0) return;
  count_ += count;
  OfFile* const listed = Find(file);
  if (listed == nullptr) {
    unlisted_ += count;
    return;
  }
  listed->left_out += count;
  if (!lister.empty()) listed->lister = lister;
}

Diagnoses DoctorReport::Rows() const {
  Diagnoses rows;
  for (const OfFile& file : files_) {
    rows.insert(rows.end(), file.kept.begin(), file.kept.end());
    if (file.left_out > 0)
      rows.push_back({file.name, 0, "and " + Count(file.left_out, "more finding"),
                      file.lister.empty() ? "correct those above first, then check again"
                                          : "the command lists all of them",
                      file.lister});
  }
  return rows;
}

std::string DoctorReport::Summary() const {
  return Count(checked_, "file") + " checked, " + std::to_string(skipped_) + " of other kinds skipped; " +
         (count_ == 0 ? "nothing found" : Count(count_, "finding")) +
         (unlisted_ == 0 ? ""
                         : ", of which " + std::to_string(unlisted_) + " in further files are not listed");
}

void DoctorReport::WriteTable(OutputFile& output) const {
  const std::string* file = nullptr;
  const Diagnoses rows = Rows();
  for (const Diagnosis& row : rows) {
    if (file == nullptr || row.file != *file) output.Write(Printable(row.file) + "\n");
    file = &row.file;
    output.Write("  " + (row.line > 0 ? "line " + std::to_string(row.line) + ": " : "") +
                 Printable(row.finding) + "\n");
    if (!row.meaning.empty()) output.Write("    " + Printable(row.meaning) + "\n");
    if (!row.command.empty()) output.Write("    " + Printable(row.command) + "\n");
  }
  output.Write((rows.empty() ? "" : "\n") + Summary() + "\n");
}

void DoctorReport::WriteJson(OutputFile& output) const {
  nlohmann::ordered_json all;
  all["files_checked"] = checked_;
  all["files_skipped"] = skipped_;
  all["findings_count"] = count_;
  nlohmann::ordered_json& list = all["findings"] = nlohmann::ordered_json::array();
  for (const Diagnosis& row : Rows())
    list.push_back({{"file", row.file},
                    {"line", row.line > 0 ? nlohmann::ordered_json(row.line) : nullptr},
                    {"finding", row.finding},
                    {"meaning", row.meaning},
                    {"command", row.command.empty() ? nullptr : nlohmann::ordered_json(row.command)}});
  output.Write(JsonText(all, 2) + "\n");
}

void DoctorReport::Write(const OutputOptions& options, const std::vector<std::string>& inputs) const {
  OutputFile output(options.file, inputs);
  switch (const OutputFormat format = options.Format()) {
    case OutputFormat::kTable:
      WriteTable(output);
      break;
    case OutputFormat::kJson:
      WriteJson(output);
      break;
    case OutputFormat::kCsv:
    case OutputFormat::kSpreadsheet: {
      RecordWriter records(output, format,
                           {{"file", ""}, {"line", ""}, {"finding", ""}, {"meaning", ""}, {"command", ""}});
      for (const Diagnosis& row : Rows())
        records.Row(
            {row.file, row.line > 0 ? Cell(row.line) : Cell(), row.finding, row.meaning, row.command});
      records.Finish();
      break;
    }
  }
  output.Finish();
  if (options.Format() == OutputFormat::kCsv || options.Format() == OutputFormat::kSpreadsheet)
    Warn(Summary());
}

}  // namespace velmora::cli
