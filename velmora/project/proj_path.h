// The files and folders of a project: their names, and their full paths in one project folder.
#ifndef VELMORA_PROJECT_PROJ_PATH_H_
#define VELMORA_PROJECT_PROJ_PATH_H_

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

class CTundrilIni;

// The paths of one project, as text: nothing is read from the disk but by CreateProjectStructure.
class VELMORA_API CProjPath {
 public:
  // A client may assign other names; SetPath and CreateProjectStructure read them when they run.
  static const wchar_t* TundrilDbsNamn;  // "TUNDRIL.DBS": sounding database of the main program
  static const wchar_t* TundrilDbkNamn;  // "TUNDRIL.DBK": its companion
  static const wchar_t* StenDbsNamn;     // "KARSK.DBS": database of the rock and stone program
  static const wchar_t* StenDbkNamn;     // "KARSK.DBK": its companion
  static const wchar_t* HarbelDbsNamn;   // "HARBEL.GDS": database of the constructions program
  static const wchar_t* HarbelDbkNamn;   // "HARBEL.GDK": its companion
  static const wchar_t* TerrDbsNamn;     // "MIRSEN.TDS": terrain database of the post-processing program
  static const wchar_t* UtvDbsNamn;      // "TUNDRILUTV.DBS": evaluation database
  static const wchar_t* UtvDbkNamn;      // "TUNDRILUTV.DBK": its companion
  static const wchar_t* TundrilDbfKat;   // "TUNDRIL.DBF": folder
  static const wchar_t* PostDbfKat;      // "MIRSEN.DBF": folder
  static const wchar_t* StackKat;        // "STACK": folder
  static const wchar_t* StabRitKat;      // "DUNVEL.RIT": drawing folder of the stability program
  static const wchar_t* TundrilRitKat;   // "TUNDRIL.RIT": drawing folder
  static const wchar_t* StenRitKat;      // "KARSK.RIT": drawing folder
  static const wchar_t* StenDbfKat;      // "KARSK.DBF": folder
  static const wchar_t* PostRitKat;      // "MIRSEN.RIT": drawing folder
  static const wchar_t* HarbelRitKat;    // "HARBEL.RIT": drawing folder
  static const wchar_t* HarbelDbfKat;    // "HARBEL.DBF": folder
  static const wchar_t* Pictures;        // "Pictures": folder of pictures
  static const wchar_t* TundrilZipNamn;  // "TUNDRIL.ZIP": project archive
  static const wchar_t* TundrilAvpNamn;  // "TUNDRIL.AVP": in the folder TundrilDbfKat
  static const wchar_t* TundrilVlNamn;   // "TUNDRIL.VL": area file, in the folder TundrilDbfKat
  static const wchar_t* TundrilParNamn;  // "TUNDRIL.PAR": parameters of the main program
  static const wchar_t* Jb23ParNamn;     // "JB23.PAR": parameters of JB2 and JB3 soundings
  static const wchar_t* Kodfil;          // "KODFIL.DAT": object codes
  static const wchar_t* Miljkod;         // "MILJKOD.DAT": environmental codes
  static const wchar_t* Linkod;          // "LINKOD.PAR": line codes
  static const wchar_t* Gvrref;          // "Gvrref.dat": reference data
  static const wchar_t* TundrilCfgNamn;  // "TUNDRIL.CFG": configuration of the main program
  static const wchar_t* RamvalNamn;      // "RAMVAL.DAT": data
  static const wchar_t* StenVlNamn;      // "KARSK.VL": area file of the rock and stone program
  static const wchar_t* StenParNamn;     // "KARSK.PAR": parameters of the rock and stone program

  CProjPath() = default;  // every field is empty
  virtual ~CProjPath();   // deletes nothing on the disk
  // A copy has its own fields. @{
  CProjPath(const CProjPath&) = default;
  CProjPath& operator=(const CProjPath&) = default;
  // @}

  // Sets every field from a project folder given without its trailing backslash. Required: the path is not
  // normalised; one that ends in "\\" gives doubled separators, an empty one paths that begin with "\\".
  // Always 0. @{
  int SetPath(const wchar_t* path);
  int SetPath(const CString& path) { return SetPath(path.GetString()); }
  // @}

  // Creates a project's folders. Returns 1; 0 when something cannot be created, the user answers no or a
  // database exists. Folders created until then remain. A flag is set when it is not 0.
  //
  //   createProject   create the project folder and its missing parents; process the folder list
  //   showMessages    ask before an existing folder is used; show why a folder was not created or that a
  //                   database exists (failures above the programs' folders are always shown)
  //   withTundril     TundrilDbfKat, TundrilRitKat, StackKat; with createProject a folder that contains
  //                   TundrilDbsNamn is refused
  //   withMirsen      PostDbfKat, StabRitKat, PostRitKat
  //   withKarsk       StenDbfKat, StenRitKat, StackKat
  //   withHarbel      HarbelDbfKat, HarbelRitKat, and in the first a new file "Harbel.krd" with "***"
  //   withFolderList  process the folder list also without createProject
  //
  // The folder list is a text file with one folder of the project per line; missing levels are created. The
  // key MAPPAR of the ini file's section ARKIV names it; without an ini file, the key or the file there is no
  // list. Links in the project are followed. A line that leads out of the project (with "..", a drive or a
  // device name) is reported and skipped; from the 65th on such lines are only counted. @{
  int CreateProjectStructure(const wchar_t* path, CTundrilIni* ini, int createProject, int showMessages,
                             int withTundril, int withMirsen, int withKarsk, int withHarbel,
                             int withFolderList);
  int CreateProjectStructure(const CString& path, CTundrilIni* ini, int createProject, int showMessages,
                             int withTundril, int withMirsen, int withKarsk, int withHarbel,
                             int withFolderList) {
    return CreateProjectStructure(path.GetString(), ini, createProject, showMessages, withTundril, withMirsen,
                                  withKarsk, withHarbel, withFolderList);
  }
  // @}
  // The same with the current user's ini file, which is set up when needed. @{
  int CreateProjectStructure(const wchar_t* path, int createProject, int showMessages, int withTundril,
                             int withMirsen, int withKarsk, int withHarbel, int withFolderList);
  int CreateProjectStructure(const CString& path, int createProject, int showMessages, int withTundril,
                             int withMirsen, int withKarsk, int withHarbel, int withFolderList) {
    return CreateProjectStructure(path.GetString(), createProject, showMessages, withTundril, withMirsen,
                                  withKarsk, withHarbel, withFolderList);
  }
  // @}

  CString m_ProjKat;        // the project folder as it was given
  CString m_ZipPath;        // TundrilZipNamn in it; the others likewise but where stated
  CString m_DbsPath;        // TundrilDbsNamn
  CString m_HarbelDbsPath;  // HarbelDbsNamn
  CString m_TerrDbsPath;    // TerrDbsNamn
  CString m_StenDbsPath;    // StenDbsNamn
  CString m_DbfKat;         // TundrilDbfKat
  CString m_RitKat;         // TundrilRitKat
  CString m_StackKat;       // StackKat
  CString m_PostDbfKat;     // PostDbfKat
  CString m_PostRitKat;     // PostRitKat
  CString m_StabRitKat;     // StabRitKat
  CString m_UtvDbsPath;     // UtvDbsNamn
  CString m_AvpPath;        // TundrilAvpNamn in m_DbfKat
  CString m_VlPath;         // TundrilVlNamn in m_DbfKat: the area file
  CString m_ParPath;        // TundrilParNamn
  CString m_StenParPath;    // StenParNamn
  CString m_PicturesKat;    // Pictures

 private:
  int CreateFolder(const CString& path, int showMessages);
};

}  // namespace velmora

#endif  // VELMORA_PROJECT_PROJ_PATH_H_
