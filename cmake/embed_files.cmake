# Writes a source with the names and bytes of files.
#
#   cmake -DOUTPUT=sample_files.cpp "-DFILES=a;b" -DHEADER=cli/env/sample_files.h -DTYPE=SampleFile -P embed_files.cmake
#
# The header declares the function "TYPE"s(), which returns a span of TYPE: name and bytes.
set(rows "")
foreach(file IN LISTS FILES)
  get_filename_component(name "${file}" NAME)
  file(READ "${file}" bytes HEX)
  string(LENGTH "${bytes}" digits)
  math(EXPR size "${digits} / 2")
  string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${bytes}")
  string(APPEND rows "    {L\"${name}\", {\"${bytes}\", ${size}}},\n")
endforeach()
file(WRITE "${OUTPUT}"
"#include \"${HEADER}\"

namespace velmora::cli {

std::span<const ${TYPE}> ${TYPE}s() {
  static constexpr ${TYPE} files[] = {
${rows}  };
  return files;
}

}  // namespace velmora::cli
")
