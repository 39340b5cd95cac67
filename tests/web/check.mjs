// Reads GeoJSON files with a validator and draws them with a map library in a browser:
// check.mjs WEST SOUTH EAST NORTH FILE... Every feature has to lie within these degrees, to be drawn
// with some size, and the browser to have nothing to complain of.
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import checker from "@placemarkio/check-geojson";
import { chromium } from "playwright-core";
import { chromiumOptions } from "../../tests/support/chromium.mjs";

const require = createRequire(import.meta.url);
const leaflet = require.resolve("leaflet");
const [west, south, east, north] = process.argv.slice(2, 6).map(Number);
const files = process.argv.slice(6);
const complaints = [];

function complain(file, text) {
  complaints.push(`${file}: ${text}`);
}

function refuses(text) {
  try {
    checker.check(text);
    return false;
  } catch {
    return true;
  }
}

function checkFeature(file, { geometry, properties }) {
  const positions = geometry.type === "Point" ? [geometry.coordinates] : geometry.coordinates;
  for (const [longitude, latitude] of positions) {
    const isThere =
      longitude >= west && longitude <= east && latitude >= south && latitude <= north;
    if (!isThere) complain(file, `${longitude},${latitude} lies elsewhere`);
    for (const degrees of [longitude, latitude]) {
      if (!/^-?\d+(\.\d{1,8})?$/.test(String(degrees))) complain(file, `${degrees} has more digits`);
    }
  }
  for (const name of ["kind", "floor", "mapId", "building", "metres"]) {
    if (!(name in properties)) complain(file, `a feature has no ${name}`);
  }
}

// What is drawn of the features: the size of each path, in pixels.
function draw(features) {
  document.body.innerHTML = '<div id="map" style="width: 900px; height: 700px"></div>';
  const map = L.map("map", { zoomSnap: 0, zoomAnimation: false });
  const layer = L.geoJSON(features, {
    smoothFactor: 0,
    pointToLayer: (feature, position) => L.circleMarker(position),
  });
  layer.addTo(map);
  map.fitBounds(layer.getBounds(), { animate: false });
  return [...document.querySelectorAll("#map .leaflet-overlay-pane path")].map((path) => {
    const box = path.getBoundingClientRect();
    return Math.max(box.width, box.height);
  });
}

const browser = await chromium.launch(chromiumOptions);
const page = await browser.newPage();
let file = "";
page.on("console", (message) => {
  if (message.type() === "error") complain(file, message.text());
});
page.on("pageerror", (error) => complain(file, error.message));
page.on("request", (request) => {
  if (request.url().startsWith("http")) complain(file, `${request.url()} is asked for`);
});
await page.addStyleTag({ path: require.resolve("leaflet/dist/leaflet.css") });
await page.addScriptTag({ path: leaflet });

for (file of files) {
  const text = readFileSync(file, "utf8");
  if (refuses(text)) complain(file, "the validator refuses it");
  const { features } = JSON.parse(text);
  for (const feature of features) checkFeature(file, feature);
  const sizes = await page.evaluate(draw, features);
  if (features.length === 0) complain(file, "nothing is in it");
  if (sizes.length !== features.length) complain(file, `${sizes.length} of ${features.length} drawn`);
  if (sizes.some((size) => !(size > 0))) complain(file, "something is drawn without a size");
  console.log(`${file}: ${features.length} features`);
}

// The controls: what is wrong is seen.
file = "control";
if (!refuses('{"type":"Feature","geometry":{"type":"Point","coordinates":["a",1]},"properties":null}')) {
  complain(file, "the validator refuses nothing");
}
const before = complaints.length;
await page.evaluate(() => console.error("seen"));
if (complaints.length === before) complain(file, "no error of the browser is heard");
complaints.splice(before, 1);
await browser.close();

for (const complaint of complaints) console.error(complaint);
process.exit(complaints.length === 0 && files.length > 0 ? 0 : 1);
