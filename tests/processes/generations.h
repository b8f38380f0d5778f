// The suite's files, written again and again, each time saying another number: for tests of what other
// programs see of a write, and of what is left of one that was killed.
#ifndef VELMORA_TESTS_PROCESSES_GENERATIONS_H_
#define VELMORA_TESTS_PROCESSES_GENERATIONS_H_

#include <string_view>
#include <vector>

#include "velmora/text/string.h"

namespace velmora {

// Their names, all in one folder.
std::vector<CString> GenerationFiles();

// What the rewrites need: the lines that each keeps.
void MakeFilesToRewrite(const CString& folder);

// Rewrites every file by the operation that clients use. All that differs from one number to the next is its
// eight digits, all over the file. False when one could not be written, where its operation tells.
inline constexpr int kFirstGeneration = 10'000'000;
inline constexpr int kLastGeneration = 16'777'215;  // a level is a float
bool WriteGeneration(const CString& folder, int number);

// The number that a file says; -1 when it says none.
int GenerationOf(std::string_view bytes);

}  // namespace velmora

#endif  // VELMORA_TESTS_PROCESSES_GENERATIONS_H_
