// Builds the page: build.mjs PACKAGES WASM OUT. PACKAGES is the folder of node_modules that the lock
// file describes, WASM the library, and OUT the folder that any server of files can give.
import { copyFileSync, mkdirSync, readFileSync, rmSync, writeFileSync } from "node:fs";
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
const { metafile } = await esbuild.build({
  absWorkingDir: here,
  entryPoints: {
    main: "src/main.ts",
    "worker-host": join(library, "worker-host.js"),
  },
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
  nodePaths: [join(packages, "node_modules")],
  alias: {
    terncorekit: join(library, "index.js"),
    "terncorekit/worker": join(library, "worker.js"),
  },
  logLevel: "warning",
});
const styles = await esbuild.build({
  absWorkingDir: here,
  entryPoints: { main: "src/theme/main.css" },
  outdir: out,
  bundle: true,
  minify: true,
  logLevel: "warning",
});
if (styles.warnings.length > 0) process.exit(1);

// What the page's scripts import is asked for along with the page.
const outputs = Object.keys(metafile.outputs).map((path) => basename(path));
const later = outputs.filter((name) => name.endsWith(".js") && !/^(main|worker-host)\.js$/.test(name));
const preloads = later.map((name) => `<link rel="modulepreload" href="${name}">`);
// Browsers ask for an icon again whenever the address changes: here it is in the page.
const icon = readFileSync(join(here, "icons/explorer.svg"), "utf8").replace(/\n\s*/g, "");
const page = readFileSync(join(here, "index.html"), "utf8")
  .replace("{policy}", policy.filter((rule) => !rule.startsWith("frame-ancestors")).join("; "))
  .replace("{icon}", `data:image/svg+xml,${encodeURIComponent(icon)}`)
  .replace("{preloads}", preloads.join("\n    "));
writeFileSync(join(out, "index.html"), page);
writeFileSync(join(out, "config.json"), '{ "data": "data/" }\n');
copyFileSync(wasm, join(out, "terncorekit.wasm"));
