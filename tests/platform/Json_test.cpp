#include "TernCoreKit/platform/Json.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/JsonGrammar.hpp"

namespace tern {
namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

Value decoded(std::string_view text) {
  JsonResult result = decodeJson(std::string(text));
  EXPECT_EQ(result.error, std::nullopt) << text;
  return std::move(result.value);
}

std::string errorOf(std::string_view text) {
  const JsonResult result = decodeJson(std::string(text));
  EXPECT_TRUE(result.value.isAbsent());
  return result.error.value_or("no error");
}

std::string compactText(const Value& value) { return encodeJson(value, JsonLayout::compact); }
std::string pretty(const Value& value) { return encodeJson(value, JsonLayout::pretty); }

std::string repeated(std::string_view text, std::size_t times) {
  std::string result;
  for (std::size_t i = 0; i < times; ++i) result += text;
  return result;
}

// A document with a little of everything, in which every byte counts.
constexpr std::string_view everything =
    R"({"id":-12,"name":"Caf\u00e9 \"é€😀\"\n","at":[0.5,1e3,-2.25E-2],"open":true,)"
    R"("shut":false,"none":null,"empty":[{},[],""],"a key of more than sixteen bytes":[[[1]]]})";

// ---- what is decoded ----

TEST(Json, decodesEveryKindOfValue) {
  EXPECT_TRUE(decoded("null").isNull());
  EXPECT_EQ(decoded("true"), Value(true));
  EXPECT_EQ(decoded("false"), Value(false));
  EXPECT_EQ(decoded("-12"), Value(-12));
  EXPECT_EQ(decoded("1.5"), Value(1.5));
  EXPECT_EQ(decoded("\"text\""), Value("text"));
  EXPECT_EQ(decoded("[]"), Value::list());
  EXPECT_EQ(decoded("{}"), Value::map());
  EXPECT_EQ(decoded("[1,[2],{}]"), Value::list({1, Value::list({2}), Value::map()}));
  EXPECT_EQ(decoded(everything),
            Value::map({{"id", -12},
                        {"name", "Café \"é€😀\"\n"},
                        {"at", Value::list({0.5, 1000.0, -0.0225})},
                        {"open", true},
                        {"shut", false},
                        {"none", nullptr},
                        {"empty", Value::list({Value::map(), Value::list(), ""})},
                        {"a key of more than sixteen bytes",
                         Value::list({Value::list({Value::list({1})})})}}));
}

TEST(Json, passesOverSpaceBetweenEverything) {
  const std::string_view gaps[] = {" ", "\n", "\r\n", "\t", " \n                    \t\r   "};
  for (const std::string_view gap : gaps) {
    std::string text(gap);
    for (const char c : std::string_view(R"({"a":[1,true,{}],"b":[]})")) {
      text += c;
      if (c != 'a' && c != 'b' && c != 't' && c != 'r' && c != 'u' && c != '"') text += gap;
    }
    EXPECT_EQ(decoded(text), decoded(R"({"a":[1,true,{}],"b":[]})")) << text;
  }
}

TEST(Json, acceptsOneByteOrderMarkInFront) {
  const std::string mark(byteOrderMark);
  EXPECT_EQ(decoded(mark + "[1]"), Value::list({1}));
  EXPECT_EQ(errorOf(mark + mark + "1"), "Invalid value. (offset 3)");
  EXPECT_EQ(errorOf("1" + mark), "More text behind the end of the document. (offset 1)");
  EXPECT_EQ(errorOf(mark), "The document is empty. (offset 3)");
  EXPECT_EQ(errorOf(mark + "]"), "Invalid value. (offset 3)");
}

TEST(Json, keepsTheOrderOfKeys) {
  const Value value = decoded(R"({"z":1,"a":2,"":3,"m":4})");
  std::string keys;
  for (const Value::Entry& entry : value.entries()) keys += std::string(entry.key.text()) + ",";
  EXPECT_EQ(keys, "z,a,,m,");
}

TEST(Json, keepsARepeatedKeyInItsFirstPlaceWithItsLastValue) {
  EXPECT_EQ(compactText(decoded(R"({"a":1,"b":2,"a":[3],"c":4,"a":5,"b":6})")),
            R"({"a":5,"b":6,"c":4})");
  EXPECT_EQ(compactText(decoded(R"({"":1,"":2})")), R"({"":2})");
  EXPECT_EQ(compactText(decoded(R"({"é":1,"\u00e9":2})")), R"({"é":2})");
}

TEST(Json, seesARepetitionBehindKeysThatWereExpected) {
  EXPECT_EQ(compactText(decoded(R"([{"a":1,"b":2},{"a":1,"b":2,"a":3},{"b":4,"b":5},{"a":6}])")),
            R"([{"a":1,"b":2},{"a":3,"b":2},{"b":5},{"a":6}])");
}

// ---- numbers ----

TEST(Json, keepsIntegersOfSixtyFourBits) {
  for (const std::string_view text :
       {"0", "7", "-7", "999999999999999999", "9223372036854775807", "-9223372036854775808"}) {
    const Value value = decoded(text);
    EXPECT_TRUE(value.isInteger()) << text;
    EXPECT_EQ(std::to_string(value.integer()), text);
  }
}

TEST(Json, readsAFractionOrAnExponentAsADouble) {
  for (const std::string_view text : {"1.0", "1e0", "1E+0", "10e-1", "0.1e1"}) {
    EXPECT_EQ(decoded(text).kind(), Value::Kind::number) << text;
    EXPECT_EQ(decoded(text).number(), 1.0) << text;
  }
}

TEST(Json, keepsTheSignOfZero) {
  for (const std::string_view text : {"-0", "-0.0", "-0e5", "-1e-400"}) {
    EXPECT_EQ(decoded(text).number(), 0.0) << text;
    EXPECT_TRUE(std::signbit(decoded(text).number())) << text;
  }
  EXPECT_TRUE(decoded("0").isInteger());
}

TEST(Json, readsTheNearestDouble) {
  const std::string digits(300, '4');
  for (const std::string& text : std::vector<std::string>{
           "0.1", "123456.789", "4000.25", "9007199254740993.0", "9007199254740992.5",
           "1.7976931348623157e308", "5e-324", "2.2250738585072011e-308", "3e-324", "1e22", "1e23",
           "8.5e22", "0." + digits, digits + ".0", "1" + std::string(400, '0') + "e-400",
           "0." + std::string(400, '0') + "1e401", "0." + std::string(400, '0') + "1",
           "1e-99999999999999999999", "0e99999999999999999999", "-0.000001e-400",
           // Half-way between two doubles, and a little more behind a long run of digits.
           "1.00000000000000011102230246251565404236316680908203125",
           "1.00000000000000011102230246251565404236316680908203125" + std::string(900, '0') +
               "1"}) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(decoded(text).number()),
              std::bit_cast<std::uint64_t>(std::strtod(text.c_str(), nullptr)))
        << text;
  }
}

RC_GTEST_PROP(Json, readsTheDoubleThatTheStandardLibraryReads, ()) {
  const auto digits = rc::gen::container<std::string>(rc::gen::inRange('0', ':'));
  const auto whole = *rc::gen::suchThat(digits, [](const std::string& text) {
    return !text.empty() && (text.size() == 1 || text[0] != '0');
  });
  const auto fraction = *rc::gen::nonEmpty(digits);
  const auto exponent = *rc::gen::oneOf(rc::gen::inRange(-400, 300), rc::gen::inRange(-30, 30));
  const std::string text = whole + "." + fraction + "e" + std::to_string(exponent);
  const double expected = std::strtod(text.c_str(), nullptr);
  RC_PRE(std::isfinite(expected));
  RC_ASSERT(decoded(text).number() == expected);
}

// ---- strings ----

TEST(Json, readsEveryEscape) {
  EXPECT_EQ(decoded(R"("\"\\\/\b\f\n\r\t")").text(), "\"\\/\b\f\n\r\t");
  EXPECT_EQ(decoded(R"("\u0041\u00e9\u20AC\uFFFF")").text(), "Aé€\uFFFF");
  EXPECT_EQ(decoded(R"("\uD83D\uDE00\uD800\uDC00\uDBFF\uDFFF")").text(), "😀\U00010000\U0010FFFF");
  EXPECT_EQ(decoded(R"("a\u0000b")").text(), std::string_view("a\0b", 3));
}

TEST(Json, readsAnEscapeAtEveryPlaceOfAString) {
  for (std::size_t before = 0; before < 40; ++before) {
    for (std::size_t behind = 0; behind < 40; ++behind) {
      const std::string left(before, 'l');
      const std::string right(behind, 'r');
      EXPECT_EQ(decoded("\"" + left + "\\n" + right + "\"").text(), left + "\n" + right);
      EXPECT_EQ(decoded("\"" + left + "é" + right + "\"").text(), left + "é" + right);
    }
  }
}

TEST(Json, refusesControlCharactersAtEveryPlaceOfAString) {
  for (std::size_t before = 0; before < 40; ++before) {
    for (char c = 0; c < ' '; ++c) {
      const std::string text = "\"" + std::string(before, '.') + c + std::string(40, '.') + "\"";
      EXPECT_EQ(errorOf(text),
                "Control character in a string. (offset " + std::to_string(before + 1) + ")");
    }
  }
}

TEST(Json, readsEveryOtherCharacterAtEveryPlaceOfAString) {
  for (std::size_t before = 0; before < 20; ++before) {
    for (int c = ' '; c < 0x80; ++c) {
      if (c == '"' || c == '\\') continue;
      const std::string text = std::string(before, '.') + static_cast<char>(c) + "0123456789";
      EXPECT_EQ(decoded("\"" + text + "\"").text(), text);
    }
  }
}

TEST(Json, refusesTextThatIsNotUtf8) {
  for (const std::string_view bad :
       {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC2", "\xC2 ", "\xE0\x9F\xBF", "\xE1\x80",
        "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
        "\xFF", "\xF1\x80\x80", "\xF1\x80\x80 "}) {
    EXPECT_EQ(errorOf("[\"abc" + std::string(bad) + "\"]"), "Text that is not UTF-8. (offset 5)");
  }
  EXPECT_EQ(errorOf("{\"\xFF\":1}"), "Text that is not UTF-8. (offset 2)");
  EXPECT_EQ(errorOf("\xC3\xA9"), "Invalid value. (offset 0)");
}

TEST(Json, refusesNulBytesEverywhere) {
  for (std::size_t at = 0; at <= everything.size(); ++at) {
    std::string text(everything);
    text.insert(at, 1, '\0');
    EXPECT_NE(errorOf(text), "no error") << at;
  }
}

// ---- errors ----

TEST(Json, saysWhatIsWrongAndWhere) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"", "The document is empty. (offset 0)"},
      {" \n", "The document is empty. (offset 2)"},
      {"?", "Invalid value. (offset 0)"},
      {"[1,]", "Invalid value. (offset 3)"},
      {"[nul]", "Invalid value. (offset 1)"},
      {"tru", "Invalid value. (offset 0)"},
      {"{\"a\":}", "Invalid value. (offset 5)"},
      {"[+1]", "Invalid value. (offset 1)"},
      {"[.5]", "Invalid value. (offset 1)"},
      {"[NaN]", "Invalid value. (offset 1)"},
      {"[1] 2", "More text behind the end of the document. (offset 4)"},
      {"01", "More text behind the end of the document. (offset 1)"},
      {"truely", "More text behind the end of the document. (offset 4)"},
      {"[1 2]", "Missing a comma or ] after an array element. (offset 3)"},
      {"[1}", "Missing a comma or ] after an array element. (offset 2)"},
      {"[1", "Missing a comma or ] after an array element. (offset 2)"},
      {"{\"a\":1 \"b\":2}", "Missing a comma or } after a map entry. (offset 7)"},
      {"{\"a\":1]", "Missing a comma or } after a map entry. (offset 6)"},
      {"{1:2}", "Missing a key in double quotes. (offset 1)"},
      {"{'a':1}", "Missing a key in double quotes. (offset 1)"},
      {"{\"a\":1,}", "Missing a key in double quotes. (offset 7)"},
      {"{\"a\" 1}", "Missing a colon after a key. (offset 5)"},
      {"{\"a\"", "Missing a colon after a key. (offset 4)"},
      {"[\"a]", "Missing a closing quotation mark. (offset 1)"},
      {"\"a\\", "Unknown escape in a string. (offset 2)"},
      {"\"a\\x\"", "Unknown escape in a string. (offset 2)"},
      {"\"a\nb\"", "Control character in a string. (offset 2)"},
      {"\"\\u12G4\"", "Missing four hexadecimal digits after \\u. (offset 1)"},
      {"\"\\u123", "Missing four hexadecimal digits after \\u. (offset 1)"},
      {"\"\\u-123\"", "Missing four hexadecimal digits after \\u. (offset 1)"},
      {"\"\\uD83D\"", "Half a surrogate pair. (offset 1)"},
      {"\"\\uD83D\\n\"", "Half a surrogate pair. (offset 1)"},
      {"\"\\uD83D\\u0041\"", "Half a surrogate pair. (offset 1)"},
      {"\"\\uD83D\\uD83D\"", "Half a surrogate pair. (offset 1)"},
      {"\"ab\\uDE00\"", "Half a surrogate pair. (offset 3)"},
      {"-", "Missing a digit. (offset 1)"},
      {"[-a]", "Missing a digit. (offset 2)"},
      {"1.", "Missing a digit. (offset 2)"},
      {"[1.e5]", "Missing a digit. (offset 3)"},
      {"1e", "Missing a digit. (offset 2)"},
      {"1e+", "Missing a digit. (offset 3)"},
      {"[1e400]", "A number that does not fit into a double. (offset 1)"},
      {"[-1.8e308]", "A number that does not fit into a double. (offset 1)"},
      {"[0.1e99999999999999999999]", "A number that does not fit into a double. (offset 1)"},
      {"[9223372036854775808]", "An integer that does not fit into 64 bits. (offset 1)"},
      {"[-9223372036854775809]", "An integer that does not fit into 64 bits. (offset 1)"},
      {"[18446744073709551616]", "An integer that does not fit into 64 bits. (offset 1)"},
      {"[99999999999999999999999]", "An integer that does not fit into 64 bits. (offset 1)"},
  };
  for (const auto& [text, error] : cases) EXPECT_EQ(errorOf(text), error) << text;
}

TEST(Json, refusesAnIntegerOfAnyLengthThatDoesNotFit) {
  for (std::size_t digits = 20; digits < 60; ++digits) {
    EXPECT_EQ(errorOf(std::string(digits, '1')),
              "An integer that does not fit into 64 bits. (offset 0)");
  }
}

TEST(Json, refusesATextThatEndsEarlyAtEveryLength) {
  for (std::size_t size = 0; size < everything.size(); ++size) {
    EXPECT_NE(errorOf(everything.substr(0, size)), "no error") << size;
  }
}

TEST(Json, laysWhatHoldsNoMapOutInRows) {
  const Value value = decoded(R"({"a":[],"b":[{"id":1,"at":[2,3]},{}],"c":[[1],[2]],"d":[[[1]]]})");
  EXPECT_EQ(encodeJson(value, JsonLayout::rows), R"({
 "a": [],
 "b": [
  {"id": 1, "at": [2, 3]},
  {}
 ],
 "c": [[1], [2]],
 "d": [
  [[1]]
 ]
})");
}

// A short text of brackets, compressed to next to nothing, must not fill a disk.
TEST(Json, layoutGrowsWithTheLengthOfATextAndNotWithItsDepth) {
  std::string text = repeated("[", 500) + "[]";
  for (int i = 0; i < 2000; ++i) text += ",[]";
  text += repeated("]", 500);
  const Value value = decoded(text);
  EXPECT_LE(encodeJson(value, JsonLayout::rows).size(), 2 * text.size());
  EXPECT_LE(encodeJson(value, JsonLayout::pretty).size(), 2 * text.size());
}

TEST(Json, putsWhatLiesDeepOnOneLine) {
  const Value value = decoded("[[[[[[[[[{\"a\":[{}]}]]]]]]]]]");
  EXPECT_EQ(encodeJson(value, JsonLayout::rows), R"([
 [
  [
   [
    [
     [
      [
       [
        [{"a": [{}]}]
       ]
      ]
     ]
    ]
   ]
  ]
 ]
])");
}

TEST(Json, nestsAsDeepAsItSaysAndNoDeeper) {
  const auto nested = [](std::string_view open, std::string_view close, std::size_t depth) {
    return repeated(open, depth) + "1" + repeated(close, depth);
  };
  for (const JsonLayout layout : {JsonLayout::compact, JsonLayout::pretty, JsonLayout::rows}) {
    for (const auto& [open, close] : {std::pair("[", "]"), std::pair("{\"a\":", "}")}) {
      const std::string text = nested(open, close, maximumJsonDepth);
      const Value value = decoded(text);
      const Value copy = value;
      EXPECT_EQ(compactText(copy), text);
      EXPECT_EQ(decoded(encodeJson(copy, layout)), value);
    }
  }
  EXPECT_EQ(errorOf(nested("[", "]", maximumJsonDepth + 1)),
            "Lists and maps nest deeper than 512. (offset 512)");
  EXPECT_EQ(errorOf(repeated("[", 1'000'000)), "Lists and maps nest deeper than 512. (offset 512)");
}

TEST(Json, forgetsHowDeepItWasWhenAListEnds) {
  const std::string text = "[" + repeated("[[[]]],", 1000) + "[]]";
  EXPECT_EQ(decoded(text).size(), 1001U);
}

// Needs four gigabytes for a moment.
TEST(Json, refusesATextOfFourGibibytes) {
  JsonResult result = decodeJson(std::string(std::size_t{1} << 32U, ' '));
  EXPECT_EQ(result.error, "A document of 4 GiB or more. (offset 0)");
}

// ---- damaged documents, against the plain grammar ----

std::string damaged(std::string text, std::mt19937_64& random) {
  constexpr std::string_view telling = "\"\\{}[]:,-+.eE0189tfnu \n\xC3\xA9\xED\xF0\x80\x01";
  const auto below = [&random](std::size_t bound) { return random() % bound; };
  for (std::size_t changes = 1 + below(3); changes > 0; --changes) {
    const std::size_t at = below(text.size());
    const char byte =
        below(2) == 0 ? static_cast<char>(below(256)) : telling[below(telling.size())];
    switch (below(4)) {
      case 0:
        text.insert(at, 1, byte);
        break;
      case 1:
        text.erase(at, 1 + below(3));
        break;
      case 2:
        text.insert(at, text.substr(below(text.size()), below(20)));
        break;
      default:
        text[at] = byte;
    }
  }
  return text;
}

TEST(Json, acceptsExactlyWhatTheGrammarDoes) {
  std::mt19937_64 random(20260301);
  int accepted = 0;
  for (int i = 0; i < 20'000; ++i) {
    const std::string text = damaged(std::string(everything), random);
    const JsonResult result = decodeJson(text);
    const bool isGood = test::isJsonDocument(text);
    ASSERT_EQ(!result.error, isGood) << result.error.value_or("") << "\n" << text;
    if (!isGood) continue;
    ++accepted;
    ASSERT_EQ(decoded(compactText(result.value)), result.value) << text;
  }
  EXPECT_GT(accepted, 1000);
}

// ---- records: keys that are expected ----

TEST(Json, readsRecordsWhoseKeysDiffer) {
  const std::string_view texts[] = {
      R"([{"id":1,"idx":2,"name":3},{"id":4,"idx":5,"name":6}])",
      R"([{"id":1,"idx":2,"name":3},{"idx":4,"id":5,"name":6},{"name":7}])",
      R"([{"a":1,"b":2,"c":3,"d":4,"e":5,"f":6},{"a":1,"f":2},{"f":1,"a":2},{"g":1}])",
      R"([{"a":{"b":{"a":1}}},{"a":{"a":{"b":1}}},{"b":{"b":{"b":1}}}])",
      R"([{"fifteen letters":1,"sixteen letters!":2},{"fifteen letters":3,"sixteen letters!":4}])",
      R"([{"":1,"a":2},{"":3,"a":4},{"a":5,"":6}])",
  };
  for (const std::string_view text : texts) {
    EXPECT_EQ(compactText(decoded(text)), text);
    EXPECT_EQ(compactText(decoded(pretty(decoded(text)))), text);
  }
}

TEST(Json, readsAnExpectedKeyHoweverItIsWritten) {
  EXPECT_EQ(compactText(decoded("[{\"name\":1},{\"n\\u0061me\" : 2},{\"name\"\n:3},{\"name\":4}]")),
            R"([{"name":1},{"name":2},{"name":3},{"name":4}])");
  EXPECT_EQ(errorOf("[{\"name\":1},{\"name\"2}]   "), "Missing a colon after a key. (offset 19)");
}

// ---- what is encoded ----

TEST(Json, encodesOnOneLine) {
  EXPECT_EQ(compactText(decoded(everything)),
            R"({"id":-12,"name":"Café \"é€😀\"\n","at":[0.5,1000,-0.0225],"open":true,)"
            R"("shut":false,"none":null,"empty":[{},[],""],)"
            R"("a key of more than sixteen bytes":[[[1]]]})");
}

TEST(Json, encodesWithFourSpacesALevel) {
  EXPECT_EQ(pretty(decoded(R"({"a":[1,{"b":null}],"c":{},"d":[]})")), R"({
    "a": [
        1,
        {
            "b": null
        }
    ],
    "c": {},
    "d": []
})");
  EXPECT_EQ(pretty(Value(1)), "1");
}

TEST(Json, encodesWhatIsAbsentAsNullAndLeavesItOutOfAMap) {
  EXPECT_EQ(compactText(Value()), "null");
  EXPECT_EQ(compactText(Value::list({Value(), 1})), "[null,1]");
  EXPECT_EQ(compactText(Value::map({{"a", Value()}, {"b", nullptr}, {"c", Value()}})),
            R"({"b":null})");
  EXPECT_EQ(compactText(Value::map({{"a", Value()}})), "{}");
  EXPECT_EQ(pretty(Value::map({{"a", Value()}})), "{}");
}

TEST(Json, encodesDoublesInTheShortestForm) {
  EXPECT_EQ(compactText(0.1), "0.1");
  EXPECT_EQ(compactText(1.0), "1");
  EXPECT_EQ(compactText(-0.0), "-0");
  EXPECT_EQ(compactText(1e21), "1e+21");
  EXPECT_EQ(compactText(1.0 / 3), "0.3333333333333333");
  EXPECT_EQ(compactText(std::numeric_limits<double>::denorm_min()), "5e-324");
}

// A whole number beyond 64 bits would read back as an integer that does not fit.
TEST(Json, encodesLargeWholeDoublesWithAnExponent) {
  EXPECT_EQ(compactText(9223372036854774784.0), "9223372036854774784");
  EXPECT_EQ(compactText(9223372036854775808.0), "9.223372036854776e+18");
  EXPECT_EQ(compactText(-18446744073709551616.0), "-1.8446744073709552e+19");
}

TEST(Json, encodesADoubleThatIsNotFiniteAsNull) {
  EXPECT_EQ(compactText(infinite), "null");
  EXPECT_EQ(compactText(-infinite), "null");
  EXPECT_EQ(compactText(std::nan("")), "null");
}

TEST(Json, escapesWhatAStringCannotHold) {
  EXPECT_EQ(compactText(std::string("\"\\/\b\f\n\r\t\x01\x1F\x7F\0", 12)),
            "\"\\\"\\\\/\\b\\f\\n\\r\\t\\u0001\\u001f\x7F\\u0000\"");
  EXPECT_EQ(compactText(Value::map({{"\n", 1}})), R"({"\n":1})");
}

TEST(Json, encodesBytesThatAreNotUtf8AsReplacementCharacters) {
  EXPECT_EQ(compactText("a\xFF\xED\xA0\x80z\xC3"), "\"a\uFFFD\uFFFD\uFFFD\uFFFDz\uFFFD\"");
  EXPECT_EQ(compactText("é\xE2\x82"), "\"é\uFFFD\uFFFD\"");
}

// ---- round trips ----

rc::Gen<Value> anyText() {
  const auto character =
      rc::gen::element<std::string>("a", "Z", " ", "\"", "\\", "/", "\n", std::string(1, '\0'),
                                    "\x1F", "\x7F", "é", "€", "\uFFFF", "😀", "0123456789abcdef");
  return rc::gen::map(rc::gen::container<std::vector<std::string>>(character),
                      [](const std::vector<std::string>& parts) {
                        std::string text;
                        for (const std::string& part : parts) text += part;
                        return Value(text);
                      });
}

rc::Gen<Value> anyNumber() {
  return rc::gen::map(rc::gen::arbitrary<std::uint64_t>(), [](std::uint64_t bits) {
    const double number = std::bit_cast<double>(bits);
    return std::isfinite(number) ? Value(number) : Value(static_cast<std::int64_t>(bits));
  });
}

rc::Gen<Value> anyValue(int depth) {
  auto leaf = rc::gen::oneOf(
      rc::gen::just(Value(nullptr)), anyText(), anyNumber(),
      rc::gen::map(rc::gen::arbitrary<bool>(), [](bool flag) { return Value(flag); }),
      rc::gen::map(rc::gen::arbitrary<std::int64_t>(), [](std::int64_t i) { return Value(i); }));
  if (depth == 0) return leaf;
  const auto values =
      rc::gen::scale(0.3, rc::gen::container<std::vector<Value>>(anyValue(depth - 1)));
  const auto toList = [](std::vector<Value> items) { return Value::listOf(items); };
  const auto toMap = [](const std::vector<Value>& items) {
    Value map = Value::map();
    for (std::size_t i = 0; i + 1 < items.size(); i += 2) map.set(items[i].printed(), items[i + 1]);
    return map;
  };
  return rc::gen::oneOf(leaf, rc::gen::map(values, toList), rc::gen::map(values, toMap));
}

RC_GTEST_PROP(Json, decodesWhatItEncoded, ()) {
  const Value value = *anyValue(3);
  const JsonLayout layout =
      *rc::gen::element(JsonLayout::compact, JsonLayout::pretty, JsonLayout::rows);
  const std::string text = encodeJson(value, layout);
  RC_ASSERT(test::isJsonDocument(text));
  const JsonResult result = decodeJson(text);
  RC_ASSERT(!result.error);
  RC_ASSERT(result.value == value);
  RC_ASSERT(encodeJson(result.value, layout) == text);
}

RC_GTEST_PROP(Json, keepsEveryBitOfADouble, (std::uint64_t bits)) {
  const double number = std::bit_cast<double>(bits);
  RC_PRE(std::isfinite(number));
  for (const double one : {number, std::round(number), -std::trunc(number)}) {
    RC_ASSERT(std::bit_cast<std::uint64_t>(decoded(compactText(one)).number()) ==
              std::bit_cast<std::uint64_t>(one));
  }
}

RC_GTEST_PROP(Json, keepsEveryBitOfAFloat, (std::uint32_t bits)) {
  const float number = std::bit_cast<float>(bits);
  RC_PRE(std::isfinite(number));
  const double read = decoded(compactText(shortestDouble(number))).number();
  RC_ASSERT(std::bit_cast<std::uint32_t>(static_cast<float>(read)) == bits);
}

TEST(Json, givesTheDoubleThatAFloatIsWrittenAs) {
  EXPECT_EQ(shortestDouble(0.1F), 0.1);
  EXPECT_EQ(shortestDouble(16777216.0F), 16777216.0);
  EXPECT_EQ(shortestDouble(-3.4028235e38F), -3.4028235e38);
  EXPECT_EQ(shortestDouble(std::numeric_limits<float>::denorm_min()), 1e-45);
  EXPECT_EQ(static_cast<float>(shortestDouble(7.038531e-26F)), 7.038531e-26F);
  EXPECT_TRUE(std::signbit(shortestDouble(-0.0F)));
  EXPECT_EQ(shortestDouble(std::numeric_limits<float>::infinity()), infinite);
  EXPECT_TRUE(std::isnan(shortestDouble(std::nanf(""))));
}

}  // namespace
}  // namespace tern
