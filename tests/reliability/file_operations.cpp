// Files and folders as such, and private profiles.
#include "tests/reliability/operations.h"
#include "velmora/platform/files.h"
#include "velmora/platform/profile.h"
#include "velmora/platform/text_file.h"

namespace velmora::testing {
namespace {

std::string Flag(bool done) { return done ? "1" : "0"; }

void PrepareOld(Scene& s) {
  s.MakeFile(L"A.TXT", "old\r\n");
  s.MakeFile(L"B.TXT", std::string(150'000, 'b'));
}

void PrepareProfile(Scene& s) {
  s.MakeFile(L"cfg\\Velmora.ini",
             "; kept\r\n[SYSTEM]\r\nDOCEXE = old\r\nother line\r\n\r\n[ARKIV]\r\nMAPPAR=x\r\n");
}

std::string Write(FileReplacement* file) {
  return Flag(file->Write(std::string(70'000, 'n')) && file->Write("end") && file->Commit());
}

}  // namespace

void AddFileOperations(std::vector<Operation>* operations) {
  const auto add = [&](Operation operation) { operations->push_back(std::move(operation)); };
  add({.name = "ReplaceAFile", .covers = "ReplaceFileContent", .prepare = PrepareOld, .run = [](Scene& s) {
         return Flag(ReplaceFileContent(s.At(L"A.TXT"), std::string(150'000, 'n')));
       }});
  add({.name = "MakeAFile", .covers = "ReplaceFileContent", .prepare = PrepareOld, .run = [](Scene& s) {
         return Flag(ReplaceFileContent(s.At(L"NEW.TXT"), "new"));
       }});
  add({.name = "ReplaceThroughANamedFile",
       .covers =
           "FileReplacement::Begin FileReplacement::Write FileReplacement::Commit FileReplacement::Abandon",
       .prepare = PrepareOld,
       .run = [](Scene& s) {
         FileReplacement file;
         const bool begun = file.Begin(s.At(L"B.TXT"), s.At(L"B.tmp"));
         file.Abandon();
         return begun && file.Begin(s.At(L"A.TXT"), s.At(L"A.tmp")) ? Write(&file) : "0";
       }});
  add({.name = "WriteText",
       .covers = "TextWriter::Begin TextWriter::Write TextWriter::WriteAscii TextWriter::Commit",
       .prepare = [](Scene& s) { s.MakeFile(L"A.TXT", "\xEF\xBB\xBFold\r\n"); },
       .run =
           [](Scene& s) {
             TextWriter writer;
             if (!writer.Begin(s.At(L"A.TXT"))) return Flag(false);
             writer.Write(L"åäö\n");
             writer.WriteAscii(std::string(100'000, '1'));
             return Flag(writer.Commit());
           }});
  add({.name = "CopyOverAFile", .covers = "CopyWholeFile", .prepare = PrepareOld, .run = [](Scene& s) {
         return Flag(CopyWholeFile(s.At(L"B.TXT"), s.At(L"A.TXT"), false));
       }});
  add({.name = "CopyToAFreeName", .covers = "CopyWholeFile", .prepare = PrepareOld, .run = [](Scene& s) {
         return Flag(CopyWholeFile(s.At(L"B.TXT"), s.At(L"NEW.TXT"), true));
       }});
  add({.name = "RemoveAFile",
       .covers = "RemoveWholeFile",
       .prepare = PrepareOld,
       .run = [](Scene& s) { return Flag(RemoveWholeFile(s.At(L"A.TXT"))); },
       .forgets = true});
  add({.name = "RemoveAFolder",
       .covers = "RemoveEmptyFolder",
       .prepare = [](Scene& s) { s.MakeFolders(L"F"); },
       .run = [](Scene& s) { return Flag(RemoveEmptyFolder(s.At(L"F"))); },
       .forgets = true});
  add({.name = "MakeAFolder", .covers = "MakeFolder", .prepare = PrepareOld, .run = [](Scene& s) {
         return Flag(MakeFolder(s.At(L"F")));
       }});
  add({.name = "ChangeAProfile", .covers = "WriteProfile", .prepare = PrepareProfile, .run = [](Scene& s) {
         return Flag(WriteProfile(L"system", L"DocExe", L"new", s.ini.m_iniPath));
       }});
  add({.name = "ChangeAProfileWithAMark",
       .covers = "WriteProfile",
       .prepare = [](Scene& s) { s.MakeFile(L"A.INI", "\xEF\xBB\xBF[S]\r\nk=å\r\n"); },
       .run = [](Scene& s) { return Flag(WriteProfile(L"S", L"k", L"åäö", s.At(L"A.INI"))); }});
  add({.name = "MakeAProfile", .covers = "WriteProfile", .prepare = PrepareOld, .run = [](Scene& s) {
         return Flag(WriteProfile(L"S", L"k", L"v", s.At(L"NEW.INI")));
       }});
  add({.name = "DeleteAKeyOfTheIniFile",
       .covers = "CTundrilIni::WriteKey",
       .prepare = PrepareProfile,
       .run = [](Scene& s) { return std::to_string(s.ini.WriteKey(L"SYSTEM", L"DOCEXE", L"")); }});
}

}  // namespace velmora::testing
