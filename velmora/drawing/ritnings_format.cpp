#include "velmora/drawing/ritnings_format.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace velmora {
namespace {

// Drawings in use have these measures, the uneven ones (A1 is 840 wide, A3XL 843) included.
constexpr ritformattype kStandard[] = {
    {L"A0", 1122, 793, 1141, 823, 1189, 841},   //
    {L"A1", 774, 574, 793, 577, 840, 594},      //
    {L"A1L", 1122, 574, 1141, 577, 1189, 594},  //
    {L"A2", 527, 373, 547, 403, 594, 420},      //
    {L"A2L", 774, 373, 793, 403, 841, 420},     //
    {L"A3", 353, 250, 373, 280, 420, 297},      //
    {L"A3L", 527, 250, 547, 280, 594, 297},     //
    {L"A3XL", 774, 250, 794, 280, 843, 297},    //
    {L"A4", 143, 250, 183, 280, 210, 297},      //
};

}  // namespace

CRitningsFormat::CRitningsFormat() {
  static_assert(std::size(kStandard) == std::extent_v<decltype(formater)>);
  std::copy(std::begin(kStandard), std::end(kStandard), formater);
}

int CRitningsFormat::Format2Index(const wchar_t* name) const {
  if (name == nullptr) return -1;
  const std::wstring_view wanted = name;
  // The count is the caller's to change; the table has room for nine.
  for (int i = std::min(antal, static_cast<int>(std::size(formater))); i-- > 0;)
    if (formater[i].namn != nullptr && wanted == formater[i].namn) return i;
  return -1;
}

}  // namespace velmora
