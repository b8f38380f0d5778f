#include "cli/help/completion.h"

#include <algorithm>

#include "cli/help/known_words.h"
#include "cli/help/topics.h"
#include "cli/terminal/completes.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"

namespace velmora::cli {
namespace {

std::vector<std::string> JoinedAtEquals(const std::vector<std::string>& line) {
  std::vector<std::string> joined;
  bool open = false;  // the last word ends in "="
  for (const std::string& word : line) {
    const bool equals = word == "=" && !joined.empty();
    if (open || equals)
      joined.back() += word;
    else
      joined.push_back(word);
    open = equals;
  }
  return joined;
}

class Completer {
 public:
  Completer(const VerbText& command, const std::vector<std::string>& line)
      : command_(command), at_(&command), line_(JoinedAtEquals(line)) {
    if (line_.empty()) line_.emplace_back();
  }

  Completion Find() {
    const std::string current = line_.back();
    line_.pop_back();
    for (const std::string& word : line_) Pass(word);
    if (lost_) return {};
    const size_t equals = current.find('=');
    if (pending_ != nullptr && !(pending_->repeats && current.starts_with("-"))) {
      AddValues(*pending_, current, "");
    } else if (current.starts_with("--") && equals != std::string::npos && !only_positionals_) {
      if (const OptionText* option = OptionNamed(current.substr(0, equals)))
        AddValues(*option, current.substr(equals + 1), current.substr(0, equals + 1));
    } else if (current.starts_with("-") && !only_positionals_) {
      AddOptions();
    } else {
      AddVerbsAndPositional(current);
    }
    std::erase_if(found_.words, [&](const Completion::Word& word) {
      return !EqualNoCase(WideFromUtf8(word.text.substr(0, current.size())), WideFromUtf8(current));
    });
    return std::move(found_);
  }

 private:
  // A word before the cursor.
  void Pass(const std::string& word) {
    const bool option_like = word.starts_with("-") && word.size() > 1 && !only_positionals_;
    if (pending_ != nullptr && !(pending_->repeats && option_like)) {
      values_.push_back({pending_, word});
      if (!pending_->repeats) pending_ = nullptr;
      return;
    }
    pending_ = nullptr;
    if (word == "--") {
      only_positionals_ = true;
    } else if (option_like) {
      const size_t equals = word.find('=');
      const OptionText* option = OptionNamed(word.substr(0, equals));
      if (option == nullptr) return;
      if (equals != std::string::npos)
        values_.push_back({option, word.substr(equals + 1)});
      else if (!option->value.empty())
        pending_ = option;
      used_.push_back(option);
    } else if (const VerbText* verb = VerbNamed(word)) {
      at_ = verb;
      positional_ = 0;
    } else {
      if (const OptionText* const next = NextPositional()) values_.push_back({next, word});
      const bool takes_any = std::any_of(at_->options.begin(), at_->options.end(),
                                         [](const OptionText& option) { return option.positional; });
      lost_ = lost_ || !takes_any;
      ++positional_;
    }
  }

  const VerbText* VerbNamed(const std::string& name) const {
    for (const VerbText& verb : at_->verbs)
      if (verb.name == name) return &verb;
    return nullptr;
  }

  // Options of the command itself may follow the verb.
  const OptionText* OptionNamed(const std::string& name) const {
    for (const VerbText* verb : {at_, &command_})
      for (const OptionText& option : verb->options)
        if (!option.positional &&
            std::find(option.names.begin(), option.names.end(), name) != option.names.end())
          return &option;
    return nullptr;
  }

  void AddOptions() {
    for (const VerbText* verb : {at_, &command_}) {
      for (const OptionText& option : verb->options) {
        const bool used = std::find(used_.begin(), used_.end(), &option) != used_.end();
        const bool of_command_alone = option.names.back() == "--help" || option.names.back() == "--version";
        if (option.positional || used || IsExcluded(option) || (verb != at_ && of_command_alone)) continue;
        for (const std::string& name : option.names)
          if (name.size() > 2 || option.names.size() == 1) found_.words.push_back({name, option.help});
      }
      if (at_ == &command_) return;
    }
  }

  // By an option before the cursor.
  bool IsExcluded(const OptionText& option) const {
    return std::any_of(used_.begin(), used_.end(), [&](const OptionText* used) {
      return std::find(used->excludes.begin(), used->excludes.end(), option.names.back()) !=
             used->excludes.end();
    });
  }

  void AddVerbsAndPositional(const std::string& current) {
    if (at_->call == "help") {
      AddHelped();
      return;
    }
    const OptionText* const next = NextPositional();
    if (next == nullptr || !next->required)
      for (const VerbText& verb : at_->verbs) found_.words.push_back({verb.name, verb.help});
    if (next != nullptr) AddValues(*next, current, "");
  }

  const OptionText* NextPositional() const {
    size_t left = positional_;
    for (const OptionText& option : at_->options)
      if (option.positional && (left-- == 0 || option.repeats)) return &option;
    return nullptr;
  }

  // The words after "help": those of a call without its values, or a topic.
  void AddHelped() {
    at_ = &command_;
    for (auto word = std::find(line_.begin(), line_.end(), "help") + 1; word < line_.end(); ++word)
      if (const VerbText* verb = VerbNamed(*word)) at_ = verb;
    for (const VerbText& verb : at_->verbs) found_.words.push_back({verb.name, verb.help});
    if (at_ == &command_)
      for (const std::string& topic : Topics()) found_.words.push_back({topic, TextFor(topic).front().text});
  }

  // `before` is what stands before the value in the same word.
  void AddValues(const OptionText& option, const std::string& current, const std::string& before) {
    const auto add = [&](const std::string& text) { found_.words.push_back({before + text, ""}); };
    const std::string& mark = option.completes;
    for (const std::string& value : option.values) add(value);
    if (option.value.find("=COLUMN") != std::string::npos) {
      const size_t comma = current.rfind(',');
      const std::string kept = comma == std::string::npos ? "" : current.substr(0, comma + 1);
      for (const std::string& each : CLI::detail::split(option.value, ','))
        add(kept + each.substr(0, each.find('=') + 1));
    }
    if (mark.starts_with(kCompletesFile)) found_.file_endings = mark.substr(sizeof kCompletesFile - 1);
    if (mark == kCompletesFolder) found_.folders = true;
    if (!mark.starts_with(kCompletesWord)) return;
    const std::string list = mark.substr(sizeof kCompletesWord - 1);
    for (const std::string& word : KnownWords(list, ValueOf(list == "ini keys" ? "SECTION" : "--file")))
      add(word);
  }

  std::string ValueOf(const std::string& name) const {
    for (const auto& [option, value] : values_)
      if (option->names.back() == name) return value;
    return {};
  }

  const VerbText& command_;
  const VerbText* at_;
  std::vector<std::string> line_;
  const OptionText* pending_ = nullptr;  // whose value comes next
  bool only_positionals_ = false;
  bool lost_ = false;  // behind a word that is not known
  size_t positional_ = 0;
  std::vector<const OptionText*> used_;
  std::vector<std::pair<const OptionText*, std::string>> values_;
  Completion found_;
};

}  // namespace

Completion Complete(const VerbText& command, std::vector<std::string> line) {
  return Completer(command, std::move(line)).Find();
}

std::string CompletionLines(const Completion& completion) {
  std::string lines;
  for (const Completion::Word& word : completion.words)
    lines += word.text + (word.help.empty() ? "" : "\t" + word.help) + "\n";
  if (completion.file_endings)
    lines += ":files" + (completion.file_endings->empty() ? "" : " " + *completion.file_endings) + "\n";
  if (completion.folders) lines += ":folders\n";
  return lines;
}

}  // namespace velmora::cli
