#include "tools/tern/Command.hpp"

#include <cerrno>
#include <csignal>
#include <memory>
#include <system_error>
#include <utility>
#include <variant>

#include "TernCoreKit/answers/ErrorAnswer.hpp"
#include "TernCoreKit/answers/TernAnswers.hpp"
#include "tools/tern/Arguments.hpp"
#include "tools/tern/Batch.hpp"
#include "tools/tern/GenerateCommand.hpp"
#include "tools/tern/HelpText.hpp"
#include "tools/tern/JoinedVenues.hpp"
#include "tools/tern/LoadingLog.hpp"
#include "tools/tern/LoadingProgress.hpp"
#include "tools/tern/Outcome.hpp"
#include "tools/tern/Output.hpp"
#include "tools/tern/RequestCommands.hpp"
#include "tools/tern/ServeCommand.hpp"
#include "tools/tern/VenueCommands.hpp"
#include "tools/tern/VenueSource.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

class Run {
 public:
  Run(const Streams& streams, bool json)
      : streams_(streams), answers_(streams.answers), json_(json) {}

  ExitStatus run(const std::vector<std::string>& words) {
    const ExitStatus status = words.empty() ? showUsage() : runWords(words);
    answers_.flush();
    return answers_.error() == 0 ? status : complainOfOutput();
  }

 private:
  // What the function makes of the source that the call names.
  template <class Load>
  auto load(const Arguments& call, Load loadFrom) const
      -> decltype(loadFrom(std::declval<VenueSource&>())) {
    std::string remark;
    auto loaded = [&]() -> decltype(loadFrom(std::declval<VenueSource&>())) {
      const LoadingLog log(streams_.diagnostics);
      const LoadingProgress progress(streams_.diagnostics);
      auto opened = openSource(call, streams_.diagnostics);
      if (auto* failure = std::get_if<Failure>(&opened)) return std::move(*failure);
      VenueSource& source = *std::get<std::unique_ptr<VenueSource>>(opened);
      auto result = loadFrom(source);
      if (!std::holds_alternative<Failure>(result)) remark = source.remark();
      return result;
    }();
    if (!remark.empty()) complain(remark);
    return loaded;
  }

  // Without a word there is nothing to answer, so this is no answer but advice.
  ExitStatus showUsage() const {
    Output(streams_.diagnostics).write(generalHelp());
    return ExitStatus::wrongWords;
  }

  ExitStatus runWords(const std::vector<std::string>& words) {
    const ParsedCall parsed = parseArguments(words);
    if (const auto* failure = std::get_if<Failure>(&parsed)) return show(*failure);
    if (const auto* information = std::get_if<Information>(&parsed)) {
      answers_.write(information->text);
      return ExitStatus::answered;
    }
    const Arguments& call = std::get<Arguments>(parsed);
    if (call.command == "generate") return show(generateFolder(call));
    if (call.command == "serve") return serve(call);
    if (call.command == "venues") return listVenuesOf(call);
    if (!call.venues.empty()) return answerAmongVenues(call);
    const auto loaded = load(
        call, [&](VenueSource& source) { return source.loadVenue(call.venue, call.building); });
    if (const auto* failure = std::get_if<Failure>(&loaded)) return show(*failure);
    const auto& venue = std::get<std::shared_ptr<TernActiveVenue>>(loaded);
    if (call.command == "batch") return answerBatch(TernAnswers(venue));
    if (call.command == "info") return show(describeVenue(*venue, call.json));
    return show(answerCall(call, venue));
  }

  ExitStatus serve(const Arguments& call) {
    const auto failure = serveFolder(call, answers_);
    return failure ? show(*failure) : ExitStatus::answered;
  }

  ExitStatus listVenuesOf(const Arguments& call) {
    const auto loaded = load(call, [](VenueSource& source) { return source.readVenues(); });
    if (const auto* failure = std::get_if<Failure>(&loaded)) return show(*failure);
    return show(listVenues(*std::get<std::shared_ptr<TernVenueCollection>>(loaded), call.json));
  }

  ExitStatus answerAmongVenues(const Arguments& call) {
    const auto loaded =
        load(call, [&](VenueSource& source) { return loadVenues(source, call.venues); });
    if (const auto* failure = std::get_if<Failure>(&loaded)) return show(*failure);
    const auto& venues = std::get<std::shared_ptr<TernMultiActiveVenues>>(loaded);
    if (call.command == "batch") return answerBatch(TernAnswers(venues));
    return show(answerJoinedRoute(call, venues));
  }

  ExitStatus answerBatch(TernAnswers answers) {
    LineReader lines(streams_.requests);
    answerLines(lines, answers, answers_);
    if (lines.error() == 0) return ExitStatus::answered;
    complain(std::string("cannot read the requests: ") +
             std::generic_category().message(lines.error()));
    return ExitStatus::notLoaded;
  }

  ExitStatus show(const Outcome& outcome) {
    if (const auto* failure = std::get_if<Failure>(&outcome)) return show(*failure);
    const auto& answer = std::get<Answer>(outcome);
    if (!answer.remark.empty()) complain(answer.remark);
    answers_.write(json_ ? answer.text : onItsLines(answer.text));
    return answer.status;
  }

  ExitStatus show(const Failure& failure) {
    complain(failure.error.message);
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

  void complain(const std::string& message) const {
    Output(streams_.diagnostics).write("tern: " + onOneLine(message) + "\n");
  }

  Streams streams_;
  Output answers_;
  bool json_;
};

}  // namespace

int runCommand(const std::vector<std::string>& words, const Streams& streams) {
  std::signal(SIGPIPE, SIG_IGN);
  return static_cast<int>(Run(streams, asksForJson(words)).run(words));
}

}  // namespace tern::command
