// What a fuzz target is given: the content of a file and, after a last line "##", arguments, one a line.
//
//   HSKALA=100
//   ##
//   HSKALA
//   250
#ifndef VELMORA_FUZZ_SUPPORT_INPUT_H_
#define VELMORA_FUZZ_SUPPORT_INPUT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "velmora/text/string.h"

namespace velmora::fuzz {

class Input {
 public:
  Input(const std::uint8_t* data, size_t size);

  const std::string& File() const { return file_; }
  size_t Arguments() const { return arguments_.size(); }
  // One more than the largest argument that is looked at, so that no input takes long.
  static constexpr size_t kMostArguments = 12;
  // Empty, and 0, where there is none.
  const std::string& Bytes(size_t i) const;
  // UTF-8, what is not valid as Windows-1252; up to a zero.
  CString Text(size_t i) const;
  double Number(size_t i) const;

 private:
  std::string file_;
  std::vector<std::string> arguments_;
};

// What each target defines: tries one input. A finding is a sanitizer's, or something that Require refuses.
void Run(const Input& input);

// Ends the program as a finding when it does not hold.
void Require(bool holds, const char* what);

}  // namespace velmora::fuzz

#endif  // VELMORA_FUZZ_SUPPORT_INPUT_H_
