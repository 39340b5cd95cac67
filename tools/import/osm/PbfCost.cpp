#include "tools/import/osm/PbfCost.hpp"

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <protozero/pbf_reader.hpp>
#include <vector>

namespace tern::imports {

namespace {

using protozero::data_view;
using protozero::pbf_reader;

constexpr std::size_t mostHeaderBytes = std::size_t{64} << 10U;

struct Refused {
  std::string why;
};

// The numbers of the format's fields.
namespace header {
constexpr int type = 1;
constexpr int dataSize = 3;
}  // namespace header
namespace blob {
constexpr int raw = 1;
constexpr int rawSize = 2;
constexpr int zlib = 3;
}  // namespace blob
namespace block {
constexpr int texts = 1;
constexpr int group = 2;
}  // namespace block
namespace group {
constexpr int node = 1;
constexpr int dense = 2;
}  // namespace group
namespace dense {
constexpr int ids = 1;
constexpr int keysAndValues = 10;
}  // namespace dense
namespace object {
constexpr int keys = 2;
constexpr int values = 3;
// The roles of a relation, which it has one of for each member; the nodes of a way.
constexpr int rolesOrRefs = 8;
constexpr int memberIds = 9;
}  // namespace object

// What comes as another type than the format has is no field of it.
bool isBytes(const pbf_reader& fields, int tag) {
  return fields.tag() == static_cast<protozero::pbf_tag_type>(tag) &&
         fields.has_wire_type(protozero::pbf_wire_type::length_delimited);
}

bool isNumber(const pbf_reader& fields, int tag) {
  return fields.tag() == static_cast<protozero::pbf_tag_type>(tag) &&
         fields.has_wire_type(protozero::pbf_wire_type::varint);
}

std::size_t countOf(data_view packed) {
  return static_cast<std::size_t>(
      std::count_if(packed.data(), packed.data() + packed.size(),
                    [](char c) { return (static_cast<unsigned char>(c) & 0x80U) == 0; }));
}

class PbfCounter {
 public:
  explicit PbfCounter(OsmBudget& budget) : budget_(budget) {}

  void count(std::string_view bytes) {
    while (!bytes.empty()) {
      if (bytes.size() < 4) throw Refused{"it ends within a block"};
      std::size_t size = 0;
      for (const char c : bytes.substr(0, 4)) size = size << 8U | static_cast<unsigned char>(c);
      if (size > mostHeaderBytes) throw Refused{"a block of it has no header"};
      bytes.remove_prefix(4);
      const std::string_view head = taken(bytes, size);
      pbf_reader fields(head.data(), head.size());
      std::string type;
      std::uint64_t dataSize = 0;
      while (fields.next()) {
        if (isBytes(fields, header::type)) {
          type = fields.get_string();
        } else if (isNumber(fields, header::dataSize)) {
          dataSize = static_cast<std::uint64_t>(fields.get_int32());
        } else {
          fields.skip();
        }
      }
      if (dataSize > mostBlockBytes) throw Refused{"a block of it is larger than 32 MiB"};
      const std::string_view data = taken(bytes, static_cast<std::size_t>(dataSize));
      const data_view unpacked = unpack(data);
      if (type == "OSMData") countBlock(unpacked);
      if (budget_.isSpent()) return;
    }
  }

 private:
  static std::string_view taken(std::string_view& bytes, std::size_t size) {
    if (size > bytes.size()) throw Refused{"it ends within a block"};
    const std::string_view part = bytes.substr(0, size);
    bytes.remove_prefix(size);
    return part;
  }

  data_view unpack(std::string_view data) {
    pbf_reader fields(data.data(), data.size());
    data_view packed;
    std::size_t size = 0;
    while (fields.next()) {
      if (isBytes(fields, blob::raw)) return fields.get_view();
      if (isNumber(fields, blob::rawSize)) {
        const std::int32_t stated = fields.get_int32();
        size = stated < 0 ? mostBlockBytes + 1 : static_cast<std::size_t>(stated);
      } else if (isBytes(fields, blob::zlib)) {
        packed = fields.get_view();
      } else {
        throw Refused{"a block of it is packed in another way than with zlib"};
      }
    }
    if (size > mostBlockBytes) throw Refused{"a block of it unpacks to more than 32 MiB"};
    unpackedBytes_ += size;
    if (unpackedBytes_ > mostUnpackedBytes) throw Refused{"it unpacks to more than 1 GiB"};
    unpacked_.resize(size);
    uLongf length = size;
    const int result = uncompress(reinterpret_cast<Bytef*>(unpacked_.data()), &length,
                                  reinterpret_cast<const Bytef*>(packed.data()), packed.size());
    if (result != Z_OK || length != size) throw Refused{"a block of it cannot be unpacked"};
    return {unpacked_.data(), unpacked_.size()};
  }

  void countBlock(data_view block) {
    lengths_.clear();
    pbf_reader texts(block);
    constexpr auto bytes = protozero::pbf_wire_type::length_delimited;
    while (texts.next(block::texts, bytes)) {
      pbf_reader table = texts.get_message();
      while (table.next(1, bytes)) {
        const data_view text = table.get_view();
        // Whoever reads the texts takes a zero for their end.
        if (std::find(text.data(), text.data() + text.size(), '\0') != text.data() + text.size()) {
          throw Refused{"a text of it holds a zero"};
        }
        lengths_.push_back(static_cast<std::uint16_t>(std::min<std::size_t>(text.size(), 0xFFFF)));
      }
    }
    budget_.takeRefs(lengths_.size());
    pbf_reader groups(block);
    while (groups.next(block::group, bytes)) countGroup(groups.get_message());
  }

  void countGroup(pbf_reader group) {
    while (group.next()) {
      const auto tag = group.tag();
      if (!isBytes(group, static_cast<int>(tag))) {
        group.skip();
        continue;
      }
      pbf_reader item = group.get_message();
      if (tag == group::dense) {
        countDense(item);
      } else {
        budget_.takeRecords(1);
        countObject(item, tag == group::node);
      }
      if (budget_.isSpent()) return;
    }
  }

  void countDense(pbf_reader nodes) {
    while (nodes.next()) {
      if (isBytes(nodes, dense::ids)) {
        budget_.takeRecords(countOf(nodes.get_view()));
      } else if (isBytes(nodes, dense::keysAndValues)) {
        countTexts(nodes.get_packed_int32());
      } else {
        nodes.skip();
      }
    }
  }

  // Eight is a node's latitude, and no list.
  void countObject(pbf_reader item, bool isNode) {
    while (item.next()) {
      const auto tag = item.tag();
      if (isBytes(item, object::keys) || isBytes(item, object::values)) {
        countTexts(item.get_packed_uint32());
      } else if (!isNode &&
                 (isBytes(item, object::rolesOrRefs) || isBytes(item, object::memberIds))) {
        const data_view list = item.get_view();
        budget_.takeRefs(countOf(list));
        if (tag == object::memberIds) budget_.takeTexts(countOf(list), 0);
      } else {
        item.skip();
      }
    }
  }

  template <class Range>
  void countTexts(const Range& places) {
    std::size_t count = 0;
    std::size_t letters = 0;
    for (const auto place : places) {
      ++count;
      const auto index = static_cast<std::size_t>(place);
      if (index < lengths_.size()) letters += lengths_[index];
    }
    budget_.takeTexts(count, letters);
  }

  OsmBudget& budget_;
  std::string unpacked_;
  std::size_t unpackedBytes_ = 0;
  // Of the block's texts.
  std::vector<std::uint16_t> lengths_;
};

}  // namespace

std::optional<std::string> spendOnPbf(std::string_view bytes, OsmBudget& budget) {
  try {
    PbfCounter(budget).count(bytes);
  } catch (const Refused& refused) {
    return refused.why;
  } catch (const std::exception& error) {
    return std::string("a block of it cannot be read: ") + error.what();
  }
  return std::nullopt;
}

}  // namespace tern::imports
