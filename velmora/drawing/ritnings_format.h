// The sheet formats that the drawing programs offer: for each name three nested rectangles, the outermost
// being the sheet itself.
//
//   CRitningsFormat formats;
//   const ritformattype& a3 = formats.formater[formats.Format2Index(L"A3")];  // 420 x 297 mm
#ifndef VELMORA_DRAWING_RITNINGS_FORMAT_H_
#define VELMORA_DRAWING_RITNINGS_FORMAT_H_

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

// One format, in millimetres. The drawing programs decide what they draw in the two inner rectangles.
struct ritformattype {
  const wchar_t* namn;  // name; shared by every copy
  double ytaBredd;      // width of the innermost area
  double ytaHojd;       // its height
  double ramBredd;      // width of the middle rectangle
  double ramHojd;       // its height
  double arkBredd;      // width of the sheet
  double arkHojd;       // its height
};

// A table of its own in each object, filled with the standard formats; copies are independent.
class VELMORA_API CRitningsFormat {
 public:
  CRitningsFormat();
  virtual ~CRitningsFormat() = default;
  // A copy has a table of its own. @{
  CRitningsFormat(const CRitningsFormat&) = default;
  CRitningsFormat& operator=(const CRitningsFormat&) = default;
  // @}

  // The index of the format of exactly this name, of several the last; -1 without one, and for null. @{
  int Format2Index(const wchar_t* name) const;
  int Format2Index(const CString& name) const { return Format2Index(name.GetString()); }
  // @}

  ritformattype formater[9];  // A0, A1, A1L, A2, A2L, A3, A3L, A3XL, A4
  int antal = 9;              // how many of them are in use
};

}  // namespace velmora

#endif  // VELMORA_DRAWING_RITNINGS_FORMAT_H_
