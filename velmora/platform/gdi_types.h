// Points, rectangles, fonts and times in the binary layout of Windows programs, on every system, so that all
// programs can read each other's settings.
#ifndef VELMORA_PLATFORM_GDI_TYPES_H_
#define VELMORA_PLATFORM_GDI_TYPES_H_

#include <memory>

#include "velmora/export.h"
#include "velmora/platform/types.h"

namespace velmora {

// A point of the screen, in pixels.
struct CPoint {
  int x = 0;  // to the right
  int y = 0;  // downwards
};

// A size in pixels.
struct CSize {
  int cx = 0;  // width
  int cy = 0;  // height
};

// A rectangle in pixels; right and bottom are just outside it.
struct CRect {
  int left = 0;    // x of the left side
  int top = 0;     // y of the upper side
  int right = 0;   // x of the right side
  int bottom = 0;  // y of the lower side
};

// A day and time of day.
struct COleDateTime {
  double m_dt = 0;   // days since 1899-12-30, the fraction being the time of day
  int m_status = 0;  // 0 valid, 1 invalid, 2 null
};

static_assert(sizeof(COleDateTime) == 16 && sizeof(LOGFONTW) == 92);

// Owns at most one font of the system; on other systems than Windows its description.
class VELMORA_API CFont {
 public:
  CFont();   // no font
  ~CFont();  // deletes the font
  // Takes over the other's font, which then has none; an assignment deletes the old one. @{
  CFont(CFont&&) noexcept;
  CFont& operator=(CFont&&) noexcept;
  // @}

  // Creates a font and deletes the previous one. Returns 1, or 0 when the system fails; the object is then
  // unchanged.
  int Create(const LOGFONTW& description);
  // Returns 1, or 0 without a font; *description is then unchanged.
  int GetLogFont(LOGFONTW* description) const;

  // The system's handle (an HFONT); null without a font and on other systems.
  void* GetHandle() const;
  // Releases the font without deleting it and returns its handle.
  void* Detach();

 private:
  struct System;
  std::unique_ptr<System> system_;
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_GDI_TYPES_H_
