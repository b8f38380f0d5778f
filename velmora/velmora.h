// Every public header of the library.
#ifndef VELMORA_VELMORA_H_
#define VELMORA_VELMORA_H_

#include "velmora/alignment/stod_punkt.h"
#include "velmora/alignment/vag2.h"
#include "velmora/alignment/vaglinje.h"
#include "velmora/common/messages.h"
#include "velmora/common/paths.h"
#include "velmora/common/string_table.h"
#include "velmora/common/text_hooks.h"
#include "velmora/core/list0.h"
#include "velmora/environment/registry.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/environment/user_data.h"
#include "velmora/link/dde_com.h"
#include "velmora/link/ritnings_format.h"
#include "velmora/platform/gdi_types.h"
#include "velmora/platform/notify_window.h"
#include "velmora/platform/process.h"
#include "velmora/platform/profile.h"
#include "velmora/platform/registry_store.h"
#include "velmora/platform/types.h"
#include "velmora/project/dir_sort.h"
#include "velmora/project/proj_path.h"
#include "velmora/project/projekt_status.h"
#include "velmora/settings/jb23_par.h"
#include "velmora/settings/linkod_lista.h"
#include "velmora/settings/tundril_cfg.h"
#include "velmora/settings/tundril_inst.h"
#include "velmora/settings/tundril_par.h"
#include "velmora/text/string.h"

#endif  // VELMORA_VELMORA_H_
