#include "cli/input/rows.h"

#include <algorithm>

#include "cli/terminal/error.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {

void RefuseUnopened(const std::string& file) {
  const std::optional<FileStatus> status = GetFileStatus(PathFromSystem(file));
  if (!status) throw Refusal(At(file, "no such file; check the name"));
  if (status->kind == FileKind::kFolder) throw Refusal(At(file, "is a folder; name a file in it"));
  throw Refusal(At(file, "cannot be opened for reading; check its permissions"));
}

void RefuseLongRow(const std::string& file, std::int64_t line) {
  throw Refusal(At(file, line, "this line is too long for a row; is the file a list of points?"));
}

wchar_t DetectSeparator(std::wstring_view row) {
  bool quoted = false;
  bool semicolon = false;
  for (const wchar_t c : row) {
    if (c == L'"') quoted = !quoted;
    if (quoted) continue;
    if (c == L'\t') return L'\t';
    semicolon = semicolon || c == L';';
  }
  return semicolon ? L';' : L',';
}

std::vector<std::wstring> SplitRow(std::wstring_view row, wchar_t separator) {
  std::vector<std::wstring> fields;
  const auto is_blank = [&](wchar_t c) { return IsBlank(c) && c != separator; };
  for (;;) {
    while (!row.empty() && is_blank(row.front())) row.remove_prefix(1);
    std::wstring field;
    if (!row.empty() && row.front() == L'"') {
      row.remove_prefix(1);
      for (; !row.empty(); row.remove_prefix(1)) {
        if (row.front() == L'"') {
          if (row.substr(0, 2) != L"\"\"") break;
          row.remove_prefix(1);
        }
        field += row.front();
      }
      if (!row.empty()) row.remove_prefix(1);
    }
    const size_t end = std::min(row.find(separator), row.size());
    field += TrimBlanks(row.substr(0, end));
    fields.push_back(std::move(field));
    if (end == row.size()) return fields;
    row.remove_prefix(end + 1);
  }
}

std::optional<double> FieldNumber(std::wstring_view field, bool decimal_comma) {
  if (!decimal_comma || field.find(L',') == std::wstring_view::npos) return ParseWholeNumber(field);
  if (field.find(L'.') != std::wstring_view::npos) return std::nullopt;
  std::wstring with_point(field);
  with_point[with_point.find(L',')] = L'.';
  return ParseWholeNumber(with_point);
}

RowReader::RowReader(std::string file) : file_(std::move(file)) {
  const bool good = file_ == "-" ? reader_.OpenStandardInput(TextReader::Guess::kUtf8First)
                                 : reader_.Open(PathFromSystem(file_), TextReader::Guess::kUtf8First);
  if (!good) RefuseUnopened(file_);
}

bool RowReader::Next() {
  while (reader_.ReadLine(&text_)) {
    ++line_;
    if (static_cast<size_t>(text_.GetLength()) > kLongestRow) RefuseLongRow(file_, line_);
    if (TrimBlanks(text_.GetView()).empty()) continue;
    if (separator_ == 0) {
      // Some spreadsheets name the separator on a line of its own.
      const std::wstring_view row = text_.GetView();
      if (row.size() == 5 && EqualNoCase(row.substr(0, 4), L"sep=")) {
        separator_ = row[4];
        continue;
      }
      separator_ = DetectSeparator(row);
    }
    fields_ = SplitRow(text_.GetView(), separator_);
    return true;
  }
  if (reader_.Failed()) RefuseUnread();
  return false;
}

bool RowReader::NextBlock(RowBlock* block) {
  constexpr size_t kBlockSize = size_t{512} << 10;
  constexpr size_t kLongestBytes = 4 * kLongestRow;
  block->first_line = line_ + 1;
  block->encoding = reader_.Encoding();
  block->bytes.clear();
  if (IsUtf16(block->encoding)) {
    block->encoding = TextEncoding::kUtf8;
    while (block->bytes.size() < kBlockSize && reader_.ReadLine(&text_)) {
      block->bytes += ToUtf8(text_) + "\r\n";
      ++line_;
    }
  } else if (reader_.ReadBlock(kBlockSize, &block->bytes, kLongestBytes)) {
    line_ += std::count(block->bytes.begin(), block->bytes.end(), '\n');
    if (block->bytes.back() != '\n') ++line_;
  }
  if (!block->bytes.empty()) return true;
  if (reader_.Failed()) RefuseUnread();
  return false;
}

void RowReader::RefuseUnread() const {
  throw Refusal(At(file_, line_ + 1, "reading stopped here: a read error, or a line too long for a list"));
}

}  // namespace velmora::cli
