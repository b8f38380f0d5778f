// A list of line codes in memory. It is defined in the header, so that nothing of it is exported.
#ifndef VELMORA_SETTINGS_LINKOD_LISTA_H_
#define VELMORA_SETTINGS_LINKOD_LISTA_H_

#include "velmora/core/list0.h"

namespace velmora {

// A line code (LINKOD.PAR).
struct linkodpartype {
  wchar_t kod[40];    // code
  wchar_t ord[40];    // second word
  wchar_t text[260];  // description
  double tal;         // number
  int varde;          // integer
};

// The library does not fill it: CTundrilInst::LinkodRead reads one line code a call.
class CLinkodLista : public list0<linkodpartype> {
 public:
  ~CLinkodLista() override = default;
};

}  // namespace velmora

#endif  // VELMORA_SETTINGS_LINKOD_LISTA_H_
