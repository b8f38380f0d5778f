#include "cli/link/link_text.h"

#include "cli/terminal/error.h"
#include "velmora/link/dde_com.h"
#include "velmora/text/codepage.h"

namespace velmora::cli {

std::string EncodeLinkText(std::string_view utf8, const std::string& what, size_t longest) {
  std::string bytes;
  if (!AppendEncoded(WideFromUtf8(utf8), TextEncoding::kWindows1252, &bytes))
    throw Refusal(what + " has a letter outside Windows-1252: " + Quoted(utf8));
  if (bytes.size() > longest)
    throw Refusal(what + " has " + std::to_string(bytes.size()) + " characters, at most " +
                  std::to_string(longest) + " are allowed: " + Quoted(utf8));
  return bytes;
}

void ConnectToProgram() {
  if (CDdeCom::Connect() < 0)
    throw Refusal(
        "the field-data program does not answer; start it, or simulate it with: velmora link serve");
}

}  // namespace velmora::cli
