# Writes a source with the style and the script of a page, and the script's hash.
#
#   cmake -DOUTPUT=html_parts.cpp -DSTYLE=report.css "-DSCRIPTS=a.js;b.js" -P embed_page.cmake

# Compilers limit the length of a literal, so each is one file; a file's is written line by line.
function(literal file result)
  file(READ "${file}" text)
  string(REGEX REPLACE "([\\\"])" "\\\\\\1" text "${text}")
  string(REPLACE "??" "?\\?" text "${text}")  # no trigraphs
  string(REPLACE "\n" "\\n\"\n    \"" text "${text}")
  set(${result} "    \"${text}\"" PARENT_SCOPE)
endfunction()

literal("${STYLE}" style)
set(parts "")
set(all "")
foreach(script IN LISTS SCRIPTS)
  literal("${script}" part)
  string(APPEND parts "${part}sv,\n")
  file(READ "${script}" text)
  string(APPEND all "${text}")
endforeach()

# Base64: four digits for three bytes, which are six digits of the hash.
set(base64_digits "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
string(SHA256 hex "${all}")
set(hash "")
string(APPEND hex "00")
foreach(at RANGE 0 63 6)
  string(SUBSTRING "${hex}" ${at} 6 bytes)
  foreach(shift IN ITEMS 18 12 6 0)
    math(EXPR digit "(0x${bytes} >> ${shift}) & 63")
    string(SUBSTRING "${base64_digits}" ${digit} 1 digit)
    string(APPEND hash "${digit}")
  endforeach()
endforeach()
string(REGEX REPLACE ".$" "=" hash "${hash}")

file(WRITE "${OUTPUT}"
"// Made from the files in velmora/drawing/html.
#include \"velmora/drawing/html_parts.h\"

namespace velmora::drawing {

using std::operator\"\"sv;

std::string_view HtmlStyle() {
  return
${style}sv;
}

std::span<const std::string_view> HtmlScript() {
  static constexpr std::string_view parts[] = {
${parts}  };
  return parts;
}

std::string_view HtmlScriptHash() { return \"${hash}\"; }

}  // namespace velmora::drawing
")
