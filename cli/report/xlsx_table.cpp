#include "cli/report/xlsx_table.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/output/progress.h"
#include "cli/terminal/error.h"
#include "velmora/drawing/plain_text.h"
#include "velmora/platform/files.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

using drawing::PlainText;
using drawing::ReportCell;
using drawing::ReportColumn;
using drawing::ReportTable;

constexpr double kNarrowest = 6;  // characters
constexpr double kWidest = 50;
constexpr double kFilterButton = 3;  // beside a title

[[noreturn]] void Refuse(lxw_error error) {
  throw Refusal(std::string("the workbook cannot be written: ") + lxw_strerror(error) +
                "; choose a name that ends in .csv");
}

void Require(lxw_error error) {
  if (error != LXW_NO_ERROR) Refuse(error);
}

// A file that the workbook's library writes by name, in a new folder of its own, so that nobody else can have
// put a link there.
class ScratchFile {
 public:
  ScratchFile() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    folder_name_ = (std::filesystem::temp_directory_path() / ("velmora-" + std::to_string(now))).string();
    folder_ = PathFromSystem(folder_name_);
    if (!MakeFolder(folder_))
      throw Refusal("the system's folder for temporary files cannot be written, or is full: " +
                    PathForDisplay(folder_));
    name_ = (std::filesystem::path(folder_name_) / "table.xlsx").string();
  }
  ~ScratchFile() {
    (void)RemoveWholeFile(PathFromSystem(name_));
    (void)RemoveEmptyFolder(folder_);
  }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  const std::string& Name() const { return name_; }
  std::string& FolderName() { return folder_name_; }

  void CopyTo(const std::function<void(std::string_view)>& write) const {
    InputFile file;
    std::vector<char> buffer(size_t{64} << 10);
    std::int64_t count = file.Open(PathFromSystem(name_)) ? file.Read(buffer) : -1;
    for (; count > 0; count = file.Read(buffer)) write({buffer.data(), static_cast<size_t>(count)});
    if (count < 0) Refuse(LXW_ERROR_CREATING_TMPFILE);
  }

 private:
  std::string folder_name_;
  CString folder_;
  std::string name_;
};

class Workbook {
 public:
  explicit Workbook(ScratchFile* file) {
    lxw_workbook_options options = {};
    options.constant_memory = LXW_TRUE;
    options.tmpdir = file->FolderName().data();
    book_ = workbook_new_opt(file->Name().c_str(), &options);
    if (book_ == nullptr) Refuse(LXW_ERROR_MEMORY_MALLOC_FAILED);
  }
  ~Workbook() {
    if (book_ != nullptr) lxw_workbook_free(book_);
  }
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;

  lxw_workbook* Get() const { return book_; }
  // Writes the file.
  void Close() { Require(workbook_close(std::exchange(book_, nullptr))); }

 private:
  lxw_workbook* book_ = nullptr;
};

std::string Title(const ReportColumn& column) {
  return PlainText(column.unit.empty() ? column.title : column.title + " (" + column.unit + ")");
}

double Characters(const std::string& utf8) {
  return static_cast<double>(
      std::count_if(utf8.begin(), utf8.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

double Width(const ReportCell& cell, const ReportColumn& column) {
  if (const auto* number = std::get_if<double>(&cell))
    return Characters(FormatFixed(*number, std::max(0, column.decimals)));
  const auto* text = std::get_if<std::string>(&cell);
  return text ? Characters(*text) : 0;
}

void SetFacts(const DocumentFacts& facts, lxw_workbook* book) {
  std::string title = PlainText(facts.title);
  std::string author = PlainText(facts.author);
  lxw_doc_properties properties = {};
  properties.title = title.data();
  properties.author = author.data();
  properties.created = static_cast<time_t>(facts.created);
  Require(workbook_set_properties(book, &properties));
}

void WriteTitles(const ReportTable& table, lxw_workbook* book, lxw_worksheet* sheet) {
  lxw_format* const bold = workbook_add_format(book);
  format_set_bold(bold);
  format_set_bottom(bold, LXW_BORDER_THIN);
  for (size_t i = 0; i < table.columns.size(); ++i) {
    const auto column = static_cast<lxw_col_t>(i);
    const std::string title = Title(table.columns[i]);
    double width = Characters(title) + kFilterButton;
    for (const auto& row : table.rows) width = std::max(width, Width(row[i], table.columns[i]));
    Require(worksheet_set_column(sheet, column, column, std::clamp(width, kNarrowest, kWidest) + 1, nullptr));
    Require(worksheet_write_string(sheet, 0, column, title.c_str(), bold));
  }
}

// The formats of the columns' numbers.
std::vector<lxw_format*> NumberFormats(const ReportTable& table, lxw_workbook* book) {
  std::vector<lxw_format*> formats;
  for (const ReportColumn& column : table.columns) {
    lxw_format* const format = formats.emplace_back(workbook_add_format(book));
    if (column.decimals < 0) continue;
    const std::string zeros(static_cast<size_t>(std::min(column.decimals, 15)), '0');
    format_set_num_format(format, (zeros.empty() ? "0" : "0." + zeros).c_str());
  }
  return formats;
}

void WriteRows(const ReportTable& table, lxw_workbook* book, lxw_worksheet* sheet) {
  const std::vector<lxw_format*> formats = NumberFormats(table, book);
  Progress progress("Writing rows", table.rows.size());
  for (size_t i = 0; i < table.rows.size(); ++i) {
    progress.Update(i, i);
    const auto row = static_cast<lxw_row_t>(i + 1);
    for (size_t j = 0; j < table.columns.size(); ++j) {
      const auto column = static_cast<lxw_col_t>(j);
      const ReportCell& cell = table.rows[i][j];
      if (const auto* number = std::get_if<double>(&cell)) {
        if (std::isfinite(*number)) Require(worksheet_write_number(sheet, row, column, *number, formats[j]));
      } else if (const auto* text = std::get_if<std::string>(&cell); text && !text->empty()) {
        Require(worksheet_write_string(sheet, row, column, PlainText(*text).c_str(), nullptr));
      }
    }
  }
}

}  // namespace

const char* WhyNoXlsx() { return nullptr; }

void WriteXlsx(const ReportTable& table, const DocumentFacts& facts,
               const std::function<void(std::string_view)>& write) {
  if (table.rows.size() >= LXW_ROW_MAX || table.columns.empty() || table.columns.size() > LXW_COL_MAX)
    throw Refusal("a table of " + std::to_string(table.rows.size()) + " rows and " +
                  std::to_string(table.columns.size()) +
                  " columns does not fit into a workbook, which holds " + std::to_string(LXW_ROW_MAX - 1) +
                  " and " + std::to_string(LXW_COL_MAX) + "; choose a name that ends in .csv");
  ScratchFile file;
  Workbook book(&file);
  SetFacts(facts, book.Get());
  lxw_worksheet* const sheet = workbook_add_worksheet(book.Get(), "Borings");
  const auto last_row = static_cast<lxw_row_t>(table.rows.size());
  const auto last_column = static_cast<lxw_col_t>(table.columns.size() - 1);
  worksheet_freeze_panes(sheet, 1, 1);
  Require(worksheet_autofilter(sheet, 0, 0, last_row, last_column));
  worksheet_set_landscape(sheet);
  worksheet_fit_to_pages(sheet, 1, 0);
  Require(worksheet_repeat_rows(sheet, 0, 0));
  WriteTitles(table, book.Get(), sheet);
  WriteRows(table, book.Get(), sheet);
  book.Close();
  file.CopyTo(write);
}

}  // namespace velmora::cli
