// The page's worker: runs the library (the WebAssembly module) away from the page, so that the
// page answers while a file of a million lines is read. The file a person chose is read where it
// is (WORKERFS): nothing is copied, and nothing leaves the computer. Each request is whole in
// itself; the page ends the worker to cancel a run and starts another.
import carregarQuorvValida from '../modulo/index.js';

import {csvAdvertencias, desfechoDaValidacao, jsonValidacao, lerAdvertencias} from './advertencias.js';

const moduloPronto = carregarQuorvValida().then((q) => {
  lerEmJanelas(q.FS.filesystems.WORKERFS);
  return q;
});

// The browser reads a chosen file through one synchronous request per read, which costs about as
// much as the read itself at the library's 64 KiB: the file is taken 16 MiB at a time instead,
// and each read is answered from that window.
function lerEmJanelas(WORKERFS) {
  const JANELA = 16 * 1024 * 1024;
  WORKERFS.stream_ops.read = (stream, buffer, offset, length, position) => {
    const no = stream.node;
    if (position >= no.size) return 0;
    let janela = no.janela;
    if (!janela || position < janela.inicio || position >= janela.inicio + janela.bytes.length) {
      const fim = Math.min(no.size, position + Math.max(JANELA, length));
      const pedaco = WORKERFS.reader.readAsArrayBuffer(no.contents.slice(position, fim));
      janela = no.janela = {inicio: position, bytes: new Uint8Array(pedaco)};
    }
    const de = position - janela.inicio;
    const quantos = Math.min(length, janela.bytes.length - de);
    buffer.set(janela.bytes.subarray(de, de + quantos), offset);
    return quantos;
  };
}
let sequencia = 0;

// A directory of its own for each request: the input mounted from the person's file, the
// warnings and the return file written in memory.
function diretorios(q, arquivo) {
  const base = `/pedido-${++sequencia}`;
  q.FS.mkdir(base);
  q.FS.mkdir(`${base}/entrada`);
  q.FS.mkdir(`${base}/trabalho`);
  q.FS.mount(q.FS.filesystems.WORKERFS, {files: [arquivo]}, `${base}/entrada`);
  return {
    entrada: `${base}/entrada/${arquivo.name}`,
    trabalho: `${base}/trabalho`,
    desfaz() {
      for (const nome of q.FS.readdir(`${base}/trabalho`)) {
        if (nome !== '.' && nome !== '..') q.FS.unlink(`${base}/trabalho/${nome}`);
      }
      q.FS.unmount(`${base}/entrada`);
      q.FS.rmdir(`${base}/entrada`);
      q.FS.rmdir(`${base}/trabalho`);
      q.FS.rmdir(base);
    },
  };
}

function existe(q, caminho) { return q.FS.analyzePath(caminho).exists; }

// "Today" and the state-registration checker as the person chose them.
function preparaAmbiente(q, objeto, opcoes) {
  if (opcoes.hoje) {
    const [ano, mes, dia] = opcoes.hoje.split('-').map(Number);
    const serial = q.SerialDaData(ano, mes, dia);
    objeto.Hoje = () => serial;
  }
  // Without the state's library (a page cannot load it) every home-state registration is
  // refused; "todas" accepts them all, as the tool's --sem-verificar-inscricao.
  if (opcoes.inscricao === 'todas') {
    q.AceitarTodasInscricoes();
  } else {
    q.DefinirVerificadorInscricao(null);
  }
}

function catalogo(q) {
  const notas = new q.clsQuorvMsg();
  const fichas = new q.clsQuorvMsgFichas();
  const cache = {notas: new Map(), fichas: new Map()};
  const texto = (especie, codigo) => {
    const mapa = cache[especie];
    if (!mapa.has(codigo)) {
      mapa.set(
          codigo,
          especie === 'notas' ? notas.MensagemAdvertencia(codigo) :
                                fichas.MensagemAdvertenciaFichas(codigo),
      );
    }
    return mapa.get(codigo);
  };
  return {
    texto,
    libera() {
      notas.delete();
      fichas.delete();
    },
  };
}

// The progress the library reports, as lines read: the invoice run counts 128-byte units of a
// file of 162-byte lines, the form run counts lines of 262 bytes. Sent at most ten times a second.
function progresso(especie, tamanho) {
  const linhasTotais = tamanho / (especie === 'notas' ? 162 : 262);
  let ultimo = 0;
  let eventos = 0;
  return (porcentagem) => {
    if ((++eventos & 255) !== 1 && especie === 'fichas') return;
    const agora = performance.now();
    if (agora - ultimo < 100) return;
    ultimo = agora;
    const parte = porcentagem / 100;
    const linhas = especie === 'notas' ? (parte * linhasTotais * 128) / 162 : parte * linhasTotais;
    postMessage({
      tipo: 'progresso',
      linhas: Math.min(Math.max(linhas, 0), linhasTotais),
      total: linhasTotais,
    });
  };
}

async function validar({arquivo, especie, opcoes}) {
  const q = await moduloPronto;
  const pastas = diretorios(q, arquivo);
  const validador = especie === 'notas' ? new q.Validacao() : new q.ValidacaoFichaCadastral();
  const textos = catalogo(q);
  try {
    preparaAmbiente(q, validador, opcoes);
    const aviso = progresso(especie, arquivo.size);
    if (especie === 'notas')
      validador.Progress = aviso;
    else
      validador.FichaProgress = aviso;
    const numero = {valor: ''};
    const argumentos = [
      pastas.entrada,
      numero,
      pastas.trabalho,
      opcoes.chaveRemessa,
      opcoes.chaveProcessamento,
      opcoes.origem,
      opcoes.servidor,
      opcoes.separador,
    ];
    const inicio = performance.now();
    const status = especie === 'notas' ? validador.Valida_Dados(...argumentos) :
                                         validador.Valida_Fichas(...argumentos);
    const duracao = performance.now() - inicio;
    const falha = validador.UltimaFalha();
    // The JSON object names the file as the person chose it, and no working directory.
    const desfecho = desfechoDaValidacao(q, falha, pastas, {arquivo: arquivo.name, diretorio: ''});
    const bytes = desfecho.advertencias ? q.FS.readFile(desfecho.advertencias) : null;

    // The table's columns, one entry per warning; codes and record types as indexes into their
    // lists of distinct values, which are few.
    const resultado = {
      tipo: 'resultado',
      status,
      numeroRemessa: numero.valor,
      duracao,
      falha,
      arquivoAdvertencias: desfecho.arquivoAdvertencias,
      erro: desfecho.erro,
      descricao: desfecho.descricao,
      advertencias: bytes ? new Blob([bytes], {type: 'text/plain'}) : null,
      total: 0,
    };
    if (bytes) {
      const codigos = [];
      const indiceCodigo = new Map();
      const trs = [];
      const indiceTR = new Map();
      const linhas = [];
      const colCodigo = [];
      const colTR = [];
      const posicoes = [];
      // Millions of warnings take seconds to read: the page is told how far the reading is.
      let aviso = performance.now();
      for (const a of lerAdvertencias(
               bytes, opcoes.separador, especie, (c) => textos.texto(especie, c))) {
        if ((linhas.length & 0xffff) === 0 && performance.now() - aviso > 100) {
          aviso = performance.now();
          postMessage(
              {tipo: 'progresso', fase: 'advertencias', lidos: a.inicio, total: bytes.length});
        }
        if (!indiceCodigo.has(a.codigoTexto)) {
          indiceCodigo.set(a.codigoTexto, codigos.length);
          codigos.push({
            texto: a.codigoTexto,
            numero: a.codigo === null ? null : Number(a.codigo),
            mensagem: a.mensagem
          });
        }
        if (!indiceTR.has(a.tr)) {
          indiceTR.set(a.tr, trs.length);
          trs.push(a.tr);
        }
        linhas.push(a.linha === null ? NaN : Number(a.linha));
        colCodigo.push(indiceCodigo.get(a.codigoTexto));
        colTR.push(indiceTR.get(a.tr));
        posicoes.push(a.registro ? a.registro[0] : -1, a.registro ? a.registro[1] : -1);
      }
      Object.assign(resultado, {
        total: linhas.length,
        linhasDistintas: new Set(linhas).size,
        codigos,
        trs,
        linhas: Float64Array.from(linhas),
        colCodigo: Uint32Array.from(colCodigo),
        colTR: Uint32Array.from(colTR),
        posicoes: Float64Array.from(posicoes),
      });
    }
    postMessage(
        resultado,
        resultado.linhas ?
            [
              resultado.linhas.buffer, resultado.colCodigo.buffer, resultado.colTR.buffer,
              resultado.posicoes.buffer
            ] :
            []);
  } finally {
    textos.libera();
    validador.delete();
    pastas.desfaz();
  }
}

// The warnings of a run as JSON (the tool's format) or CSV, read again from the warnings file.
async function exportar({advertencias, especie, separador, formato, execucao}) {
  const q = await moduloPronto;
  const textos = catalogo(q);
  try {
    const bytes =
        advertencias ? new Uint8Array(await advertencias.arrayBuffer()) : new Uint8Array();
    const lista = lerAdvertencias(bytes, separador, especie, (c) => textos.texto(especie, c));
    const partes =
        formato === 'json' ? [...jsonValidacao(execucao, lista)] : [...csvAdvertencias(lista)];
    const tipo = formato === 'json' ? 'application/json' : 'text/csv;charset=utf-8';
    postMessage({tipo: 'exportado', blob: new Blob(partes, {type: tipo})});
  } finally {
    textos.libera();
  }
}

// The web facade over the file, with the web system's fixed arguments: its return file.
async function retorno({arquivo, especie, opcoes}) {
  const q = await moduloPronto;
  const pastas = diretorios(q, arquivo);
  const web = new q.ValidacaoTarnWEB();
  try {
    preparaAmbiente(q, web, opcoes);
    if (opcoes.tipoArquivo) web.TipoArquivo(opcoes.tipoArquivo);
    if (opcoes.programaChamador) web.ProgramaChamador(opcoes.programaChamador);
    const numero = {valor: ''};
    const nome = '/RETORNO.TXT';
    const resultado = especie === 'notas' ?
        web.Valida_Dados_Tarnweb(pastas.entrada, nome, pastas.trabalho, numero) :
        web.Valida_Dados_Ficha_Cadastral(pastas.entrada, nome, pastas.trabalho, numero);
    const falha = web.UltimaFalha();
    const caminho = pastas.trabalho + nome;
    const blob = !resultado && existe(q, caminho) ?
        new Blob([q.FS.readFile(caminho)], {type: 'text/plain'}) :
        null;
    postMessage({
      tipo: 'retorno',
      resultado,
      numeroRemessa: numero.valor,
      blob,
      falha,
      descricao: falha === 0 ? null : q.DescricaoDaFalha(falha),
    });
  } finally {
    web.delete();
    pastas.desfaz();
  }
}

// Both catalogues: every code that has a text of its own.
async function catalogos() {
  const q = await moduloPronto;
  const notas = new q.clsQuorvMsg();
  const fichas = new q.clsQuorvMsgFichas();
  try {
    const semTexto = notas.MensagemAdvertencia(-1);
    const lista = {notas: [], fichas: []};
    for (let codigo = 0; codigo <= 999; ++codigo) {
      const n = notas.MensagemAdvertencia(codigo);
      if (n !== semTexto) lista.notas.push([codigo, n]);
      const f = fichas.MensagemAdvertenciaFichas(codigo);
      if (f.trim() !== '') lista.fichas.push([codigo, f]);
    }
    postMessage({tipo: 'catalogos', lista});
  } finally {
    notas.delete();
    fichas.delete();
  }
}

const tratadores = {
  validar,
  exportar,
  retorno,
  catalogos
};

onmessage = async ({data}) => {
  try {
    await tratadores[data.tipo](data);
  } catch (erro) {
    postMessage({tipo: 'falha', mensagem: String(erro?.message ?? erro)});
  }
};

moduloPronto.then(
    (q) => postMessage({tipo: 'pronto', versao: q.Versao()}),
    (erro) => postMessage({tipo: 'falha', mensagem: String(erro?.message ?? erro)}),
);
