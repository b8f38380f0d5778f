// The files and folders of a project with their names.
#ifndef VELMORA_PROJECT_NAMED_PATHS_H_
#define VELMORA_PROJECT_NAMED_PATHS_H_

#include "velmora/project/proj_path.h"

namespace velmora {

struct NamedPath {
  const char* field;
  CString CProjPath::*path;
};

inline constexpr NamedPath kProjectPaths[] = {
    {"m_ProjKat", &CProjPath::m_ProjKat},         {"m_ZipPath", &CProjPath::m_ZipPath},
    {"m_DbsPath", &CProjPath::m_DbsPath},         {"m_HarbelDbsPath", &CProjPath::m_HarbelDbsPath},
    {"m_TerrDbsPath", &CProjPath::m_TerrDbsPath}, {"m_StenDbsPath", &CProjPath::m_StenDbsPath},
    {"m_DbfKat", &CProjPath::m_DbfKat},           {"m_RitKat", &CProjPath::m_RitKat},
    {"m_StackKat", &CProjPath::m_StackKat},       {"m_PostDbfKat", &CProjPath::m_PostDbfKat},
    {"m_PostRitKat", &CProjPath::m_PostRitKat},   {"m_StabRitKat", &CProjPath::m_StabRitKat},
    {"m_UtvDbsPath", &CProjPath::m_UtvDbsPath},   {"m_AvpPath", &CProjPath::m_AvpPath},
    {"m_VlPath", &CProjPath::m_VlPath},           {"m_ParPath", &CProjPath::m_ParPath},
    {"m_StenParPath", &CProjPath::m_StenParPath}, {"m_PicturesKat", &CProjPath::m_PicturesKat},
};

}  // namespace velmora

#endif  // VELMORA_PROJECT_NAMED_PATHS_H_
