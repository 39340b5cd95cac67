// The local mapping service over the sample venue: the command `tern` at TERN_COMMAND.
import { spawn } from "node:child_process";
import { once } from "node:events";
import { createInterface } from "node:readline";
import { fileURLToPath } from "node:url";
import { plazaFolder } from "./plaza.mjs";

export const command =
  process.env.TERN_COMMAND ?? fileURLToPath(new URL("../../../build/bin/tern", import.meta.url));

export const credentials = { customerId: 1, clientId: "local", clientSecret: "local" };

export async function startService(folder = fileURLToPath(plazaFolder)) {
  const service = spawn(command, ["serve", "--data", folder], {
    env: { ...process.env, TERN_CLIENT_SECRET: credentials.clientSecret },
    stdio: ["ignore", "pipe", "inherit"],
  });
  const [line] = await once(createInterface(service.stdout), "line");
  return {
    address: line.split(" ").at(-1),
    async stop() {
      service.kill();
      await once(service, "exit");
    },
  };
}
