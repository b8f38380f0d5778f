// The settings of an installation and the project open in it: parameter files with their built-in
// defaults, a project's own copies of them, and the code files.
//
//   CTundrilInst settings;
//   settings.Init(&ini, &project);
//   double height = settings.ReadKeyDouble(L"TUNDRIL.PAR", L"IDHOJD", 0);
//   settings.WriteKey(L"TUNDRIL.PAR", L"HSKALA", 200);
//
// A file is named without its folder. It is the project's own copy when there is one, else the one beside
// TUNDRIL.CFG, else the one in the program folder; each hides the following ones entirely.
//
// The code files are read and written an entry a call, on one open stream: the first call of a sequence
// opens it, the last closes it. Only one sequence runs at a time; a read that was left before its end
// goes on with the next read, whatever file that asks for. A rewrite changes the file when it is
// finished; one that is not finished, or meets a letter that the file cannot hold, leaves it as it was.
//
// Messages are those of a file that cannot be opened. For one thread at a time. Every text is taken from a
// const wchar_t* and from a CString alike.
#ifndef VELMORA_SETTINGS_TUNDRIL_INST_H_
#define VELMORA_SETTINGS_TUNDRIL_INST_H_

#include <memory>

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

class CJb23Par;
class CProjPath;
class CTundrilIni;
class CTundrilPAR;
class CodeStream;

class VELMORA_API CTundrilInst {
 public:
  CTundrilInst();  // without installation and project
  // A copy shares the files read so far and the open stream. @{
  CTundrilInst(const CTundrilInst&);
  CTundrilInst& operator=(const CTundrilInst&);
  // @}
  virtual ~CTundrilInst();

  // Both must live as long as the object; either may be null. Parameter files read before are forgotten.
  // Always 0.
  int Init(CTundrilIni* ini, CProjPath* proj);

  // What Init was given: the installation alone, and both. Either output may be null. @{
  CTundrilIni* TiniPtr() const { return ini_; }
  void GetTiniProjPath(CTundrilIni** ini, CProjPath** proj) const {
    if (ini != nullptr) *ini = ini_;
    if (proj != nullptr) *proj = project_;
  }
  // @}

  // Parameters. `file` is TUNDRIL.PAR, KARSK.PAR or JB23.PAR, letters without regard to case. TUNDRIL.PAR
  // and JB23.PAR are read once, at their first use after Init; KARSK.PAR at every use.

  // The value; the built-in default where the file has none. Empty for another file.
  CString ReadKey(const wchar_t* file, const CString& key);
  // The value's number, -1 for "MAX" (the largest scale that fits), -9 where there is none. With
  // `onlyDefault` other than 0 that of the built-in default. @{
  int ReadKeyInt(const wchar_t* file, const wchar_t* key, int onlyDefault);
  double ReadKeyDouble(const wchar_t* file, const wchar_t* key, int onlyDefault);
  // @}
  // The built-in default; empty when there is none.
  CString Default(const wchar_t* file, const CString& key);

  // Writes the file where it was found, if the value is another one. Results as CTundrilPAR::WriteKey; 0
  // for another file. JB23.PAR gets no new keys: -1, and callers rely on the file being written all the
  // same (tests/settings/file_cases.txt).
  int WriteKey(const wchar_t* file, const CString& key, const CString& value);
  // The same with a whole number; -1 is written as "MAX" for a key with "SKALA" in it.
  int WriteKey(const wchar_t* file, const CString& key, int value);
  // The same with a number of so many decimals.
  int WriteKey(const wchar_t* file, const CString& key, double value, int decimals);

  // JB23.PAR on disk, without the built-in defaults: the scale or the step of one quantity
  // (jb23_format.h). Empty when the file or the line is missing.
  CString Jb23ReadKey(const CString& key);
  // Writes one of them; the line's other value stays. A line that the file lacks is written after its
  // last one, whatever its number, with "0" for the other value. Without a file, SJUNKSKALA (or an unknown
  // key) makes one beside TUNDRIL.CFG; other keys make none. Returns `value`.
  CString Jb23WriteKey(const CString& key, const CString& value);

  // A project's own copies of the settings files. Nothing is shown; what cannot be copied, made or
  // deleted is skipped.

  // Copies LINKOD.PAR, KODFIL.DAT, Stenkod.dat, StenkodN.dat, JB23.PAR and MILJKOD.DAT of the
  // installation into the project, with `withPar` other than 0 TUNDRIL.PAR before them. With `overwrite`
  // other than 0 LINKOD.PAR, KODFIL.DAT, JB23.PAR and MILJKOD.DAT replace the project's; the others never
  // do. Of what the installation lacks, a file with a line "*" or more is made, except for the Stenkod
  // files. Always 0.
  int CreateLokalaFiler(int overwrite, int withPar);
  // The same for KARSK.PAR, which never replaces the project's. Always 0.
  int CreateLokalStenFil(int overwrite);
  // Deletes what CreateLokalaFiler makes, TUNDRIL.PAR too. Always 0.
  int RemoveLokalaFiler();
  // Deletes the project's KARSK.PAR. Always 0.
  int RemoveLokalStenFil();
  // 1 when the project has its own TUNDRIL.PAR; the other files it then lacks are made. Else 0.
  int ProjInst();
  // 1 when the project has its own KARSK.PAR, else 0.
  int ProjStenInst();
  // Makes the C library read and write numbers with ".". 0; -1 when it does not.
  static int LocaleCheckAndFix();

  // KODFIL.DAT. The next entry: 0; -1 when there is no further one, no file or it cannot be opened. A word
  // longer than its buffer is cut to fit; sizes count characters. @{
  int KodfilDatRead(wchar_t* code, int codeSize, wchar_t* text, int textSize);
  template <int kCode, int kText>
  int KodfilDatRead(wchar_t (&code)[kCode], wchar_t (&text)[kText]) {
    return KodfilDatRead(code, kCode, text, kText);
  }
  // @}
  // Replaces the entries of the file: mode 1 begins and writes the first one, 0 writes a further one, 2
  // writes the last one and finishes, 3 does all of it. An empty code writes no entry. The header of the
  // old file, through its line "*", is kept. Always 0.
  int KodfilDatWrite(int mode, const wchar_t* code, const wchar_t* text);

  // MILJKOD.DAT (code_lines.h). The next entry of a section: 0; -1 when there is no further one, no
  // file or it cannot be opened. With `max` and `steg` both given, what a class's text says about them is
  // moved from it into them. A name of more than four characters is reported in a message box and its
  // line skipped. @{
  int MiljkodRead(int section, wchar_t* name, int nameSize, wchar_t* text, int textSize, int* max, int* steg);
  template <int kName, int kText>
  int MiljkodRead(int section, wchar_t (&name)[kName], wchar_t (&text)[kText], int* max, int* steg) {
    return MiljkodRead(section, name, kName, text, kText, max, steg);
  }
  // @}
  // Rewrites the file that is there: mode 1 begins; 2 and 4 write an entry of section 1 and 2, 6 one of
  // section 3; 3 and 5 end section 1 and 2, 7 section 3 and the file. 0; -1 when nothing was begun.
  int MiljKodWrite(int mode, const wchar_t* name, const wchar_t* text, int max, int steg);
  // Adds the missing ones of the codes that every program relies on. A file that has them is left
  // alone; in the rewrite the header, section 0 and sections beyond 3 are lost. A file with an entry whose
  // code begins with "*", which would be lost too, is reported as one that cannot be written. Always 0.
  int MiljkodUppdatX();

  // LINKOD.PAR. The next line:
  //   1   an ordinary code
  //   2   a code "PV" with a number up to 99, delivered without "PV"
  //   3   a code "PV" with a number from 100, likewise
  //   -2  a line of fewer than three fields, nothing delivered
  //   0   the end, or no file
  //   -1  the file cannot be opened @{
  int LinkodRead(wchar_t* code, int codeSize, wchar_t* word, int wordSize, wchar_t* text, int textSize,
                 double* number, int* value);
  template <int kCode, int kWord, int kText>
  int LinkodRead(wchar_t (&code)[kCode], wchar_t (&word)[kWord], wchar_t (&text)[kText], double* number,
                 int* value) {
    return LinkodRead(code, kCode, word, kWord, text, kText, number, value);
  }
  // @}
  // Rewrites the file that is there: mode 1 begins, 2 writes an ordinary code, 4 one with "PV" before it,
  // 5 finishes. Numbers are given as text. 0; -1 when nothing was begun.
  int LinkodWrite(int mode, const wchar_t* code, const wchar_t* word, const wchar_t* number,
                  const wchar_t* text, const wchar_t* value);

  // A title-block file, named by its path; the first call of a sequence opens it. The next line: 1; -2 for
  // a line of fewer than four fields; 0 at the end, and without a path; -1 when the file cannot be opened. @{
  int StampParRead(const wchar_t* path, wchar_t* name, int nameSize, wchar_t* word, int wordSize,
                   double* first, double* second, double* third);
  template <int kName, int kWord>
  int StampParRead(const wchar_t* path, wchar_t (&name)[kName], wchar_t (&word)[kWord], double* first,
                   double* second, double* third) {
    return StampParRead(path, name, kName, word, kWord, first, second, third);
  }
  // @}
  // Mode 1 begins the file, 2 writes a line, 3 finishes. 0; -1 when nothing was begun.
  int StampParWrite(const wchar_t* path, int mode, const wchar_t* name, const wchar_t* word,
                    const wchar_t* first, const wchar_t* second, const wchar_t* third);

 private:
  bool IsCodeFileOpen() const;
  // The next line of the sequence; false, with the sequence ended, at the end or a line that begins with "*".
  bool NextCodeLine(CString* line);
  // Ends the sequence, after `last` for a rewrite that takes effect now.
  void EndCodeFile();
  void FinishCodeFile(const wchar_t* last);

  CTundrilPAR& Parameters();
  CJb23Par& Jb23Parameters();

  CTundrilIni* ini_ = nullptr;
  CProjPath* project_ = nullptr;
  std::shared_ptr<CodeStream> m_pCodeFile;  // open between the calls of a sequence
  std::shared_ptr<CTundrilPAR> parameters_;
  std::shared_ptr<CJb23Par> jb23_parameters_;
};

}  // namespace velmora

#endif  // VELMORA_SETTINGS_TUNDRIL_INST_H_
