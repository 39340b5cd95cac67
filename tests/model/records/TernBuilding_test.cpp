#include "TernCoreKit/model/records/TernBuilding.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/records/TernPosition.hpp"
#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

TEST(TernBuilding, keepsEveryFieldAsTheDocumentGivesItAndCopiesThoseItShould) {
  expectPlainFields<TernBuilding>({{"id", &TernBuilding::id, true},
                                   {"externalId", &TernBuilding::externalId, true},
                                   {"name", &TernBuilding::name, true},
                                   {"venueId", &TernBuilding::venueId, true},
                                   {"address", &TernBuilding::address, true},
                                   {"description", &TernBuilding::description, true},
                                   {"defaultFloorId", &TernBuilding::defaultFloorId, false},
                                   {"generatedAt", &TernBuilding::generatedAt, false},
                                   {"customerId", &TernBuilding::customerId, false},
                                   {"recordHistory", &TernBuilding::recordHistory, false},
                                   {"mapId", &TernBuilding::mapId, false}});
}

TEST(TernBuilding, anUnknownKeyStopsItAndIsLogged) {
  expectStopAtUnknownKey<TernBuilding>("TernBuilding", "mapId", &TernBuilding::mapId);
}

TEST(TernBuilding, aMapUnderCoordinatesBecomesARecord) {
  expectNestedRecord("coordinates", &TernBuilding::coordinates, Carried::yes);
}

TEST(TernBuilding, aMapUnderFloorsBecomesACollection) {
  expectNestedCollection("floors", &TernBuilding::floors, Carried::yes);
}

}  // namespace
}  // namespace tern::test
