// Cross-origin isolation for hosts that cannot send headers. The engine needs SharedArrayBuffer,
// which a browser gives only to a page served with COOP same-origin and COEP require-corp. Loaded
// as the page's first script, this file registers itself as a service worker that re-serves
// every answer of this site with those headers, then reloads the page once so that the worker
// serves it. Loaded as the service worker, it adds the headers.
"use strict";

if (typeof window === "undefined") {
  self.addEventListener("install", () => self.skipWaiting());
  self.addEventListener("activate", (event) => event.waitUntil(self.clients.claim()));
  self.addEventListener("fetch", (event) => {
    const request = event.request;
    if (request.cache === "only-if-cached" && request.mode !== "same-origin") return;
    event.respondWith(
      fetch(request).then((response) => {
        if (response.status === 0) return response; // opaque: nothing to add to
        const headers = new Headers(response.headers);
        headers.set("Cross-Origin-Opener-Policy", "same-origin");
        headers.set("Cross-Origin-Embedder-Policy", "require-corp");
        headers.set("Cross-Origin-Resource-Policy", "same-origin");
        return new Response(response.body, {
          status: response.status,
          statusText: response.statusText,
          headers,
        });
      }),
    );
  });
} else {
  (() => {
    const reloadedKey = "korvane-isolation-reload";
    if (window.crossOriginIsolated) {
      sessionStorage.removeItem(reloadedKey);
      return;
    }
    // One reload at most: if the page is still not isolated after it, the page says so.
    if (sessionStorage.getItem(reloadedKey)) {
      sessionStorage.removeItem(reloadedKey);
      window.korvaneIsolation = "failed";
      return;
    }
    if (!window.isSecureContext || !("serviceWorker" in navigator)) {
      window.korvaneIsolation = "unavailable";
      return;
    }
    window.korvaneIsolation = "reloading";
    // A registration that fails, or that never settles (a browser that blocks service workers
    // may leave it pending), leaves the page as it is, without the engine; it says why.
    const giveUp = () => {
      if (window.korvaneIsolation !== "reloading") return;
      window.korvaneIsolation = "unavailable";
      window.dispatchEvent(new Event("korvane-isolation"));
    };
    const timer = setTimeout(giveUp, 5000);
    navigator.serviceWorker
      .register(document.currentScript.src)
      .then(() => navigator.serviceWorker.ready)
      .then(() => {
        clearTimeout(timer);
        sessionStorage.setItem(reloadedKey, "1");
        window.location.reload();
      })
      .catch(giveUp);
  })();
}
