// What the types promise, as a program that compiles.
import {
  Files,
  FilesInMemory,
  Hub,
  Segment,
  Step,
  TernError,
  Venue,
  fetchDocuments,
  load,
} from "terncorekit";
import { startWorker } from "terncorekit/worker";

const files: Files = new FilesInMemory();
const tern = await load({ maximumBytes: 2 ** 28, files, log: (line) => console.log(line.length) });
const venue: Venue = tern.open({ documents: (path) => (path === "full.json" ? "{}" : undefined) });
const segments: Segment[] = venue.route({ from: 1, to: 2, accessibility: 1 });
const metres: number | undefined = segments[segments.length - 1]?.mmDistance;
const costs: Float64Array = venue.matrix({ from: [1], to: [2] }).costs;
const nearest: number | null = venue.nearest({ map: 1, at: [2, 3], amenity: 4 }).waypoint;
const walked: Segment[] = venue.nearest({ from: 1, destinations: [4, 5] }).route;
const step: Step | undefined = venue.directions({ from: 1, to: 2 }).steps[0];
const waypoint: number | undefined = step?.at;
const closest: number | null = venue.closest({ map: 1, at: [2, 3] });
venue.blockEdge({ from: 1, to: 2, blocked: true });
for await (const text of venue.batch(["{}", { op: "center" }])) console.log(text.length);
venue.close();

// @ts-expect-error a route needs where it leads
venue.route({ from: 1 });
// @ts-expect-error several are looked for by the names of lists
venue.nearest({ from: 1, destination: [4, 5] });
// @ts-expect-error a venue is opened and not made
new Venue();

try {
  const shared = await Venue.fetch("https://maps.example.com/plaza/", { venues: [1, 2] });
  const hub: Hub = await Hub.open({
    host: "https://maps.example.com",
    customerId: 1,
    clientId: "app",
    clientSecret: "secret",
  });
  const names: string[] = (await hub.list()).map(({ name }) => name);
  console.log(shared.places("books")[0]?.name, names, metres, costs.length, nearest, walked);
  console.log(waypoint, closest);
} catch (error) {
  if (error instanceof TernError) console.log(error.code, error.description);
}

const worker = await startWorker({ maximumBytes: 2 ** 28 });
const documents = await fetchDocuments("https://maps.example.com/plaza/", { venues: [1] });
const remote = await worker.open({ documents });
const { signal } = new AbortController();
await worker.fetch("https://maps.example.com/plaza/", { signal });
await remote.blockEntry({ node: 1, blocked: true });
const route: Segment[] = await remote.route({ from: 1, to: 2 });
console.log(route.length);
await worker.close();
