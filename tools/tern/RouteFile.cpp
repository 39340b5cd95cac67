#include "tools/tern/RouteFile.hpp"

#include <fstream>

#include "tools/tern/AnsweredRoute.hpp"
#include "tools/tern/Outcome.hpp"
#include "tools/tern/RouteFeatures.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

namespace {

std::optional<Failure> writeText(const std::string& file, const std::string& text) {
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream << text;
  stream.close();
  if (stream) return std::nullopt;
  return wrongWords("--picture: cannot write " + file);
}

}  // namespace

picture::RoutePicture pictureOf(const TernActiveVenue& venue, const Value& segments) {
  picture::RoutePicture drawn{venue, std::string(venue.name.text()), {}, {}};
  drawn.routes.push_back({"", placeName(venue, startOf(segments)),
                          placeName(venue, endOf(segments)), routeOf(venue, segments)});
  drawn.routes.back().labels = venue.mapLabels.get();
  return drawn;
}

bool isForFeatures(const std::string& file) { return file.ends_with(".geojson"); }

std::optional<Failure> writePicture(const std::string& file, const Picture& drawn) {
  const auto* route = std::get_if<picture::RoutePicture>(&drawn);
  if (isForFeatures(file) && route != nullptr) return writeFeatures(file, featuresOf(*route));
  const picture::PicturePlan plan =
      std::visit([](const auto& each) { return planOf(each); }, drawn);
  return writeText(file, file.ends_with(".html") ? htmlOf(plan) : svgOf(plan));
}

std::optional<Failure> writeFeatures(const std::string& file, const GeoFeatures& features) {
  if (!features.objection()) return writeText(file, jsonLine(features.collection()));
  return wrongWords("--picture: " + *features.objection() + "; .svg and .html do without");
}

}  // namespace tern::command
