#include "velmora/platform/gdi_types.h"

namespace velmora {

struct CFont::System {
  explicit System(HFONT owned) : font(owned) {}
  System(const System&) = delete;
  System& operator=(const System&) = delete;
  ~System() {
    if (font != nullptr) DeleteObject(font);
  }

  HFONT font;
};

CFont::CFont() = default;
CFont::~CFont() = default;
CFont::CFont(CFont&&) noexcept = default;
CFont& CFont::operator=(CFont&&) noexcept = default;

int CFont::Create(const LOGFONTW& description) {
  const HFONT font = CreateFontIndirectW(&description);
  if (font == nullptr) return 0;
  system_ = std::make_unique<System>(font);
  return 1;
}

int CFont::GetLogFont(LOGFONTW* description) const {
  LOGFONTW found{};
  if (!system_ || GetObjectW(system_->font, sizeof found, &found) != sizeof found) return 0;
  *description = found;
  return 1;
}

void* CFont::GetHandle() const { return system_ ? system_->font : nullptr; }

void* CFont::Detach() {
  void* font = GetHandle();
  if (system_) system_->font = nullptr;
  system_.reset();
  return font;
}

}  // namespace velmora
