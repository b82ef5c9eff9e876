// The page: files chosen or dropped, validated one after another in the worker, and the result
// of the file chosen in the list shown as a summary, a chart, a table of its warnings and the
// downloads. Nothing is sent anywhere: the worker reads the files where they are.
import {especieDoArquivo, significado, textoCp1252} from './advertencias.js';
import {TabelaVirtual} from './tabela.js';
import {Trabalhador} from './trabalhador-cliente.js';

const $ = (id) => document.getElementById(id);
const numero = new Intl.NumberFormat('pt-BR');
const NOMES = {
  notas: 'notas fiscais de produtor',
  fichas: 'ficha cadastral'
};

$('sem-script').remove();
const trabalhador = new Trabalhador(new URL('./trabalhador.js', import.meta.url));
const fila = [];
let atual = null;
let validando = false;

// ---- options -------------------------------------------------------------------------------

function numeroDoCampo(texto, nome) {
  const limpo = texto.trim().replace(',', '.');
  if (limpo === '') return 0;
  if (!/^[+-]?(\d+\.?\d*|\.\d+)$/.test(limpo)) throw new Error(`${nome}: informe um número`);
  return Number(limpo);
}

function opcoes() {
  const f = $('opcoes').elements;
  const erro = $('erro-opcoes');
  try {
    if (f.separador.value === '') throw new Error('O separador não pode ser vazio.');
    const valores = {
      chaveRemessa: numeroDoCampo(f.chaveRemessa.value, 'Chave da remessa'),
      chaveProcessamento: numeroDoCampo(f.chaveProcessamento.value, 'Chave do processamento'),
      origem: f.origem.value,
      servidor: f.servidor.value,
      separador: f.separador.value,
      hoje: f.hoje.value,
      inscricao: f.inscricao.value,
      tipoArquivo: f.tipoArquivo.value,
      programaChamador: f.programaChamador.value,
    };
    erro.hidden = true;
    return valores;
  } catch (e) {
    erro.textContent = e.message;
    erro.hidden = false;
    $('avancado').open = true;
    return null;
  }
}

// ---- the list of files ---------------------------------------------------------------------

function tamanho(bytes) {
  if (bytes < 1024) return `${bytes} bytes`;
  if (bytes < 1024 * 1024) return `${numero.format(Math.round(bytes / 1024))} KB`;
  return `${numero.format(Math.round(bytes / 1024 / 102.4) / 10)} MB`;
}

function seloDe(item) {
  if (!item.resultado) return null;
  const r = item.resultado;
  if (r.erro) return ['falha', 'não validado'];
  return r.advertencias ? ['advertencias', 'com advertências'] : ['aceito', 'aceito'];
}

function desenhaItem(item) {
  const li = item.elemento;
  li.className = `arquivo${item === atual ? ' atual' : ''}`;
  li.replaceChildren();
  const nome = document.createElement('div');
  nome.innerHTML = `<span class="nome"></span><div class="estado"></div>`;
  nome.querySelector('.nome').textContent = item.arquivo.name;
  const estado = nome.querySelector('.estado');
  const selo = seloDe(item);
  estado.textContent = `${tamanho(item.arquivo.size)} · ${item.estado}`;
  if (selo) {
    const s = document.createElement('span');
    s.className = `selo ${selo[0]}`;
    s.textContent = selo[1];
    estado.prepend(s, ' ');
  }

  const rotulo = document.createElement('label');
  rotulo.textContent = 'Tipo ';
  const escolha = document.createElement('select');
  escolha.setAttribute('aria-label', `Tipo de ${item.arquivo.name}`);
  const reconhecido =
      item.reconhecido ? `reconhecido: ${NOMES[item.reconhecido]}` : 'não reconhecido: escolha';
  for (const [valor, texto] of [
           ['', reconhecido],
           ['notas', NOMES.notas],
           ['fichas', NOMES.fichas],
  ]) {
    const o = new Option(texto, valor, false, item.escolhido === valor);
    escolha.add(o);
  }
  escolha.disabled = validando && item.estado === 'validando…';
  escolha.addEventListener('change', () => {
    item.escolhido = escolha.value;
    item.resultado = null;
    // The result shown was of the other kind: it goes, and the new one shows when it is ready.
    if (item === atual) {
      $('resultado').hidden = true;
      atual = null;
    }
    item.estado = especieDe(item) ? 'na fila' : 'escolha o tipo para validar';
    desenhaItem(item);
    processaFila();
  });
  rotulo.append(escolha);

  const ver = document.createElement('button');
  ver.type = 'button';
  ver.className = 'botao';
  if (item.estado === 'cancelado') {
    // A cancelled run can be started again.
    ver.textContent = 'Validar de novo';
    ver.setAttribute('aria-label', `Validar de novo ${item.arquivo.name}`);
    ver.addEventListener('click', () => {
      item.estado = 'na fila';
      desenhaItem(item);
      processaFila();
    });
  } else {
    ver.textContent = 'Ver resultado';
    ver.disabled = !item.resultado;
    ver.setAttribute('aria-label', `Ver resultado de ${item.arquivo.name}`);
    ver.addEventListener('click', () => mostra(item, true));
  }
  li.append(nome, rotulo, ver);
}

function especieDe(item) { return item.escolhido || item.reconhecido; }

async function acrescenta(arquivos) {
  if (arquivos.length === 0) return;
  $('fila').hidden = false;
  for (const arquivo of arquivos) {
    const item = {
      arquivo,
      reconhecido: null,
      escolhido: '',
      estado: 'lendo a primeira linha…',
      resultado: null
    };
    item.elemento = document.createElement('li');
    fila.push(item);
    $('lista-arquivos').append(item.elemento);
    desenhaItem(item);
    const {comprimento, especie} = await especieDoArquivo(arquivo);
    item.reconhecido = especie;
    item.estado = especie ?
        'na fila' :
        comprimento === null ?
        'a primeira linha passa de 260 caracteres: escolha o tipo' :
        `a primeira linha tem ${comprimento} caracteres (esperados 160 ou 260): escolha o tipo`;
    desenhaItem(item);
  }
  processaFila();
}

// ---- validation ----------------------------------------------------------------------------

async function processaFila() {
  if (validando) return;
  const item = fila.find((i) => !i.resultado && especieDe(i) && i.estado !== 'cancelado');
  if (!item) return;
  const valores = opcoes();
  if (!valores) return;
  validando = true;
  item.estado = 'validando…';
  item.especie = especieDe(item);
  item.opcoes = valores;
  desenhaItem(item);
  $('progresso').hidden = false;
  $('progresso-rotulo').textContent = `Validando ${item.arquivo.name} (${NOMES[item.especie]})`;
  $('barra').removeAttribute('value');
  $('progresso-texto').textContent = '';
  item.cancelar = () => trabalhador.cancela();
  try {
    const resultado = await trabalhador.pede(
        {tipo: 'validar', arquivo: item.arquivo, especie: item.especie, opcoes: valores},
        ({fase, linhas, lidos, total}) => {
          if (fase === 'advertencias') {
            $('barra').value = lidos / total;
            $('progresso-texto').textContent =
                `arquivo validado; lendo as advertências para a tabela (${
                    Math.floor((100 * lidos) / total)}%)`;
            return;
          }
          $('barra').value = total > 0 ? linhas / total : 0;
          $('progresso-texto').textContent = `${numero.format(Math.round(linhas))} de cerca de ${
              numero.format(Math.round(total))} linhas`;
        },
    );
    item.resultado = resultado;
    item.estado = `validado em ${numero.format(Math.round(resultado.duracao) / 1000)} s`;
    desenhaItem(item);
    // The first result shows by itself; later ones wait until the person asks for them.
    if (!atual) mostra(item, false);
  } catch (erro) {
    item.estado = erro.cancelado ? 'cancelado' : `falhou: ${erro.message}`;
    if (!erro.cancelado) item.resultado = null;
    desenhaItem(item);
  } finally {
    validando = false;
    $('progresso').hidden = true;
  }
  processaFila();
}

// Files left waiting by an option that was not valid go on once it is corrected.
$('opcoes').addEventListener('change', () => processaFila());

$('validar-de-novo').addEventListener('click', () => {
  if (!atual || validando) return;
  atual.resultado = null;
  atual.estado = 'na fila';
  $('resultado').hidden = true;
  const item = atual;
  atual = null;
  desenhaItem(item);
  processaFila();
});

$('cancelar').addEventListener('click', () => {
  const item = fila.find((i) => i.estado === 'validando…');
  if (item) item.cancelar();
});

// ---- the result ----------------------------------------------------------------------------

const tabela = new TabelaVirtual($('tabela'), $('rolagem'), $('espaco'), abreDetalhe);

function mostra(item, foco) {
  const anterior = atual;
  atual = item;
  if (anterior) desenhaItem(anterior);
  desenhaItem(item);
  const r = item.resultado;
  $('resultado').hidden = false;
  $('titulo-resultado').textContent = `Resultado de ${item.arquivo.name}`;
  const [classe, texto] = seloDe(item);
  const situacao = $('situacao');
  situacao.replaceChildren();
  const selo = document.createElement('span');
  selo.className = `selo ${classe}`;
  selo.textContent = texto;
  const explicacao = document.createElement('span');
  explicacao.className = 'explicacao';
  explicacao.textContent = `status ${r.status}: ${significado(item.especie, r.status)}`;
  situacao.append(selo, explicacao);
  // Why the run could not validate the file or write its warnings, in the library's words.
  if (r.erro) {
    const motivo = document.createElement('p');
    motivo.className = 'motivo';
    motivo.textContent = r.descricao;
    situacao.append(motivo);
  }
  $('aviso-inscricao').hidden = !(item.especie === 'notas' && item.opcoes.inscricao === 'nenhuma');

  const numeros = [
    ['Tipo', NOMES[item.especie]],
    ['Número da remessa', r.numeroRemessa || '(não lido)'],
    ['Advertências', numero.format(r.total)],
    ['Códigos diferentes', numero.format(r.codigos ? r.codigos.length : 0)],
    ['Linhas com advertência', numero.format(r.linhasDistintas ?? 0)],
    ['Tempo da validação', `${numero.format(Math.round(r.duracao) / 1000)} s`],
  ];
  $('numeros').replaceChildren(
      ...numeros.map(([rotulo, valor]) => {
        const div = document.createElement('div');
        const dt = document.createElement('dt');
        const dd = document.createElement('dd');
        dt.textContent = rotulo;
        dd.textContent = valor;
        div.append(dt, dd);
        return div;
      }),
  );
  $('baixar-advertencias').disabled = !r.advertencias;
  $('baixar-csv').disabled = !r.advertencias;
  $('aviso-download').textContent = r.advertencias ? '' :
      r.erro ? 'Nenhum ADVERTENCIAS.TXT: a validação falhou sem deixar advertências.' :
               'Nenhum ADVERTENCIAS.TXT: a validação não deixou advertências.';
  $('com-advertencias').hidden = !r.advertencias;
  $('detalhe').hidden = true;
  if (r.advertencias) {
    const quantos = contagemPorCodigo(r);
    desenhaGrafico(r, quantos);
    preencheFiltro(r, quantos);
    aplicaFiltro();
  }
  if (foco) $('resultado').focus();
}

function contagemPorCodigo(r) {
  const quantos = new Uint32Array(r.codigos.length);
  for (const c of r.colCodigo)
    ++quantos[c];
  return quantos;
}

function rotuloDoCodigo(codigo) {
  return codigo.numero === null ? `"${codigo.texto}"` : String(codigo.numero);
}

function desenhaGrafico(r, quantos) {
  const ordem = [...quantos.keys()].sort((a, b) => quantos[b] - quantos[a]).slice(0, 12);
  const maior = quantos[ordem[0]] || 1;
  const alvo = $('grafico');
  alvo.replaceChildren();
  for (const i of ordem) {
    const codigo = r.codigos[i];
    const barra = document.createElement('button');
    barra.type = 'button';
    barra.className = 'barra-codigo';
    barra.title = codigo.mensagem;
    barra.setAttribute(
        'aria-label',
        `Código ${rotuloDoCodigo(codigo)}: ${numero.format(quantos[i])} advertências. ${
            codigo.mensagem}. Filtrar por este código.`,
    );
    barra.innerHTML =
        '<span class="rotulo"></span><span class="trilho"><span class="cheio"></span></span><span class="quantos"></span>';
    barra.querySelector('.rotulo').textContent = `código ${rotuloDoCodigo(codigo)}`;
    barra.querySelector('.cheio').style.width = `${(100 * quantos[i]) / maior}%`;
    barra.querySelector('.cheio').style.display = 'block';
    barra.querySelector('.quantos').textContent = numero.format(quantos[i]);
    barra.addEventListener('click', () => {
      $('filtro-codigo').value = String(i);
      aplicaFiltro();
    });
    alvo.append(barra);
  }
  if (quantos.length > ordem.length) {
    const resto = document.createElement('p');
    resto.className = 'ajuda';
    resto.textContent = `Mais ${
        quantos.length - ordem.length} códigos com menos advertências: veja o filtro de código.`;
    alvo.append(resto);
  }
}

function preencheFiltro(r, quantos) {
  const filtro = $('filtro-codigo');
  filtro.replaceChildren(new Option(`todos (${numero.format(r.total)})`, ''));
  const ordem = [...r.codigos.keys()].sort(
      (a, b) => (r.codigos[a].numero ?? -1e9) - (r.codigos[b].numero ?? -1e9));
  for (const i of ordem) {
    filtro.add(
        new Option(`${rotuloDoCodigo(r.codigos[i])} (${numero.format(quantos[i])})`, String(i)));
  }
  $('filtro-texto').value = '';
}

function normaliza(texto) {
  return texto.normalize('NFD').replace(/\p{Diacritic}/gu, '').toLowerCase();
}

function aplicaFiltro() {
  const r = atual.resultado;
  const codigo = $('filtro-codigo').value;
  const busca = normaliza($('filtro-texto').value.trim());
  // Which codes a search matches, by their text or their number; the record type and the line
  // number are matched row by row.
  const codigosAceitos = r.codigos.map(
      (c, i) => (codigo === '' || Number(codigo) === i) &&
          (busca === '' || normaliza(c.mensagem).includes(busca) || c.texto === busca),
  );
  const trsAceitos = r.trs.map((tr) => busca !== '' && normaliza(tr.trim()) === busca);
  const linhaBuscada = /^\d+$/.test(busca) ? Number(busca) : NaN;
  const visiveis = [];
  for (let i = 0; i < r.total; ++i) {
    const c = r.colCodigo[i];
    if (codigo !== '' && Number(codigo) !== c) continue;
    if (codigosAceitos[c] || trsAceitos[r.colTR[i]] || r.linhas[i] === linhaBuscada)
      visiveis.push(i);
  }
  tabela.mostra(r, Uint32Array.from(visiveis));
  $('contagem').textContent = visiveis.length === r.total ?
      `${numero.format(r.total)} advertências` :
      `${numero.format(visiveis.length)} de ${numero.format(r.total)} advertências`;
}

$('filtro-codigo').addEventListener('change', aplicaFiltro);
let esperaBusca = 0;
$('filtro-texto').addEventListener('input', () => {
  clearTimeout(esperaBusca);
  esperaBusca = setTimeout(aplicaFiltro, 150);
});

// The warned line of the input, with a ruler of its columns: the sequence (1-8) and the record
// type (9-10 in invoice files, 9-11 in form files) marked.
async function abreDetalhe(indice) {
  const r = atual.resultado;
  const codigo = r.codigos[r.colCodigo[indice]];
  const linha = Number.isNaN(r.linhas[indice]) ? '?' : numero.format(r.linhas[indice]);
  $('titulo-detalhe').textContent =
      `Linha ${linha} · TR ${r.trs[r.colTR[indice]] || '—'} · código ${rotuloDoCodigo(codigo)}`;
  $('detalhe-mensagem').textContent = codigo.mensagem || '(código sem texto no catálogo)';
  const alvo = $('linha-arquivo');
  alvo.replaceChildren();
  const inicio = r.posicoes[2 * indice];
  const fim = r.posicoes[2 * indice + 1];
  if (inicio >= 0) {
    const bytes = new Uint8Array(await r.advertencias.slice(inicio, fim).arrayBuffer());
    const texto = textoCp1252(bytes);
    const largura = Math.max(texto.length, 10);
    // Every tenth column carries its number, ending at that column; the row below, the units.
    const dezenasArray = Array(largura).fill(' ');
    let unidades = '';
    for (let c = 1; c <= largura; ++c) {
      unidades += String(c % 10);
      if (c % 10 === 0) [...String(c)].reverse().forEach((d, k) => (dezenasArray[c - 1 - k] = d));
    }
    const dezenas = dezenasArray.join('');
    const larguraTR = atual.especie === 'notas' ? 2 : 3;
    const pre = document.createElement('pre');
    const regua = document.createElement('span');
    regua.className = 'regua';
    regua.textContent = `${dezenas}\n${unidades}\n`;
    const seq = document.createElement('span');
    seq.className = 'seq';
    seq.title = 'colunas 1 a 8: número da linha';
    seq.textContent = texto.slice(0, 8);
    const tr = document.createElement('span');
    tr.className = 'tr';
    tr.title = `colunas 9 a ${8 + larguraTR}: tipo de registro`;
    tr.textContent = texto.slice(8, 8 + larguraTR);
    pre.append(regua, seq, tr, texto.slice(8 + larguraTR));
    pre.setAttribute(
        'aria-label', `Conteúdo da linha ${linha} do arquivo, ${texto.length} caracteres`);
    const legenda = document.createElement('p');
    legenda.className = 'legenda';
    legenda.innerHTML =
        '<span class="seq">colunas 1–8: número da linha</span> <span class="tr"></span>';
    legenda.querySelector('.tr').textContent = `colunas 9–${8 + larguraTR}: tipo de registro`;
    alvo.append(pre, legenda);
  } else {
    alvo.textContent = 'Esta advertência não traz a linha do arquivo.';
  }
  $('detalhe').hidden = false;
  $('detalhe').focus();
}

$('fechar-detalhe').addEventListener('click', () => {
  $('detalhe').hidden = true;
  $('tabela').focus();
});

// ---- downloads -----------------------------------------------------------------------------

function baixa(blob, nome) {
  const url = URL.createObjectURL(blob);
  const a = document.createElement('a');
  a.href = url;
  a.download = nome;
  document.body.append(a);
  a.click();
  a.remove();
  setTimeout(() => URL.revokeObjectURL(url), 60_000);
}

function nomeBase(item) { return item.arquivo.name.replace(/\.[^.]*$/, ''); }

$('baixar-advertencias').addEventListener('click', () => {
  if (atual?.resultado?.advertencias) baixa(atual.resultado.advertencias, 'ADVERTENCIAS.TXT');
});

async function exporta(formato) {
  const item = atual;
  const r = item.resultado;
  $('aviso-download').textContent = `Preparando o ${formato.toUpperCase()}…`;
  try {
    const {blob} = await trabalhador.pede({
      tipo: 'exportar',
      advertencias: r.advertencias,
      especie: item.especie,
      separador: item.opcoes.separador,
      formato,
      execucao: {
        arquivo: item.arquivo.name,
        especie: item.especie,
        status: r.status,
        falha: r.falha,
        numeroRemessa: r.numeroRemessa,
        diretorio: '',
        arquivoAdvertencias: r.arquivoAdvertencias,
        erro: r.erro,
      },
    });
    baixa(blob, `${nomeBase(item)}.${formato}`);
    $('aviso-download').textContent = '';
  } catch (erro) {
    $('aviso-download').textContent = `Não foi possível preparar o arquivo: ${erro.message}`;
  }
}

$('baixar-csv').addEventListener('click', () => exporta('csv'));
$('baixar-json').addEventListener('click', () => exporta('json'));

$('baixar-retorno').addEventListener('click', async () => {
  const item = atual;
  if (validando) {
    $('aviso-download').textContent = 'Aguarde o fim da validação em andamento.';
    return;
  }
  $('aviso-download').textContent = 'Validando como o sistema web…';
  try {
    const r = await trabalhador.pede({
      tipo: 'retorno',
      arquivo: item.arquivo,
      especie: item.especie,
      opcoes: item.opcoes,
    });
    if (r.blob) baixa(r.blob, 'RETORNO.TXT');
    if (r.falha !== 0) {
      // Whatever the facade answered, a run that failed was not the web system's whole check.
      $('aviso-download').textContent = `O sistema web não validou o arquivo: ${r.descricao}`;
    } else if (r.blob) {
      $('aviso-download').textContent = '';
    } else {
      $('aviso-download').textContent = r.resultado ?
          'O sistema web aceitaria o arquivo: não há arquivo de retorno.' :
          'O sistema web recusaria o arquivo, mas não deixou arquivo de retorno.';
    }
  } catch (erro) {
    $('aviso-download').textContent =
        `Não foi possível validar como o sistema web: ${erro.message}`;
  }
});

// ---- choosing and dropping files -----------------------------------------------------------

$('arquivos').addEventListener('change', (evento) => {
  acrescenta([...evento.target.files]);
  evento.target.value = '';
});

const zona = $('zona');
for (const tipo of ['dragenter', 'dragover']) {
  zona.addEventListener(tipo, (evento) => {
    evento.preventDefault();
    zona.classList.add('arrastando');
  });
}
zona.addEventListener('dragleave', () => zona.classList.remove('arrastando'));
zona.addEventListener('drop', (evento) => {
  evento.preventDefault();
  zona.classList.remove('arrastando');
  acrescenta([...evento.dataTransfer.files]);
});
// A file dropped beside the zone is not opened by the browser in place of the page.
window.addEventListener('dragover', (evento) => evento.preventDefault());
window.addEventListener('drop', (evento) => evento.preventDefault());

// ---- tabs and catalogues -------------------------------------------------------------------

const abas = [$('aba-validar'), $('aba-catalogos')];
function selecionaAba(aba) {
  for (const a of abas) {
    const ativa = a === aba;
    a.setAttribute('aria-selected', String(ativa));
    a.tabIndex = ativa ? 0 : -1;
    $(a.getAttribute('aria-controls')).hidden = !ativa;
  }
  if (aba.id === 'aba-catalogos') carregaCatalogos();
}
for (const aba of abas) {
  aba.addEventListener('click', () => selecionaAba(aba));
  aba.addEventListener('keydown', (evento) => {
    if (evento.key !== 'ArrowRight' && evento.key !== 'ArrowLeft') return;
    const outra = abas[(abas.indexOf(aba) + 1) % abas.length];
    selecionaAba(outra);
    outra.focus();
  });
}

let catalogos = null;
async function carregaCatalogos() {
  if (catalogos) return;
  catalogos = (await trabalhador.pede({tipo: 'catalogos'})).lista;
  filtraCatalogos();
}

function filtraCatalogos() {
  const busca = normaliza($('busca-catalogo').value.trim());
  let mostrados = 0;
  for (const especie of ['notas', 'fichas']) {
    const lista = $(`catalogo-${especie}`);
    lista.replaceChildren();
    for (const [codigo, texto] of catalogos[especie]) {
      if (busca !== '' && String(codigo) !== busca && !normaliza(texto).includes(busca)) continue;
      const li = document.createElement('li');
      li.innerHTML = '<span class="codigo"></span><span class="texto"></span>';
      li.querySelector('.codigo').textContent = codigo;
      li.querySelector('.texto').textContent = texto.trim();
      lista.append(li);
      ++mostrados;
    }
    if (lista.children.length === 0) {
      const vazio = document.createElement('li');
      vazio.className = 'vazio';
      vazio.textContent = 'Nenhum código encontrado.';
      lista.append(vazio);
    }
  }
  $('contagem-catalogo').textContent = `${numero.format(mostrados)} códigos`;
}
$('busca-catalogo').addEventListener('input', () => catalogos && filtraCatalogos());

trabalhador.pronto.then(
    (versao) => {
      $('versao').textContent = versao;
    },
    (erro) => {
      // A browser without WebAssembly exceptions, or a page opened from a file rather than from
      // a web server, cannot load the validator: say so where the files are chosen.
      const aviso = $('falha-modulo');
      aviso.textContent = `Este navegador não carregou o validador (${erro.message}). Abra a ` +
          'página por um servidor web, num navegador atual (Chrome, Edge, Firefox ou Safari ' +
          'recentes).';
      aviso.hidden = false;
    });

// Offline once loaded: a service worker keeps the page and the module. It needs a secure
// origin (https or this computer); elsewhere the page works online only.
if ('serviceWorker' in navigator && window.isSecureContext) {
  navigator.serviceWorker.register('sw.js').catch(() => {});
}
