#include "TernCoreKit/model/records/TernBaseModel.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

TEST(TernBaseModel, initWithIdSetsBothFields) {
  const auto record = TernBaseModel::initWithId(7, "seven");
  EXPECT_EQ(record->id, Value(7));
  EXPECT_EQ(record->externalId, Value("seven"));
}

TEST(TernBaseModel, takesItsDocumentOverWithoutCopyingIt) {
  Value document = Value::map({{"externalId", std::string(1000, 'x')}});
  const char* text = document["externalId"].text().data();
  EXPECT_EQ(TernBaseModel::initWithDictionary(std::move(document))->externalId.text().data(), text);
}

}  // namespace
}  // namespace tern::test
