// The lines of a settings or code file, as the library reads them.
#ifndef VELMORA_CLI_INPUT_TEXT_LINES_H_
#define VELMORA_CLI_INPUT_TEXT_LINES_H_

#include <cstdint>
#include <string>
#include <vector>

#include "velmora/text/string.h"

namespace velmora::cli {

struct TextLine {
  std::int64_t number = 0;  // from 1
  CString text;
  bool cut = false;  // at a zero byte
};
using TextLines = std::vector<TextLine>;

// Empty when the whole file was read, else what is wrong with it; what was read until then is in `lines`.
std::string ReadTextLines(const CString& path, TextLines* lines);
// The same; throws a Refusal that names the file.
TextLines TextLinesOf(const CString& path);

// Throws a Refusal when the encoding that the file has, or would get, lacks a character of the text.
void RequireCharacters(const CString& path, const CString& text);

// For a write that the library did not carry out. Throws a Refusal.
[[noreturn]] void RefuseUnwritten(const CString& path);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_INPUT_TEXT_LINES_H_
