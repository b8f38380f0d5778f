#include "cli/input/list_input.h"

#include <set>

#include "cli/terminal/error.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"

namespace velmora::cli {
namespace {

std::wstring Lower(const std::string& title) {
  std::wstring lower = WideFromUtf8(title);
  for (wchar_t& c : lower) c = LowerLetter(c);
  return lower;
}

}  // namespace

void WarnOf(const std::string& file, const Findings& notes) {
  for (const Finding& note : notes) Warn(At(file, note.line, note.text));
}

void WarnOf(const std::string& file, const std::optional<Finding>& note) {
  if (note) WarnOf(file, Findings{*note});
}

std::vector<Column> WithCarried(const ListLayout& layout, std::vector<Column> ours) {
  std::set<std::wstring> used;
  for (const Column& column : ours) used.insert(Lower(column.key));
  std::vector<Column> columns;
  for (const ListLayout::Carried& carried : layout.carried) {
    std::string title = carried.title;
    for (int number = 1; !used.insert(Lower(title)).second; ++number)
      title = "list_" + carried.title + (number == 1 ? "" : "_" + std::to_string(number));
    columns.push_back({title, ""});
  }
  columns.insert(columns.end(), std::make_move_iterator(ours.begin()), std::make_move_iterator(ours.end()));
  return columns;
}

}  // namespace velmora::cli
