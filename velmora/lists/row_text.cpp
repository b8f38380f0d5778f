#include "velmora/lists/row_text.h"

#include "velmora/lists/fields.h"

namespace velmora {

void RowText::AddGeneral(std::string_view utf8) {
  const std::string_view trimmed = TrimmedField(utf8);
  const bool marked = packs_numbers_ && trimmed.starts_with(kPackedMark);
  utf8 = Cut(marked ? trimmed : utf8);
  char* at = buffer_.Room(2 * utf8.size() + 4, at_);
  if (marked) *at++ = kPackedMark;
  const bool quoted = utf8.find_first_of("\"\t") != std::string_view::npos;
  if (quoted) *at++ = '"';
  for (const char c : utf8) {
    if (c == '"') *at++ = '"';
    *at++ = c == '\n' || c == '\r' ? ' ' : c;
  }
  if (quoted) *at++ = '"';
  at_ = at;
  End();
}

}  // namespace velmora
