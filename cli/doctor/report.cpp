#include "cli/doctor/report.h"

#include <nlohmann/json.hpp>

#include "cli/terminal/error.h"
#include "cli/terminal/wrap.h"
#include "velmora/text/codepage.h"
#include "velmora/text/counted.h"

namespace velmora::cli {

bool DoctorReport::HasRoom(const std::string& file) const {
  if (kept_ >= kMostInAll) return false;
  const auto place = places_.find(file);
  return place == places_.end() || static_cast<std::int64_t>(files_[place->second].kept.size()) < kMostOfFile;
}

// Null for a file that is not listed.
DoctorReport::OfFile* DoctorReport::Find(const std::string& file) {
  const auto place = places_.find(file);
  return place == places_.end() ? nullptr : &files_[place->second];
}

void DoctorReport::Keep(Diagnosis found) {
  if (places_.emplace(found.file, files_.size()).second) files_.push_back({found.file, {}, 0, ""});
  ++count_;
  ++kept_;
  Find(found.file)->kept.push_back(std::move(found));
}

void DoctorReport::Add(Diagnosis found) {
  if (HasRoom(found.file))
    Keep(std::move(found));
  else
    LeaveOut(found.file, 1, "");
}

void DoctorReport::AddOfFolder(Diagnoses found) {
  for (Diagnosis& each : found) Keep(std::move(each));
}

void DoctorReport::LeaveOut(const std::string& file, std::int64_t count, const std::string& lister) {
  if (count == 0) return;
  count_ += count;
  OfFile* const listed = Find(file);
  if (listed == nullptr) {
    unlisted_ += count;
    return;
  }
  // One command that lists all that is left out, or none.
  if (listed->left_out == 0)
    listed->lister = lister;
  else if (listed->lister != lister)
    listed->lister.clear();
  listed->left_out += count;
}

Diagnoses DoctorReport::Rows() const {
  Diagnoses rows;
  for (const OfFile& file : files_) {
    rows.insert(rows.end(), file.kept.begin(), file.kept.end());
    if (file.left_out > 0)
      rows.push_back(
          {file.name, 0, "and " + Counted(file.left_out, "more finding"),
           file.lister.empty() ? "correct those above first, then check again" : "the command lists them",
           file.lister});
  }
  return rows;
}

std::string DoctorReport::Summary() const {
  return Counted(checked_, "file") + " checked, " + std::to_string(skipped_) + " of other kinds skipped; " +
         (count_ == 0 ? "nothing found" : Counted(count_, "finding")) +
         (unlisted_ == 0 ? ""
                         : ", of which " + std::to_string(unlisted_) + " in further files are not listed");
}

// Findings of a file in a row that mean the same are followed by the meaning once.
void DoctorReport::WriteTable(OutputFile& output) const {
  const Diagnoses rows = Rows();
  // Commands and names stay in one line, to be copied.
  const auto text = [&](const char* indent, const std::string& line) {
    output.Write(WrapLines(indent + Printable(line) + "\n", output.TerminalColumns()));
  };
  for (size_t i = 0; i < rows.size(); ++i) {
    const Diagnosis& row = rows[i];
    if (i == 0 || row.file != rows[i - 1].file) output.Write(Printable(row.file) + "\n");
    text("  ", (row.line > 0 ? "line " + std::to_string(row.line) + ": " : "") + row.finding);
    if (i + 1 < rows.size() && rows[i + 1].file == row.file && rows[i + 1].meaning == row.meaning &&
        rows[i + 1].command == row.command)
      continue;
    if (!row.meaning.empty()) text("    ", row.meaning);
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
  for (const Diagnosis& row : Rows()) {
    // JSON is UTF-8, and a name with other bytes would be another file's.
    const bool has_command = !row.command.empty() && IsValidUtf8(row.command);
    list.push_back({{"file", row.file},
                    {"line", row.line > 0 ? nlohmann::ordered_json(row.line) : nullptr},
                    {"finding", row.finding},
                    {"meaning", row.meaning},
                    {"command", has_command ? nlohmann::ordered_json(row.command) : nullptr}});
  }
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
