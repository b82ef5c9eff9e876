// Put before the module's loader. In node the loader reaches the file system through `require`
// and `__dirname`, which an ES module does not have: they are made here from the file's own
// address. In a browser both stay empty and the loader never asks for them.
const emNode = typeof process === 'object' && typeof process.versions?.node === 'string';
const require = emNode ? (await import('node:module')).createRequire(import.meta.url) : undefined;
const __dirname =
    emNode ? require('node:path').dirname(require('node:url').fileURLToPath(import.meta.url)) : '';
