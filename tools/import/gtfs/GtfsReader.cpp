#include "tools/import/gtfs/GtfsReader.hpp"

#include <algorithm>
#include <map>
#include <utility>

#include "tools/import/gtfs/GtfsFeed.hpp"
#include "tools/import/gtfs/StationDraft.hpp"

namespace tern::imports {

namespace {

constexpr std::size_t mostListed = 5;

ReadStations failed(std::string error, bool isOfWish) {
  return {{}, {}, std::move(error), isOfWish};
}

class GtfsReader {
 public:
  explicit GtfsReader(const StationWish& wish) : wish_(wish) {}

  ReadStations read(const SourceFiles& source) {
    if (auto error = feed_.read(source)) return failed(*std::move(error), false);
    rest_ = feed_.told();
    adoptStops();
    for (std::size_t i = 0; i < feed_.stops().size(); ++i) sortStop(i);
    for (std::size_t i = 0; i < feed_.pathways().size(); ++i) sortPathway(i);
    std::vector<const StationParts*> chosen;
    for (const auto& [id, parts] : stations_) {
      const bool isWished = wish_.station.empty() || wish_.station == id;
      if (isWished && !parts.pathways.empty()) chosen.push_back(&parts);
    }
    if (chosen.empty() && wish_.station.empty()) {
      return failed("no pathway of the feed leads through a station: " + whyNoStation(), false);
    }
    if (chosen.empty()) return failed(noSuchStation(), true);
    if (chosen.size() > 1 && !wish_.all) return failed("there are " + listed(chosen), true);
    const std::string& publisher = feed_.publisher();
    return {drafted(chosen), publisher.empty() ? source.name() : publisher, std::nullopt, false};
  }

 private:
  const GtfsStop& stop(std::size_t index) const { return feed_.stops()[index]; }

  // Entrances and nodes have to name their station. One that does not belongs to that which its
  // pathways lead to.
  void adoptStops() {
    std::vector<std::vector<std::size_t>> joined(feed_.stops().size());
    for (const GtfsPathway& way : feed_.pathways()) {
      const auto from = feed_.stopOf(way.from);
      const auto to = feed_.stopOf(way.to);
      if (!from || !to) continue;
      joined[*from].push_back(*to);
      joined[*to].push_back(*from);
    }
    std::vector<std::size_t> known;
    for (std::size_t i = 0; i < joined.size(); ++i) {
      if (stationOf(i)) known.push_back(i);
    }
    for (std::size_t i = 0; i < known.size(); ++i) {
      for (const std::size_t other : joined[known[i]]) {
        const bool isOfStation =
            stop(other).kind == StopKind::entrance || stop(other).kind == StopKind::node;
        if (!isOfStation || !stop(other).parent.empty() || stationOf(other)) continue;
        const std::size_t station = *stationOf(known[i]);
        adopted_.emplace(other, station);
        known.push_back(other);
        stations_[stop(station).id].told.remark(
            stop(other).id, "noStation",
            "It names no station; its pathways lead to one, to which it is taken to belong.");
      }
    }
  }

  // The place in the list of the station that a stop belongs to or is: it may be the parent of its
  // parent.
  std::optional<std::size_t> stationOf(std::size_t index) const {
    const auto adopted = adopted_.find(index);
    if (adopted != adopted_.end()) return adopted->second;
    std::optional<std::size_t> at = index;
    for (int i = 0; i < 3 && at; ++i) {
      if (stop(*at).kind == StopKind::station) return at;
      at = feed_.stopOf(stop(*at).parent);
    }
    return std::nullopt;
  }

  void sortStop(std::size_t index) {
    const auto station = stationOf(index);
    if (!station) {
      const bool isDangling = !stop(index).parent.empty();
      rest_.tell(stop(index).id, isDangling ? "dangling" : "noStation",
                 isDangling ? "Its parent is no station of the feed." : "It is in no station.");
      return;
    }
    StationParts& parts = stations_[stop(*station).id];
    parts.station = *station;
    if (index != *station) parts.stops.push_back(index);
  }

  void sortPathway(std::size_t index) {
    const GtfsPathway& way = feed_.pathways()[index];
    const auto from = feed_.stopOf(way.from);
    const auto to = feed_.stopOf(way.to);
    const auto fromStation = from ? stationOf(*from) : std::nullopt;
    const auto toStation = to ? stationOf(*to) : std::nullopt;
    const auto known = fromStation ? fromStation : toStation;
    Oddities& told = known ? stations_[stop(*known).id].told : rest_;
    if (!from || !to) {
      told.tell(way.id, "dangling", "The pathway names a stop that is not there.");
    } else if (from == fromStation || to == toStation) {
      told.tell(way.id, "noNode", "The pathway leads to the station as such, not to a part of it.");
    } else if (!fromStation || !toStation) {
      told.tell(way.id, "noStation", "An end of the pathway is in no station.");
    } else if (fromStation != toStation) {
      told.tell(way.id, "otherStation",
                "The pathway leads to another station, which is a venue of its own.");
    } else {
      stations_[stop(*known).id].pathways.push_back(index);
    }
  }

  std::string whyNoStation() const {
    const bool isAny =
        std::ranges::find(feed_.stops(), StopKind::station, &GtfsStop::kind) != feed_.stops().end();
    if (feed_.pathways().empty()) return "there is no pathway";
    return isAny ? "no stop of one belongs to a station"
                 : "no stop is one, which location_type 1 and parent_station would say";
  }

  std::string noSuchStation() const {
    std::vector<const StationParts*> all;
    for (const auto& [id, parts] : stations_) {
      if (!parts.pathways.empty()) all.push_back(&parts);
    }
    const bool isThere = stations_.contains(wish_.station);
    const std::string what = isThere ? "no pathway leads through " : "there is no station ";
    return what + wish_.station + "; there are " + listed(all);
  }

  std::string listed(const std::vector<const StationParts*>& stations) const {
    std::string text = std::to_string(stations.size()) + " with pathways:";
    for (std::size_t i = 0; i < stations.size() && i < mostListed; ++i) {
      const GtfsStop& station = stop(stations[i]->station);
      text += (i == 0 ? " " : ", ") + station.id + " (" + station.name + ")";
    }
    if (stations.size() > mostListed) {
      text += " and " + std::to_string(stations.size() - mostListed) + " more";
    }
    return text;
  }

  // Of one station what concerns it is told; of all of them everything is, once.
  std::vector<Draft> drafted(const std::vector<const StationParts*>& chosen) {
    std::vector<Draft> drafts;
    for (const StationParts* const parts : chosen) drafts.push_back(draftOf(feed_, *parts));
    const bool isWhole = wish_.station.empty();
    if (isWhole) tellOfStationsLeftOut();
    const Oddities& rest = isWhole ? rest_ : feed_.told();
    for (const Oddity& oddity : rest.told()) {
      drafts.front().oddities.tell(oddity);
    }
    return drafts;
  }

  void tellOfStationsLeftOut() {
    for (const auto& [id, parts] : stations_) {
      if (!parts.pathways.empty()) continue;
      rest_.tell(id, "noPathways", "No pathway leads through the station.");
      for (const std::size_t index : parts.stops) {
        rest_.tell(stop(index).id, "noPathways", "No pathway leads through its station.");
      }
      for (const Oddity& oddity : parts.told.told()) rest_.tell(oddity);
    }
  }

  const StationWish& wish_;
  GtfsFeed feed_;
  std::map<std::string, StationParts> stations_;
  // Of stops that name none.
  std::map<std::size_t, std::size_t> adopted_;
  // What belongs to no station that is drafted.
  Oddities rest_;
};

}  // namespace

ReadStations readGtfs(const SourceFiles& source, const StationWish& wish) {
  return GtfsReader(wish).read(source);
}

}  // namespace tern::imports
