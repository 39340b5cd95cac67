#include "tools/generate/SitePlan.hpp"

#include <algorithm>

#include "tools/generate/Spread.hpp"

namespace tern::generate {

namespace {

constexpr int averageFrontPx = 9 * metrePx;
constexpr int siteMarginPx = 8 * metrePx;
constexpr int gapPx = 14 * metrePx;
constexpr int crossingPx = passageWidthPx + 2 * serviceWidthPx;
constexpr int shortestInnerPx = 36 * metrePx;
constexpr int passageEveryPx = 70 * metrePx;

int largest(const std::vector<int>& numbers) {
  return *std::max_element(numbers.begin(), numbers.end());
}

// Gives each floor its shops; the lower buildings, which are the smaller ones, get fewer.
void spreadShops(std::vector<BuildingPlan>& buildings, std::int64_t shops) {
  const auto weightOf = [](const BuildingPlan& building) {
    return std::int64_t{building.index % 2 == 0 ? 25 : 21};
  };
  std::int64_t total = 0;
  for (const BuildingPlan& building : buildings) total += weightOf(building) * building.floors;
  Spread spread(shops, total);
  for (BuildingPlan& building : buildings) {
    for (int floor = 0; floor < building.floors; ++floor) {
      building.shops.push_back(spread.next(weightOf(building)));
    }
  }
}

// How long the ranks are between the rooms at both ends.
int innerLength(int shopsOnFloor, int rows, int& passages) {
  const std::int64_t inRanks = std::max(0, shopsOnFloor - 2 * rows - 1);
  const auto shopFront = static_cast<int>(inRanks * averageFrontPx / 2 / rows);
  passages = shopFront / passageEveryPx | 1;
  const int length = std::max(shopFront + passages * crossingPx, shortestInnerPx);
  return (length / metrePx + 1) * metrePx;
}

// As few rows as keep the building from being more than three times as long as deep.
int rowsFor(int shopsOnFloor) {
  int passages = 0;
  int rows = 1;
  while (innerLength(shopsOnFloor, rows, passages) + 2 * endDepthPx > rows * rowHeightPx * 3) {
    ++rows;
  }
  return rows;
}

void sizeBuilding(BuildingPlan& building, int rows) {
  int passages = 0;
  const int length = innerLength(largest(building.shops), rows, passages);
  building.concourses = rows;
  building.footprint = {0, 0, length + 2 * endDepthPx, rows * rowHeightPx};
  for (int i = 0; i < passages; ++i) {
    building.crossings.push_back(endDepthPx + (2 * i + 1) * (length / 2) / passages);
  }
}

void move(BuildingPlan& building, int right, int down) {
  Box& box = building.footprint;
  box = {box.left + right, box.top + down, box.right + right, box.bottom + down};
  for (int& x : building.crossings) x += right;
}

// As few columns of buildings as make the site at least as wide as it is deep.
int columnsFor(int buildings, int cellWidth, int cellHeight) {
  int columns = 1;
  while (columns * cellWidth < (buildings + columns - 1) / columns * cellHeight) ++columns;
  return columns;
}

void place(SitePlan& site, int cellWidth, int cellHeight, int columns) {
  for (BuildingPlan& building : site.buildings) {
    const int column = building.index % columns;
    const int row = building.index / columns;
    move(building,
         siteMarginPx + column * (cellWidth + gapPx) + (cellWidth - building.footprint.width()) / 2,
         siteMarginPx + row * (cellHeight + gapPx));
    if (column > 0) site.links.push_back({building.index - 1, building.index, false});
    if (row > 0) site.links.push_back({building.index - columns, building.index, true});
  }
  const int rows = (static_cast<int>(site.buildings.size()) + columns - 1) / columns;
  site.widthPx = 2 * siteMarginPx + columns * (cellWidth + gapPx) - gapPx;
  site.heightPx = 2 * siteMarginPx + rows * (cellHeight + gapPx) - gapPx;
}

void openEnds(SitePlan& site) {
  for (BuildingPlan& building : site.buildings) {
    (building.index % 2 == 0 ? building.openEast : building.openWest) = true;
  }
  for (const BuildingLink& link : site.links) {
    if (link.northSouth) continue;
    site.buildings[static_cast<std::size_t>(link.first)].openEast = true;
    site.buildings[static_cast<std::size_t>(link.second)].openWest = true;
  }
}

}  // namespace

SitePlan planSite(int buildings, int floors, std::int64_t shops) {
  SitePlan site;
  for (int i = 0; i < buildings; ++i) {
    BuildingPlan& building = site.buildings.emplace_back();
    building.index = i;
    building.floors = i % 2 == 0 ? floors : std::max(1, floors - 1);
    building.lowestLevel = floors >= 3 ? -1 : 0;
  }
  spreadShops(site.buildings, shops);
  const int rows = rowsFor(largest(site.buildings.front().shops));
  for (BuildingPlan& building : site.buildings) sizeBuilding(building, rows);
  int width = 0;
  for (const BuildingPlan& building : site.buildings) {
    width = std::max(width, building.footprint.width());
  }
  place(site, width, rows * rowHeightPx, columnsFor(buildings, width, rows * rowHeightPx));
  openEnds(site);
  return site;
}

}  // namespace tern::generate
