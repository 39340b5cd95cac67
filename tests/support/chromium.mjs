// How tests start the browser: Debian's, without a word to anybody outside.
export const chromiumOptions = {
  executablePath: "/usr/bin/chromium",
  args: [
    "--no-sandbox",
    "--disable-gpu",
    "--disable-quic",
    "--no-first-run",
    "--disable-background-networking",
    "--disable-component-update",
    "--disable-sync",
  ],
};
