#include "velmora/project/proj_path.h"

namespace velmora {

const wchar_t* CProjPath::TundrilDbsNamn = L"TUNDRIL.DBS";
const wchar_t* CProjPath::TundrilDbkNamn = L"TUNDRIL.DBK";
const wchar_t* CProjPath::StenDbsNamn = L"KARSK.DBS";
const wchar_t* CProjPath::StenDbkNamn = L"KARSK.DBK";
const wchar_t* CProjPath::HarbelDbsNamn = L"HARBEL.GDS";
const wchar_t* CProjPath::HarbelDbkNamn = L"HARBEL.GDK";
const wchar_t* CProjPath::TerrDbsNamn = L"MIRSEN.TDS";
const wchar_t* CProjPath::UtvDbsNamn = L"TUNDRILUTV.DBS";
const wchar_t* CProjPath::UtvDbkNamn = L"TUNDRILUTV.DBK";
const wchar_t* CProjPath::TundrilDbfKat = L"TUNDRIL.DBF";
const wchar_t* CProjPath::PostDbfKat = L"MIRSEN.DBF";
const wchar_t* CProjPath::StackKat = L"STACK";
const wchar_t* CProjPath::StabRitKat = L"DUNVEL.RIT";
const wchar_t* CProjPath::TundrilRitKat = L"TUNDRIL.RIT";
const wchar_t* CProjPath::StenRitKat = L"KARSK.RIT";
const wchar_t* CProjPath::StenDbfKat = L"KARSK.DBF";
const wchar_t* CProjPath::PostRitKat = L"MIRSEN.RIT";
const wchar_t* CProjPath::HarbelRitKat = L"HARBEL.RIT";
const wchar_t* CProjPath::HarbelDbfKat = L"HARBEL.DBF";
const wchar_t* CProjPath::Pictures = L"Pictures";
const wchar_t* CProjPath::TundrilZipNamn = L"TUNDRIL.ZIP";
const wchar_t* CProjPath::TundrilAvpNamn = L"TUNDRIL.AVP";
const wchar_t* CProjPath::TundrilVlNamn = L"TUNDRIL.VL";
const wchar_t* CProjPath::TundrilParNamn = L"TUNDRIL.PAR";
const wchar_t* CProjPath::Jb23ParNamn = L"JB23.PAR";
const wchar_t* CProjPath::Kodfil = L"KODFIL.DAT";
const wchar_t* CProjPath::Miljkod = L"MILJKOD.DAT";
const wchar_t* CProjPath::Linkod = L"LINKOD.PAR";
const wchar_t* CProjPath::Gvrref = L"Gvrref.dat";
const wchar_t* CProjPath::TundrilCfgNamn = L"TUNDRIL.CFG";
const wchar_t* CProjPath::RamvalNamn = L"RAMVAL.DAT";
const wchar_t* CProjPath::StenVlNamn = L"KARSK.VL";
const wchar_t* CProjPath::StenParNamn = L"KARSK.PAR";

CProjPath::~CProjPath() = default;

int CProjPath::SetPath(const wchar_t* path) {
  const CString folder = path;  // `path` may be one of our own fields
  const auto in = [](const CString& base, const wchar_t* name) {
    CString composed;
    composed.Format(L"%s%s%s", base, L"\\", name);
    return composed;
  };
  m_ProjKat = folder;
  m_ZipPath = in(folder, TundrilZipNamn);
  m_DbsPath = in(folder, TundrilDbsNamn);
  m_HarbelDbsPath = in(folder, HarbelDbsNamn);
  m_TerrDbsPath = in(folder, TerrDbsNamn);
  m_StenDbsPath = in(folder, StenDbsNamn);
  m_UtvDbsPath = in(folder, UtvDbsNamn);
  m_DbfKat = in(folder, TundrilDbfKat);
  m_RitKat = in(folder, TundrilRitKat);
  m_StackKat = in(folder, StackKat);
  m_PostDbfKat = in(folder, PostDbfKat);
  m_PostRitKat = in(folder, PostRitKat);
  m_StabRitKat = in(folder, StabRitKat);
  m_PicturesKat = in(folder, Pictures);
  m_AvpPath = in(m_DbfKat, TundrilAvpNamn);
  m_VlPath = in(m_DbfKat, TundrilVlNamn);
  m_ParPath = in(folder, TundrilParNamn);
  m_StenParPath = in(folder, StenParNamn);
  return 0;
}

}  // namespace velmora
