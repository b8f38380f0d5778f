// What the command writes itself.
#include <gtest/gtest.h>

#include "cli/align/commands.h"
#include "cli/env/commands.h"
#include "cli/output/output_file.h"
#include "cli/terminal/error.h"
#include "tests/reliability/operations.h"
#include "velmora/platform/files.h"

namespace velmora::testing {
namespace {

// "1", or what the refusal says behind the file's name.
template <class Command>
std::string Result(Command command) {
  try {
    command();
  } catch (const cli::Refusal& refusal) {
    const std::string text = refusal.what();
    const size_t colon = text.find(": ");
    return "0 " + (colon == std::string::npos ? text : text.substr(colon + 2));
  }
  return "1";
}

std::string WriteResult(Scene& s) {
  return Result([&] {
    cli::OutputFile file(PathForDisplay(s.At(L"OUT.CSV")), {});
    file.Write(std::string(100'000, 'r'));
    file.Finish();
  });
}

void PrepareInstallation(Scene& s) {
  s.RegisterDataFolders();
  s.Register(HKEY_LOCAL_MACHINE, kR20, L"InstallPath", s.At(L"to\\Program"));
  s.Register(HKEY_LOCAL_MACHINE, kR20, L"Package", L"Own");
  s.MakeIni(kUser, "\r\n[ARKIV]\r\nMAPPAR=own list.txt\r\n");
}

std::string InstallSample(Scene& s) {
  cli::EnvOptions options;
  options.to = PathForDisplay(s.At(L"to"));
  options.registered_data = true;
  ::testing::internal::CaptureStdout();
  const std::string result = Result([&] { cli::EnvInstall(options); });
  ::testing::internal::GetCapturedStdout();
  return result;
}

// A road out of its file and into another one.
std::string ExportAndImport(Scene& s) {
  const std::string road = PathForDisplay(s.At(L"ROAD.CSV"));
  cli::ExportOptions out;
  out.file = PathForDisplay(s.At(L"ROAD.VL"));
  out.to = road;
  cli::ImportCommand in;
  in.file = road;
  in.to = PathForDisplay(s.At(L"BACK.VL"));
  ::testing::internal::CaptureStdout();
  ::testing::internal::CaptureStderr();
  const std::string result = Result([&] {
    cli::AlignExport(out);
    cli::AlignImport(in);
  });
  ::testing::internal::GetCapturedStdout();
  ::testing::internal::GetCapturedStderr();
  return result;
}

}  // namespace

Operations CommandOperations() {
  return {{"WriteAResult",
           Holding(L"OUT.CSV", "old\n"),
           WriteResult,
           "1",
           {"0 cannot be written (no such folder, write-protected, or the disk is full); nothing was changed "
            "there"}},
          {"ExportAndImportARoad",
           Copying("road.vl", L"ROAD.VL"),
           ExportAndImport,
           "1",
           {"0 cannot be written (no such folder, write-protected, or the disk is full); nothing was changed "
            "there",
            "0 cannot be opened for reading; check its permissions", "0 cannot be read to its end"},
           true},
          {"InstallASample",
           PrepareInstallation,
           InstallSample,
           "1",
           {"0 the folder cannot be created; check permissions and disk space",
            "0 the file cannot be written; check permissions and disk space",
            "0 cannot be read; check permissions and disk space", "0 the disk is full",
            "0 the registry file cannot be used; check the path in VELMORA_REGISTRY and its permissions",
            "0 the registry cannot be written; check the path in VELMORA_REGISTRY and its permissions"},
           true,
           Registry::kInstallation}};
}

Operations AllOperations() {
  Operations operations;
  for (const auto some : {FileOperations, SettingsOperations, AlignmentOperations, EnvironmentOperations,
                          RegistryOperations, COperations, CommandOperations})
    for (Operation& operation : some()) operations.push_back(std::move(operation));
  return operations;
}

}  // namespace velmora::testing
