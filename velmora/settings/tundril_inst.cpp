#include "velmora/settings/tundril_inst.h"

#include "velmora/project/proj_path.h"
#include "velmora/settings/code_lines.h"
#include "velmora/settings/code_stream.h"
#include "velmora/settings/jb23_par.h"
#include "velmora/settings/parameter_files.h"
#include "velmora/settings/tundril_par.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

constexpr int kNoNumber = -9;
constexpr int kAutomatic = -1;
constexpr wchar_t kAutomaticText[] = L"MAX";
constexpr int kKarskFile = 1;  // of CTundrilPAR

enum class File { kTundril, kKarsk, kJb23, kOther };

File FileNamed(const wchar_t* name) {
  const CString file = name;
  if (file.CompareNoCase(CProjPath::TundrilParNamn) == 0) return File::kTundril;
  if (file.CompareNoCase(CProjPath::Jb23ParNamn) == 0) return File::kJb23;
  if (file.CompareNoCase(CProjPath::StenParNamn) == 0) return File::kKarsk;
  return File::kOther;
}

}  // namespace

CTundrilInst::CTundrilInst() = default;
CTundrilInst::CTundrilInst(const CTundrilInst&) = default;
CTundrilInst& CTundrilInst::operator=(const CTundrilInst&) = default;
CTundrilInst::~CTundrilInst() = default;

int CTundrilInst::Init(CTundrilIni* ini, CProjPath* proj) {
  ini_ = ini;
  project_ = proj;
  parameters_ = nullptr;
  jb23_parameters_ = nullptr;
  return 0;
}

bool CTundrilInst::IsCodeFileOpen() const { return m_pCodeFile != nullptr && m_pCodeFile->IsOpen(); }

bool CTundrilInst::NextCodeLine(CString* line) {
  if (m_pCodeFile->ReadEntryLine(line)) return true;
  EndCodeFile();
  return false;
}

void CTundrilInst::EndCodeFile() {
  if (m_pCodeFile != nullptr) m_pCodeFile->Close();
  m_pCodeFile = nullptr;
}

void CTundrilInst::FinishCodeFile(const wchar_t* last) {
  m_pCodeFile->Write(last);
  m_pCodeFile->Finish();
  m_pCodeFile = nullptr;
}

CTundrilPAR& CTundrilInst::Parameters() {
  if (parameters_ == nullptr) parameters_ = std::make_shared<CTundrilPAR>(ini_, project_);
  return *parameters_;
}

CJb23Par& CTundrilInst::Jb23Parameters() {
  if (jb23_parameters_ == nullptr) jb23_parameters_ = std::make_shared<CJb23Par>(ini_, project_);
  return *jb23_parameters_;
}

CString CTundrilInst::ReadKey(const wchar_t* file, const CString& key) {
  CString value;
  switch (FileNamed(file)) {
    case File::kTundril:
      value = Parameters().ReadKey(key);
      break;
    case File::kKarsk:
      value = CTundrilPAR(ini_, project_, kKarskFile).ReadKey(key);
      break;
    case File::kJb23:
      value = Jb23Parameters().ReadKey(key);
      break;
    case File::kOther:
      return {};
  }
  return value.IsEmpty() ? Default(file, key) : value;
}

int CTundrilInst::ReadKeyInt(const wchar_t* file, const wchar_t* key, int onlyDefault) {
  const CString text = onlyDefault != 0 ? Default(file, key) : ReadKey(file, key);
  if (text.CompareNoCase(kAutomaticText) == 0) return kAutomatic;
  int value = kNoNumber;
  return NumberScanner(text.GetView()).Next(&value) ? value : kNoNumber;
}

double CTundrilInst::ReadKeyDouble(const wchar_t* file, const wchar_t* key, int onlyDefault) {
  const CString text = onlyDefault != 0 ? Default(file, key) : ReadKey(file, key);
  return ParseNumber(text.GetView()).value_or(kNoNumber);
}

CString CTundrilInst::Default(const wchar_t* file, const CString& key) {
  return DefaultValue(ParameterFileNamed(file).defaults, key.GetView());
}

int CTundrilInst::WriteKey(const wchar_t* file, const CString& key, const CString& value) {
  switch (FileNamed(file)) {
    case File::kTundril:
      return Parameters().WriteKey(key, value);
    case File::kKarsk:
      return CTundrilPAR(ini_, project_, kKarskFile).WriteKey(key, value);
    case File::kJb23: {
      CJb23Par& jb23 = Jb23Parameters();
      const bool known = jb23.FindKey(key) == 0;
      if (known && jb23.ReadKey(key) == value) return 0;
      const int result = known ? jb23.WriteKey(key, value) : -1;
      Jb23WriteKey(key, value);
      return result;
    }
    case File::kOther:
      break;
  }
  return 0;
}

int CTundrilInst::WriteKey(const wchar_t* file, const CString& key, int value) {
  CString text = kAutomaticText;
  if (value != kAutomatic || key.Find(L"SKALA") < 0) text.Format(L"%d", value);
  return WriteKey(file, key, text);
}

int CTundrilInst::WriteKey(const wchar_t* file, const CString& key, double value, int decimals) {
  CString text;
  text.Format(L"%.*lf", decimals, value);
  return WriteKey(file, key, text);
}

}  // namespace velmora
