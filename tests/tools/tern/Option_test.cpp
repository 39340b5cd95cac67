#include "tools/tern/Option.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::command {
namespace {

Value valueOf(const Reading& reading) {
  const auto* value = std::get_if<Value>(&reading);
  return value != nullptr ? *value : Value();
}

std::string complaintOf(const Reading& reading) {
  const auto* complaint = std::get_if<std::string>(&reading);
  return complaint != nullptr ? *complaint : "";
}

TEST(Option, textsBecomeValuesOfTheirKind) {
  EXPECT_EQ(valueOf(readText("a b")), Value("a b"));
  EXPECT_EQ(valueOf(readWhole("-12")), Value(-12));
  EXPECT_EQ(valueOf(readNumber("0.5")), Value(0.5));
  EXPECT_EQ(valueOf(readWholes("7,9")), Value::list({7, 9}));
  EXPECT_EQ(valueOf(readPlace("12")), Value(12));
  EXPECT_EQ(valueOf(readPlace("Gate 12")), Value("Gate 12"));
  EXPECT_EQ(valueOf(readPlaces("7,Café, 9")), Value::list({7, "Café", " 9"}));
  EXPECT_EQ(valueOf(readPoint("-12.5,3")), Value::list({-12.5, 3.0}));
  EXPECT_EQ(valueOf(readVenueIds("2,1")), Value::list({2, 1}));
  EXPECT_EQ(valueOf(readUrl("http://h:1//")), Value("http://h:1"));
  EXPECT_EQ(valueOf(readPictureFile("a.svg")), Value("a.svg"));
  EXPECT_EQ(valueOf(readPictureFile("a.html")), Value("a.html"));
  EXPECT_EQ(valueOf(readPictureFile("a.geojson")), Value("a.geojson"));
}

TEST(Option, wrongTextIsToldWithWhatWouldBeRight) {
  EXPECT_EQ(complaintOf(readWhole("1.5")), "\"1.5\" must be a whole number, such as 12");
  EXPECT_EQ(complaintOf(readNumber("x")), "\"x\" must be a finite number, such as 0.5");
  EXPECT_EQ(complaintOf(readWholes("7,")), "\"7,\" must be whole numbers, such as 7,9,30");
  EXPECT_EQ(complaintOf(readPlaces("7,")), "\"7,\" must be ids or names, such as 7,9,Coral Books");
  EXPECT_EQ(complaintOf(readPoint("10")),
            "\"10\" must be two numbers with a comma between them, such as 120.5,88");
  EXPECT_EQ(complaintOf(readVenueIds("1,x")),
            "\"1,x\" must be a whole number, such as 12, or several: 1,2");
  EXPECT_EQ(complaintOf(readVenueIds("1,2,1")), "\"1,2,1\" names a venue twice");
  EXPECT_EQ(complaintOf(readUrl("h:1")), "\"h:1\" must begin with http:// or https://");
  EXPECT_EQ(complaintOf(readPictureFile("a.pdf")), "\"a.pdf\" must end in .svg, .html or .geojson");
}

constexpr std::string_view fruits = "apple pear plum";

TEST(Option, wordIsOneOfThoseThatThereAre) {
  EXPECT_EQ(valueOf(readOneOf<fruits>("pear")), Value("pear"));
  EXPECT_EQ(complaintOf(readOneOf<fruits>("pea")), "\"pea\" must be apple, pear or plum");
  EXPECT_EQ(complaintOf(readWordOf("apple", "")), "\"\" must be apple");
}

TEST(Option, rangesIncludeTheirEnds) {
  EXPECT_EQ(valueOf(readWholeWithin(0, 9, "0")), Value(0));
  EXPECT_EQ(valueOf(readWholeBetween<0, 9>("9")), Value(9));
  EXPECT_EQ(complaintOf(readWholeWithin(0, 9, "10")), "10 is out of range, 0 to 9");
  EXPECT_EQ(complaintOf(readWholeWithin(0, 9, "-1")), "-1 is out of range, 0 to 9");
  EXPECT_EQ(complaintOf(readWhole("-99999999999999999999")),
            "\"-99999999999999999999\" is out of range, -9223372036854775808 to "
            "9223372036854775807");
  EXPECT_EQ(complaintOf(readWholeWithin(0, 9, "x")), "\"x\" must be a whole number, such as 12");
}

TEST(Option, longTextIsCutInQuotes) {
  EXPECT_EQ(inQuotes(std::string(50, 'a')), "\"" + std::string(40, 'a') + "...\"");
}

}  // namespace
}  // namespace tern::command
