// Reads a list of points or stations: which column is which, then its rows.
#ifndef VELMORA_LISTS_LIST_READER_H_
#define VELMORA_LISTS_LIST_READER_H_

#include <cstdint>
#include <string>
#include <vector>

#include "velmora/lists/layout.h"
#include "velmora/lists/list_options.h"
#include "velmora/lists/rows.h"
#include "velmora/lists/titles.h"

namespace velmora {

class ListReader {
 public:
  // Finds the columns. Throws a ListError when the file cannot be opened, and when it is not clear which
  // columns the required ones are.
  ListReader(const std::string& file, const std::vector<Role>& roles, const ListOptions& options,
             size_t block_size = RowReader::kBlockSize);
  ListReader(const ListReader&) = delete;
  ListReader& operator=(const ListReader&) = delete;

  const ListLayout& Layout() const { return layout_; }
  // What the user should know about the list, found since the last call: at the start and at the end.
  Findings TakeNotes();

  // The next row with anything in it, in Fields. False at the end; throws a ListError when the file cannot be
  // read.
  bool Next();
  const RowFields& Fields() const { return fields_; }
  std::int64_t Line() const { return row_.line; }
  // Many rows at once, for BlockRows in any thread.
  bool NextBlock(RowBlock* block) { return rows_.NextBlock(layout_.separator, block); }

  std::uint64_t Size() const { return rows_.Size(); }
  std::uint64_t Consumed() const { return rows_.Consumed(); }

  // Why a field is not the number it should be: `northing "66x" is not a number`.
  std::string Problem(size_t role) const;

 private:
  const std::vector<Role>& roles_;
  RowReader rows_;
  ListLayout layout_;
  RowFields fields_;
  Row row_;
  bool end_noted_ = false;
};

// As ListReader::Problem, for a role's field.
std::string NotANumber(const Role& role, std::string_view field);

}  // namespace velmora

#endif  // VELMORA_LISTS_LIST_READER_H_
