#include "velmora/common/last_message.h"

#include <utility>

namespace velmora {
namespace {

CString& Buffer() {
  static CString buffer;
  return buffer;
}

}  // namespace

const CString& LastMessageText() { return Buffer(); }
const CString& KeepMessageText(CString text) { return Buffer() = std::move(text); }

}  // namespace velmora
