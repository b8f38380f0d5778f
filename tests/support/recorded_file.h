// Files of questions and of the answers that were recorded.
#ifndef VELMORA_TESTS_SUPPORT_RECORDED_FILE_H_
#define VELMORA_TESTS_SUPPORT_RECORDED_FILE_H_

#include <functional>
#include <string>
#include <vector>

namespace velmora::testing {

using Lines = std::vector<std::string>;

// A file's blocks, each from its line "== name" to the next one; a file without such lines is one block.
// `play` returns the block's lines with the answers of this build, which must be those that stand there. With
// the variable VELMORA_RECORD set, they are written into the file instead, to be reviewed with git diff.
void PlayRecorded(const std::string& path,
                  const std::function<std::string(const std::string& name, const Lines& lines)>& play);

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_SUPPORT_RECORDED_FILE_H_
