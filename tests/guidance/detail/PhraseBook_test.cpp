#include "TernCoreKit/guidance/detail/PhraseBook.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

namespace tern {
namespace {

using detail::PhraseBook;
using testing::ElementsAre;

TEST(PhraseBook, knowsItsLanguages) {
  EXPECT_THAT(PhraseBook::languages(), ElementsAre("de", "en", "es", "fr", "ja"));
}

// The names in braces.
std::set<std::string> blanksOf(std::string_view text) {
  std::set<std::string> names;
  for (std::size_t open = text.find('{'); open != text.npos; open = text.find('{', open + 1)) {
    names.emplace(text.substr(open, text.find('}', open) + 1 - open));
  }
  return names;
}

void expectSameTexts(const Value& english, const Value& other, const std::string& where) {
  if (english.isText()) {
    EXPECT_TRUE(other.isText() && !other.text().empty()) << where << " is missing";
    EXPECT_EQ(blanksOf(english.text()), blanksOf(other.text())) << where;
    return;
  }
  EXPECT_EQ(english.isList(), other.isList()) << where;
  if (english.isList()) {
    EXPECT_GT(other.size(), 0U) << where;
  }
  for (const auto& [key, value] : english.entries()) {
    // Plural forms are each language's own.
    if (key.text() == "one") continue;
    expectSameTexts(value, other[key.text()], where + "." + std::string(key.text()));
  }
}

TEST(PhraseBook, noLanguageLacksATextOrABlankOfEnglish) {
  const PhraseBook english = PhraseBook::of("en");
  for (const std::string& language : PhraseBook::languages()) {
    const PhraseBook book = PhraseBook::of(language);
    ASSERT_EQ(book.file()["language"].text(), language);
    expectSameTexts(english.file(), book.file(), language);
    expectSameTexts(book.file(), english.file(), language + " against English");
  }
}

TEST(PhraseBook, anUnknownLanguageIsEnglish) {
  for (const char* tag : {"", "xx", "tlh-US", "e", "-", "english"}) {
    EXPECT_EQ(PhraseBook::of(tag).text("turn.left"), "Turn left") << tag;
  }
}

TEST(PhraseBook, aTagsLanguageDecidesInAnyCaseAndWithAnyRegion) {
  EXPECT_EQ(PhraseBook::of("de-AT").text("turn.left"), "Links abbiegen");
  EXPECT_EQ(PhraseBook::of("FR_ca").text("turn.left"), "Tournez à gauche");
}

TEST(PhraseBook, fillsInWhatIsGivenAndNothingElse) {
  const PhraseBook book = PhraseBook::of("en");
  EXPECT_EQ(book.text("turnAt.left", {{"landmark", "{floor} \"5%\""}}),
            "Turn left at {floor} \"5%\"");
  EXPECT_EQ(book.text("turnAt.left"), "Turn left at ");
  EXPECT_EQ(book.text("no.such.text"), "");
  EXPECT_FALSE(book.has("no.such.text"));
}

TEST(PhraseBook, lengthsAreMetresAndInAmericaFeet) {
  const PhraseBook english = PhraseBook::of("en");
  EXPECT_EQ(english.length(0), "0 m");
  EXPECT_EQ(english.length(41'499), "41 m");
  EXPECT_EQ(english.length(999'499), "999 m");
  EXPECT_EQ(english.length(1'249'000), "1.2 km");
  EXPECT_EQ(PhraseBook::of("de").length(1'249'000), "1,2 km");
  EXPECT_EQ(PhraseBook::of("ja").length(41'000), "41m");
  const PhraseBook american = PhraseBook::of("en-US");
  EXPECT_EQ(american.length(10'000), "33 ft");
  EXPECT_EQ(american.length(160'934.4), "0.1 mi");
  EXPECT_EQ(american.length(160'934.3), "528 ft");
  EXPECT_EQ(american.length(1'609'344), "1.0 mi");
}

TEST(PhraseBook, countsByTheRulesOfTheLanguage) {
  EXPECT_EQ(PhraseBook::of("en").minutes(0), "1 minute");
  EXPECT_EQ(PhraseBook::of("en").minutes(120), "2 minutes");
  EXPECT_EQ(PhraseBook::of("de").minutes(300), "5 Minuten");
  EXPECT_EQ(PhraseBook::of("es").minutes(60), "1 minuto");
  EXPECT_EQ(PhraseBook::of("ja").minutes(60), "1分");
  EXPECT_EQ(PhraseBook::of("fr-US").length(2'414'016), "1,5 mille") << "one is all below two";
  EXPECT_EQ(PhraseBook::of("es-US").length(2'414'016), "1,5 millas");
}

TEST(PhraseBook, knowsMoversByTheirNamesInEveryLanguage) {
  EXPECT_EQ(PhraseBook::moverKind("North Elevator 3"), "lift");
  EXPECT_EQ(PhraseBook::moverKind("Aufzug"), "lift");
  EXPECT_EQ(PhraseBook::moverKind("Rolltreppe"), "escalator") << "a Treppe too, but no stairs";
  EXPECT_EQ(PhraseBook::moverKind("escalier mécanique"), "escalator");
  EXPECT_EQ(PhraseBook::moverKind("ESCALERAS"), "stairs");
  EXPECT_EQ(PhraseBook::moverKind("エスカレーター"), "escalator");
  EXPECT_EQ(PhraseBook::moverKind("動く歩道"), "movingWalkway");
  EXPECT_EQ(PhraseBook::moverKind("Gate"), "gate");
  EXPECT_EQ(PhraseBook::moverKind("改札口"), "gate");
  EXPECT_EQ(PhraseBook::moverKind("Passage"), "");
  EXPECT_EQ(PhraseBook::moverKind(""), "");
}

}  // namespace
}  // namespace tern
