#include "cli/link/script.h"

#include "cli/link/link_text.h"
#include "cli/terminal/error.h"
#include "velmora/platform/dde_text.h"
#include "velmora/platform/text_file.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

using Kind = ScriptStep::Kind;

constexpr int kLongestWait = 3'600'000;  // ms

constexpr struct {
  std::wstring_view word;
  Kind kind;
} kWords[] = {{L"greet", Kind::kGreet}, {L"send", Kind::kSend}, {L"wait", Kind::kWait}, {L"end", Kind::kEnd}};

// Nothing for a comment or an empty line; throws a Refusal with the reason only.
std::optional<ScriptStep> ParseStep(std::wstring_view line) {
  line = TrimBlanks(line);
  if (line.empty() || line.front() == L'#') return std::nullopt;
  const std::wstring_view word = line.substr(0, line.find_first_of(L" \t"));
  const std::wstring_view rest = TrimBlanks(line.substr(word.size()));
  for (const auto& known : kWords) {
    if (known.word != word) continue;
    ScriptStep step{known.kind, Utf8FromWide(rest)};
    if ((step.kind == Kind::kEnd) != rest.empty())
      throw Refusal(Quoted(Utf8FromWide(word)) + (rest.empty() ? " needs a value" : " takes no value"));
    NumberScanner scanner(rest);
    const bool is_number = scanner.Next(&step.wait_ms) && TrimBlanks(scanner.Rest()).empty();
    if (step.kind == Kind::kWait && (!is_number || step.wait_ms < 0 || step.wait_ms > kLongestWait))
      throw Refusal("\"wait\" takes a number of milliseconds, at most " + std::to_string(kLongestWait));
    return step;
  }
  throw Refusal(Quoted(Utf8FromWide(word)) + " is not a step; the steps are greet, send, wait and end");
}

}  // namespace

std::vector<ScriptStep> ReadScript(const std::string& file) {
  constexpr size_t kMostSteps = 100'000;
  TextReader reader;
  if (file == "-" ? !reader.OpenStandardInput(TextReader::Guess::kUtf8First)
                  : !reader.Open(PathFromSystem(file), TextReader::Guess::kUtf8First))
    RefuseUnopened(file);
  std::vector<ScriptStep> steps;
  CString line;
  std::int64_t number = 0;
  try {
    while (reader.ReadLine(&line)) {
      ++number;
      const std::optional<ScriptStep> step = ParseStep(line.GetView());
      if (!step) continue;
      // A client reads at most kLongestText of it; scripts may exceed that on purpose.
      EncodeLinkText(step->text, "the text", kLongestScripted);
      if (steps.size() == kMostSteps) throw Refusal("more than " + std::to_string(kMostSteps) + " steps");
      steps.push_back(*step);
    }
    if (reader.Failed()) throw Refusal("read error");
  } catch (const Refusal& refusal) {
    throw Refusal(At(file, number, refusal.what()));
  }
  return steps;
}

void ScriptPlayer::Advise(const std::string& item) {
  item_ = item;
  greeted_ = false;
}

void ScriptPlayer::Unadvise(const std::string& item) {
  if (DdeItemKey(item_) == DdeItemKey(item)) item_.clear();
}

const ScriptStep* ScriptPlayer::Next(Time now) {
  while (!item_.empty() && !greeted_ && at_ < steps_->size()) {
    const ScriptStep& step = (*steps_)[at_];
    if (step.kind == Kind::kWait) {
      if (!pause_end_) pause_end_ = now + std::chrono::milliseconds(step.wait_ms);
      if (now < *pause_end_) return nullptr;
      pause_end_.reset();
    }
    ++at_;
    if (step.kind == Kind::kWait) continue;
    greeted_ = step.kind == Kind::kGreet;
    return &step;
  }
  return nullptr;
}

}  // namespace velmora::cli
