#include "tools/import/osm/OsmXml.hpp"

#include <expat.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Numbers.hpp"

namespace tern::imports {

namespace {

struct ParserEnd {
  void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserEnd>;

// Of an element, by name; a list of names and values with nothing behind it.
class Attributes {
 public:
  explicit Attributes(const XML_Char** list) : list_(list) {}

  // Empty for one that is not there.
  std::string_view operator[](std::string_view name) const {
    for (const XML_Char** at = list_; *at != nullptr; at += 2) {
      if (name == *at) return at[1];
    }
    return {};
  }

 private:
  const XML_Char** list_;
};

std::optional<std::int64_t> idOf(std::string_view text) {
  std::int64_t id = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
  return isWhole ? std::optional(id) : std::nullopt;
}

std::optional<OsmKind> kindOf(std::string_view word) {
  if (word == "node") return OsmKind::node;
  if (word == "way") return OsmKind::way;
  return word == "relation" ? std::optional(OsmKind::relation) : std::nullopt;
}

// In degrees; the map knows no more than seven places.
std::optional<double> degreesOf(std::string_view text) {
  constexpr double finest = 1e7;
  double number = 0;
  const auto [end, error] = readDouble(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return std::round(number * finest) / finest;
}

class XmlReader {
 public:
  explicit XmlReader(OsmGatherer& gatherer)
      : gatherer_(gatherer), parser_(XML_ParserCreate(nullptr)) {
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(parser_.get(), startOf, endOf);
    XML_SetEntityDeclHandler(parser_.get(), entityOf);
  }

  std::optional<std::string> read(std::string_view bytes) {
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
      return "it is too large";
    }
    const auto status =
        XML_Parse(parser_.get(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE);
    if (status == XML_STATUS_OK || error_ || gatherer_.isSpent()) return std::move(error_);
    return "line " + std::to_string(XML_GetCurrentLineNumber(parser_.get())) + ": " +
           XML_ErrorString(XML_GetErrorCode(parser_.get()));
  }

 private:
  static void startOf(void* reader, const XML_Char* name, const XML_Char** attributes) {
    static_cast<XmlReader*>(reader)->start(name, Attributes(attributes));
  }
  static void endOf(void* reader, const XML_Char* /*name*/) {
    static_cast<XmlReader*>(reader)->end();
  }
  static void entityOf(void* reader, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                       const XML_Char*, const XML_Char*, const XML_Char*) {
    static_cast<XmlReader*>(reader)->fail("XML that declares entities is not read");
  }

  void fail(std::string why) {
    if (!error_) {
      error_ =
          "line " + std::to_string(XML_GetCurrentLineNumber(parser_.get())) + ": " + std::move(why);
    }
    XML_StopParser(parser_.get(), XML_FALSE);
  }

  // How deep the element lies says what it may be.
  void start(std::string_view name, const Attributes& attributes) {
    ++depth_;
    if (error_) return;
    if (depth_ == 1) startFile(name, attributes);
    if (depth_ == 2) startRecord(name, attributes);
    if (depth_ == 3 && kind_) startPart(name, attributes);
    if (depth_ == 4 && isInMember_ && name == "nd") addMemberPoint(attributes);
  }

  void startFile(std::string_view name, const Attributes& attributes) {
    if (name != "osm") {
      fail("it begins with " + std::string(name) + ", not with osm");
    } else if (attributes["version"] != "0.6") {
      fail("it is not of the version 0.6");
    }
  }

  void startRecord(std::string_view name, const Attributes& attributes) {
    kind_ = kindOf(name);
    if (!kind_) return;
    const auto id = idOf(attributes["id"]);
    if (!id) return fail("a " + std::string(name) + " has no id");
    id_ = *id;
    at_ = placeOf(attributes);
    isThere_ = attributes["visible"] != "false" && attributes["action"] != "delete";
    tags_.clear();
    refs_.clear();
    members_.clear();
    lines_.clear();
  }

  void startPart(std::string_view name, const Attributes& attributes) {
    isInMember_ = name == "member";
    if (name == "tag") {
      tags_.emplace_back(attributes["k"], attributes["v"]);
    } else if (name == "nd") {
      addRef(attributes);
    } else if (isInMember_) {
      addMember(attributes);
    }
  }

  void addRef(const Attributes& attributes) {
    const auto ref = idOf(attributes["ref"]);
    if (!ref) return fail("a way names a node without an id");
    refs_.push_back(*ref);
    if (const auto at = placeOf(attributes); at && isThere_) gatherer_.placeNode(*ref, *at);
  }

  void addMember(const Attributes& attributes) {
    const auto kind = kindOf(attributes["type"]);
    const auto ref = idOf(attributes["ref"]);
    isInMember_ = kind && ref;
    if (!isInMember_) return;
    members_.push_back({*kind, *ref, std::string(attributes["role"])});
    lines_.emplace_back();
  }

  void addMemberPoint(const Attributes& attributes) {
    if (const auto at = placeOf(attributes)) lines_.back().push_back(*at);
  }

  // None for what is not on the globe.
  std::optional<LonLat> placeOf(const Attributes& attributes) {
    const std::string_view east = attributes["lon"];
    const std::string_view north = attributes["lat"];
    if (east.empty() || north.empty()) return std::nullopt;
    const auto longitude = degreesOf(east);
    const auto latitude = degreesOf(north);
    if (!longitude || !latitude) {
      fail("a coordinate is no number");
      return std::nullopt;
    }
    const bool isOnGlobe = std::abs(*longitude) <= 180 && std::abs(*latitude) <= 90;
    return isOnGlobe ? std::optional(LonLat{*longitude, *latitude}) : std::nullopt;
  }

  void end() {
    constexpr int recordDepth = 2;
    if (depth_-- != recordDepth || error_ || !kind_ || !isThere_) return;
    addRecord();
    if (gatherer_.isSpent()) XML_StopParser(parser_.get(), XML_FALSE);
  }

  void addRecord() {
    OsmTags tags(std::move(tags_));
    if (kind_ == OsmKind::node) {
      gatherer_.addNode(id_, at_, std::move(tags));
    } else if (kind_ == OsmKind::way) {
      gatherer_.addWay(id_, std::move(refs_), std::move(tags));
    } else {
      for (std::size_t i = 0; i < members_.size(); ++i) {
        const bool isPlaced = members_[i].kind == OsmKind::way && !lines_[i].empty();
        if (isPlaced) gatherer_.placeWay(members_[i].ref, std::move(lines_[i]));
      }
      gatherer_.addRelation(id_, std::move(members_), std::move(tags));
    }
  }

  OsmGatherer& gatherer_;
  Parser parser_;
  std::optional<std::string> error_;
  int depth_ = 0;
  // The record that is being read.
  std::optional<OsmKind> kind_;
  std::int64_t id_ = 0;
  bool isThere_ = true;
  std::optional<LonLat> at_;
  std::vector<OsmTags::Tag> tags_;
  std::vector<std::int64_t> refs_;
  std::vector<OsmMember> members_;
  // Of each member where it leads, as far as the relation says.
  std::vector<std::vector<LonLat>> lines_;
  bool isInMember_ = false;
};

}  // namespace

std::optional<std::string> readOsmXml(std::string_view bytes, OsmGatherer& gatherer) {
  return XmlReader(gatherer).read(bytes);
}

}  // namespace tern::imports
