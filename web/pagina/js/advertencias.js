// The warnings file as the command-line tool reads it, and the results as it writes them: the
// JSON object "validacao" of its format 1 and a CSV table. Plain functions over bytes, used by the
// page's worker and by the tests in node.

// Windows-1252, the code page of the files: bytes 0x80 to 0x9F; the five the code page leaves
// free are the control characters of the same number, as Windows converts them.
const FAIXA_80 = [
  0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
  0x2039, 0x0152, 0x008d, 0x017d, 0x008f, 0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
  0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178,
];

/** The text of Windows-1252 bytes [inicio, fim). */
export function textoCp1252(bytes, inicio = 0, fim = bytes.length) {
  let texto = '';
  for (let i = inicio; i < fim; ++i) {
    const byte = bytes[i];
    texto += String.fromCharCode(byte >= 0x80 && byte <= 0x9f ? FAIXA_80[byte - 0x80] : byte);
  }
  return texto;
}

/** The Windows-1252 bytes of a text; a character the code page lacks becomes "?". */
export function bytesCp1252(texto) {
  const bytes = [];
  for (const caractere of texto) {
    const codigo = caractere.codePointAt(0);
    if (codigo < 0x80 || (codigo >= 0xa0 && codigo <= 0xff)) {
      bytes.push(codigo);
    } else {
      const indice = FAIXA_80.indexOf(codigo);
      bytes.push(indice >= 0 ? 0x80 + indice : 0x3f);
    }
  }
  return Uint8Array.from(bytes);
}

function procura(bytes, agulha, de, ate) {
  if (agulha.length === 1) {
    const achado = bytes.indexOf(agulha[0], de);
    return achado >= 0 && achado < ate ? achado : -1;
  }
  for (let i = de; i + agulha.length <= ate; ++i) {
    let k = 0;
    while (k < agulha.length && bytes[i + k] === agulha[k])
      ++k;
    if (k === agulha.length) return i;
  }
  return -1;
}

function procuraDoFim(bytes, agulha, de, ate) {
  for (let i = ate - agulha.length; i >= de; --i) {
    let k = 0;
    while (k < agulha.length && bytes[i + k] === agulha[k])
      ++k;
    if (k === agulha.length) return i;
  }
  return -1;
}

// A whole number written as the C++ library reads one (std::from_chars): an optional "-", then
// digits and nothing else, within `limite`; its decimal text without leading zeros, or null.
const INT32 = 2147483647n;
const INT64 = 9223372036854775807n;
function inteiro(texto, limite) {
  if (!/^-?[0-9]+$/.test(texto)) return null;
  const valor = BigInt(texto);
  if (valor > limite || valor < -limite - 1n) return null;
  return valor.toString();
}

/**
 * Every warning of a warnings file, in order, read with the separator of the run that wrote it:
 * the code before the first separator, the warned line between the third and the last one (it
 * may hold the separator), its record type from its column 9, and the line number after the last
 * separator. `mensagem(codigo)` gives the catalogue's text of a code.
 */
export function* lerAdvertencias(bytes, separador, especie, mensagem) {
  const sep = bytesCp1252(separador);
  const larguraTR = especie === 'notas' ? 2 : 3;
  let inicio = 0;
  while (inicio < bytes.length) {
    let fimLinha = bytes.indexOf(0x0a, inicio);
    const proxima = fimLinha < 0 ? bytes.length : fimLinha + 1;
    if (fimLinha < 0) fimLinha = bytes.length;
    let fim = fimLinha;
    if (fim > inicio && bytes[fim - 1] === 0x0d) --fim;

    const primeiro = procura(bytes, sep, inicio, fim);
    const segundo = primeiro < 0 ? -1 : procura(bytes, sep, primeiro + sep.length, fim);
    const terceiro = segundo < 0 ? -1 : procura(bytes, sep, segundo + sep.length, fim);
    const ultimo = procuraDoFim(bytes, sep, inicio, fim);
    const codigoTexto = textoCp1252(bytes, inicio, primeiro < 0 ? fim : primeiro);
    let tr = '';
    let linhaTexto = '';
    let registro = -1;
    if (terceiro >= 0 && ultimo > terceiro) {
      registro = terceiro + sep.length;
      const inicioTR = registro + Math.min(8, ultimo - registro);
      tr = textoCp1252(bytes, inicioTR, Math.min(inicioTR + larguraTR, ultimo));
      linhaTexto = textoCp1252(bytes, ultimo + sep.length, fim);
    }
    const codigo = inteiro(codigoTexto, INT32);
    const numero = codigo === null ? null : Number(codigo);
    yield {
      codigoTexto,
      codigo,
      linhaTexto,
      linha: inteiro(linhaTexto, INT64),
      tr,
      mensagem: numero !== null && numero >= -32768 && numero <= 32767 ? mensagem(numero) : '',
      // Where the warned line lies in the file, for showing it.
      registro: registro < 0 ? null : [registro, ultimo],
      inicio,
    };
    inicio = proxima;
  }
}

/** The meaning of a run status, as the command-line tool tells it. */
export function significado(especie, status) {
  switch (status) {
    case 0:
      return 'arquivo lido até o trailer, sem advertências';
    case 1:
      return 'advertências nos registros; arquivo lido até o fim';
    case 8:
      return especie === 'notas' ?
          'erro de estrutura; validação interrompida na linha da advertência' :
          'validação encerrada no trailer ou num erro de estrutura';
    case 9:
      return 'arquivo não validado';
    default:
      return 'status desconhecido';
  }
}

// Why the input could not be read, by what its path holds.
function motivoDaEntrada(c) {
  if (c.entrada === 'ausente') return `arquivo não encontrado: ${c.arquivo}`;
  if (c.entrada === 'diretorio') {
    return `o caminho é um diretório, não um arquivo: ${
        c.arquivo}; use --recursivo para validar os arquivos dentro dele`;
  }
  return `não foi possível ler o arquivo: ${c.arquivo}`;
}

// The library's failures (Falha), by their fixed numbers, as the command-line tool tells them in
// its "erro" objects: the kind, and its sentence about the input (`c.arquivo`, and what the path
// holds, `c.entrada`) and the warnings file (`c.advertencias`) as the object names them. The web
// facade's own failures, which a validation never meets, keep the library's sentence, as the tool
// keeps it. `antes`: the failure came before the run created its warnings file, so one found in
// the working directory is not this run's.
const FALHAS = [
  {tipo: 'nenhuma'},
  {tipo: 'entrada_inacessivel', antes: true, mensagem: motivoDaEntrada},
  {
    tipo: 'diretorio_inexistente',
    antes: true,
    mensagem: (c) => `diretório de trabalho não encontrado: ${c.diretorio}`,
  },
  {
    tipo: 'entrada_e_advertencias',
    antes: true,
    mensagem: (c) => 'o arquivo a validar é o próprio ADVERTENCIAS.TXT do diretório de trabalho (' +
        `${c.advertencias}), que a validação substituiria; nada foi validado e o arquivo ficou ` +
        'como estava; use outro diretório de trabalho (-d)',
  },
  {
    tipo: 'advertencias_nao_criadas',
    antes: true,
    mensagem: (c) => `não foi possível criar o arquivo de advertências: ${
        c.advertencias}; verifique se o diretório de trabalho aceita gravação`,
  },
  {
    tipo: 'escrita_advertencias',
    mensagem: (c) =>
        'falha ao gravar o arquivo de advertências (disco cheio ou erro de entrada e saída): ' +
        `${c.advertencias}; ele não contém todas as advertências da validação`,
  },
  {tipo: 'retorno_nao_criado'},
  {tipo: 'escrita_retorno'},
  {tipo: 'retorno_e_entrada', antes: true},
  {
    tipo: 'erro_grave',
    mensagem: (c) => 'a validação das fichas parou num registro cujo tipo não é numérico (uma ' +
        `linha vazia, por exemplo); as advertências até ali estão em ${c.advertencias}`,
  },
  {
    tipo: 'falha_interna',
    mensagem: () => 'falha interna durante a validação (memória ou uma exceção inesperada)',
  },
];
const FALHA_INTERNA = 10;

/** The tool's "erro" kind of a library failure (UltimaFalha). */
export function tipoDaFalha(falha) { return (FALHAS[falha] ?? FALHAS[FALHA_INTERNA]).tipo; }

/**
 * The exit code the tool gives a run: 0 accepted, 1 warnings, 3 a failure of input or output, 4
 * an internal failure.
 */
export function codigoSaida(falha, temAdvertencias) {
  if (falha !== 0) return falha === FALHA_INTERNA ? 4 : 3;
  return temAdvertencias ? 1 : 0;
}

// What the module's file system holds at a path.
function natureza(FS, caminho) {
  const {exists, object} = FS.analyzePath(caminho);
  if (!exists) return 'ausente';
  if (FS.isDir(object.mode)) return 'diretorio';
  return FS.isFile(object.mode) ? 'arquivo' : 'outro';
}

// The warnings file of a working directory as the tool names it, the directory as given.
function nomeDasAdvertencias(diretorio) {
  if (diretorio === '' || diretorio.endsWith('/')) return `${diretorio}ADVERTENCIAS.TXT`;
  return `${diretorio}/ADVERTENCIAS.TXT`;
}

/**
 * A run of Valida_Dados or Valida_Fichas over the module's file system as the command-line tool
 * reports it, called right after the run with its UltimaFalha. `caminhos` are the module's paths
 * of the input and the working directory ({entrada, trabalho}); `mostrados`, the names the JSON
 * object gives them ({arquivo, diretorio}). Answers `advertencias`, the module's path of the
 * working directory's ADVERTENCIAS.TXT when this run wrote it, and `arquivoAdvertencias`, its
 * name in the object (both null otherwise: one an earlier run left where this one could not start
 * is never read); `erro`, the tool's "erro" object (null when the run did not fail); and
 * `descricao`, the library's sentence for people.
 */
export function desfechoDaValidacao(q, falha, caminhos, mostrados) {
  const caminho = `${caminhos.trabalho}/ADVERTENCIAS.TXT`;
  const existe = natureza(q.FS, caminho) === 'arquivo';
  const falhaDaLista = FALHAS[falha] ?? {tipo: tipoDaFalha(falha)};
  const antes = falhaDaLista.antes === true;
  const nome = nomeDasAdvertencias(mostrados.diretorio);
  const desfecho = {
    advertencias: existe && !antes ? caminho : null,
    arquivoAdvertencias: existe && !antes ? nome : null,
    erro: null,
    descricao: null,
  };
  if (falha === 0) return desfecho;
  desfecho.descricao = q.DescricaoDaFalha(falha);
  const contexto = {
    arquivo: mostrados.arquivo,
    diretorio: mostrados.diretorio,
    entrada: natureza(q.FS, caminhos.entrada),
    advertencias: nome,
  };
  const mensagem = falhaDaLista.mensagem ? falhaDaLista.mensagem(contexto) : desfecho.descricao;
  desfecho.erro = {tipo: falhaDaLista.tipo, mensagem};
  return desfecho;
}

const texto = (valor) => JSON.stringify(valor);

/**
 * The JSON object of a validation, format 1 of the command-line tool, in pieces (strings) to be
 * joined or put in a Blob. `execucao`: {arquivo, especie, status, falha (the run's UltimaFalha),
 * numeroRemessa, diretorio, arquivoAdvertencias (null when there is none), erro (null or {tipo,
 * mensagem}, from desfechoDaValidacao)}.
 */
export function* jsonValidacao(execucao, advertencias) {
  const saida = codigoSaida(execucao.falha, execucao.arquivoAdvertencias !== null);
  let cabeca = `{"formato":1,"objeto":"validacao","arquivo":${texto(execucao.arquivo)}` +
      `,"tipo":${texto(execucao.especie)},"status":${execucao.status}` +
      `,"significado":${texto(significado(execucao.especie, execucao.status))}` +
      `,"aceito":${saida === 0},"numero_remessa":${texto(execucao.numeroRemessa)}` +
      `,"diretorio":${texto(execucao.diretorio)}`;
  if (execucao.arquivoAdvertencias !== null) {
    cabeca += `,"arquivo_advertencias":${texto(execucao.arquivoAdvertencias)}`;
  }
  yield cabeca + ',"advertencias":[';
  let total = 0;
  let pedaco = '';
  for (const a of advertencias) {
    // A code or a line number that is not a number is 0, which names no warning and no line.
    pedaco += `${total === 0 ? '' : ','}{"codigo":${a.codigo ?? 0},"linha":${a.linha ?? 0}` +
        `,"tr":${texto(a.tr)},"mensagem":${texto(a.mensagem)}}`;
    ++total;
    if (pedaco.length > 1 << 20) {
      yield pedaco;
      pedaco = '';
    }
  }
  let fim = `${pedaco}],"total_advertencias":${total}`;
  if (execucao.erro) {
    fim +=
        `,"erro":{"tipo":${texto(execucao.erro.tipo)},"mensagem":${texto(execucao.erro.mensagem)}}`;
  }
  yield `${fim},"codigo_saida":${saida}}\n`;
}

function celula(valor) {
  return /[;"\r\n]/.test(valor) ? `"${valor.replaceAll('"', '""')}"` : valor;
}

/**
 * The warnings as a CSV table for spreadsheets: UTF-8 with its mark, ";" between columns (the
 * decimal mark of Brazilian spreadsheets is the comma), CR LF line ends. Codes and line numbers
 * as written in the warnings file.
 */
export function* csvAdvertencias(advertencias) {
  let pedaco = '\ufefflinha;codigo;tr;mensagem\r\n';
  for (const a of advertencias) {
    pedaco += `${celula(a.linhaTexto)};${celula(a.codigoTexto)};${celula(a.tr)};${
        celula(a.mensagem)}\r\n`;
    if (pedaco.length > 1 << 20) {
      yield pedaco;
      pedaco = '';
    }
  }
  yield pedaco;
}

/**
 * The kind of a file told by the length of its first line, as the command-line tool tells it:
 * 160 characters an invoice file, 260 a form file (a CR right before the LF belongs to the line
 * end). Reads the Blob a piece at a time; null for any other length.
 */
export async function especieDoArquivo(blob) {
  const pedaco = 64 * 1024;
  let comprimento = 0;
  let anteriorCR = false;
  for (let inicio = 0; inicio < blob.size && comprimento <= 262; inicio += pedaco) {
    const bytes = new Uint8Array(await blob.slice(inicio, inicio + pedaco).arrayBuffer());
    const lf = bytes.indexOf(0x0a);
    if (lf >= 0) {
      comprimento += lf;
      if (lf > 0 ? bytes[lf - 1] === 0x0d : anteriorCR) --comprimento;
      return {comprimento, especie: especiePorComprimento(comprimento)};
    }
    comprimento += bytes.length;
    anteriorCR = bytes.length > 0 && bytes[bytes.length - 1] === 0x0d;
  }
  if (comprimento > 262) return {comprimento: null, especie: null};
  return {comprimento, especie: especiePorComprimento(comprimento)};
}

function especiePorComprimento(comprimento) {
  if (comprimento === 160) return 'notas';
  if (comprimento === 260) return 'fichas';
  return null;
}
