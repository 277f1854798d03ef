// Serves web/dist on the loopback address with the cross-origin isolation headers the engine
// needs (SharedArrayBuffer), on every answer, errors included.
//   npm --prefix web run serve -- [--port N] [--host ADDRESS] [--root DIR] [--no-isolation]
// --host opens it wider (e.g. 0.0.0.0 for the local network); --no-isolation leaves the
// isolation headers out, as a static host that cannot set headers would, so that the page's
// service worker has to add them. Only files under the root are served: any path with a `..`
// segment, raw or percent-encoded, is answered 404.
import { createReadStream, realpathSync, statSync } from "node:fs";
import { createServer } from "node:http";
import { extname, join, resolve, sep } from "node:path";
import { fileURLToPath } from "node:url";
import { parseArgs } from "node:util";

const { values: options } = parseArgs({
  options: {
    port: { type: "string", default: "8080" },
    host: { type: "string", default: "127.0.0.1" },
    root: { type: "string", default: fileURLToPath(new URL("../dist", import.meta.url)) },
    "no-isolation": { type: "boolean", default: false },
  },
});

const root = realpathSync(resolve(options.root));
const types = {
  ".html": "text/html; charset=utf-8",
  ".js": "text/javascript; charset=utf-8",
  ".css": "text/css; charset=utf-8",
  ".wasm": "application/wasm",
  ".svg": "image/svg+xml",
  ".json": "application/json",
  ".map": "application/json",
  ".png": "image/png",
};

function headers(extra) {
  const all = { "Cache-Control": "no-cache", "X-Content-Type-Options": "nosniff", ...extra };
  if (!options["no-isolation"]) {
    all["Cross-Origin-Opener-Policy"] = "same-origin";
    all["Cross-Origin-Embedder-Policy"] = "require-corp";
    all["Cross-Origin-Resource-Policy"] = "same-origin";
  }
  return all;
}

// The file a request's path names under the root, or null. The path is decoded until it stops
// changing, so that doubly encoded dots are seen too, and refused if any segment is `..`.
function fileFor(rawUrl) {
  let path = rawUrl.split(/[?#]/)[0];
  for (let round = 0; ; round++) {
    if (path.includes("\0") || path.split(/[/\\]/).includes("..")) return null;
    let decoded;
    try {
      decoded = decodeURIComponent(path);
    } catch {
      return null;
    }
    if (decoded === path) break;
    if (round === 3) return null; // encoded four times over: no page of ours looks like that
    path = decoded;
  }
  if (path.endsWith("/")) path += "index.html";
  let file;
  try {
    file = realpathSync(join(root, path));
  } catch {
    return null;
  }
  if (!file.startsWith(root + sep)) return null;
  return statSync(file).isFile() ? file : null;
}

const server = createServer((request, response) => {
  if (request.method !== "GET" && request.method !== "HEAD") {
    response.writeHead(405, headers({ Allow: "GET, HEAD", "Content-Type": "text/plain" }));
    response.end("method not allowed\n");
    return;
  }
  const file = fileFor(request.url || "/");
  if (!file) {
    response.writeHead(404, headers({ "Content-Type": "text/plain; charset=utf-8" }));
    response.end("not found\n");
    return;
  }
  const type = types[extname(file)] || "application/octet-stream";
  response.writeHead(200, headers({ "Content-Type": type, "Content-Length": statSync(file).size }));
  if (request.method === "HEAD") response.end();
  else createReadStream(file).pipe(response);
});

server.listen(Number(options.port), options.host, () => {
  const { address, port } = server.address();
  const shown = address.includes(":") ? `[${address}]` : address;
  console.log(`serving ${root} at http://${shown}:${port}/`);
});
