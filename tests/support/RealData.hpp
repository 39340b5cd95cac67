// Real buildings from open data, for tests where it lies, which is in no repository: the folder
// that TERN_REALDATA names in the environment, else a folder "data" of this kind in a folder beside
// the checkout. Below it, network/<place>/ has a pedestrian network: nodes with floor ordinals and
// links with route types, both as GeoJSON; gtfs/<place>/ has a transit feed, imdf/<place>/ a
// building in the Indoor Mapping Data Format, and osm/ files of OpenStreetMap.
//
//   const auto data = test::realData();
//   if (!data) GTEST_SKIP() << test::noRealData;
//
// Ownership: values. Threads: any. Fails: never.
#pragma once

#include <filesystem>
#include <optional>

namespace tern::test {

// None where there is none.
std::optional<std::filesystem::path> realData();

// Why a test that needs it does nothing.
inline constexpr char noRealData[] =
    "no real buildings here: TERN_REALDATA names no folder, and none lies beside";

}  // namespace tern::test
