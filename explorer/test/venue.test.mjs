import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { test } from "node:test";
import { modules, root } from "./support/modules.mjs";

const { readVenue, folded, frameOf, withFrame, nameIn, signedFloor, cleared, darkened, drawnDark } =
  await modules(
    "venue/read",
    "venue/names",
    "venue/frame",
    "venue/signs",
    "venue/drawing",
    "venue/colours",
  );

const document = (path) => JSON.parse(readFileSync(join(root, "data/plaza", path), "utf8"));
const plaza = readVenue(document("venue/1/full.json"), [
  document("venue/1/building/1/full.json"),
  document("venue/1/building/2/full.json"),
]);

test("buildings have their floors from the top", () => {
  const floors = plaza.buildings.map(({ names, floors }) => [
    names.name,
    floors.map((floor) => floor.shortName).join(" "),
  ]);
  assert.deepEqual(floors, [["Garden Hall", "2 1 G LG"], ["Harbour Hall", "1 G LG"]]);
  assert.equal(plaza.firstFloor.map, 12);
});

test("a floor that nobody walks on is not the first that is shown", () => {
  const floor = (id, level, waypoints) => ({ id, level, map: { id, waypoints } });
  const one = { items: [{ id: 1, coordinates: [5, 5] }] };
  const first = (floors, defaultFloorId) =>
    readVenue({}, [{ id: 1, defaultFloorId, floors: { items: floors } }]).firstFloor.map;
  const floors = [floor(7, -2, one), floor(8, 0), floor(9, 1, { items: [{ id: 2, coordinates: [1, 1] }] })];
  assert.equal(first(floors, 8), 9);
  assert.equal(first(floors, 7), 7);
  assert.equal(first([floor(8, 0), floor(9, 1)], 9), 9);
});

test("places have their names in the languages of the venue", () => {
  const market = plaza.places.find((place) => place.names.name === "Saffron Market");
  assert.equal(nameIn("de", market.names), "Saffron Markt");
  assert.equal(nameIn("es", market.names), "Saffron Market");
  assert.deepEqual(market.spots.map((spot) => spot.waypoint), [11010, 11011]);
  assert.equal(nameIn("fr", market.categories[0]), "Alimentation");
});

test("levels are those that make a difference, each with what it leaves out", () => {
  const levels = plaza.levels.map(({ accessibility, without }) => [
    accessibility,
    ...without.map((type) => type.names.name),
  ]);
  assert.deepEqual(levels, [[0, "Escalator", "Stairs"], [50, "Stairs"], [100]]);
});

test("waypoints that paths of one type join are one mover", () => {
  const lifts = plaza.movers.filter((mover) => mover.type.names.name === "Lift");
  assert.equal(lifts.length, 4);
  const maps = lifts.map((lift) => lift.spots.map((spot) => spot.map).sort().join(" "));
  assert.deepEqual(maps.sort(), ["11 12 13 14", "11 12 13 14", "21 22 23", "21 22 23"]);
  assert.equal(lifts[0].id, Math.min(...lifts[0].spots.map((spot) => spot.waypoint)));
});

test("documents that are not as they should be make a smaller venue and no error", () => {
  const wrong = [null, 7, "x", [], {}, { items: 3 }, { items: [null, 4, [], { id: "a" }] }];
  for (const each of wrong) {
    for (const key of ["buildings", "destinations", "amenities", "pathTypes", "extensors", "map"]) {
      const venue = readVenue({ id: 1, name: 5, [key]: each }, [{ id: 1, floors: each }]);
      assert.equal(venue.places.length, 0);
      assert.equal(venue.names.name, "");
    }
  }
  const floors = { items: [{ level: "1", map: { id: 3, svg: 5, mmPerPixel: -1, waypoints: 1 } }] };
  const [floor] = readVenue({}, [{ floors }]).floors.values();
  assert.deepEqual([floor.level, floor.mmPerUnit, floor.drawing], [null, null, ""]);
  assert.ok(floor.frame.every(Number.isFinite));
});

test("names and symbols leave the drawing for where they stood", () => {
  const floor = plaza.floors.get(12);
  const { drawing, signs } = signedFloor(plaza, floor);
  const at = (name) => signs.find((sign) => sign.place?.names.name === name).at.map(Math.round);
  // In the middle of the shop, not at its door.
  assert.deepEqual(at("Lattice Paper"), [850, 299]);
  assert.deepEqual(at("Toilets"), [1340, 300]);
  assert.doesNotMatch(drawing, /Lattice Paper|>Spindle<|>Bellwether</);
  assert.match(drawing, />Harbour Hall</);
  assert.match(floor.drawing, /Lattice Paper/);
  const lifts = signs.filter((sign) => sign.mover?.type.names.name === "Lift");
  assert.deepEqual(lifts.map((sign) => sign.at), [[1060, 375], [1060, 765]]);
  const open = (text) => text.match(/<(?!\/)[a-z]+/g).length;
  assert.ok(open(drawing) < open(floor.drawing));
});

test("each place of a floor has a sign, whatever its drawing holds", () => {
  for (const floor of plaza.floors.values()) {
    const { signs } = signedFloor(plaza, { ...floor, drawing: "" });
    const there = plaza.places.filter((each) => each.spots.some((spot) => spot.map === floor.map));
    for (const place of there) assert.ok(signs.some((sign) => sign.place === place));
  }
});

test("nothing is read out of a drawing that moves what it draws", () => {
  const wanted = [{ key: 1, name: "Inn", symbol: "", near: [[5, 5]] }];
  const text = '<text x="5" y="5">Inn</text>';
  assert.equal(cleared(`<svg>${text}</svg>`, wanted, 10).drawing, "<svg></svg>");
  const moved = `<svg><g transform="translate(2 0)">${text}</g></svg>`;
  assert.equal(cleared(moved, wanted, 10).drawing, moved);
  const far = '<svg><text x="500" y="5">Inn</text></svg>';
  assert.equal(cleared(far, wanted, 10).drawing, far);
});

test("names are read out of a drawing that one group around all of it scales", () => {
  const names = '<text x="50" y="50">Inn</text>';
  const wanted = [{ key: 1, name: "Inn", symbol: "", near: [[5, 5]] }];
  const around = (words) => `<svg viewBox="0 0 9 9"><g transform="scale(0.1)">${words}</g></svg>`;
  const { drawing, at } = cleared(around(names), wanted, 10);
  assert.equal(drawing, around(""));
  assert.deepEqual(at.get(1), [[5, 5]]);
  const twice = around(`<g transform="scale(3)">${names}</g>`);
  assert.equal(cleared(twice, wanted, 10).drawing, twice);
});

test("a drawing says its frame by its box or by its size", () => {
  assert.deepEqual(frameOf('<svg viewBox="-5 0 20,30">'), [-5, 0, 20, 30]);
  assert.deepEqual(frameOf("<svg width='40px' height = '50'>"), [0, 0, 40, 50]);
  assert.equal(frameOf('<svg viewBox="0 0 0 10">'), null);
  assert.equal(frameOf("<svg width='100%' height='100%'>"), null);
  assert.equal(frameOf(""), null);
});

test("a drawing fills its image, whatever it says itself", () => {
  const drawing = '<?xml version="1.0"?><svg width="5" height="6" id="a"><g/></svg>';
  assert.equal(
    withFrame(drawing, [0, 0, 5, 6]),
    '<?xml version="1.0"?><svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 5 6" width="5"' +
      ' height="6" preserveAspectRatio="none" id="a"><g/></svg>',
  );
});

test("after dark light colours are dark, dark ones light, and grey ones grey", () => {
  const lightness = (hex) => {
    const bytes = [1, 3, 5].map((at) => parseInt(hex.slice(at, at + 2), 16));
    return (Math.max(...bytes) + Math.min(...bytes)) / 510;
  };
  assert.ok(lightness(darkened("#ffffff")) < 0.15);
  assert.ok(lightness(darkened("#000")) > 0.85);
  assert.match(darkened("#fff8"), /^#1c1c1c88$/);
  const turned = drawnDark('<a fill="#ffffff" stroke=\'black\' d="M#ffffff" style="fill:#fff"/>');
  assert.equal(turned, '<a fill="#1c1c1c" stroke=\'#e8e8e8\' d="M#ffffff" style="fill:#1c1c1c"/>');
});

test("folded names are alike whatever their case, accents and width", () => {
  assert.equal(folded(" Café STRASSE ｱ"), folded("cafe straße ア"));
});
