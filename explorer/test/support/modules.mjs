// The page's modules for tests in Node: compiled to one file below build/, and imported from there.
import { mkdirSync } from "node:fs";
import { createRequire } from "node:module";
import { join } from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";

export const root = fileURLToPath(new URL("../../../", import.meta.url));
export const packages = createRequire(join(root, "build/explorer-packages/here"));

// `names` are paths below explorer/src, without their ends.
export async function modules(...names) {
  const out = join(root, "build/explorer-tests");
  mkdirSync(out, { recursive: true });
  const contents = names.map((name) => `export * from "./${name}.ts";`).join("\n");
  const outfile = join(out, `${names.join("-").replaceAll("/", "-")}.mjs`);
  await packages("esbuild").build({
    stdin: { contents, resolveDir: join(root, "explorer/src"), loader: "ts" },
    bundle: true,
    format: "esm",
    platform: "neutral",
    outfile,
    logLevel: "warning",
  });
  return import(pathToFileURL(outfile).href);
}
