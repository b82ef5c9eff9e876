// The WebAssembly module in node against the native tool of the same tree: the same files, the
// same "today" and the same state-registration checker on both sides give the same warnings
// files byte for byte, the same statuses, remessa numbers and exit codes, the same return files
// of the web facade, and the page's JSON gives the tool's warnings; a run that fails, in every way
// the module's file system can make it fail, gives the tool's whole JSON object, its "erro" too.
import assert from 'node:assert/strict';
import {spawnSync} from 'node:child_process';
import {existsSync, mkdirSync, readFileSync, rmSync, symlinkSync, writeFileSync} from 'node:fs';
import {basename, dirname, join} from 'node:path';
import {after, before, describe, test} from 'node:test';

import carregarQuorvValida from '../dist/modulo/index.js';
import {codigoSaida, csvAdvertencias, desfechoDaValidacao, jsonValidacao, lerAdvertencias, tipoDaFalha} from '../pagina/js/advertencias.js';

import {AMOSTRAS_ARQUIVOS, arquivoGerado, BIBLIOTECA_EXEMPLO, comLinha, conformeAoEsquema, especieDe, fichaComTipoDeLetras, HOJE, jsonNativo, nativo, RAIZ, temporario} from './apoio.mjs';

// The example state-registration library's rule, written in JavaScript: digits only, the last
// the sum of the others modulo 10, for the home state alone.
function regraDeExemplo(inscricao, uf) {
  if (uf !== 'QZ' || inscricao.length < 2 || !/^[0-9]+$/.test(inscricao)) return 1;
  let soma = 0;
  for (let i = 0; i < inscricao.length - 1; ++i)
    soma += inscricao.charCodeAt(i) - 48;
  return inscricao.charCodeAt(inscricao.length - 1) - 48 === soma % 10 ? 0 : 1;
}

// The module's own "accept them all", as the tool's --sem-verificar-inscricao.
const TODAS = 'todas';

// Four ways of checking registrations, each the same on both sides.
const VERIFICADORES = {
  'sem verificador': {modulo: null, nativo: []},
  'todas aceitas por uma função': {modulo: () => 0, nativo: ['--sem-verificar-inscricao']},
  'todas aceitas pelo módulo': {modulo: TODAS, nativo: ['--sem-verificar-inscricao']},
  'regra de exemplo': {modulo: regraDeExemplo, nativo: ['--inscricao-lib', BIBLIOTECA_EXEMPLO]},
};


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
  if (verificador === TODAS) {
    q.AceitarTodasInscricoes();
  } else {
    q.DefinirVerificadorInscricao(verificador);
  }
  const {entrada, trabalho} = naMemoria(caminho);
  const especie = especieDe(caminho);
  const validador = especie === 'notas' ? new q.Validacao() : new q.ValidacaoFichaCadastral();
  validador.Hoje = () => hoje;
  const numero = {valor: ''};
  const status = especie === 'notas' ?
      validador.Valida_Dados(entrada, numero, trabalho, ...argumentos) :
      validador.Valida_Fichas(entrada, numero, trabalho, ...argumentos);
  const falha = validador.UltimaFalha();
  validador.delete();
  // Named as the page names them: the file by its name, no working directory.
  const desfecho = desfechoDaValidacao(
      q, falha, {entrada, trabalho}, {arquivo: basename(caminho), diretorio: ''});
  const advertencias = arquivoDoModulo(`${trabalho}/ADVERTENCIAS.TXT`);
  apagaDoModulo(`${trabalho}/ADVERTENCIAS.TXT`, entrada);
  return {status, falha, numero: numero.valor, advertencias, desfecho};
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
  const {arquivoAdvertencias, erro} = resultado.desfecho;
  const lista = arquivoAdvertencias ?
      lerAdvertencias(resultado.advertencias, separador, especie, mensagemDo(especie)) :
      [];
  const texto = [
    ...jsonValidacao(
        {
          arquivo: basename(caminho),
          especie,
          status: resultado.status,
          falha: resultado.falha,
          numeroRemessa: resultado.numero,
          diretorio: '',
          arquivoAdvertencias,
          erro,
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
  const caminhos = new Set(['arquivo', 'diretorio', 'arquivo_advertencias']);
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
  assert.equal(
      codigoSaida(m.falha, m.advertencias !== null), n.codigo, `${rotulo}: código de saída`);
  assert.equal(m.desfecho.erro?.tipo, n.objeto.erro?.tipo, `${rotulo}: tipo do erro`);
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
          'todas aceitas pelo módulo',
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
    const caminho = join(temporario('quorv-vazia-'), 'fichas-com-linha-vazia.txt');
    writeFileSync(caminho, comLinha(AMOSTRAS_ARQUIVOS[2], 3, ''));
    const {m} = comparaRun(caminho, 'regra de exemplo');
    assert.equal(m.status, 9);
  });

  test('origem A0 só conta os registros dos grupos', () => {
    const {m} = comparaRun(
        AMOSTRAS_ARQUIVOS[1], 'todas aceitas pelo módulo', [0, 0, 'A0'], ['--origem', 'A0']);
    const completa = validaNoModulo(AMOSTRAS_ARQUIVOS[1], () => 0);
    assert.notDeepEqual(m.advertencias, completa.advertencias, 'a origem chegou à biblioteca');
  });
});

// The same situation made in a folder of this computer for the native tool and in the module's
// memory for the page, with the same names under each, so that both JSON objects name the same
// paths.
function lugarNativo() {
  const base = temporario('quorv-falha-');
  return {
    base,
    pasta: (relativo) => mkdirSync(join(base, relativo)),
    arquivo: (relativo, bytes) => writeFileSync(join(base, relativo), bytes),
    // A file every write to which fails, as on a full disk.
    cheio: (relativo) => symlinkSync('/dev/full', join(base, relativo)),
    le: (relativo) => readFileSync(join(base, relativo)),
  };
}

function lugarNoModulo() {
  const base = `/falha-${++contador}`;
  q.FS.mkdir(base);
  return {
    base,
    pasta: (relativo) => q.FS.mkdir(`${base}/${relativo}`),
    arquivo: (relativo, bytes) => q.FS.writeFile(`${base}/${relativo}`, bytes),
    cheio: (relativo) => q.FS.createDevice(
        `${base}/${dirname(relativo)}`, basename(relativo), null,
        () => {
          throw new Error('disco cheio');
        }),
    le: (relativo) => Buffer.from(q.FS.readFile(`${base}/${relativo}`)),
  };
}

// Every failure a run can meet over the module's file system, and files that fail the run's
// frame without failing the run (an empty file), each made alike on both sides: the input
// `arquivo` with `bytes` when given, the working directory `trabalho` (unless the case names one
// that does not exist) and what `prepara` adds.
const NOTAS_COM_DEFEITOS = readFileSync(AMOSTRAS_ARQUIVOS[1]);
const CASOS_DE_FALHA = [
  {nome: 'um arquivo que não existe', especie: 'notas', arquivo: 'nada.txt'},
  {
    nome: 'uma pasta no lugar do arquivo',
    especie: 'fichas',
    arquivo: 'remessas',
    prepara: (l) => l.pasta('remessas'),
  },
  {
    nome: 'um dispositivo no lugar do arquivo',
    especie: 'notas',
    arquivo: 'dispositivo',
    prepara: (l) => l.cheio('dispositivo'),
  },
  {
    nome: 'o diretório de trabalho não existe',
    especie: 'notas',
    arquivo: 'notas.txt',
    bytes: readFileSync(AMOSTRAS_ARQUIVOS[0]),
    diretorio: 'sem-pasta',
  },
  {
    nome: 'um arquivo que não existe e um ADVERTENCIAS.TXT antigo no diretório de trabalho',
    especie: 'fichas',
    arquivo: 'fichas.txt',
    prepara: (l) => l.arquivo('trabalho/ADVERTENCIAS.TXT', '9#0#0#antiga#00000001\r\n'),
  },
  {
    nome: 'o próprio ADVERTENCIAS.TXT do diretório de trabalho',
    especie: 'notas',
    arquivo: 'trabalho/ADVERTENCIAS.TXT',
    bytes: NOTAS_COM_DEFEITOS,
    intacto: true,
  },
  {
    nome: 'ADVERTENCIAS.TXT não pode ser criado: há uma pasta com esse nome',
    especie: 'notas',
    arquivo: 'notas.txt',
    bytes: NOTAS_COM_DEFEITOS,
    prepara: (l) => l.pasta('trabalho/ADVERTENCIAS.TXT'),
  },
  {
    nome: 'a gravação de ADVERTENCIAS.TXT falha, como num disco cheio',
    especie: 'notas',
    arquivo: 'notas.txt',
    bytes: NOTAS_COM_DEFEITOS,
    prepara: (l) => l.cheio('trabalho/ADVERTENCIAS.TXT'),
  },
  {
    nome: 'uma ficha cujo tipo de registro não é um número',
    especie: 'fichas',
    arquivo: 'fichas.txt',
    bytes: fichaComTipoDeLetras(),
  },
  {
    nome: 'uma linha vazia depois de fichas com advertências',
    especie: 'fichas',
    arquivo: 'fichas.txt',
    bytes: comLinha(AMOSTRAS_ARQUIVOS[3], -2, ''),
  },
  {nome: 'um arquivo vazio validado como notas', especie: 'notas', arquivo: 'vazio.txt', bytes: ''},
  {
    nome: 'um arquivo vazio validado como fichas',
    especie: 'fichas',
    arquivo: 'vazio.txt',
    bytes: ''
  },
];

// The case's files, made in a place.
function preparaCaso(caso, lugar) {
  if (!caso.diretorio) lugar.pasta('trabalho');
  if (caso.bytes !== undefined) lugar.arquivo(caso.arquivo, caso.bytes);
  caso.prepara?.(lugar);
}

describe('falhas: o objeto JSON da página igual ao do programa nativo', () => {
  const tiposVistos = new Set();
  for (const caso of CASOS_DE_FALHA) {
    test(caso.nome, () => {
      const {especie, arquivo} = caso;
      const diretorio = caso.diretorio ?? 'trabalho';
      const nativa = lugarNativo();
      const doModulo = lugarNoModulo();
      preparaCaso(caso, nativa);
      preparaCaso(caso, doModulo);

      const n = jsonNativo([especie, arquivo, '-d', diretorio, '--hoje', HOJE], nativa.base);
      tiposVistos.add(n.objeto.erro?.tipo ?? 'nenhum');
      q.DefinirVerificadorInscricao(null);
      const validador = especie === 'notas' ? new q.Validacao() : new q.ValidacaoFichaCadastral();
      validador.Hoje = () => hoje;
      const numero = {valor: ''};
      const caminhos = {
        entrada: `${doModulo.base}/${arquivo}`,
        trabalho: `${doModulo.base}/${diretorio}`
      };
      const status = especie === 'notas' ?
          validador.Valida_Dados(caminhos.entrada, numero, caminhos.trabalho) :
          validador.Valida_Fichas(caminhos.entrada, numero, caminhos.trabalho);
      const falha = validador.UltimaFalha();
      validador.delete();
      const desfecho = desfechoDaValidacao(q, falha, caminhos, {arquivo, diretorio});
      const bytes = desfecho.advertencias ? q.FS.readFile(desfecho.advertencias) : new Uint8Array();
      const texto = [
        ...jsonValidacao(
            {
              arquivo,
              especie,
              status,
              falha,
              numeroRemessa: numero.valor,
              diretorio,
              arquivoAdvertencias: desfecho.arquivoAdvertencias,
              erro: desfecho.erro,
            },
            lerAdvertencias(bytes, '#', especie, mensagemDo(especie)))
      ].join('');

      // Field by field, the paths and the error's sentence included.
      const objeto = JSON.parse(texto);
      assert.deepEqual(Object.keys(objeto), Object.keys(n.objeto));
      for (const chave of Object.keys(n.objeto))
        assert.deepEqual(objeto[chave], n.objeto[chave], chave);
      assert.equal(objeto.codigo_saida, n.codigo);
      assert.equal(desfecho.descricao, falha === 0 ? null : q.DescricaoDaFalha(falha));
      if (caso.intacto) {
        assert.ok(doModulo.le(arquivo).equals(NOTAS_COM_DEFEITOS), 'a entrada ficou como estava');
        assert.ok(nativa.le(arquivo).equals(NOTAS_COM_DEFEITOS), 'a entrada ficou como estava');
      }
      conformeAoEsquema(texto, 'validacao');
    });
  }

  test('os casos cobrem cada falha que uma validação pode ter fora de um evento', () => {
    assert.deepEqual([...tiposVistos].sort(), [
      'advertencias_nao_criadas', 'diretorio_inexistente', 'entrada_e_advertencias',
      'entrada_inacessivel', 'erro_grave', 'escrita_advertencias', 'nenhum'
    ]);
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
    // The tool cannot meet this failure; its object would tell it so, with exit code 4.
    const falha = v.UltimaFalha();
    assert.equal(falha, 10);
    const desfecho =
        desfechoDaValidacao(q, falha, {entrada, trabalho}, {arquivo: 'notas.txt', diretorio: ''});
    assert.deepEqual(desfecho.erro, {
      tipo: 'falha_interna',
      mensagem: 'falha interna durante a validação (memória ou uma exceção inesperada)',
    });
    assert.equal(desfecho.descricao, q.DescricaoDaFalha(10));
    assert.equal(codigoSaida(falha, false), 4);
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

describe('UltimaFalha e DescricaoDaFalha', () => {
  test('cada objeto responde pela sua última chamada, 0 antes de qualquer uma', () => {
    const objetos = [new q.Validacao(), new q.ValidacaoFichaCadastral(), new q.ValidacaoTarnWEB()];
    assert.deepEqual(objetos.map((o) => o.UltimaFalha()), [0, 0, 0]);
    const {entrada, trabalho} = naMemoria(AMOSTRAS_ARQUIVOS[0]);
    const [notas, fichas, web] = objetos;
    assert.equal(notas.Valida_Dados(`${entrada}.nada`, {valor: ''}, trabalho), 9);
    assert.equal(notas.UltimaFalha(), 1);
    assert.equal(notas.Valida_Dados(entrada, {valor: ''}, trabalho), 0);
    assert.equal(notas.UltimaFalha(), 0);
    assert.equal(fichas.Valida_Fichas(entrada, {valor: ''}, `${trabalho}/nada`), 9);
    assert.equal(fichas.UltimaFalha(), 2);
    assert.equal(
        web.Valida_Dados_Tarnweb(
            entrada, entrada.slice(entrada.lastIndexOf('/')),
            entrada.slice(0, entrada.lastIndexOf('/')), {valor: ''}),
        false);
    assert.equal(web.UltimaFalha(), 8);
    for (const o of objetos)
      o.delete();
    apagaDoModulo(entrada);
  });

  test('uma frase para cada falha, e uma que diz quando o número não é de falha', () => {
    const frases = Array.from({length: 11}, (_, falha) => q.DescricaoDaFalha(falha));
    assert.equal(new Set(frases).size, 11);
    assert.equal(frases[0], 'Nenhuma falha.');
    assert.equal(
        frases[9],
        'Um registro com tipo não numérico (uma linha vazia, por exemplo) interrompeu a validação das fichas.');
    for (const fora of [11, -1, 2147483647])
      assert.equal(q.DescricaoDaFalha(fora), 'Falha desconhecida.');
  });

  test('uma falha da fachada web tem o tipo de erro e o código de saída do programa nativo', () => {
    // A form whose record type is not a number, and a return file that would be the input.
    const casos = [
      {arquivo: 'fichas.txt', bytes: fichaComTipoDeLetras(), retorno: 'RETORNO.TXT', tipo: 'F'},
      {arquivo: 'notas.txt', bytes: NOTAS_COM_DEFEITOS, retorno: '../notas.txt', tipo: 'P'},
    ];
    for (const {arquivo, bytes, retorno, tipo} of casos) {
      const nativa = lugarNativo();
      const doModulo = lugarNoModulo();
      for (const lugar of [nativa, doModulo])
        preparaCaso({arquivo, bytes}, lugar);
      const n = jsonNativo(
          ['web', arquivo, '-r', retorno, '-d', 'trabalho', '--tipo', tipo, '--hoje', HOJE],
          nativa.base);
      q.DefinirVerificadorInscricao(null);
      const web = new q.ValidacaoTarnWEB();
      web.Hoje = () => hoje;
      const resultado = web.Valida_TIPO(
          `${doModulo.base}/${arquivo}`, `/${retorno}`, `${doModulo.base}/trabalho`, {valor: ''},
          tipo);
      const falha = web.UltimaFalha();
      web.delete();
      assert.notEqual(falha, 0, arquivo);
      assert.equal(tipoDaFalha(falha), n.objeto.erro.tipo, arquivo);
      assert.equal(resultado, n.objeto.resultado, arquivo);
      assert.equal(codigoSaida(falha, false), n.codigo, arquivo);
    }
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
  test('o JSON da página segue o esquema do programa', () => {
    for (const caminho of AMOSTRAS_ARQUIVOS)
      conformeAoEsquema(
          jsonDaPagina(caminho, validaNoModulo(caminho, regraDeExemplo)).texto, 'validacao');
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
