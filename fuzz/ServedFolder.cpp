#include "fuzz/ServedFolder.hpp"

#include <filesystem>

namespace tern::fuzz {

ServedFolder::ServedFolder() {
  const std::string secret = std::string("{") + hidden + "}";
  folder_.write("full.json", secret);
  folder_.write("outside/full.json", secret);
  folder_.write("served/notes.json", secret);
  folder_.write("served/full.json", R"({"id":5,"generatedAt":17,"venues":{"items":[
      {"id":1,"externalId":"a"},{"id":2,"externalId":"b c"}]}})");
  folder_.write("served/venue/1/full.json", R"({"id":1,"recordHistory":{"updatedAt":"Mon, 1"}})");
  folder_.write("served/venue/1/building/3/full.json", R"({"id":3})");
  folder_.write("served/venue/1/destinations.json", R"({"venueId":1})");
  folder_.write("served/locale/full.json", "not JSON");
  folder_.write("served/map-template/calm/full.json", R"({"id":"calm"})");
  std::filesystem::create_directory_symlink(folder_.at("outside"), folder_.at("served/venue/7"));
}

}  // namespace tern::fuzz
