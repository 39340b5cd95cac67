#include "tools/import/source/CsvReader.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace tern::imports {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::array<std::string_view, 2> columns{"id", "name"};

struct ReadTable {
  CsvHead head;
  // "id|name", with a "!" behind for a ragged one.
  std::vector<std::string> rows;
};

ReadTable tableOf(std::string_view text) {
  ReadTable table;
  table.head = readCsv(text, columns, [&](const CsvRow& row) {
    table.rows.push_back(row.fields[0] + "|" + row.fields[1] + (row.isRagged ? "!" : ""));
  });
  return table;
}

TEST(CsvReader, columnsComeByName) {
  const ReadTable table = tableOf("name,x,id\nA,1,a\nB,2,b\n");
  EXPECT_EQ(table.head.error, std::nullopt);
  EXPECT_THAT(table.rows, ElementsAre("a|A", "b|B"));
  EXPECT_THAT(table.head.others, ElementsAre("x"));
}

TEST(CsvReader, marksAndLineEndsOfOtherSystemsAreNoText) {
  EXPECT_THAT(tableOf("\xEF\xBB\xBFid,name\r\na,A\r\n\r\nb,B").rows, ElementsAre("a|A", "b|B"));
}

TEST(CsvReader, quotedFieldsHoldCommasQuotesAndLines) {
  EXPECT_THAT(tableOf("id,name\na,\"Mill, \"\"Old\"\"\nGate\"\n").rows,
              ElementsAre("a|Mill, \"Old\"\nGate"));
}

TEST(CsvReader, quotesWithinAFieldAreText) {
  EXPECT_THAT(tableOf("id,name\na,5\" pipe\nb,\"B\"").rows, ElementsAre("a|5\" pipe", "b|B"));
}

TEST(CsvReader, missingColumnsAreEmptyAndKnown) {
  const ReadTable table = tableOf("id\na\n");
  EXPECT_THAT(table.head.has, ElementsAre(true, false));
  EXPECT_THAT(table.rows, ElementsAre("a|"));
}

TEST(CsvReader, raggedRowsAreReadAsFarAsTheyGo) {
  EXPECT_THAT(tableOf("id,x,name\na\nb,1,B,more\nc,2,C\n").rows, ElementsAre("a|!", "b|B!", "c|C"));
}

TEST(CsvReader, whatIsNoTableIsAnError) {
  EXPECT_EQ(tableOf("").head.error, "it has no head");
  const ReadTable open = tableOf("id,name\na,\"A\nb,B\n");
  EXPECT_EQ(open.head.error, "a quote is not closed");
  EXPECT_THAT(open.rows, IsEmpty());
}

TEST(CsvReader, columnsAndFieldsAreBounded) {
  EXPECT_THAT(*tableOf(std::string(100'000, ',') + "\n").head.error,
              testing::HasSubstr("1000 columns"));
  EXPECT_THAT(*tableOf("id,name\n\"" + std::string(std::size_t{3} << 20U, 'x')).head.error,
              testing::HasSubstr("longer than 1 MiB"));
}

TEST(CsvReader, fieldsBeyondTheHeadTakeNoMemory) {
  const ReadTable table = tableOf("id,name\na,A" + std::string(1'000'000, ',') + "\nb,B\n");
  EXPECT_THAT(table.rows, ElementsAre("a|A!", "b|B"));
}

}  // namespace
}  // namespace tern::imports
