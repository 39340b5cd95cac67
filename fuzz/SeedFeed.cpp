#include "fuzz/SeedFeed.hpp"

#include "tests/tools/import/gtfs/DrawnFeed.hpp"

namespace tern::fuzz {

namespace {

using test::DrawnFeed;

DrawnFeed drawn() {
  DrawnFeed feed;
  feed.level("street", "0", "Street").level("deck", "-1", "Deck").level("half", "-0.5", "Half");
  feed.station("s").station("t", "Town \"\"Hall\"\"");
  feed.entrance("door", DrawnFeed::Metres{0, 0}, "street").node("hall", {}, "street");
  feed.node("lost").node("cabin").platform("1", DrawnFeed::Metres{60, 9}, "deck");
  feed.stop("2", 0, DrawnFeed::Metres{60, 20},
            {.name = "Mill Street", .level = "deck", .code = "2", .wheelchair = "2"});
  feed.stop("2a", 4, {}, {.name = "Front", .parent = "2"});
  feed.stop("t1", 0, {}, {.name = "Track", .parent = "t"}).stop("t2", 3, {}, {.parent = "t"});
  feed.stop("road", 0, DrawnFeed::Metres{70, 0}, {.name = "Road", .parent = {}});
  feed.way("w1", "door", "hall", 1, {.length = "30.5", .slope = "0.1", .sign = "Trains"});
  feed.way("w2", "hall", "lost", 6, {.isBothWays = false}).way("w3", "lost", "hall", 7);
  feed.way("w4", "hall", "1", 2, {.steps = "-22"}).way("w5", "lost", "1", 4, {.isBothWays = false});
  feed.way("w6", "hall", "cabin", 5, {.time = "40"}).way("w7", "cabin", "2", 3);
  feed.way("w8", "2a", "1", 1).way("w9", "t1", "t2", 2).way("w10", "t1", "2", 9);
  return feed;
}

}  // namespace

std::array<std::string, feedFiles.size()> seedFeed() {
  const test::TemporaryFolder folder;
  drawn().writeTo(folder, "feed");
  folder.write("feed/translations.txt",
               "table_name,field_name,language,translation,record_id,field_value\n"
               "stops,stop_name,de,Tür,door,\nlevels,level_name,fr,Rue,,Street\n");
  folder.write("feed/feed_info.txt", "feed_publisher_name,feed_lang\n\"Mill, Lines\",en\n");
  std::array<std::string, feedFiles.size()> files;
  for (std::size_t i = 0; i < files.size(); ++i) {
    files[i] = folder.read("feed/" + std::string(feedFiles[i]));
  }
  return files;
}

}  // namespace tern::fuzz
