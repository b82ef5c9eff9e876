// The page in headless Chromium, served from a path prefix by a static server on this computer:
// each sample dropped on it gives the table and the downloads that the native tool gives, no
// request carries the file, the main path works from the keyboard alone, a run can be cancelled
// while the page keeps answering, and the page works offline once loaded. Screenshots of the main
// states go to build/web/capturas.
import assert from 'node:assert/strict';
import {existsSync, mkdirSync, readFileSync, writeFileSync} from 'node:fs';
import {basename, join} from 'node:path';
import {after, before, describe, test} from 'node:test';

import carregarQuorvValida from '../dist/modulo/index.js';

import {AMOSTRAS_ARQUIVOS, arquivoGerado, comLinha, conformeAoEsquema, especieDe, fichaComTipoDeLetras, HOJE, HOJE_ISO, jsonNativo, nativo, navegador, RAIZ, servidor, temporario} from './apoio.mjs';

const CAPTURAS = join(RAIZ, 'build/web/capturas');
mkdirSync(CAPTURAS, {recursive: true});

let http;
let contexto;
const pedidosDoNavegador = [];

before(async () => {
  http = await servidor('/fazenda/validador/');
  contexto = await navegador({viewport: {width: 1280, height: 900}});
  contexto.on(
      'request',
      (pedido) => pedidosDoNavegador.push(
          {url: pedido.url(), metodo: pedido.method(), corpo: pedido.postDataBuffer()}),
  );
});

after(async () => {
  await contexto?.close();
  await http?.fecha();
});

async function novaPagina() {
  const pagina = await contexto.newPage();
  await pagina.bringToFront();
  const erros = [];
  pagina.on('pageerror', (erro) => erros.push(erro.message));
  pagina.on('console', (m) => m.type() === 'error' && erros.push(m.text()));
  await pagina.goto(http.endereco);
  await pagina.locator('#avancado summary').click();
  await pagina.fill('input[name="hoje"]', HOJE_ISO);
  await pagina.locator('#avancado summary').click();
  return {pagina, erros};
}

// A file dropped on the zone as a person drags it from a folder.
async function solta(pagina, caminho) {
  await pagina.locator('#zona').evaluate(
      (zona, {nome, bytes}) => {
        const transferencia = new DataTransfer();
        transferencia.items.add(new File([new Uint8Array(bytes)], nome, {type: 'text/plain'}));
        zona.dispatchEvent(
            new DragEvent('drop', {dataTransfer: transferencia, bubbles: true, cancelable: true}));
      },
      {nome: basename(caminho), bytes: [...readFileSync(caminho)]},
  );
}

// Every row of the virtual table, scrolled through from top to bottom.
async function linhasDaTabela(pagina) {
  return pagina.evaluate(async () => {
    const rolagem = document.getElementById('rolagem');
    const linhas = new Map();
    rolagem.scrollTop = 0;
    for (;;) {
      await new Promise(requestAnimationFrame);
      for (const linha of rolagem.querySelectorAll('.linha:not([hidden])')) {
        const c = [...linha.children].map((s) => s.textContent);
        linhas.set(
            Number(linha.getAttribute('aria-rowindex')),
            {linha: c[0], tr: c[1], codigo: c[2], mensagem: c[3]});
      }
      if (rolagem.scrollTop + rolagem.clientHeight >= rolagem.scrollHeight - 1) break;
      rolagem.scrollTop += rolagem.clientHeight;
    }
    return [...linhas.keys()].sort((a, b) => a - b).map((k) => linhas.get(k));
  });
}

async function baixa(pagina, botao) {
  const [download] = await Promise.all([pagina.waitForEvent('download'), pagina.click(botao)]);
  return {nome: download.suggestedFilename(), bytes: readFileSync(await download.path())};
}

describe('cada amostra solta na página', () => {
  for (const caminho of AMOSTRAS_ARQUIVOS) {
    test(basename(caminho), async () => {
      const {pagina, erros} = await novaPagina();
      await solta(pagina, caminho);
      await pagina.locator('#resultado:not([hidden])').waitFor();
      const especie = especieDe(caminho);

      // The native tool without a state-registration library, as the page runs by default.
      const diretorio = temporario('quorv-pagina-');
      const n = jsonNativo([especie, caminho, '-d', diretorio, '--hoje', HOJE]);
      const nativas = n.objeto.advertencias;
      const situacao = await pagina.locator('#situacao').textContent();
      assert.match(situacao, new RegExp(`status ${n.objeto.status}: `));
      assert.ok(situacao.includes(n.objeto.significado), situacao);
      const remessa = await pagina.locator('#numeros div:nth-child(2) dd').textContent();
      assert.equal(remessa, n.objeto.numero_remessa || '(não lido)');
      const contagens = await pagina.locator('#numeros dd').allTextContents();
      assert.equal(contagens[2], String(nativas.length));
      assert.equal(contagens[3], String(new Set(nativas.map((a) => a.codigo)).size));
      assert.equal(contagens[4], String(new Set(nativas.map((a) => a.linha)).size));

      const caminhoNativo = join(diretorio, 'ADVERTENCIAS.TXT');
      if (nativas.length === 0) {
        assert.equal(existsSync(caminhoNativo), false);
        assert.equal(await pagina.locator('#baixar-advertencias').isDisabled(), true);
      } else {
        const tabela = await linhasDaTabela(pagina);
        assert.deepEqual(
            tabela,
            nativas.map((a) => ({
                          linha: String(a.linha),
                          tr: a.tr,
                          codigo: String(a.codigo),
                          mensagem: a.mensagem
                        })),
        );
        const advertencias = await baixa(pagina, '#baixar-advertencias');
        assert.equal(advertencias.nome, 'ADVERTENCIAS.TXT');
        assert.ok(
            advertencias.bytes.equals(readFileSync(caminhoNativo)), 'ADVERTENCIAS.TXT byte a byte');

        const json = await baixa(pagina, '#baixar-json');
        const objeto = JSON.parse(json.bytes.toString('utf8'));
        assert.equal(objeto.formato, 1);
        assert.equal(objeto.status, n.objeto.status);
        assert.equal(objeto.numero_remessa, n.objeto.numero_remessa);
        assert.deepEqual(
            objeto.advertencias,
            nativas.map(({codigo, linha, tr, mensagem}) => ({codigo, linha, tr, mensagem})));
        assert.equal(objeto.total_advertencias, nativas.length);

        const csv = await baixa(pagina, '#baixar-csv');
        assert.equal(csv.bytes.toString('utf8').split('\r\n').length, nativas.length + 2);
      }

      // The web facade's return file against the tool's "web" command.
      const web = temporario('quorv-pagina-web-');
      const r = nativo(['web', caminho, '-r', 'RETORNO.TXT', '-d', web, '--hoje', HOJE]);
      if (r.codigo === 1) {
        const retorno = await baixa(pagina, '#baixar-retorno');
        assert.ok(
            retorno.bytes.equals(readFileSync(join(web, 'RETORNO.TXT'))),
            'arquivo de retorno byte a byte');
      } else {
        await pagina.click('#baixar-retorno');
        await pagina.locator('#aviso-download', {hasText: 'aceitaria'}).waitFor();
      }
      assert.deepEqual(erros, []);
      await pagina.close();
    });
  }
});

// The tool's object of a file validated in a folder of its own, with the working directory
// `trabalho` beside it, told as the page tells it: the page has no working directory, so the
// directory's name leaves the paths the object carries.
function comoNaPagina(objeto) {
  const copia = structuredClone(objeto);
  copia.diretorio = '';
  if (copia.arquivo_advertencias)
    copia.arquivo_advertencias = copia.arquivo_advertencias.replace(/^trabalho\//, '');
  if (copia.erro) copia.erro.mensagem = copia.erro.mensagem.replaceAll('trabalho/', '');
  return copia;
}

// A file of these bytes under `nome`, in a folder with the working directory beside it.
function arquivoDeTeste(nome, bytes) {
  const pasta = temporario('quorv-pagina-falha-');
  mkdirSync(join(pasta, 'trabalho'));
  writeFileSync(join(pasta, nome), bytes);
  return {pasta, caminho: join(pasta, nome)};
}

describe('falhas e arquivos estranhos na página, como na linha de comando', () => {
  let q;
  before(async () => {
    q = await carregarQuorvValida();
  });

  // The tool's object of the file, validated in its folder.
  function daFerramenta(pasta, especie, nome) {
    return jsonNativo([especie, nome, '-d', 'trabalho', '--hoje', HOJE], pasta).objeto;
  }

  // The page's JSON download against the tool's object, field by field, and the schema.
  async function comparaJson(pagina, nativo) {
    const texto = (await baixa(pagina, '#baixar-json')).bytes.toString('utf8');
    const objeto = JSON.parse(texto);
    const esperado = comoNaPagina(nativo);
    assert.deepEqual(Object.keys(objeto), Object.keys(esperado));
    for (const chave of Object.keys(esperado))
      assert.deepEqual(objeto[chave], esperado[chave], chave);
    conformeAoEsquema(texto, 'validacao');
  }

  for (const {nome, bytes, linhas} of
           [{nome: 'fichas-tipo-letras.txt', bytes: fichaComTipoDeLetras(), linhas: 0},
            {
              nome: 'fichas-linha-vazia.txt',
              bytes: comLinha(AMOSTRAS_ARQUIVOS[3], -2, ''),
              linhas: 1
            },
  ]) {
    test(`${nome}: a ficha que para a validação`, async () => {
      const {pasta, caminho} = arquivoDeTeste(nome, bytes);
      const n = daFerramenta(pasta, 'fichas', nome);
      assert.equal(n.erro.tipo, 'erro_grave');
      assert.equal(n.advertencias.length > 0, linhas > 0);
      const {pagina, erros} = await novaPagina();
      await solta(pagina, caminho);
      await pagina.locator('#resultado:not([hidden])').waitFor();
      assert.equal(await pagina.locator('#situacao .selo').textContent(), 'não validado');
      // The reason, in the library's own sentence.
      assert.equal(await pagina.locator('#situacao .motivo').textContent(), q.DescricaoDaFalha(9));
      if (linhas === 0) {
        assert.equal(await pagina.locator('#baixar-advertencias').isDisabled(), true);
        assert.equal(
            await pagina.locator('#aviso-download').textContent(),
            'Nenhum ADVERTENCIAS.TXT: a validação falhou sem deixar advertências.');
        await pagina.mouse.move(0, 0);
        await pagina.screenshot({path: join(CAPTURAS, '7-falha.png'), fullPage: true});
      } else {
        const advertencias = await baixa(pagina, '#baixar-advertencias');
        assert.ok(
            advertencias.bytes.equals(readFileSync(join(pasta, 'trabalho/ADVERTENCIAS.TXT'))));
      }
      // The JSON download clears the notice, which is read before.
      await comparaJson(pagina, n);

      // The web facade meets the same failure: the page tells it, and gives the return file the
      // tool writes, when there is one.
      const r =
          jsonNativo(['web', nome, '-r', 'RETORNO.TXT', '-d', 'trabalho', '--hoje', HOJE], pasta);
      assert.equal(r.objeto.erro.tipo, 'erro_grave');
      const aviso = `O sistema web não validou o arquivo: ${q.DescricaoDaFalha(9)}`;
      if (r.objeto.arquivo_retorno) {
        const retorno = await baixa(pagina, '#baixar-retorno');
        assert.ok(retorno.bytes.equals(readFileSync(join(pasta, 'trabalho/RETORNO.TXT'))));
      } else {
        await pagina.click('#baixar-retorno');
      }
      await pagina.locator('#aviso-download', {hasText: aviso}).waitFor();
      assert.deepEqual(erros, []);
      await pagina.close();
    });
  }

  test('um arquivo vazio: o tipo escolhido, depois trocado', async () => {
    const {pasta, caminho} = arquivoDeTeste('vazio.txt', '');
    const {pagina, erros} = await novaPagina();
    await solta(pagina, caminho);
    const escolha = pagina.getByLabel('Tipo de vazio.txt');
    await pagina.locator('#lista-arquivos .estado', {hasText: 'tem 0 caracteres'}).waitFor();
    for (const especie of ['notas', 'fichas']) {
      await escolha.selectOption(especie);
      await pagina.locator('#resultado:not([hidden])').waitFor();
      const n = daFerramenta(pasta, especie, 'vazio.txt');
      assert.equal(n.erro, undefined);
      await comparaJson(pagina, n);
      assert.equal(await pagina.locator('#situacao .motivo').count(), 0);
    }
    assert.deepEqual(erros, []);
    await pagina.close();
  });

  test('um arquivo chamado ADVERTENCIAS.TXT é validado como outro qualquer', async () => {
    const nome = 'ADVERTENCIAS.TXT';
    const {pasta, caminho} = arquivoDeTeste(nome, readFileSync(AMOSTRAS_ARQUIVOS[1]));
    const {pagina, erros} = await novaPagina();
    await solta(pagina, caminho);
    await pagina.locator('#resultado:not([hidden])').waitFor();
    const n = daFerramenta(pasta, 'notas', nome);
    assert.equal(n.erro, undefined);
    assert.ok(n.advertencias.length > 0);
    await comparaJson(pagina, n);
    assert.deepEqual(erros, []);
    await pagina.close();
  });
});

describe('as opções avançadas', () => {
  test(
      'chaves, origem, servidor e separador chegam à validação como na linha de comando',
      async () => {
        const {pagina, erros} = await novaPagina();
        await pagina.locator('#avancado summary').click();
        await pagina.fill('input[name="separador"]', '');
        await solta(pagina, AMOSTRAS_ARQUIVOS[3]);
        // An empty separator is refused, and the file waits until it is corrected.
        await pagina.locator('#erro-opcoes:not([hidden])').waitFor();
        assert.match(await pagina.locator('#erro-opcoes').textContent(), /separador/);
        await pagina.fill('input[name="chaveRemessa"]', '12,5');
        await pagina.fill('input[name="chaveProcessamento"]', '7');
        await pagina.fill('input[name="origem"]', 'ORIG');
        await pagina.fill('input[name="servidor"]', 'SRV');
        await pagina.fill('input[name="separador"]', ';;');
        await pagina.locator('input[name="separador"]').dispatchEvent('change');
        await pagina.locator('#resultado:not([hidden])').waitFor();

        const diretorio = temporario('quorv-pagina-opcoes-');
        const n = jsonNativo([
          'fichas', AMOSTRAS_ARQUIVOS[3], '-d', diretorio, '--hoje', HOJE, '--chave-remessa',
          '12.5', '--chave-processamento', '7', '--origem', 'ORIG', '--servidor', 'SRV',
          '--separador', ';;'
        ]);
        const advertencias = await baixa(pagina, '#baixar-advertencias');
        assert.ok(advertencias.bytes.equals(readFileSync(join(diretorio, 'ADVERTENCIAS.TXT'))));
        assert.ok(advertencias.bytes.toString('latin1').startsWith(
            `${n.objeto.advertencias[0].codigo};;12,5;;7;;`));
        const json = JSON.parse((await baixa(pagina, '#baixar-json')).bytes.toString('utf8'));
        assert.deepEqual(
            json.advertencias,
            n.objeto.advertencias.map(
                ({codigo, linha, tr, mensagem}) => ({codigo, linha, tr, mensagem})));
        assert.deepEqual(erros, []);
        await pagina.close();
      });
});

describe('a página', () => {
  test('nenhum pedido levou o arquivo: só leituras das páginas do próprio servidor', () => {
    assert.ok(pedidosDoNavegador.length > 0);
    for (const pedido of pedidosDoNavegador) {
      assert.equal(pedido.metodo, 'GET', pedido.url);
      assert.equal(pedido.corpo, null, pedido.url);
      assert.ok(pedido.url.startsWith(http.endereco) || pedido.url.startsWith('blob:'), pedido.url);
    }
    for (const pedido of http.pedidos) {
      assert.equal(pedido.metodo, 'GET', pedido.url);
      assert.equal(pedido.tamanho, 0, pedido.url);
    }
    const amostra = readFileSync(AMOSTRAS_ARQUIVOS[1], 'latin1').slice(0, 40);
    assert.ok(!http.pedidos.some((p) => decodeURIComponent(p.url).includes(amostra)));
  });

  test('o caminho principal só com o teclado, e capturas de tela', async () => {
    const {pagina, erros} = await novaPagina();
    await pagina.screenshot({path: join(CAPTURAS, '1-inicio.png'), fullPage: true});
    let tabs = 0;
    while ((await pagina.evaluate(() => document.activeElement?.id)) !== 'arquivos') {
      await pagina.keyboard.press('Tab');
      assert.ok(++tabs < 15, 'o botão de escolher arquivos é alcançado com Tab');
    }
    // The browser shows its file dialog to playwright once it is asked to; a round trip to the
    // page makes sure it has been before the key is pressed.
    const dialogo = pagina.waitForEvent('filechooser');
    await pagina.evaluate(() => document.activeElement?.id);
    await pagina.keyboard.press('Enter');
    const escolha = await dialogo;
    await escolha.setFiles(AMOSTRAS_ARQUIVOS[1]);
    await pagina.locator('#resultado:not([hidden])').waitFor();
    while ((await pagina.evaluate(() => document.activeElement?.id)) !== 'tabela') {
      await pagina.keyboard.press('Tab');
      assert.ok(++tabs < 60, 'a tabela é alcançada com Tab');
    }
    await pagina.keyboard.press('ArrowDown');
    await pagina.keyboard.press('ArrowDown');
    const terceira = await pagina.locator('#tabela .linha.ativa .c-linha').textContent();
    await pagina.keyboard.press('Enter');
    await pagina.locator('#detalhe:not([hidden])').waitFor();
    assert.equal(await pagina.evaluate(() => document.activeElement?.id), 'detalhe');
    assert.match(
        await pagina.locator('#titulo-detalhe').textContent(), new RegExp(`^Linha ${terceira} `));
    assert.ok((await pagina.locator('#linha-arquivo pre').textContent()).includes('1234567890'));
    await pagina.mouse.move(0, 0);
    await pagina.screenshot({path: join(CAPTURAS, '2-resultado.png'), fullPage: true});

    // Every control has a name a screen reader can say, and every visible text stands out from
    // its background by 4.5:1 at least (3:1 for large text).
    const semNome = await pagina.evaluate(
        () => [...document.querySelectorAll('input, select, button, [role="grid"], [role="tab"]')]
                  .filter((e) => e.offsetParent !== null)
                  .filter(
                      (e) =>
                          !(e.labels?.length > 0 || e.getAttribute('aria-label') ||
                            e.getAttribute('aria-labelledby') || e.textContent.trim()))
                  .map((e) => e.outerHTML.slice(0, 80)));
    assert.deepEqual(semNome, []);
    const poucoContraste = await pagina.evaluate(() => {
      const rgb = (cor) => cor.match(/[\d.]+/g).map(Number);
      const luz = ([r, g, b]) => {
        const canal = (c) => {
          c /= 255;
          return c <= 0.03928 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4;
        };
        return 0.2126 * canal(r) + 0.7152 * canal(g) + 0.0722 * canal(b);
      };
      const fundo = (e) => {
        for (; e; e = e.parentElement) {
          const cor = rgb(getComputedStyle(e).backgroundColor);
          if (cor.length < 4 || cor[3] > 0) return cor;
        }
        return [255, 255, 255];
      };
      const ruins = [];
      for (const e of document.querySelectorAll('body *')) {
        const texto = [...e.childNodes].some((n) => n.nodeType === 3 && n.textContent.trim());
        if (!texto || e.offsetParent === null) continue;
        const estilo = getComputedStyle(e);
        const [a, b] = [luz(rgb(estilo.color)), luz(fundo(e))];
        const razao = (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
        const grande = parseFloat(estilo.fontSize) >= 24 ||
            (parseFloat(estilo.fontSize) >= 18.66 && Number(estilo.fontWeight) >= 700);
        if (razao < (grande ? 3 : 4.5))
          ruins.push(`${e.tagName}.${e.className} ${razao.toFixed(2)}`);
      }
      return ruins;
    });
    assert.deepEqual(poucoContraste, []);
    await pagina.locator('#detalhe').screenshot({path: join(CAPTURAS, '3-linha.png')});

    // The catalogues, searched.
    await pagina.click('#aba-catalogos');
    await pagina.locator('#catalogo-notas li').first().waitFor();
    await pagina.fill('#busca-catalogo', 'inscricao estadual do emitente');
    const achados = await pagina.locator('#catalogo-notas li').allTextContents();
    assert.ok(achados.some((t) => t.startsWith('106')), achados.join(' | '));
    await pagina.screenshot({path: join(CAPTURAS, '4-catalogos.png'), fullPage: true});
    assert.deepEqual(erros, []);
    await pagina.close();
  });

  test('numa tela de celular', async () => {
    const {pagina, erros} = await novaPagina();
    await pagina.setViewportSize({width: 390, height: 844});
    await solta(pagina, AMOSTRAS_ARQUIVOS[3]);
    await pagina.locator('#resultado:not([hidden])').waitFor();
    const larguraExcedente =
        await pagina.evaluate(() => document.documentElement.scrollWidth - window.innerWidth);
    assert.ok(
        larguraExcedente <= 0, `a página não rola para o lado (${larguraExcedente}px a mais)`);
    await pagina.screenshot({path: join(CAPTURAS, '5-celular.png'), fullPage: true});
    assert.deepEqual(erros, []);
    await pagina.close();
  });

  test('centenas de milhares de advertências: contagem, fim da tabela e filtro', async () => {
    const caminho = arquivoGerado('notas', 100000, true);
    const diretorio = temporario('quorv-pagina-grande-');
    nativo(['notas', caminho, '-q', '-d', diretorio, '--hoje', HOJE]);
    const linhas = readFileSync(join(diretorio, 'ADVERTENCIAS.TXT'), 'latin1')
                       .split('\r\n')
                       .filter((l) => l !== '');
    const ultima = linhas[linhas.length - 1].split('#');
    const {pagina, erros} = await novaPagina();
    await pagina.setInputFiles('#arquivos', caminho);
    await pagina.locator('#resultado:not([hidden])').waitFor({timeout: 120000});
    const total = new Intl.NumberFormat('pt-BR').format(linhas.length);
    assert.equal(await pagina.locator('#contagem').textContent(), `${total} advertências`);
    await pagina.focus('#tabela');
    await pagina.keyboard.press('End');
    const fim = await pagina.locator('#tabela .linha.ativa')
                    .evaluate((l) => [...l.children].map((c) => c.textContent));
    assert.deepEqual([fim[0], fim[2]], [String(Number(ultima[ultima.length - 1])), ultima[0]]);
    // Filtered by the last warning's code, the table holds exactly that code's warnings; a
    // search for the number then also finds the warnings of the line of that number.
    const formato = new Intl.NumberFormat('pt-BR');
    const doCodigo = linhas.filter((l) => l.startsWith(`${ultima[0]}#`)).length;
    await pagina.selectOption(
        '#filtro-codigo', {label: `${ultima[0]} (${formato.format(doCodigo)})`});
    assert.equal(
        await pagina.locator('#contagem').textContent(),
        `${formato.format(doCodigo)} de ${total} advertências`);
    const daLinha = linhas
                        .filter(
                            (l) => !l.startsWith(`${ultima[0]}#`) &&
                                Number(l.split('#').pop()) === Number(ultima[0]))
                        .length;
    await pagina.selectOption('#filtro-codigo', '');
    await pagina.fill('#filtro-texto', ultima[0]);
    const ambos = `${formato.format(doCodigo + daLinha)} de ${total} advertências`;
    await pagina.locator('#contagem', {hasText: ambos}).waitFor();
    assert.deepEqual(erros, []);
    await pagina.close();
  });

  test(
      'um arquivo grande: a página responde durante a validação, que pode ser cancelada',
      async () => {
        const grande = arquivoGerado('fichas', 1000000, false);
        const {pagina} = await novaPagina();
        await pagina.evaluate(() => {
          window.maiorPausa = 0;
          let anterior = performance.now();
          setInterval(() => {
            const agora = performance.now();
            window.maiorPausa = Math.max(window.maiorPausa, agora - anterior);
            anterior = agora;
          }, 20);
        });
        await pagina.setInputFiles('#arquivos', grande);
        await pagina.locator('#progresso:not([hidden])').waitFor();
        await pagina.locator('#progresso-texto', {hasText: 'linhas'}).waitFor();
        await pagina.screenshot({path: join(CAPTURAS, '6-progresso.png')});
        await pagina.click('#cancelar');
        await pagina.locator('#lista-arquivos .estado', {hasText: 'cancelado'}).waitFor();
        assert.ok((await pagina.evaluate(() => window.maiorPausa)) < 500, 'a página não parou');
        // A new worker takes the next file, and the cancelled one can be validated again.
        await solta(pagina, AMOSTRAS_ARQUIVOS[0]);
        await pagina.locator('#resultado:not([hidden])').waitFor();
        await pagina.click('button[aria-label="Validar de novo fichas-1000000.txt"]');
        await pagina.locator('#lista-arquivos li:first-child .estado', {hasText: 'validado em'})
            .waitFor({timeout: 120000});
        await pagina.close();
      });

  test('sem rede, depois de aberta uma vez', async () => {
    const {pagina} = await novaPagina();
    await pagina.evaluate(() => navigator.serviceWorker.ready);
    await contexto.setOffline(true);
    try {
      await pagina.reload();
      await pagina.locator('#avancado summary').click();
      await pagina.fill('input[name="hoje"]', HOJE_ISO);
      await solta(pagina, AMOSTRAS_ARQUIVOS[1]);
      await pagina.locator('#resultado:not([hidden])').waitFor();
      assert.match(await pagina.locator('#contagem').textContent(), /advertências/);
    } finally {
      await contexto.setOffline(false);
      await pagina.close();
    }
  });
});
