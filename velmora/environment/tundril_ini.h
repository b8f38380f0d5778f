// The installation environment: the suite's program folder, its ini file, the user's folder and the external
// programs. Every settings class keeps a pointer to this object, so it must outlive them.
//
//   CTundrilIni ini;
//   if (ini.InitXPWay(0, L"sv", nullptr) < 0) ini.Init();
//   CString viewer = ini.ReadKey(L"SYSTEM", L"DOCEXE");
//
// Velmora.ini is a private profile (platform/profile.h); system_keys.cpp lists the keys that are read from
// its section SYSTEM. Not thread-safe.
#ifndef VELMORA_ENVIRONMENT_TUNDRIL_INI_H_
#define VELMORA_ENVIRONMENT_TUNDRIL_INI_H_

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

// Read it once with Init or InitXPWay; the fields are then the caller's to use and to change.
class VELMORA_API CTundrilIni {
 public:
  CTundrilIni();           // the defaults that the fields show, and today's date
  virtual ~CTundrilIni();  // frees nothing but the object's own texts
  // A copy has its own fields. @{
  CTundrilIni(const CTundrilIni&) = default;
  CTundrilIni& operator=(const CTundrilIni&) = default;
  // @}

  // Takes the program folder from the environment variable TUNDRIL (`mode` other than 0) or from the
  // process's command line (0), and the keys from the Velmora.ini there, else from the one that the
  // system finds by its bare name. Always 0: a missing file leaves the fields as they are.
  //
  // With 0 the program folder is written back over the command line, and the ini file becomes the
  // profile of the application object; a process without one then reads no keys.
  int Init(int mode);
  int Init() { return Init(0); }  // from the command line

  // A value of the ini file (or, as m_useIniFile says, of the application's profile). Empty when the key is
  // missing; at most 254 characters.
  CString ReadKey(const CString& section, const CString& key) const;
  // The same into `value`, which has room for 255 characters. 1, or 0 when the value is empty.
  int ReadKey(const wchar_t* section, const wchar_t* key, wchar_t* value) const;
  // Writes a value there. An empty value deletes the key. 1, or 0 when it could not be written.
  int WriteKey(const CString& section, const CString& key, const CString& value) const;

  // The name of the installed package; empty when the program is not known to be installed.
  wchar_t* InstallPackage() { return m_package; }

  // The set-up of an installed suite. `sub` names the installation's sub-key and the user's sub-folder.
  //   mode 20   the program folder is that of the first registered installation
  //   mode 0    the program folder is `dir`, or without it (null) that of the command line
  //   mode 1    as 0, but the parent of the command line's folder
  // A program that mode 0 or 1 finds registered is set up as in mode 20, except that m_useIniFile stays
  // 0. The ini file is that of the current user; in mode 0 and 1 without a registered program the one
  // that an earlier call of the process composed. Data that a user has only under the maker's former
  // name are copied to the present one first.
  //
  // 0 when the ini file was found and read. Otherwise
  //   -1      another mode, or no installation is registered (mode 20)
  //   -2      no ini file; shown to the user
  //   -4, -6  the user's folders could not be made; shown
  //   -2020   no ini file, in mode 0 for a program that is not registered
  int InitXPWay(int mode, const wchar_t* sub, const wchar_t* dir);

  // Updates the user's copies of the shared files and the platform's binaries, as planned by
  // PlanUserFileCheck (user_data.h). Shows nothing. Always -1.
  int AllUserFileCheck();

  // Copies a user's older settings: the files *.PAR, *.KAL, *.CFG, *.DAT, *.XML and *.SDF of `folder` that
  // do not exist in the user folder. An empty `folder` is set to the user's folder under the maker's former
  // name. Returns how many files were copied, -1 when one of the folders is missing.
  int User2Cfg(CString& folder);

  // The fields in the order that programs built against this class rely on.
  int m_useIniFile = 0;                   // 1: m_iniPath; 0: the application's profile
  CString m_iniPath;                      // full path of Velmora.ini
  CString m_today;                        // the date of construction, "2026-07-09"
  CString m_programDir = L"C:\\Tundril";  // the program folder
  CString m_cfgDir = L"C:\\Tundril";      // folder of TUNDRIL.CFG
  CString m_msgPath;                      // message file of the programs
  CString m_acadExe;                      // AutoCAD's program
  CString m_civilDrawingExe;              // the Civil drawing program
  int m_civilDrawingVer = 24;             // its version
  int m_reserved = 0;                     // not used
  CString m_acadLtExe;                    // AutoCAD LT's program
  CString m_acadOpt;                      // AutoCAD's start options
  int m_acadVer = 24;                     // its version
  CString m_scriptPath;                   // folder of scripts, without a backslash at the end
  CString m_mstationExe;                  // MicroStation's program
  CString m_zipExe;                       // program that packs archives
  CString m_unzipExe;                     // program that unpacks them
  CString m_docExe;                       // document viewer
  int m_autoGen = 0;                      // 1: automatic generation (AUTOGEN is JA)
  int m_postCadMstation = 0;              // 1: post-processing draws with MicroStation
  int m_bankCadMstation = 0;              // 1: so do the bank drawings
  wchar_t m_package[64] = {};    // name of the installed package; by InitXPWay only, as the following two
  CString m_cadPlatform;         // value of CADPLATFORM
  int m_quorvalDrawingVer = 24;  // value of QUORVALDRAWINGVER
};

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_TUNDRIL_INI_H_
