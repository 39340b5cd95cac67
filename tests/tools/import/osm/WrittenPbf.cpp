#include "tests/tools/import/osm/WrittenPbf.hpp"

#include <zlib.h>

#include <protozero/pbf_writer.hpp>

namespace tern::test {

namespace {

using protozero::pbf_writer;

std::string packed(const std::string& data) {
  uLongf size = compressBound(data.size());
  std::string bytes(size, '\0');
  compress(reinterpret_cast<Bytef*>(bytes.data()), &size,
           reinterpret_cast<const Bytef*>(data.data()), data.size());
  bytes.resize(size);
  return bytes;
}

std::string denseNodes(std::size_t count) {
  std::vector<std::int64_t> ids;
  std::vector<std::int64_t> steps;
  for (std::size_t i = 0; i < count; ++i) {
    ids.push_back(1);
    steps.push_back(10'000);
  }
  std::string dense;
  pbf_writer writer(dense);
  writer.add_packed_sint64(1, ids.begin(), ids.end());
  writer.add_packed_sint64(8, steps.begin(), steps.end());
  writer.add_packed_sint64(9, steps.begin(), steps.end());
  return dense;
}

std::string wayThrough(std::size_t count, const std::vector<std::uint32_t>& tags) {
  std::vector<std::uint32_t> keys;
  std::vector<std::uint32_t> values;
  for (std::size_t i = 0; i + 1 < tags.size(); i += 2) {
    keys.push_back(tags[i]);
    values.push_back(tags[i + 1]);
  }
  const std::vector<std::int64_t> refs(count, 1);
  std::string way;
  pbf_writer writer(way);
  writer.add_int64(1, 7);
  writer.add_packed_uint32(2, keys.begin(), keys.end());
  writer.add_packed_uint32(3, values.begin(), values.end());
  writer.add_packed_sint64(8, refs.begin(), refs.end());
  return way;
}

}  // namespace

std::string pbfBlob(const PbfBlob& blob) {
  std::string body;
  pbf_writer writer(body);
  if (blob.isPacked) {
    const auto size = static_cast<std::int32_t>(blob.data.size());
    writer.add_int32(2, blob.statedBytes < 0 ? size : blob.statedBytes);
    writer.add_bytes(3, packed(blob.data));
  } else {
    writer.add_bytes(1, blob.data);
  }
  std::string header;
  pbf_writer head(header);
  head.add_string(1, blob.type);
  head.add_int32(3, static_cast<std::int32_t>(body.size()));
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) {
    bytes += static_cast<char>(header.size() >> static_cast<unsigned>(shift));
  }
  return bytes + header + body;
}

std::string pbfHeader() {
  std::string data;
  pbf_writer writer(data);
  writer.add_string(4, "OsmSchema-V0.6");
  writer.add_string(4, "DenseNodes");
  return pbfBlob({"OSMHeader", data});
}

std::string pbfBlock(const std::vector<std::string>& texts, std::size_t nodes,
                     const std::vector<std::uint32_t>& tags) {
  std::string table;
  pbf_writer tableWriter(table);
  for (const std::string& text : texts) tableWriter.add_bytes(1, text);
  std::string group;
  pbf_writer(group).add_message(2, denseNodes(nodes));
  std::string ways;
  pbf_writer(ways).add_message(3, wayThrough(nodes, tags));
  std::string block;
  pbf_writer writer(block);
  writer.add_message(1, table);
  writer.add_message(2, group);
  writer.add_message(2, ways);
  return block;
}

}  // namespace tern::test
