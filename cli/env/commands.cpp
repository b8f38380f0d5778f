#include "cli/env/commands.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/output/options.h"
#include "cli/terminal/completes.h"
#include "cli/terminal/verb.h"

namespace velmora::cli {
namespace {

void AddSub(CLI::App* verb, const std::shared_ptr<EnvOptions>& options) {
  verb->add_option("--sub", options->sub, "Sub-key and sub-folder of the installation (default sv)")
      ->type_name("SV");
}

void AddRegistry(CLI::App* env) {
  CLI::App* registry =
      env->add_subcommand("registry", "The Windows registry, or its replacement on this system");
  registry->require_subcommand(1);
  const auto options = std::make_shared<EnvOptions>();
  constexpr char kKeyHelp[] = "Key, as HKLM\\SOFTWARE\\Name or HKCU\\Software\\Name";
  CLI::App* get = AddVerb(registry, "get", "Print a value", options, RegistryGet);
  get->add_option("KEY", options->key, kKeyHelp)->required();
  get->add_option("NAME", options->section, "Name of the value")->required();
  CLI::App* set = AddVerb(registry, "set", "Store a text; a missing key is created", options, RegistrySet);
  set->add_option("KEY", options->key, kKeyHelp)->required();
  set->add_option("NAME", options->section, "Name of the value")->required();
  set->add_option("VALUE", options->value, "Text")->required();
  CLI::App* remove =
      AddVerb(registry, "delete", "Delete a value, or a key without sub-keys", options, RegistryDelete);
  remove->add_option("KEY", options->key, kKeyHelp)->required();
  remove->add_option("NAME", options->section, "Name of the value; without it the key and its values")
      ->check([](const std::string& name) {
        return name.empty() ? std::string("is empty; leave it out to delete the key") : std::string();
      });
  remove->add_flag("--yes", options->yes, "Delete a key without asking");
  CLI::App* list = AddVerb(registry, "list", "The sub-keys and values of a key", options, RegistryList);
  list->add_option("KEY", options->key, kKeyHelp)->required();
  AddOutputOptions(list, &options->output);
}

}  // namespace

void AddEnvCommands(CLI::App* env) {
  env->require_subcommand(1);
  const auto options = std::make_shared<EnvOptions>();

  CLI::App* show =
      AddVerb(env, "show", "Every setting of the installation and where it comes from", options, EnvShow);
  AddSub(show, options);
  AddOutputOptions(show, &options->output);

  CLI::App* get = AddVerb(env, "get", "Print a key of Velmora.ini", options, EnvGet);
  CLI::App* set =
      AddVerb(env, "set", "Write a key of Velmora.ini; an empty value deletes it", options, EnvSet);
  for (CLI::App* verb : {get, set}) {
    verb->add_option("SECTION", options->section, "Section, as SYSTEM")
        ->required()
        ->check(CompletesWord("ini sections"));
    verb->add_option("KEY", options->key, "Key")->required()->check(CompletesWord("ini keys"));
    AddSub(verb, options);
  }
  set->add_option("VALUE", options->value, "Value")->required();

  CLI::App* setup =
      AddVerb(env, "setup", "Set up the current user and print each decision", options, EnvSetup);
  AddSub(setup, options);

  CLI::App* sync = AddVerb(env, "sync", "Update the user's copies of the shared files", options, EnvSync);
  AddSub(sync, options);
  sync->add_flag("--dry-run", options->dry_run, "Only print what would be copied");
  AddOutputOptions(sync, &options->output);

  CLI::App* install = AddVerb(env, "install", "Create a working sample installation", options, EnvInstall);
  install->add_option("--to", options->to, "Target folder; created when it is missing")
      ->required()
      ->type_name("DIR");
  install->add_flag("--registered-data", options->registered_data,
                    "Put the data into the folders that are registered for application data, outside DIR");
  AddSub(install, options);

  CLI::App* uninstall =
      AddVerb(env, "uninstall", "Remove a sample installation; files that were changed are kept", options,
              EnvUninstall);
  uninstall->add_option("--to", options->to, "The folder that env install was given")
      ->required()
      ->type_name("DIR");
  uninstall->add_flag("--yes", options->yes, "Remove without asking");
  AddSub(uninstall, options);

  AddRegistry(env);
}

}  // namespace velmora::cli
