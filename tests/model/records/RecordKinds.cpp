#include "tests/model/records/RecordKinds.hpp"

#include <concepts>
#include <initializer_list>
#include <utility>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernMapLabelInstances.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernUriCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernAmenity.hpp"
#include "TernCoreKit/model/records/TernAssociation.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/model/records/TernLocale.hpp"
#include "TernCoreKit/model/records/TernLocation.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernMapLabel.hpp"
#include "TernCoreKit/model/records/TernMapLabelInstance.hpp"
#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernPosition.hpp"
#include "TernCoreKit/model/records/TernUri.hpp"
#include "TernCoreKit/model/records/TernVenue.hpp"
#include "TernCoreKit/model/records/TernVenueDestination.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::test {

namespace {

// Writes a row, field after field.
template <class Record>
class Row {
 public:
  struct Plain {
    const char* name;
    Value Record::*member;
  };

  explicit Row(const char* name)
      : kind_{name,
              true,
              &Record::initWithDictionary,
              [](const AnyRecord& record) { return of(record).copyWithZone(); },
              {},
              {},
              {}} {
    if constexpr (std::derived_from<Record, TernBaseModel>) {
      kind_.copyAsBase = [](const AnyRecord& record) -> AnyRecord {
        const TernBaseModel& base = of(record);
        return std::static_pointer_cast<Record>(base.copyWithZone());
      };
    }
  }

  Row& copied(std::initializer_list<Plain> fields) { return plain(fields, true); }
  Row& uncopied(std::initializer_list<Plain> fields) { return plain(fields, false); }

  template <class T>
  Row& record(const char* name, Nested<T> Record::*member) {
    return nested(name, member, true, nullptr);
  }
  template <class T>
  Row& collection(const char* name, Nested<T> Record::*member, bool isCopied = true) {
    return nested(name, member, isCopied, [member](const AnyRecord& record) {
      const auto all = (of(record).*member)->getAll();
      return NestedField::Elements(all.begin(), all.end());
    });
  }

  RecordKind ignoringUnknownKeys() {
    kind_.stopsAtUnknownKeys = false;
    return kind_;
  }
  operator RecordKind() const { return kind_; }  // NOLINT(google-explicit-constructor)

 private:
  static const Record& of(const AnyRecord& record) {
    return *static_cast<const Record*>(record.get());
  }

  Row& plain(std::initializer_list<Plain> fields, bool isCopied) {
    for (const Plain& field : fields) {
      kind_.plain.push_back(
          {field.name, isCopied, [member = field.member](const AnyRecord& record) -> const Value& {
             return of(record).*member;
           }});
    }
    return *this;
  }

  template <class T>
  Row& nested(const char* name, Nested<T> Record::*member, bool isCopied,
              std::function<NestedField::Elements(const AnyRecord&)> elements) {
    kind_.nested.push_back(
        {name, isCopied,
         [member](const AnyRecord& record) -> const Value& { return (of(record).*member).plain(); },
         [member](const AnyRecord& record) { return (of(record).*member).get(); },
         std::move(elements)});
    return *this;
  }

  RecordKind kind_;
};

RecordKind amenity() {
  using R = TernAmenity;
  return Row<R>("TernAmenity")
      .copied({{"id", &R::id},
               {"externalId", &R::externalId},
               {"customerId", &R::customerId},
               {"name", &R::name},
               {"description", &R::description},
               {"status", &R::status},
               {"displayOrder", &R::displayOrder},
               {"primaryUriId", &R::primaryUriId},
               {"extensors", &R::extensors},
               {"keywords", &R::keywords},
               {"svg", &R::svg}})
      .collection("uris", &R::uris);
}

RecordKind association() {
  using R = TernAssociation;
  return Row<R>("TernAssociation")
      .copied({{"id", &R::id},
               {"externalId", &R::externalId},
               {"destinations", &R::destinations},
               {"amenities", &R::amenities}});
}

RecordKind baseModel() {
  using R = TernBaseModel;
  return Row<R>("TernBaseModel").copied({{"id", &R::id}, {"externalId", &R::externalId}});
}

RecordKind building() {
  using R = TernBuilding;
  return Row<R>("TernBuilding")
      .copied({{"id", &R::id},
               {"externalId", &R::externalId},
               {"name", &R::name},
               {"venueId", &R::venueId},
               {"address", &R::address},
               {"description", &R::description}})
      .uncopied({{"defaultFloorId", &R::defaultFloorId},
                 {"generatedAt", &R::generatedAt},
                 {"customerId", &R::customerId},
                 {"recordHistory", &R::recordHistory},
                 {"mapId", &R::mapId}})
      .record("coordinates", &R::coordinates)
      .collection("floors", &R::floors);
}

RecordKind destination() {
  using R = TernDestination;
  return Row<R>("TernDestination")
      .copied({{"id", &R::id},
               {"externalId", &R::externalId},
               {"unitNumber", &R::unitNumber},
               {"name", &R::name},
               {"description", &R::description},
               {"primaryUri", &R::primaryUri},
               {"localeCode", &R::localeCode},
               {"extensors", &R::extensors},
               {"categoryIds", &R::categoryIds},
               {"keywords", &R::keywords},
               {"tags", &R::tags},
               {"displayMode", &R::displayMode}})
      .uncopied({{"status", &R::status}, {"svg", &R::svg}})
      .collection("uris", &R::uris);
}

RecordKind floor() {
  using R = TernFloor;
  return Row<R>("TernFloor")
      .copied({{"id", &R::id},
               {"externalId", &R::externalId},
               {"buildingId", &R::buildingId},
               {"preference", &R::preference},
               {"name", &R::name},
               {"shortName", &R::shortName}})
      .uncopied({{"recordHistory", &R::recordHistory}})
      .record("map", &R::map);
}

RecordKind locale() {
  using R = TernLocale;
  return Row<R>("TernLocale")
      .copied({{"id", &R::id},
               {"externalId", &R::externalId},
               {"name", &R::name},
               {"localeCode", &R::localeCode}});
}

RecordKind location() {
  using R = TernLocation;
  return Row<R>("TernLocation").copied({{"mapId", &R::mapId}, {"waypointIds", &R::waypointIds}});
}

RecordKind map() {
  using R = TernMap;
  return Row<R>("TernMap")
      .copied({{"id", &R::id},
               {"externalId", &R::externalId},
               {"geojson", &R::geojson},
               {"mmPerPixel", &R::mmPerPixel},
               {"scale", &R::scale},
               {"skew", &R::skew},
               {"trans", &R::trans},
               {"width", &R::width},
               {"height", &R::height}})
      .collection("waypoints", &R::waypoints)
      .collection("paths", &R::paths)
      .collection("uris", &R::uris, false)
      .ignoringUnknownKeys();
}

RecordKind mapLabel() {
  using R = TernMapLabel;
  return Row<R>("TernMapLabel")
      .copied({{"name", &R::name}, {"svg", &R::svg}})
      .uncopied({{"id", &R::id}, {"externalId", &R::externalId}, {"status", &R::status}})
      .collection("mapLabelInstances", &R::mapLabelInstances)
      .collection("uris", &R::uris);
}

RecordKind mapLabelInstance() {
  using R = TernMapLabelInstance;
  return Row<R>("TernMapLabelInstance")
      .copied({{"id", &R::id},
               {"externalId", &R::externalId},
               {"position", &R::position},
               {"name", &R::name},
               {"mapId", &R::mapId},
               {"scale", &R::scale},
               {"skew", &R::skew},
               {"trans", &R::trans},
               {"rotation", &R::rotation},
               {"allLevels", &R::allLevels}});
}

RecordKind path() {
  using R = TernPath;
  return Row<R>("TernPath")
      .copied({{"id", &R::id},
               {"externalId", &R::externalId},
               {"pathTypeId", &R::pathTypeId},
               {"name", &R::name},
               {"direction", &R::direction},
               {"waypointIds", &R::waypointIds}})
      .uncopied({{"extensors", &R::extensors}, {"status", &R::status}});
}

RecordKind pathType() {
  using R = TernPathType;
  return Row<R>("TernPathType")
      .copied({{"id", &R::id},
               {"externalId", &R::externalId},
               {"name", &R::name},
               {"description", &R::description},
               {"accessibility", &R::accessibility},
               {"verticalWeight", &R::verticalWeight},
               {"speed", &R::speed},
               {"maxFloors", &R::maxFloors},
               {"weight", &R::weight},
               {"direction", &R::direction},
               {"svg", &R::svg}})
      .collection("uris", &R::uris);
}

RecordKind position() {
  using R = TernPosition;
  return Row<R>("TernPosition")
      .copied({{"topLeft", &R::topLeft}, {"bottomRight", &R::bottomRight}});
}

RecordKind uri() {
  using R = TernUri;
  return Row<R>("TernUri").copied({{"id", &R::id},
                                   {"externalId", &R::externalId},
                                   {"resourceType", &R::resourceType},
                                   {"mimeType", &R::mimeType},
                                   {"path", &R::path}});
}

RecordKind venue() {
  using R = TernVenue;
  return Row<R>("TernVenue")
      .copied({{"id", &R::id},
               {"externalId", &R::externalId},
               {"name", &R::name},
               {"mapId", &R::mapId},
               {"bbox", &R::bbox}})
      .uncopied({{"status", &R::status}, {"customerId", &R::customerId}})
      .record("coordinates", &R::coordinates);
}

RecordKind venueDestination() {
  using R = TernVenueDestination;
  return Row<R>("TernVenueDestination")
      .copied({{"venueId", &R::venueId}})
      .collection("destinations", &R::destinations);
}

RecordKind waypoint() {
  using R = TernWaypoint;
  return Row<R>("TernWaypoint")
      .copied({{"id", &R::id},
               {"externalId", &R::externalId},
               {"unitNumber", &R::unitNumber},
               {"mapId", &R::mapId},
               {"coordinates", &R::coordinates},
               {"status", &R::status}})
      .uncopied({{"zoneId", &R::zoneId}})
      .record("associations", &R::associations);
}

}  // namespace

const std::vector<RecordKind>& recordKinds() {
  static const std::vector<RecordKind> kinds{
      amenity(),  association(), baseModel(), building(), destination(),      floor(),
      locale(),   location(),    map(),       mapLabel(), mapLabelInstance(), path(),
      pathType(), position(),    uri(),       venue(),    venueDestination(), waypoint()};
  return kinds;
}

}  // namespace tern::test
