#include "tools/tern/Command.hpp"

#include <cerrno>
#include <csignal>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>
#include <variant>

#include "TernCoreKit/answers/ErrorAnswer.hpp"
#include "tools/service/Exhaustion.hpp"
#include "tools/tern/Arguments.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/FaintIds.hpp"
#include "tools/tern/HelpText.hpp"
#include "tools/tern/JoinedVenues.hpp"
#include "tools/tern/LoadingLog.hpp"
#include "tools/tern/LoadingProgress.hpp"
#include "tools/tern/Look.hpp"
#include "tools/tern/PlaceNames.hpp"
#include "tools/tern/VenueSource.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

class Run {
 public:
  Run(const Streams& streams, std::span<const service::PageFile> page, bool json)
      : streams_(streams),
        answers_(streams.answers),
        console_{streams.requests, answers_, page},
        json_(json) {}

  ExitStatus run(const std::vector<std::string>& words) {
    const ExitStatus status = words.empty() ? showUsage() : runWords(words);
    answers_.flush();
    return answers_.error() == 0 ? status : complainOfOutput();
  }

  // How a call ends for which there is no memory, or no thread.
  ExitStatus endOutOfMemory() {
    return show(Failure{
        ExitStatus::notLoaded,
        TernError::initWithErrorType(TernErrorTypeUndefined, "out of memory", "out of memory"),
        "out of memory"});
  }

 private:
  // Without a word there is nothing to answer, so this is no answer but advice.
  ExitStatus showUsage() const {
    Output(streams_.diagnostics).write(generalHelp(lookOf(streams_.diagnostics)));
    return ExitStatus::wrongWords;
  }

  ExitStatus runWords(const std::vector<std::string>& words) {
    const ParsedCall parsed = parseArguments(words, lookOf(streams_.answers));
    if (const auto* failure = std::get_if<Failure>(&parsed)) return show(*failure);
    if (const auto* information = std::get_if<Information>(&parsed)) {
      answers_.write(information->text);
      return ExitStatus::answered;
    }
    const Arguments& call = std::get<Arguments>(parsed);
    return show(
        std::visit([&](const auto& about) { return answer(call, about); }, call.command->about));
  }

  Outcome answer(const Arguments& call, AboutNothing answerCall) {
    return answerCall(call, console_);
  }

  Outcome answer(const Arguments& call, AboutCustomer answerCall) {
    return ask(load(call, [](VenueSource& source) { return source.readVenues(); }),
               [&](const auto& venues) { return answerCall(call, *venues); });
  }

  Outcome answer(const Arguments& call, const AboutVenue& about) {
    const auto ofEither = [&](const auto& data) { return answerAbout(about, call, data); };
    return call.venues.size() > 1 ? ask(loadJoined(call), ofEither) : ask(loadOne(call), ofEither);
  }

  Outcome answer(const Arguments& call, AboutRequests answerRequests) {
    const auto ofEither = [&](const auto& data) {
      return answerRequests(call, TernAnswers(data), console_);
    };
    return call.venues.size() > 1 ? ask(loadJoined(call), ofEither) : ask(loadOne(call), ofEither);
  }

  Outcome answer(const Arguments& call, AboutFiles answerFiles) {
    if (console_.page.empty()) return noPage();
    return ask(load(call, [&](VenueSource& source) { return source.loadFiles(call.venues); }),
               [&](const auto& files) { return answerFiles(call, *files, console_); });
  }

  static Failure noPage() {
    return notFound(
        "this tern was built without the page; scripts/explore builds it with one, or set "
        "TERN_EXPLORER_DIR to the folder of a built page");
  }

  Loaded<TernActiveVenue> loadOne(const Arguments& call) {
    const auto venue = call.venues.empty() ? std::nullopt : std::optional(call.venues.front());
    return load(call, [&](VenueSource& source) { return source.loadVenue(venue, call.building); });
  }

  Loaded<TernMultiActiveVenues> loadJoined(const Arguments& call) {
    return load(call, [&](VenueSource& source) { return loadVenues(source, call.venues); });
  }

  // What the function makes of the source that the call names.
  template <class Load>
  auto load(const Arguments& call, Load loadFrom)
      -> decltype(loadFrom(std::declval<VenueSource&>())) {
    const LoadingLog log(streams_.diagnostics);
    const LoadingProgress progress(streams_.diagnostics);
    auto opened = openSource(call, streams_.diagnostics);
    if (auto* failure = std::get_if<Failure>(&opened)) return std::move(*failure);
    VenueSource& source = *std::get<std::unique_ptr<VenueSource>>(opened);
    auto loaded = loadFrom(source);
    if (!std::holds_alternative<Failure>(loaded)) remark_ = source.remark();
    return loaded;
  }

  // What the function answers of what was loaded.
  template <class Data, class Answer>
  Outcome ask(const Loaded<Data>& loaded, Answer answerOf) const {
    if (const auto* failure = std::get_if<Failure>(&loaded)) return *failure;
    if (!remark_.empty()) complain(remark_);
    return answerOf(std::get<std::shared_ptr<Data>>(loaded));
  }

  ExitStatus show(const Outcome& outcome) {
    if (const auto* failure = std::get_if<Failure>(&outcome)) return show(*failure);
    const auto& answer = std::get<Answer>(outcome);
    if (!answer.remark.empty()) complain(answer.remark);
    answers_.write(json_ ? answer.text : shown(answer.text));
    return answer.status;
  }

  ExitStatus show(const Failure& failure) {
    complain(failure.sentence);
    if (json_) answers_.write(jsonLine(errorAnswer(failure.error)));
    return failure.status;
  }

  // A reader who has had enough is told nothing.
  ExitStatus complainOfOutput() const {
    if (answers_.error() != EPIPE) {
      complain(std::string("cannot write the answer: ") +
               std::generic_category().message(answers_.error()));
    }
    return ExitStatus::notWritten;
  }

  std::string shown(const std::string& text) const {
    return withFaintIds(onItsLines(text), lookOf(streams_.answers));
  }

  void complain(const std::string& message) const {
    const Look look = lookOf(streams_.diagnostics);
    Output(streams_.diagnostics).write(look.red("tern:") + " " + onOneLine(message) + "\n");
  }

  Streams streams_;
  Output answers_;
  Console console_;
  bool json_;
  // Of the source, when it is not as it should be.
  std::string remark_;
};

}  // namespace

int runCommand(const std::vector<std::string>& words, const Streams& streams,
               std::span<const service::PageFile> page) {
  std::signal(SIGPIPE, SIG_IGN);
  Run run(streams, page, asksForJson(words));
  ExitStatus status = ExitStatus::notLoaded;
  if (!service::hasEnough([&] { status = run.run(words); })) status = run.endOutOfMemory();
  return static_cast<int>(status);
}

}  // namespace tern::command
