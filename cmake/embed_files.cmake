# Writes a source with the names and bytes of files.
#
#   cmake -DOUTPUT=sample_files.cpp "-DFILES=a;b" -P embed_files.cmake
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
"// Made from the files in examples/installation.
#include \"cli/env/sample_files.h\"

namespace velmora::cli {

std::span<const SampleFile> SampleFiles() {
  static constexpr SampleFile files[] = {
${rows}  };
  return files;
}

}  // namespace velmora::cli
")
