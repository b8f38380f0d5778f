// A project and an installation with their three folders, for tests of the settings.
#ifndef VELMORA_TESTS_SETTINGS_SETTINGS_FOLDERS_H_
#define VELMORA_TESTS_SETTINGS_SETTINGS_FOLDERS_H_

#include <gtest/gtest.h>

#include "tests/support/recorded_messages.h"
#include "tests/support/test_files.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora {

class SettingsFolders : public ::testing::Test {
 protected:
  SettingsFolders() {
    for (const wchar_t* name : {L"proj", L"cfg", L"prog"}) MakeFolder(folder_.File(name));
    ini_.m_cfgDir = folder_.File(L"cfg");
    ini_.m_programDir = folder_.File(L"prog");
    project_.SetPath(folder_.File(L"proj"));
    inst_.Init(&ini_, &project_);
  }

  CString At(const wchar_t* path) const { return folder_.File(path); }
  CString Put(const wchar_t* path, std::string_view bytes) const {
    WriteBytes(At(path), bytes);
    return At(path);
  }
  std::string Bytes(const wchar_t* path) const { return ReadBytes(At(path)); }

  // The boxes so far, "caption|text", and none left. The test's folder is shown as "@".
  std::vector<CString> TakeMessages() {
    std::vector<CString> shown;
    for (const MessageBoxCall& box : messages_.boxes) {
      CString text = box.caption + L"|" + box.text;
      for (int at = text.Find(folder_.Path()); at >= 0; at = text.Find(folder_.Path()))
        text = text.Left(at) + L"@" + text.Mid(at + folder_.Path().GetLength());
      shown.push_back(text);
    }
    messages_.boxes.clear();
    return shown;
  }

  TemporaryFolder folder_;
  RecordedMessages messages_;
  CTundrilIni ini_;
  CProjPath project_;
  CTundrilInst inst_;
};

}  // namespace velmora

#endif  // VELMORA_TESTS_SETTINGS_SETTINGS_FOLDERS_H_
