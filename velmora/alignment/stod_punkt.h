// Support points: a small header and a list of named points with levels.
//
// File
//   six header values, a line each; a line "*"
//   optionally "gvy", its value, an empty line
//   for each point: name, level, six values
//   a line "*"
// Blank lines make points too, but a file of more than kManyPoints points has kFewestBytes for each of them,
// or it counts as one that cannot be read: what the suite writes has five times as many. The header and the
// six values are kept for the programs that know their meaning.
#ifndef VELMORA_ALIGNMENT_STOD_PUNKT_H_
#define VELMORA_ALIGNMENT_STOD_PUNKT_H_

#include <cstdint>

#include "velmora/core/list0.h"
#include "velmora/export.h"
#include "velmora/platform/text_file.h"
#include "velmora/text/string.h"

namespace velmora {

// A support point.
struct stdpkttype {
  wchar_t namn[12];  // name, the first word of its line, cut to 11 characters
  float z;           // level, m
  float varden[6];   // six values, written with two decimals
};

// Not thread-safe.
class VELMORA_API CStodPunkt : public list0<stdpkttype> {
 public:
  // The six values of the header; 0 where the file's line is not a number. @{
  double huvud1 = 0;
  double huvud2 = 0;
  double huvud3 = 0;
  double huvud4 = 0;
  double huvud5 = 0;
  float huvud6 = 0;
  // @}
  float gvy = 0;    // the value after "gvy"; 0, without one, is not written
  CString filnamn;  // the name given to the constructor
  // Callers rely on the odd count: with n the position of the last "$" in the name without its last four
  // characters, these are the last n + 1 of what is left (test PointNameCountsFromTheRight).
  CString punktnamn;
  int konvertera = 1;  // whether written point lines pass the text-conversion hook

  static constexpr int kManyPoints = 1 << 16;        // beyond so many points the file's size counts
  static constexpr std::uint64_t kFewestBytes = 10;  // of the file, for each point

  // Reads the file, if one is given. One that cannot be opened or read is reported in a message box and
  // leaves an empty object; the name is kept.
  //
  // Callers rely on a point's six values not coming from its line: they are scanned from the text of the
  // last message (common/last_message.h), so that in practice they stay 0 (test SixValuesStayZero). @{
  CStodPunkt(const wchar_t* file);  // NOLINT(google-explicit-constructor): clients write it as a conversion
  CStodPunkt(const CString& file) : CStodPunkt(file.GetString()) {}  // NOLINT(google-explicit-constructor)
  // @}
  ~CStodPunkt() override = default;

  // Writes the file, null: the one it was read from. Returns 0; -1 after a message box when it cannot be
  // written, is the one that the constructor could not read, or has a character that the file's encoding
  // lacks, and the old file is as it was. @{
  int Uppdat(const wchar_t* file);
  int Uppdat(const CString& file) { return Uppdat(file.GetString()); }
  // @}

 private:
  bool Read(TextReader& reader);
  void ReadPlainPoints(TextReader* reader);
  bool ReadHeader(TextReader& reader);
  void Clear();

  bool unreadable_ = false;  // the file it was made from is there and could not be read
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_STOD_PUNKT_H_
