#include "tools/tern/RouteFile.hpp"

#include <fstream>

#include "tools/tern/AnsweredRoute.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

picture::RoutePicture pictureOf(const TernActiveVenue& venue, const Value& segments) {
  picture::RoutePicture drawn{venue, std::string(venue.name.text()), {}, {}};
  drawn.routes.push_back({"", placeName(venue, startOf(segments)),
                          placeName(venue, endOf(segments)), routeOf(venue, segments)});
  return drawn;
}

std::optional<Failure> writePicture(const std::string& file, const picture::RoutePicture& drawn) {
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream << (file.ends_with(".html") ? routePictureHtml(drawn) : routePictureSvg(drawn));
  stream.close();
  if (stream) return std::nullopt;
  return wrongWords("--picture: cannot write " + file);
}

}  // namespace tern::command
