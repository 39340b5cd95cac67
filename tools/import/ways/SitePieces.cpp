#include "tools/import/ways/SitePieces.hpp"

#include <algorithm>
#include <utility>

#include "tools/import/ways/PlaneGeometry.hpp"
#include "tools/import/ways/Shapes.hpp"

namespace tern::imports {

namespace {

// A stand farther than this from any area is in none.
constexpr double farthestStandMetres = 3;

}  // namespace

SitePieces::SitePieces(std::span<const SiteArea> areas) {
  for (std::size_t i = 0; i < areas.size(); ++i) {
    if (areas[i].floor >= floors_.size()) floors_.resize(areas[i].floor + 1);
    for (Polygon& shape : repaired(areas[i].shapes)) {
      floors_[areas[i].floor].pieces.push_back(pieces_.size());
      const double squareMetres = areaOf(shape);
      pieces_.push_back({i, areas[i].floor, std::move(shape), squareMetres, {}, {}, {}, {}});
    }
  }
  for (OnFloor& floor : floors_) {
    std::vector<Box> boxes;
    for (const std::size_t piece : floor.pieces) boxes.push_back(boxOf(pieces_[piece].shape));
    floor.boxes = BoxGrid(std::move(boxes));
  }
}

SitePiece* SitePieces::at(std::size_t floor, Point at, const SitePiece* but) {
  if (floor >= floors_.size()) return nullptr;
  SitePiece* smallest = nullptr;
  for (const std::uint32_t i : floors_[floor].boxes.about({at.x, at.y, at.x, at.y})) {
    SitePiece& piece = pieces_[floors_[floor].pieces[i]];
    if (&piece == but || (smallest != nullptr && smallest->squareMetres <= piece.squareMetres)) {
      continue;
    }
    if (holds(piece.shape, at)) smallest = &piece;
  }
  return smallest;
}

SitePiece* SitePieces::beside(std::size_t floor, Point at, Point normal, const SitePiece* but) {
  for (const double metres : besideDoorMetres) {
    SitePiece* const piece = this->at(floor, at + normal * metres, but);
    if (piece != nullptr) return piece;
  }
  return nullptr;
}

SitePiece* SitePieces::nearest(std::size_t floor, Point at) {
  SitePiece* nearest = this->at(floor, at);
  if (nearest != nullptr || floor >= floors_.size()) return nearest;
  double least = farthestStandMetres;
  const Box about = Box{at.x, at.y, at.x, at.y}.grownBy(farthestStandMetres);
  for (const std::uint32_t i : floors_[floor].boxes.about(about)) {
    SitePiece& piece = pieces_[floors_[floor].pieces[i]];
    const double metres = apart(nearestOnRings(piece.shape, at), at);
    if (metres >= least) continue;
    least = metres;
    nearest = &piece;
  }
  return nearest;
}

bool SitePieces::areOneAcross(std::size_t floor, Point at, Point normal) {
  const Point step = normal * besideDoorMetres[0];
  const SitePiece* const piece = this->at(floor, at + step);
  return piece != nullptr && this->at(floor, at - step) == piece;
}

std::optional<SitePieces::Wall> SitePieces::wallAcross(std::size_t floor, Point at, Point normal) {
  SitePiece* const within = this->at(floor, at + normal * besideDoorMetres[0]);
  if (within == nullptr) return std::nullopt;
  for (const double metres : besideDoorMetres) {
    for (const double side : {metres, -metres}) {
      if (this->at(floor, at + normal * side) == within) continue;
      SitePiece* const beyond = beside(floor, at + normal * side, normal * side, within);
      return Wall{nearestOnRings(within->shape, at), within, beyond};
    }
  }
  return std::nullopt;
}

}  // namespace tern::imports
