// What the tests of the module and of the page share: the tree's paths, the native tool of the
// same tree, files made by the project's generator, a static web server and the browser.
import {spawnSync} from 'node:child_process';
import {createReadStream, existsSync, mkdirSync, mkdtempSync, readFileSync, rmSync, statSync, writeFileSync} from 'node:fs';
import {createServer} from 'node:http';
import {tmpdir} from 'node:os';
import {basename, extname, join, normalize, resolve} from 'node:path';

export const RAIZ = resolve(new URL('../..', import.meta.url).pathname);
export const DIST = join(RAIZ, 'web/dist');
export const AMOSTRAS = join(RAIZ, 'samples');
// The native build of this tree that scripts/testar makes; QUORV_NATIVO names another.
export const NATIVO = process.env.QUORV_NATIVO ?? join(RAIZ, 'build/testes');
export const CLI = join(NATIVO, 'tools/quorvvalida/quorvvalida');
export const GERADOR = join(NATIVO, 'tools/gerador/quorvvalida-gerador');
export const BIBLIOTECA_EXEMPLO = join(NATIVO, 'tools/inscricao-exemplo/libDllInscE32.so');
// "Today" of every run on both sides, so that date checks agree whatever day the tests run.
export const HOJE = '20240630';
export const HOJE_ISO = '2024-06-30';

// Folders of the tests' own runs, removed when the tests end: a faulty file of 100,000 lines
// leaves a warnings file of about 100 MB.
const temporarios = [];
process.on('exit', () => {
  for (const pasta of temporarios)
    rmSync(pasta, {recursive: true, force: true});
});

export function temporario(prefixo) {
  const pasta = mkdtempSync(join(tmpdir(), prefixo));
  temporarios.push(pasta);
  return pasta;
}

/** Runs the native tool, in `pasta` when given; answers its exit code and its outputs. */
export function nativo(argumentos, ambiente = {}, pasta = undefined) {
  const r = spawnSync(CLI, argumentos, {
    cwd: pasta,
    encoding: 'utf8',
    maxBuffer: 1 << 30,
    env: {...process.env, LD_LIBRARY_PATH: '', ...ambiente},
  });
  if (r.error) throw r.error;
  return {codigo: r.status, saida: r.stdout, erros: r.stderr};
}

/** The warnings of the tool's JSON object of a validation, whichever of its formats. */
export function jsonNativo(argumentos, pasta = undefined) {
  const r = nativo([...argumentos, '--json'], {}, pasta);
  return {...r, objeto: JSON.parse(r.saida.trim().split('\n').pop())};
}

/** Fails unless `texto` is a JSON object that the tool's schema of `objeto` accepts. */
export function conformeAoEsquema(texto, objeto) {
  const esquema = join(RAIZ, `tools/quorvvalida/esquemas/${objeto}.schema.json`);
  const arquivo = join(temporario('quorv-json-'), `${objeto}.json`);
  writeFileSync(arquivo, texto);
  const r = spawnSync(
      'python3',
      [
        '-c',
        'import json,sys,jsonschema; jsonschema.validate(json.load(open(sys.argv[1])), json.load(open(sys.argv[2])))',
        arquivo, esquema
      ],
      {encoding: 'utf8'});
  if (r.status !== 0) throw new Error(`${objeto}: o esquema recusa o objeto: ${r.stderr}`);
}

/** The kind of a sample or generated file, told by its name. */
export const especieDe = (caminho) => (basename(caminho).startsWith('notas') ? 'notas' : 'fichas');

/** A file written by the project's generator, kept in the build folder for the next run. */
export function arquivoGerado(especie, linhas, defeitos) {
  const pasta = join(RAIZ, 'build/web-arquivos');
  mkdirSync(pasta, {recursive: true});
  const caminho = join(pasta, `${especie}${defeitos ? '-com-defeitos' : ''}-${linhas}.txt`);
  if (!existsSync(caminho)) {
    const r = spawnSync(
        GERADOR,
        [especie, '-n', String(linhas), ...(defeitos ? ['--defeitos'] : []), '-o', caminho]);
    if (r.status !== 0) throw new Error(`o gerador falhou: ${r.stderr}`);
  }
  return caminho;
}

export const AMOSTRAS_ARQUIVOS = [
  'notas-limpo.txt',
  'notas-com-defeitos.txt',
  'fichas-limpo.txt',
  'fichas-com-defeitos.txt',
].map((nome) => join(AMOSTRAS, nome));

// A sample with `linha` put in before its line of index `antes` (negative: from the end).
export function comLinha(amostra, antes, linha) {
  const linhas = readFileSync(amostra, 'latin1').split('\r\n');
  linhas.splice(antes < 0 ? linhas.length + antes : antes, 0, linha);
  return Buffer.from(linhas.join('\r\n'), 'latin1');
}

// A form sample whose fourth line has a record type that is not a number.
export function fichaComTipoDeLetras() {
  const linhas = readFileSync(AMOSTRAS_ARQUIVOS[2], 'latin1').split('\r\n');
  linhas[3] = `${linhas[3].slice(0, 8)}ABC${linhas[3].slice(11)}`;
  return Buffer.from(linhas.join('\r\n'), 'latin1');
}

const TIPOS = {
  '.html': 'text/html; charset=utf-8',
  '.css': 'text/css; charset=utf-8',
  '.js': 'text/javascript; charset=utf-8',
  '.wasm': 'application/wasm',
  '.svg': 'image/svg+xml',
  '.json': 'application/json',
  '.ts': 'text/plain; charset=utf-8',
};

/**
 * A static web server of web/dist on this computer, under a path prefix (the page must work from
 * any path). It records every request, so that a test can tell what reached it.
 */
export async function servidor(prefixo = '/') {
  const pedidos = [];
  const http = createServer((pedido, resposta) => {
    pedidos.push({
      metodo: pedido.method,
      url: pedido.url,
      tamanho: Number(pedido.headers['content-length'] ?? 0)
    });
    pedido.resume();
    const url = new URL(pedido.url, 'http://localhost');
    if (!url.pathname.startsWith(prefixo)) {
      resposta.writeHead(404).end();
      return;
    }
    let relativo = decodeURIComponent(url.pathname.slice(prefixo.length));
    if (relativo === '' || relativo.endsWith('/')) relativo += 'index.html';
    const caminho = normalize(join(DIST, relativo));
    if (!caminho.startsWith(DIST) || !existsSync(caminho) || !statSync(caminho).isFile()) {
      resposta.writeHead(404).end();
      return;
    }
    resposta.writeHead(200, {
      'content-type': TIPOS[extname(caminho)] ?? 'application/octet-stream',
      'cache-control': 'no-cache',
    });
    createReadStream(caminho).pipe(resposta);
  });
  await new Promise((ok) => http.listen(0, '127.0.0.1', ok));
  const endereco = `http://127.0.0.1:${http.address().port}${prefixo}`;
  return {endereco, pedidos, fecha: () => new Promise((ok) => http.close(ok))};
}

/**
 * Debian's Chromium, headless, with a fresh profile of its own (a persistent context is how
 * playwright takes a profile folder); never a browser of playwright's.
 */
export async function navegador(opcoes = {}) {
  const {chromium} = await import('playwright-core');
  return chromium.launchPersistentContext(temporario('quorv-chromium-'), {
    executablePath: '/usr/bin/chromium',
    headless: true,
    acceptDownloads: true,
    ...opcoes,
    args: [
      '--headless',
      '--no-sandbox',
      '--disable-gpu',
      '--disable-quic',
      '--no-first-run',
      '--disable-background-networking',
      '--disable-component-update',
      '--disable-sync',
    ],
  });
}

