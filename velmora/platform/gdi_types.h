// Points, rectangles, fonts and times as programs with windows keep them, on systems without windows
// too: a setting that one program stored is read by all.
#ifndef VELMORA_PLATFORM_GDI_TYPES_H_
#define VELMORA_PLATFORM_GDI_TYPES_H_

#include <memory>

#include "velmora/export.h"
#include "velmora/platform/types.h"

namespace velmora {

struct CPoint {
  int x = 0;
  int y = 0;
};

struct CSize {
  int cx = 0;
  int cy = 0;
};

struct CRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

// Days since 1899-12-30, the fraction being the time of day.
struct COleDateTime {
  double m_dt = 0;
  int m_status = 0;  // 0 valid, 1 invalid, 2 null
};

static_assert(sizeof(COleDateTime) == 16 && sizeof(LOGFONTW) == 92);

// Owns at most one font of the system; elsewhere than on Windows its description only.
class VELMORA_API CFont {
 public:
  CFont();
  ~CFont();  // deletes the font
  CFont(CFont&&) noexcept;
  CFont& operator=(CFont&&) noexcept;

  // Makes a font of this description and deletes the one owned before. Returns 1; 0 when the system
  // makes none, and the object is then as it was.
  int Create(const LOGFONTW& description);
  // Returns 1; 0 when there is no font, and *description is left alone.
  int GetLogFont(LOGFONTW* description) const;

  // The system's handle (an HFONT), null when there is none and on systems without fonts.
  void* GetHandle() const;
  // Gives the font up without deleting it and returns what GetHandle did.
  void* Detach();

 private:
  struct System;
  std::unique_ptr<System> system_;
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_GDI_TYPES_H_
