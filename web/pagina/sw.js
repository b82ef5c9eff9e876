// Keeps the page and the module on this computer, so that the page opens and validates without
// a network once it has been opened. The build writes the list of files and a version made from
// their contents: a new build replaces the old copies.
const VERSAO = '__VERSAO__';
const ARQUIVOS = __ARQUIVOS__;

self.addEventListener('install', (evento) => {
  evento.waitUntil(
      caches.open(VERSAO).then((cache) => cache.addAll(ARQUIVOS)).then(() => self.skipWaiting()),
  );
});

self.addEventListener('activate', (evento) => {
  evento.waitUntil(
      caches.keys()
          .then(
              (nomes) =>
                  Promise.all(nomes.filter((n) => n !== VERSAO).map((n) => caches.delete(n))))
          .then(() => self.clients.claim()),
  );
});

// The page's own files come from the copies; anything else goes to the network as usual.
self.addEventListener('fetch', (evento) => {
  if (evento.request.method !== 'GET') return;
  evento.respondWith(
      caches.open(VERSAO)
          .then((cache) => cache.match(evento.request, {ignoreSearch: true}))
          .then((guardado) => guardado || fetch(evento.request)),
  );
});
