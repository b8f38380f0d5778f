#include "velmora/platform/gdi_types.h"

namespace velmora {

struct CFont::System {
  LOGFONTW description;
};

CFont::CFont() = default;
CFont::~CFont() = default;
CFont::CFont(CFont&&) noexcept = default;
CFont& CFont::operator=(CFont&&) noexcept = default;

int CFont::Create(const LOGFONTW& description) {
  system_ = std::make_unique<System>(System{description});
  return 1;
}

int CFont::GetLogFont(LOGFONTW* description) const {
  if (!system_) return 0;
  *description = system_->description;
  return 1;
}

void* CFont::GetHandle() const { return nullptr; }

void* CFont::Detach() {
  system_.reset();
  return nullptr;
}

}  // namespace velmora
