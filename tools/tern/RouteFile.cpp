#include "tools/tern/RouteFile.hpp"

#include <cstdint>
#include <fstream>
#include <utility>

#include "tools/tern/RouteText.hpp"

namespace tern::command {

std::optional<Failure> writePicture(const std::string& file, const picture::RoutePicture& drawn) {
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream << (file.ends_with(".html") ? routePictureHtml(drawn) : routePictureSvg(drawn));
  stream.close();
  if (stream) return std::nullopt;
  return wrongWords("--picture: cannot write " + file);
}

std::optional<Failure> drawPicture(const std::string& file, const TernActiveVenue& venue,
                                   TernRoute route) {
  const std::int64_t from = route.front().points.front().nodeId();
  const std::int64_t to = route.back().points.back().nodeId();
  picture::RoutePicture drawn{venue, std::string(venue.name.text()), {}, {}};
  drawn.routes.push_back({"", placeName(venue, from), placeName(venue, to), std::move(route)});
  return writePicture(file, drawn);
}

}  // namespace tern::command
