// Benchmark: the 1,000,000-line invoice file validated by the native tool, by the module in node
// and by the page in headless Chromium, in turns within one run, and what Chromium alone takes to
// hand the file's bytes to a worker; every registration accepted on all three sides
// (--sem-verificar-inscricao, the module's AceitarTodasInscricoes, the page's "aceitar todas"),
// "today" pinned. Prints the medians, the ratios to the native tool and the module's size. Not
// part of CI: node web/testes/bancada.mjs [REPETICOES]
import {spawnSync} from 'node:child_process';
import {statSync} from 'node:fs';
import {basename, join} from 'node:path';

import carregarQuorvValida from '../dist/modulo/index.js';

import {arquivoGerado, CLI, DIST, HOJE, HOJE_ISO, navegador, servidor, temporario} from './apoio.mjs';

const repeticoes = Number(process.argv[2] ?? 5);
const linhas = 1000000;
const arquivo = arquivoGerado('notas', linhas, false);
const mediana = (valores) => {
  const v = [...valores].sort((a, b) => a - b);
  return v[Math.floor(v.length / 2)];
};

// The native tool: the whole process, as a person or a script runs it.
function nativo() {
  const diretorio = temporario('quorv-bancada-');
  const inicio = performance.now();
  const r = spawnSync(
      CLI, ['notas', arquivo, '-q', '-d', diretorio, '--hoje', HOJE, '--sem-verificar-inscricao']);
  const tempo = performance.now() - inicio;
  if (r.status !== 0) throw new Error(`o programa nativo saiu com ${r.status}`);
  return tempo;
}

// The module in node: the file read where it is (NODEFS), the call to Valida_Dados timed.
const q = await carregarQuorvValida();
q.FS.mkdir('/dados');
q.FS.mount(q.FS.filesystems.NODEFS, {root: join(arquivo, '..')}, '/dados');
q.FS.mkdir('/trabalho');
q.AceitarTodasInscricoes();
const hoje = q.SerialDaData(2024, 6, 30);
function modulo() {
  const v = new q.Validacao();
  v.Hoje = () => hoje;
  const inicio = performance.now();
  const status = v.Valida_Dados(`/dados/${basename(arquivo)}`, {valor: ''}, '/trabalho');
  const tempo = performance.now() - inicio;
  v.delete();
  if (status !== 0) throw new Error(`o módulo respondeu ${status}`);
  return tempo;
}

// The page: the file chosen, the run in the worker timed there (the page shows it), and the
// whole wait from choosing the file to the result on screen.
const http = await servidor('/');
const contexto = await navegador();
const pagina = contexto.pages()[0] ?? (await contexto.newPage());
await pagina.goto(http.endereco);
await pagina.locator('#avancado summary').click();
await pagina.fill('input[name="hoje"]', HOJE_ISO);
await pagina.selectOption('select[name="inscricao"]', 'todas');
let vez = 0;
async function navegadorChromium() {
  const inicio = performance.now();
  await pagina.setInputFiles('#arquivos', arquivo);
  ++vez;
  const estado = pagina.locator(`#lista-arquivos li:nth-child(${vez}) .estado`);
  await estado.filter({hasText: 'validado em'}).waitFor({timeout: 120000});
  const total = performance.now() - inicio;
  const texto = await estado.textContent();
  const segundos =
      Number(texto.match(/validado em ([\d.,]+) s/)[1].replace('.', '').replace(',', '.'));
  return {validacao: segundos * 1000, total};
}

// What the browser alone costs: the same file handed to a worker of a page of its own and read
// as the page's worker reads it (FileReaderSync, 16 MiB at a time, each window copied out in the
// library's 64 KiB reads), without validating.
const paginaLeitura = await contexto.newPage();
await paginaLeitura.goto(http.endereco);
await paginaLeitura.setContent('<input type="file" id="arquivo">');
await paginaLeitura.setInputFiles('#arquivo', arquivo);
async function leituraChromium() {
  return paginaLeitura.evaluate(() => {
    const codigo = `onmessage = ({data: arquivo}) => {
      const leitor = new FileReaderSync();
      const JANELA = 16 * 1024 * 1024;
      const leitura = new Uint8Array(64 * 1024);
      const inicio = performance.now();
      for (let posicao = 0; posicao < arquivo.size; posicao += JANELA) {
        const janela = new Uint8Array(leitor.readAsArrayBuffer(
            arquivo.slice(posicao, Math.min(arquivo.size, posicao + JANELA))));
        for (let de = 0; de < janela.length; de += leitura.length)
          leitura.set(janela.subarray(de, Math.min(janela.length, de + leitura.length)));
      }
      postMessage(performance.now() - inicio);
    };`;
    const endereco = URL.createObjectURL(new Blob([codigo], {type: 'text/javascript'}));
    const trabalhador = new Worker(endereco);
    return new Promise((resolve) => {
      trabalhador.onmessage = ({data}) => {
        trabalhador.terminate();
        URL.revokeObjectURL(endereco);
        resolve(data);
      };
      trabalhador.postMessage(document.getElementById('arquivo').files[0]);
    });
  });
}

const tempos = {
  nativo: [],
  node: [],
  chromium: [],
  chromiumTotal: [],
  leitura: []
};
modulo();
for (let i = 0; i < repeticoes; ++i) {
  tempos.nativo.push(nativo());
  tempos.node.push(modulo());
  const c = await navegadorChromium();
  tempos.chromium.push(c.validacao);
  tempos.chromiumTotal.push(c.total);
  tempos.leitura.push(await leituraChromium());
}
await contexto.close();
await http.fecha();

const n = mediana(tempos.nativo);
const linha = (nome, valores) =>
    `| ${nome} | ${(mediana(valores) / 1000).toFixed(3)} | ${(mediana(valores) / n).toFixed(2)} |`;
console.log(
    `${basename(arquivo)}: ${statSync(arquivo).size} bytes, ${repeticoes} vezes cada, medianas`);
console.log('| quem valida | tempo (s) | razão ao nativo |');
console.log('|---|---:|---:|');
console.log(linha('programa nativo (processo inteiro)', tempos.nativo));
console.log(linha('módulo em node (Valida_Dados)', tempos.node));
console.log(linha('página no Chromium (Valida_Dados no worker)', tempos.chromium));
console.log(linha('página no Chromium (da escolha ao resultado)', tempos.chromiumTotal));
console.log(linha('Chromium só lendo o arquivo no worker, sem validar', tempos.leitura));
const wasm = statSync(join(DIST, 'modulo/quorvvalida.wasm')).size;
const js = statSync(join(DIST, 'modulo/quorvvalida.js')).size;
console.log(`módulo: ${wasm} bytes de wasm, ${js} bytes de JavaScript`);
