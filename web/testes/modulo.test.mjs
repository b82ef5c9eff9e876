// The WebAssembly module in node against the native tool of the same tree: the same files, the
// same "today" and the same state-registration checker on both sides give the same warnings
// files byte for byte, the same statuses, remessa numbers and exit codes, the same return files
// of the web facade, and the page's JSON gives the tool's warnings.
import assert from 'node:assert/strict';
import {spawnSync} from 'node:child_process';
import {existsSync, readFileSync, rmSync, writeFileSync} from 'node:fs';
import {basename, join} from 'node:path';
import {after, before, describe, test} from 'node:test';

import carregarQuorvValida from '../dist/modulo/index.js';
import {codigoSaida, csvAdvertencias, jsonValidacao, lerAdvertencias} from '../pagina/js/advertencias.js';

import {AMOSTRAS_ARQUIVOS, arquivoGerado, BIBLIOTECA_EXEMPLO, HOJE, jsonNativo, nativo, RAIZ, temporario} from './apoio.mjs';

// The example state-registration library's rule, written in JavaScript: digits only, the last
// the sum of the others modulo 10, for the home state alone.
function regraDeExemplo(inscricao, uf) {
  if (uf !== 'QZ' || inscricao.length < 2 || !/^[0-9]+$/.test(inscricao)) return 1;
  let soma = 0;
  for (let i = 0; i < inscricao.length - 1; ++i)
    soma += inscricao.charCodeAt(i) - 48;
  return inscricao.charCodeAt(inscricao.length - 1) - 48 === soma % 10 ? 0 : 1;
}

// Three ways of checking registrations, each the same on both sides.
const VERIFICADORES = {
  'sem verificador': {modulo: null, nativo: []},
  'todas aceitas': {modulo: () => 0, nativo: ['--sem-verificar-inscricao']},
  'regra de exemplo': {modulo: regraDeExemplo, nativo: ['--inscricao-lib', BIBLIOTECA_EXEMPLO]},
};

const especieDe = (nome) => (basename(nome).startsWith('notas') ? 'notas' : 'fichas');

let q;
let hoje;
let contador = 0;

before(async () => {
  q = await carregarQuorvValida();
  hoje = q.SerialDaData(2024, 6, 30);
});

after(() => q.DefinirVerificadorInscricao(null));

// The input copied into the module's memory, in a folder of its own with a working directory.
function naMemoria(caminho) {
  const base = `/caso-${++contador}`;
  q.FS.mkdir(base);
  q.FS.mkdir(`${base}/trabalho`);
  const entrada = `${base}/${basename(caminho)}`;
  q.FS.writeFile(entrada, readFileSync(caminho));
  return {entrada, trabalho: `${base}/trabalho`};
}

function arquivoDoModulo(caminho) {
  return q.FS.analyzePath(caminho).exists ? Buffer.from(q.FS.readFile(caminho)) : null;
}

function apagaDoModulo(...caminhos) {
  for (const c of caminhos)
    if (q.FS.analyzePath(c).exists) q.FS.unlink(c);
}

function validaNoModulo(caminho, verificador, argumentos = []) {
  q.DefinirVerificadorInscricao(verificador);
  const {entrada, trabalho} = naMemoria(caminho);
  const especie = especieDe(caminho);
  const validador = especie === 'notas' ? new q.Validacao() : new q.ValidacaoFichaCadastral();
  validador.Hoje = () => hoje;
  const numero = {valor: ''};
  const status = especie === 'notas' ?
      validador.Valida_Dados(entrada, numero, trabalho, ...argumentos) :
      validador.Valida_Fichas(entrada, numero, trabalho, ...argumentos);
  validador.delete();
  const advertencias = arquivoDoModulo(`${trabalho}/ADVERTENCIAS.TXT`);
  apagaDoModulo(`${trabalho}/ADVERTENCIAS.TXT`, entrada);
  return {status, numero: numero.valor, advertencias};
}

function validaNoNativo(caminho, opcoesVerificador, argumentos = []) {
  const diretorio = temporario('quorv-nativo-');
  const r = jsonNativo([
    especieDe(caminho), caminho, '-d', diretorio, '--hoje', HOJE, ...opcoesVerificador,
    ...argumentos
  ]);
  const arquivo = join(diretorio, 'ADVERTENCIAS.TXT');
  const advertencias = existsSync(arquivo) ? readFileSync(arquivo) : null;
  rmSync(diretorio, {recursive: true});
  return {...r, advertencias};
}

function mensagemDo(especie) {
  const catalogo = especie === 'notas' ? new q.clsQuorvMsg() : new q.clsQuorvMsgFichas();
  const cache = new Map();
  return (codigo) => {
    if (!cache.has(codigo)) {
      cache.set(
          codigo,
          especie === 'notas' ? catalogo.MensagemAdvertencia(codigo) :
                                catalogo.MensagemAdvertenciaFichas(codigo));
    }
    return cache.get(codigo);
  };
}

// The warnings of the tool's JSON and of the page's, item by item.
function comparaAdvertencias(pagina, nativa, rotulo) {
  assert.equal(pagina.length, nativa.length, `${rotulo}: número de advertências`);
  for (let i = 0; i < nativa.length; ++i) {
    const n = nativa[i];
    const p = pagina[i];
    if (p.codigo !== n.codigo || p.linha !== n.linha || p.tr !== n.tr ||
        p.mensagem !== n.mensagem) {
      assert.deepEqual(
          p, {codigo: n.codigo, linha: n.linha, tr: n.tr, mensagem: n.mensagem},
          `${rotulo}: advertência ${i + 1}`);
    }
  }
}

// The page's JSON object of a run, as the page builds it from the module's results.
function jsonDaPagina(caminho, resultado, separador = '#') {
  const especie = especieDe(caminho);
  const lista = resultado.advertencias ?
      lerAdvertencias(resultado.advertencias, separador, especie, mensagemDo(especie)) :
      [];
  const texto = [
    ...jsonValidacao(
        {
          arquivo: basename(caminho),
          especie,
          status: resultado.status,
          numeroRemessa: resultado.numero,
          diretorio: '',
          arquivoAdvertencias: resultado.advertencias ? 'ADVERTENCIAS.TXT' : null,
          erro: null,
        },
        lista,
        ),
  ].join('');
  assert.ok(texto.endsWith('}\n'), 'o objeto JSON termina a linha');
  return {texto, objeto: JSON.parse(texto)};
}

// The page's object against the tool's: every field they both carry, but the paths, which name
// the browser's file and the tool's folders.
function comparaObjetos(pagina, nativo, rotulo) {
  const caminhos = new Set(['arquivo', 'diretorio', 'arquivo_advertencias', 'diagnostico']);
  for (const chave of Object.keys(pagina)) {
    if (caminhos.has(chave) || !(chave in nativo) || chave === 'advertencias') continue;
    assert.deepEqual(pagina[chave], nativo[chave], `${rotulo}: ${chave}`);
  }
  comparaAdvertencias(pagina.advertencias, nativo.advertencias, rotulo);
}

function comparaRun(caminho, nomeVerificador, argumentosModulo = [], argumentosNativo = []) {
  const v = VERIFICADORES[nomeVerificador];
  const m = validaNoModulo(caminho, v.modulo, argumentosModulo);
  const n = validaNoNativo(caminho, v.nativo, argumentosNativo);
  const rotulo = `${basename(caminho)} (${nomeVerificador})`;
  assert.equal(m.status, n.objeto.status, `${rotulo}: status`);
  assert.equal(m.numero, n.objeto.numero_remessa, `${rotulo}: número da remessa`);
  if (m.status === 9) {
    // A file not validated leaves the tool with 2 before its JSON format 1 and 3 with it.
    assert.ok([2, codigoSaida(m.status, false)].includes(n.codigo), `${rotulo}: código de saída`);
  } else {
    assert.equal(
        codigoSaida(m.status, m.advertencias !== null), n.codigo, `${rotulo}: código de saída`);
  }
  assert.equal(
      m.advertencias === null, n.advertencias === null, `${rotulo}: ADVERTENCIAS.TXT existe`);
  if (n.advertencias)
    assert.ok(m.advertencias.equals(n.advertencias), `${rotulo}: ADVERTENCIAS.TXT byte a byte`);
  return {m, n, rotulo};
}

const grandes =
    Object.fromEntries([['notas', false], ['notas', true], ['fichas', false], ['fichas', true]].map(
        ([especie, defeitos]) => {
          const caminho = arquivoGerado(especie, 100000, defeitos);
          return [basename(caminho), caminho];
        }));

describe('validações iguais às do programa nativo', () => {
  for (const caminho of AMOSTRAS_ARQUIVOS) {
    for (const nomeVerificador of Object.keys(VERIFICADORES)) {
      test(`${basename(caminho)}, ${nomeVerificador}`, () => {
        const {m, n, rotulo} = comparaRun(caminho, nomeVerificador);
        comparaObjetos(jsonDaPagina(caminho, m).objeto, n.objeto, rotulo);
      });
    }
  }

  for (const caminho of Object.values(grandes)) {
    test(`${basename(caminho)} (100 000 linhas), regra de exemplo`, () => {
      const {m, n, rotulo} = comparaRun(caminho, 'regra de exemplo');
      comparaObjetos(jsonDaPagina(caminho, m).objeto, n.objeto, rotulo);
      if (basename(caminho).includes('defeitos'))
        assert.ok(m.advertencias.length > 1e6, 'o arquivo com defeitos tem advertências');
    });
  }

  test('argumentos opcionais: chaves, origem, servidor e separador', () => {
    for (const caminho of AMOSTRAS_ARQUIVOS) {
      const {m, n, rotulo} = comparaRun(
          caminho,
          'todas aceitas',
          [12.5, 7, 'ORIG', 'TARNWEB', ';;'],
          [
            '--chave-remessa', '12.5', '--chave-processamento', '7', '--origem', 'ORIG',
            '--servidor', 'TARNWEB', '--separador', ';;'
          ],
      );
      comparaObjetos(jsonDaPagina(caminho, m, ';;').objeto, n.objeto, rotulo);
    }
  });

  test('uma linha vazia entre as fichas para a validação com status 9', () => {
    const linhas = readFileSync(AMOSTRAS_ARQUIVOS[2], 'latin1').split('\r\n');
    linhas.splice(3, 0, '');
    const caminho = join(temporario('quorv-vazia-'), 'fichas-com-linha-vazia.txt');
    writeFileSync(caminho, linhas.join('\r\n'), 'latin1');
    const {m} = comparaRun(caminho, 'regra de exemplo');
    assert.equal(m.status, 9);
  });

  test('origem A0 só conta os registros dos grupos', () => {
    const {m} = comparaRun(AMOSTRAS_ARQUIVOS[1], 'todas aceitas', [0, 0, 'A0'], ['--origem', 'A0']);
    const completa = validaNoModulo(AMOSTRAS_ARQUIVOS[1], () => 0);
    assert.notDeepEqual(m.advertencias, completa.advertencias, 'a origem chegou à biblioteca');
  });
});

describe('fachada web igual à do programa nativo', () => {
  const casos = [
    ...AMOSTRAS_ARQUIVOS, grandes['notas-com-defeitos-100000.txt'],
    grandes['fichas-com-defeitos-100000.txt']
  ];
  for (const caminho of casos) {
    test(`${basename(caminho)}: resultado e arquivo de retorno`, () => {
      q.DefinirVerificadorInscricao(regraDeExemplo);
      const {entrada, trabalho} = naMemoria(caminho);
      const web = new q.ValidacaoTarnWEB();
      web.Hoje = () => hoje;
      const numero = {valor: ''};
      const resultado = web.Valida_TIPO(
          entrada, '/RETORNO.TXT', trabalho, numero, especieDe(caminho) === 'notas' ? 'P' : 'F');
      web.delete();
      const retornoModulo = arquivoDoModulo(`${trabalho}/RETORNO.TXT`);
      apagaDoModulo(`${trabalho}/RETORNO.TXT`, entrada);

      const diretorio = temporario('quorv-web-');
      const r = nativo([
        'web', caminho, '-r', 'RETORNO.TXT', '-d', diretorio, '--hoje', HOJE, '--inscricao-lib',
        BIBLIOTECA_EXEMPLO
      ]);
      const retornoNativo = existsSync(join(diretorio, 'RETORNO.TXT')) ?
          readFileSync(join(diretorio, 'RETORNO.TXT')) :
          null;
      assert.equal(resultado ? 0 : 1, r.codigo, 'resultado da fachada');
      assert.equal(retornoModulo === null, retornoNativo === null, 'arquivo de retorno existe');
      if (retornoNativo)
        assert.ok(retornoModulo.equals(retornoNativo), 'arquivo de retorno byte a byte');
      assert.equal(existsSync(join(diretorio, 'ADVERTENCIAS.TXT')), false);
    });
  }
});

describe('catálogos, leitor e rotinas com os argumentos do C++', () => {
  test('textos do catálogo iguais aos do programa nativo', () => {
    for (const [especie, codigos] of [
             ['notas', [1, 77, 106, 203, 999, -1]],
             ['fichas', [1, 92, 129, 130, 999]],
    ]) {
      const texto = mensagemDo(especie);
      for (const codigo of codigos) {
        const r = nativo(['mensagem', especie, String(codigo), '--json']);
        const objeto = JSON.parse(r.saida.trim());
        assert.equal(texto(codigo), objeto.mensagem, `${especie} ${codigo}`);
      }
    }
  });

  test('clsQuorvAdvBDFichas percorre o arquivo de advertências como o programa nativo', () => {
    const caminho = AMOSTRAS_ARQUIVOS[3];
    const n = validaNoNativo(caminho, []);
    q.FS.writeFile('/leitura.txt', n.advertencias);
    const leitor = new q.clsQuorvAdvBDFichas();
    leitor.OpenStream('/leitura.txt');
    const registros = [];
    for (let lidos = 0; lidos < leitor.TotalRecords(); ++lidos) {
      registros.push({
        linha: leitor.LINHA(),
        tr: leitor.TR(),
        nota: leitor.Nota(),
        descricao: leitor.Descricao().trimEnd()
      });
      if (leitor.EndOfStream()) break;
      leitor.MoveNext();
    }
    leitor.CloseStream();
    assert.throws(() => leitor.RecordCount(), /nenhum arquivo de advertências aberto/);
    leitor.delete();
    const arquivo = join(temporario('quorv-leitor-'), 'ADVERTENCIAS.TXT');
    writeFileSync(arquivo, n.advertencias);
    const lista = JSON.parse(nativo(['advertencias', 'fichas', arquivo, '--json']).saida.trim());
    assert.ok(registros.length > 0);
    assert.deepEqual(
        registros,
        lista.advertencias.map(
            (a) => ({linha: a.linha, tr: a.tr, nota: a.nota, descricao: a.descricao.trimEnd()})),
    );
  });

  test('rotinas e utilitários respondem como o C++', () => {
    assert.equal(q.ConverteDouble(' 12,5 '), 12.5);
    assert.equal(q.ConverteLong(''), -1);
    assert.equal(q.ConverteData('20240230'), -1);
    assert.equal(q.ConverteData('20240101'), 45292);
    assert.equal(q.ValidaCPF('00000000000'), true);
    assert.equal(q.ValidaCNPJ('11.222.333/0001-81'), true);
    assert.equal(q.ValidaCPF('111.444.777-35'), false);
    assert.equal(q.ValidaCPF('11144477735'), true);
    const f = new q.FileUtility();
    assert.equal(f.GetDrive('C:\\dir\\file.txt'), 'C:');
    assert.equal(f.GetFileName('C:\\dir\\file.txt'), 'file');
    assert.equal(f.GetFileName('C:\\dir\\file.txt', true), 'file.txt');
    assert.equal(f.GetPath('C:\\dir\\sub\\file.txt', true), 'C:\\dir\\sub');
    assert.equal(f.GetFileExtension('archive.tar.gz'), 'gz');
    f.delete();
    const web = new q.ValidacaoTarnWEB();
    assert.equal(web.BreakString('ab abcd abcd', 1, 8), 'ab abcd');
    assert.equal(web.BreakString('ab abcd abcd', 2, 8), 'abcd');
    assert.equal(web.Valida_TIPO('/nada', '/R.TXT', '/', {valor: 'x'}, 'p'), false);
    web.delete();
    assert.equal(q.Versao(), '1.1.0.1');
    assert.equal(
        JSON.parse(readFileSync(join(RAIZ, 'web/modulo/package.json'), 'utf8')).version, '1.1.0.1');
  });

  test('um evento que falha termina a validação com status 9, como no C++', () => {
    const {entrada, trabalho} = naMemoria(AMOSTRAS_ARQUIVOS[0]);
    const v = new q.Validacao();
    v.Progress = () => {
      throw new Error('falha do anfitrião');
    };
    assert.equal(v.Valida_Dados(entrada, {valor: ''}, trabalho), 9);
    // A percentage changed by the host comes back to the run, as a by-reference argument does:
    // below 0 the form run stops raising its event.
    const f = new q.ValidacaoFichaCadastral();
    let eventos = 0;
    f.FichaProgress = () => {
      ++eventos;
      return -1;
    };
    const fichas = naMemoria(AMOSTRAS_ARQUIVOS[2]);
    f.Valida_Fichas(fichas.entrada, {valor: ''}, fichas.trabalho);
    assert.equal(eventos, 1);
    v.delete();
    f.delete();
  });
});

test('as declarações TypeScript descrevem o módulo para um anfitrião em TypeScript', () => {
  const tsc = join(RAIZ, 'web/testes/node_modules/typescript/bin/tsc');
  const r = spawnSync(process.execPath, [tsc, '-p', join(RAIZ, 'web/testes/tsconfig.json')], {
    encoding: 'utf8',
  });
  assert.equal(r.status, 0, r.stdout + r.stderr);
});

describe('formato JSON e CSV da página', () => {
  const esquema = join(RAIZ, 'tools/quorvvalida/esquemas/validacao.schema.json');
  test('o JSON da página segue o esquema do programa', (t) => {
    if (!existsSync(esquema)) {
      t.skip('o esquema do formato 1 ainda não está nesta árvore');
      return;
    }
    for (const caminho of AMOSTRAS_ARQUIVOS) {
      const m = validaNoModulo(caminho, regraDeExemplo);
      const arquivo = join(temporario('quorv-json-'), 'pagina.json');
      writeFileSync(arquivo, jsonDaPagina(caminho, m).texto);
      const r = spawnSync(
          'python3',
          [
            '-c',
            'import json,sys,jsonschema; jsonschema.validate(json.load(open(sys.argv[1])), json.load(open(sys.argv[2])))',
            arquivo, esquema
          ],
          {encoding: 'utf8'});
      assert.equal(r.status, 0, `${basename(caminho)}: ${r.stderr}`);
    }
  });

  test('o CSV traz uma linha por advertência, com aspas onde o texto pede', () => {
    const linhas = [
      ...csvAdvertencias([
        {linhaTexto: '00000003', codigoTexto: '106', tr: '10', mensagem: 'Inscrição; "estadual"'},
      ])
    ].join('').split('\r\n');
    assert.deepEqual(
        linhas,
        ['\ufefflinha;codigo;tr;mensagem', '00000003;106;10;"Inscrição; ""estadual"""', '']);
  });
});
