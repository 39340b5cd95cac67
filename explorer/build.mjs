// Builds the page: build.mjs PACKAGES WASM OUT. PACKAGES is the folder of node_modules that the lock
// file describes, WASM the library, and OUT the folder that any server of files can give.
import { copyFileSync, mkdirSync, readFileSync, readdirSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { basename, join, resolve } from "node:path";
import { fileURLToPath } from "node:url";
import { policy } from "./policy.mjs";

const [packages, wasm, out] = process.argv.slice(2).map((path) => resolve(path));
const here = fileURLToPath(new URL(".", import.meta.url));
const library = join(here, "../bindings/js/src");
const esbuild = createRequire(join(packages, "here"))("esbuild");

rmSync(out, { recursive: true, force: true });
mkdirSync(out, { recursive: true });
const scripts = {
  absWorkingDir: here,
  outdir: out,
  bundle: true,
  splitting: true,
  format: "esm",
  target: ["es2022", "chrome94", "firefox93", "safari16"],
  minify: true,
  metafile: true,
  legalComments: "none",
  charset: "utf8",
  chunkNames: "[name]-[hash]",
  logLevel: "warning",
};
// Chromium compiles what runs after the first picture whole and beside the page, not bit by bit while
// somebody waits for the answer to a first touch.
const rest = await esbuild.build({
  ...scripts,
  banner: { js: "//# allFunctionsCalledOnLoad" },
  entryPoints: { app: "src/app.ts", "worker-host": join(library, "worker-host.js") },
  nodePaths: [join(packages, "node_modules")],
  alias: {
    terncorekit: join(library, "index.js"),
    "terncorekit/worker": join(library, "worker.js"),
  },
});
// The first script shares no file with the rest: what the first picture needs comes with one request.
const first = await esbuild.build({
  ...scripts,
  entryPoints: { main: "src/main.ts" },
  external: ["*/app.js"],
});
const metafile = {
  inputs: { ...first.metafile.inputs, ...rest.metafile.inputs },
  outputs: { ...first.metafile.outputs, ...rest.metafile.outputs },
};
const styles = await esbuild.build({
  absWorkingDir: here,
  entryPoints: { main: "src/theme/main.css" },
  outdir: out,
  bundle: true,
  minify: true,
  logLevel: "warning",
});
if (styles.warnings.length > 0) process.exit(1);

// Whose work is in the page, with what they ask whoever hands it on to say.
function licences() {
  const used = Object.keys(metafile.inputs).map((path) => /node_modules\/((?:@[^/]+\/)?[^/]+)\//.exec(path)?.[1]);
  const names = [...new Set(used)].filter((name) => name !== undefined).sort();
  return names.map((name) => {
    const folder = join(packages, "node_modules", name);
    const file = readdirSync(folder).find((each) => /^licen[cs]e/i.test(each));
    const { version, license } = JSON.parse(readFileSync(join(folder, "package.json"), "utf8"));
    const text = file === undefined ? license : readFileSync(join(folder, file), "utf8").trim();
    return `${name} ${version}\n\n${text}\n`;
  });
}

// What the page's first script and the map import is asked for along with the page; what somebody
// has to ask for, such as printing, only then.
const outputs = new Map(Object.entries(metafile.outputs).map(([path, each]) => [basename(path), each]));
const early = new Set();
function addWithImports(name) {
  if (early.has(name)) return;
  early.add(name);
  const imports = outputs.get(name).imports.filter((each) => each.kind === "import-statement");
  for (const { path } of imports) addWithImports(basename(path));
}
addWithImports("main.js");
addWithImports("app.js");
early.delete("main.js");
const preloads = [...early].map((name) => `<link rel="modulepreload" href="${name}">`);
// Browsers ask for an icon again whenever the address changes: here it is in the page.
const icon = readFileSync(join(here, "icons/explorer.svg"), "utf8").replace(/\n\s*/g, "");
const page = readFileSync(join(here, "index.html"), "utf8")
  .replace("{policy}", policy.filter((rule) => !rule.startsWith("frame-ancestors")).join("; "))
  .replace("{icon}", `data:image/svg+xml,${encodeURIComponent(icon)}`)
  .replace("{preloads}", preloads.join("\n    "));
writeFileSync(join(out, "index.html"), page);
writeFileSync(join(out, "config.json"), '{ "data": "data/" }\n');
const own = `The explorer and TernCoreKit\n\n${readFileSync(join(here, "../LICENSE"), "utf8").trim()}\n`;
writeFileSync(join(out, "licences.txt"), [...licences(), own].join(`\n${"-".repeat(72)}\n\n`));
copyFileSync(wasm, join(out, "terncorekit.wasm"));
