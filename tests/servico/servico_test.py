#!/usr/bin/env python3
"""The validation service (quorvvalida servir), started as an operator starts it, on a free
loopback port, and driven over HTTP: its answers are compared byte for byte with what the
command-line tool writes for the same files, and every answer is checked against the service's
own OpenAPI document.

Usage: servico_test.py PROGRAMA GERADOR AMOSTRAS INSCRICAO_LIB [unittest arguments]
"""

import hashlib
import http.client
import json
import os
import re
import select
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
import unittest

import jsonschema

PROGRAMA = GERADOR = AMOSTRAS = INSCRICAO = None
# The files every comparison runs on: the samples and generated files of both kinds.
ARQUIVOS = {}
ESPERA = 30  # seconds any single wait may take before the test fails
JSON = "application/json; charset=utf-8"


def binario(caminho):
    with open(caminho, "rb") as arquivo:
        return arquivo.read()


def cli(*argumentos, cwd=None):
    """Runs the command-line tool; (exit code, stdout, stderr)."""
    execucao = subprocess.run([PROGRAMA, *argumentos], cwd=cwd, capture_output=True,
                              timeout=ESPERA, check=False)
    return execucao.returncode, execucao.stdout, execucao.stderr


def cli_na_pasta(arquivo, *argumentos):
    """Runs the tool as the service runs it for a request: in a directory of its own holding
    the file as remessa.txt. (exit code, stdout, {name: bytes} of the files it left there)."""
    with tempfile.TemporaryDirectory() as pasta:
        shutil.copyfile(arquivo, os.path.join(pasta, "remessa.txt"))
        codigo, saida, erros = cli(*argumentos, "--inscricao-lib", INSCRICAO, cwd=pasta)
        if codigo not in (0, 1, 3):
            raise AssertionError(f"o programa saiu com {codigo}: {erros!r}")
        deixados = {nome: binario(os.path.join(pasta, nome)) for nome in os.listdir(pasta)
                    if nome != "remessa.txt"}
        return codigo, saida, deixados


def cli_valida(tipo, arquivo, opcoes=()):
    """What the tool tells and leaves for a validation: (JSON object as bytes, the object, the
    warnings file or None)."""
    _, saida, deixados = cli_na_pasta(arquivo, tipo, "remessa.txt", "--json", *opcoes)
    return saida, json.loads(saida), deixados.get("ADVERTENCIAS.TXT")


def cli_web(arquivo, tipo, opcoes=()):
    """What the tool's web command tells and leaves: (JSON object as bytes, the object, the
    return file or None)."""
    _, saida, deixados = cli_na_pasta(arquivo, "web", "remessa.txt", "-r", "RETORNO.TXT",
                                      "--tipo", tipo, "--json", *opcoes)
    return saida, json.loads(saida), deixados.get("RETORNO.TXT")


def sem_texto_retorno(objeto):
    """The web object's bytes without its "texto_retorno" member, and that member's text."""
    marca = b',"texto_retorno":"'
    inicio = objeto.find(marca)
    if inicio < 0:
        return objeto, None
    fim = inicio + len(marca)
    while objeto[fim:fim + 1] != b'"':
        fim += 2 if objeto[fim:fim + 1] == b"\\" else 1
    texto = json.loads(objeto[inicio + len(marca) - 1:fim + 1])
    return objeto[:inicio] + objeto[fim + 1:], texto


def formulario(campos, fronteira="fronteira-de-teste-7d1"):
    """A multipart/form-data body: (content type, body) for [(name, filename, bytes)]."""
    partes = []
    for nome, nome_arquivo, conteudo in campos:
        disposicao = f'form-data; name="{nome}"'
        if nome_arquivo is not None:
            disposicao += f'; filename="{nome_arquivo}"'
        partes.append(f"--{fronteira}\r\nContent-Disposition: {disposicao}\r\n"
                      "Content-Type: application/octet-stream\r\n\r\n".encode() + conteudo +
                      b"\r\n")
    corpo = b"".join(partes) + f"--{fronteira}--\r\n".encode()
    return f"multipart/form-data; boundary={fronteira}", corpo


class Resposta:
    def __init__(self, status, cabecalhos, corpo):
        self.status = status
        self.cabecalhos = {nome.lower(): valor for nome, valor in cabecalhos}
        self.corpo = corpo

    def cabecalho(self, nome):
        return self.cabecalhos.get(nome.lower())

    def json(self):
        return json.loads(self.corpo)

    def __repr__(self):
        return f"<{self.status} {self.cabecalhos} {self.corpo[:300]!r}>"


class DescricaoOpenApi:
    """The service's OpenAPI document, and the check that an answer is one it describes. The
    schemas it refers to by path ("/esquemas/...") are fetched with `busca`."""

    def __init__(self, documento, busca):
        self.documento = documento
        self.busca = busca
        self.externos = {}
        self.caminhos = []
        for modelo in documento["paths"]:
            pedacos = re.split(r"(\{[^}]+\})", modelo)
            padrao = "".join("[^/]+" if p.startswith("{") else re.escape(p) for p in pedacos)
            self.caminhos.append((modelo, re.compile("^" + padrao + "$")))

    def resolve(self, objeto):
        while isinstance(objeto, dict) and "$ref" in objeto:
            partes = objeto["$ref"].lstrip("#/").split("/")
            objeto = self.documento
            for parte in partes:
                objeto = objeto[parte]
        return objeto

    def modelo_de(self, caminho):
        for modelo, padrao in self.caminhos:
            if padrao.match(caminho):
                return modelo
        # Every other path belongs to the browser page.
        return "/"

    def confere(self, metodo, caminho, resposta):
        """Raises AssertionError when the answer is not one the document describes."""
        caminho = caminho.split("?")[0]
        modelo = self.modelo_de(caminho)
        operacoes = self.documento["paths"][modelo]
        operacao = operacoes.get("get" if metodo == "HEAD" else metodo.lower())
        if operacao is None:
            # A method the path does not take: 405 (or 404 on the page's paths), a problem.
            if resposta.status not in (404, 405):
                raise AssertionError(f"{metodo} {modelo} não está descrito")
            self.confere_problema(resposta)
            return
        descrita = operacao["responses"].get(str(resposta.status))
        if descrita is None:
            raise AssertionError(f"{metodo} {modelo} não descreve o status {resposta.status}")
        descrita = self.resolve(descrita)
        for nome, cabecalho in descrita.get("headers", {}).items():
            cabecalho = self.resolve(cabecalho)
            if cabecalho.get("required") and resposta.cabecalho(nome) is None:
                raise AssertionError(f"falta o cabeçalho {nome} em {metodo} {modelo} "
                                     f"{resposta.status}")
        tipo = (resposta.cabecalho("Content-Type") or "").split(";")[0].strip()
        conteudos = descrita.get("content", {})
        if metodo == "HEAD" or (not resposta.corpo and not conteudos):
            return
        if tipo not in conteudos:
            raise AssertionError(f"{metodo} {modelo} {resposta.status} não descreve {tipo}")
        esquema = conteudos[tipo].get("schema")
        if esquema is not None and tipo.endswith("json"):
            self.valida(resposta.json(), esquema)

    def confere_problema(self, resposta):
        tipo = (resposta.cabecalho("Content-Type") or "").split(";")[0]
        if tipo != "application/problem+json":
            raise AssertionError(f"um problema sem application/problem+json: {resposta!r}")
        self.valida(resposta.json(), {"$ref": "#/components/schemas/Problema"})

    def embute(self, esquema):
        """The schema with every document and part it refers to put in its place, so that the
        validator resolves no reference (the schemas here are not recursive)."""
        if isinstance(esquema, list):
            return [self.embute(item) for item in esquema]
        if not isinstance(esquema, dict):
            return esquema
        referencia = esquema.get("$ref")
        if referencia is None:
            return {chave: self.embute(valor) for chave, valor in esquema.items()}
        documento, _, ponteiro = referencia.partition("#")
        if documento:
            if documento not in self.externos:
                externo = json.loads(self.busca(documento))
                externo.pop("$schema", None)
                externo.pop("$id", None)
                self.externos[documento] = externo
            alvo = self.externos[documento]
        else:
            alvo = self.documento
        for parte in filter(None, ponteiro.split("/")):
            alvo = alvo[parte]
        return self.embute(alvo)

    def valida(self, instancia, esquema):
        jsonschema.Draft202012Validator(self.embute(esquema)).validate(instancia)


class Servico:
    """One running service, started with `opcoes`, and a client for it."""

    def __init__(self, *opcoes, verificar_inscricao=True):
        self.raiz = tempfile.mkdtemp(prefix="servico-teste-")
        self.temporario = os.path.join(self.raiz, "tmp")
        os.mkdir(self.temporario)
        self.caminho_registro = os.path.join(self.raiz, "registro.txt")
        comando = [PROGRAMA, "servir", "--porta", "0", "--diretorio-temporario", self.temporario]
        if "--pagina" not in opcoes:
            comando += ["--pagina", os.path.join(self.raiz, "sem-pagina")]
        if verificar_inscricao:
            comando += ["--inscricao-lib", INSCRICAO]
        comando += list(opcoes)
        with open(self.caminho_registro, "wb") as registro:
            self.processo = subprocess.Popen(comando, stdout=subprocess.PIPE, stderr=registro,
                                             stdin=subprocess.DEVNULL)
        prontos, _, _ = select.select([self.processo.stdout], [], [], ESPERA)
        primeira = self.processo.stdout.readline() if prontos else b""
        if not primeira.strip().isdigit():
            self.processo.kill()
            self.processo.wait()
            raise AssertionError(f"o serviço não disse a porta: {primeira!r} {self.registro()}")
        self.porta = int(primeira)
        self.descricao = None
        self.descricao = DescricaoOpenApi(
            self.pede("GET", "/openapi.json").json(),
            lambda caminho: self.pede("GET", caminho, conferir=False).corpo)

    def pede(self, metodo, caminho, corpo=None, cabecalhos=None, conferir=True, tempo=ESPERA):
        """One request on a connection of its own; the answer, checked against the OpenAPI
        document unless told otherwise."""
        conexao = http.client.HTTPConnection("127.0.0.1", self.porta, timeout=tempo)
        try:
            conexao.request(metodo, caminho, body=corpo, headers=cabecalhos or {})
            resposta = conexao.getresponse()
            resultado = Resposta(resposta.status, resposta.getheaders(), resposta.read())
        finally:
            conexao.close()
        if conferir and self.descricao is not None:
            self.descricao.confere(metodo, caminho, resultado)
        return resultado

    def valida(self, rota, conteudo, consulta="", multipart=False, aceita="text/plain",
               cabecalhos=None):
        extra = dict(cabecalhos or {})
        if aceita is not None:
            extra["Accept"] = aceita
        if multipart:
            tipo, corpo = formulario([("arquivo", "remessa.txt", conteudo)])
        else:
            tipo, corpo = "application/octet-stream", conteudo
        extra["Content-Type"] = tipo
        return self.pede("POST", rota + (("?" + consulta) if consulta else ""), corpo, extra)

    def estado(self):
        return self.pede("GET", "/saude").json()

    def aguarda(self, condicao, descricao):
        """Polls the health route until `condicao(estado)` holds, for at most ESPERA seconds."""
        limite = time.monotonic() + ESPERA
        while time.monotonic() < limite:
            if condicao(self.estado()):
                return
            time.sleep(0.02)
        raise AssertionError(f"o serviço não chegou a {descricao}: {self.estado()}")

    def conecta(self):
        return socket.create_connection(("127.0.0.1", self.porta), timeout=ESPERA)

    def registro(self):
        with open(self.caminho_registro, "rb") as registro:
            return registro.read().decode("utf-8", "replace")

    def diretorios_de_requisicao(self):
        """The request directories left once the answers are done with them (a directory goes
        when its answer has been sent, which may be just after the client has it)."""
        limite = time.monotonic() + 5
        while True:
            encontrados = []
            for base in os.listdir(self.temporario):
                encontrados += os.listdir(os.path.join(self.temporario, base))
            if not encontrados or time.monotonic() > limite:
                return encontrados
            time.sleep(0.02)

    def encerra(self):
        """SIGTERM; the exit code."""
        if self.processo.poll() is None:
            self.processo.send_signal(signal.SIGTERM)
        try:
            return self.processo.wait(timeout=ESPERA)
        finally:
            self.processo.stdout.close()

    def remove(self):
        if self.processo.poll() is None:
            self.processo.kill()
            self.processo.wait()
        shutil.rmtree(self.raiz, ignore_errors=True)


def resposta_crua(soquete, tempo=ESPERA):
    """Reads one answer from a raw socket: (status, headers, body, closed after it)."""
    soquete.settimeout(tempo)
    dados = b""
    while b"\r\n\r\n" not in dados:
        pedaco = soquete.recv(65536)
        if not pedaco:
            raise AssertionError(f"a conexão fechou antes da resposta: {dados!r}")
        dados += pedaco
    cabeca, corpo = dados.split(b"\r\n\r\n", 1)
    linhas = cabeca.decode("latin-1").split("\r\n")
    status = int(linhas[0].split()[1])
    cabecalhos = {}
    for linha in linhas[1:]:
        nome, valor = linha.split(":", 1)
        cabecalhos[nome.strip().lower()] = valor.strip()
    if cabecalhos.get("transfer-encoding") == "chunked":
        while not corpo.endswith(b"\r\n0\r\n\r\n") and corpo != b"0\r\n\r\n":
            pedaco = soquete.recv(65536)
            if not pedaco:
                break
            corpo += pedaco
    else:
        comprimento = int(cabecalhos.get("content-length", "0"))
        while len(corpo) < comprimento:
            pedaco = soquete.recv(65536)
            if not pedaco:
                break
            corpo += pedaco
    fechada = False
    try:
        soquete.settimeout(2)
        fechada = soquete.recv(1) == b""
    except (socket.timeout, ConnectionResetError):
        fechada = False
    return status, cabecalhos, corpo, fechada


def desfaz_pedacos(corpo):
    """The body of a chunked answer, its pieces put together."""
    inteiro = b""
    while True:
        tamanho, resto = corpo.split(b"\r\n", 1)
        quanto = int(tamanho, 16)
        if quanto == 0:
            return inteiro
        inteiro += resto[:quanto]
        corpo = resto[quanto + 2:]


class ComServico(unittest.TestCase):
    """A test class with one service for all its tests; the service must keep serving and leave
    no request directory behind."""

    OPCOES = ()

    @classmethod
    def setUpClass(cls):
        cls.servico = Servico(*cls.OPCOES)

    @classmethod
    def tearDownClass(cls):
        try:
            restantes = cls.servico.diretorios_de_requisicao()
            codigo = cls.servico.encerra()
            sobras = os.listdir(cls.servico.temporario)
        finally:
            cls.servico.remove()
        if restantes:
            raise AssertionError(f"diretórios de requisição deixados: {restantes}")
        if codigo != 0:
            raise AssertionError(f"o serviço saiu com {codigo}")
        if sobras:
            raise AssertionError(f"o diretório temporário do serviço ficou: {sobras}")

    def assertProblema(self, resposta, status, tipo):
        self.assertEqual(resposta.status, status, resposta)
        self.assertEqual(resposta.cabecalho("Content-Type"), "application/problem+json")
        documento = resposta.json()
        self.assertEqual(documento["status"], status)
        self.assertEqual(documento["type"], "urn:quorvvalida:erro:" + tipo)
        self.assertEqual(documento["tipo"], tipo)
        self.assertTrue(documento["detail"])
        self.assertEqual(documento["id_requisicao"], resposta.cabecalho("X-Request-Id"))

    def assertServindo(self):
        resposta = self.servico.valida("/v1/notas", binario(ARQUIVOS["notas-limpo"]))
        self.assertEqual(resposta.status, 200)
        self.assertEqual(resposta.cabecalho("X-Quorv-Status"), "0")


class Validacao(ComServico):
    OPCOES = ("--trabalhadores", "2", "--fila", "16")

    def confere(self, rota, nome, tipo_cli, consulta="", opcoes=(), multipart=False):
        """The service's JSON object is the tool's, byte for byte, and with Accept: text/plain
        its answer is the warnings file the tool leaves."""
        caminho = ARQUIVOS[nome]
        objeto, documento, advertencias = cli_valida(tipo_cli, caminho, opcoes)
        contexto = f"{rota}?{consulta} {nome} multipart={multipart}"
        resposta = self.servico.valida(rota, binario(caminho), consulta, multipart, aceita=None)
        self.assertEqual(resposta.status, 200, contexto)
        self.assertEqual(resposta.cabecalho("Content-Type"), JSON)
        self.assertEqual(resposta.corpo, objeto, contexto)
        resposta = self.servico.valida(rota, binario(caminho), consulta, multipart)
        self.assertEqual(resposta.status, 200, contexto)
        self.assertEqual(resposta.cabecalho("Content-Type"), "text/plain; charset=windows-1252")
        self.assertEqual(resposta.corpo, advertencias or b"", contexto)
        self.assertEqual(resposta.cabecalho("X-Quorv-Status"), str(documento["status"]), contexto)
        self.assertEqual(resposta.cabecalho("X-Quorv-Tipo"), documento["tipo"], contexto)
        self.assertEqual(resposta.cabecalho("X-Quorv-Numero-Remessa"),
                         documento["numero_remessa"], contexto)
        self.assertEqual(resposta.cabecalho("X-Quorv-Advertencias"),
                         str(documento["total_advertencias"]), contexto)
        self.assertEqual(resposta.cabecalho("X-Quorv-Codigo-Saida"),
                         str(documento["codigo_saida"]), contexto)

    def test_cada_arquivo_em_cada_rota_como_o_programa(self):
        for nome in ARQUIVOS:
            tipo = "notas" if nome.startswith("notas") else "fichas"
            for multipart in (False, True):
                with self.subTest(arquivo=nome, multipart=multipart):
                    self.confere("/v1/notas", nome, "notas", "hoje=20240630",
                                 ("--hoje", "20240630"), multipart)
                    self.confere("/v1/fichas", nome, "fichas", "hoje=20240630",
                                 ("--hoje", "20240630"), multipart)
                    self.confere("/v1/auto", nome, tipo, "hoje=20240630", ("--hoje", "20240630"),
                                 multipart)

    def test_argumentos_opcionais_como_os_do_programa(self):
        casos = [
            ("chave_remessa=123&chave_processamento=7.5&separador=%3B",
             ("--chave-remessa", "123", "--chave-processamento", "7.5", "--separador", ";")),
            ("chave_remessa=12%2C25", ("--chave-remessa", "12,25")),
            ("origem=A0&servidor=SRV01", ("--origem", "A0", "--servidor", "SRV01")),
            ("origem=%C3%87A&servidor=S%C3%A3o", ("--origem", "ÇA", "--servidor", "São")),
            ("servidor=TARNWEB&separador=%7C%7C", ("--servidor", "TARNWEB", "--separador", "||")),
            ("hoje=20000101", ("--hoje", "20000101")),
        ]
        for consulta, opcoes in casos:
            for nome in ("notas-com-defeitos", "fichas-com-defeitos", "notas-gerado-defeitos"):
                tipo = "notas" if nome.startswith("notas") else "fichas"
                with self.subTest(consulta=consulta, arquivo=nome):
                    self.confere("/v1/" + tipo, nome, tipo, consulta, opcoes)

    def test_fachada_web_como_o_programa(self):
        casos = [("/v1/web/notas", "P"), ("/v1/web/fichas", "F"), ("/v1/web/tipo/P", "P"),
                 ("/v1/web/tipo/F", "F"), ("/v1/web/tipo/p", "p"), ("/v1/web/tipo/%20P", " P")]
        parametros = [("", ()), ("programa_chamador=sistema", ("--programa-chamador", "sistema")),
                      ("tipo_arquivo=%20ret%20", ("--tipo-arquivo", " ret ")),
                      ("programa_chamador=X&tipo_arquivo=REM&hoje=20240630",
                       ("--programa-chamador", "X", "--tipo-arquivo", "REM", "--hoje", "20240630"))]
        for rota, tipo in casos:
            for nome in ARQUIVOS:
                for consulta, opcoes in parametros:
                    with self.subTest(rota=rota, arquivo=nome, consulta=consulta):
                        objeto, documento, retorno = cli_web(ARQUIVOS[nome], tipo, opcoes)
                        multipart = nome.endswith("limpo")
                        resposta = self.servico.valida(rota, binario(ARQUIVOS[nome]), consulta,
                                                       multipart, aceita=None)
                        self.assertEqual(resposta.status, 200)
                        self.assertEqual(resposta.cabecalho("Content-Type"), JSON)
                        sem_texto, texto = sem_texto_retorno(resposta.corpo)
                        self.assertEqual(sem_texto, objeto)
                        self.assertEqual(texto, retorno.decode("cp1252") if retorno else None)
                        resposta = self.servico.valida(rota, binario(ARQUIVOS[nome]), consulta,
                                                       multipart)
                        self.assertEqual(resposta.status, 200)
                        self.assertEqual(resposta.cabecalho("X-Quorv-Resultado"),
                                         "true" if documento["resultado"] else "false")
                        self.assertEqual(resposta.cabecalho("X-Quorv-Tipo"), documento["tipo"])
                        self.assertEqual(resposta.cabecalho("X-Quorv-Numero-Remessa"),
                                         documento["numero_remessa"])
                        self.assertEqual(resposta.corpo, retorno or b"")

    def test_mensagens_como_as_do_programa(self):
        for tipo in ("notas", "fichas"):
            for codigo in ("1", "2", "77", "166", "999", "0", "-1", "32767", "-32768", "007"):
                with self.subTest(tipo=tipo, codigo=codigo):
                    _, objeto, _ = cli("mensagem", tipo, codigo, "--json")
                    _, texto, _ = cli("mensagem", tipo, codigo)
                    caminho = f"/v1/mensagens/{tipo}/{codigo}"
                    resposta = self.servico.pede("GET", caminho)
                    self.assertEqual(resposta.status, 200)
                    self.assertEqual(resposta.corpo, objeto)
                    resposta = self.servico.pede("GET", caminho,
                                                 cabecalhos={"Accept": "text/plain"})
                    self.assertEqual(resposta.status, 200)
                    self.assertEqual(resposta.corpo, texto)
            for codigo in ("abc", "1.5", "32768", "-32769", "7x", "+5", "%20"):
                with self.subTest(tipo=tipo, codigo=codigo):
                    resposta = self.servico.pede("GET", f"/v1/mensagens/{tipo}/{codigo}")
                    self.assertProblema(resposta, 400, "uso")

    def test_catalogos_inteiros(self):
        for tipo in ("notas", "fichas"):
            with self.subTest(tipo=tipo):
                resposta = self.servico.pede("GET", f"/v1/mensagens/{tipo}")
                self.assertEqual(resposta.status, 200)
                self.assertTrue(resposta.corpo.startswith(b"[") and
                                resposta.corpo.endswith(b"\n]\n"))
                # Each element is the tool's own object, with its line end.
                elementos = [e + b"\n" for e in resposta.corpo[1:-3].split(b"\n,")]
                documentos = resposta.json()
                self.assertEqual(len(elementos), len(documentos))
                self.assertGreater(len(documentos), 50)
                codigos = [documento["codigo"] for documento in documentos]
                self.assertEqual(codigos, sorted(codigos))
                self.assertTrue(all(documento["conhecido"] for documento in documentos))
                for indice in (0, len(elementos) // 2, len(elementos) - 1):
                    _, objeto, _ = cli("mensagem", tipo, str(codigos[indice]), "--json")
                    self.assertEqual(elementos[indice], objeto)
                # A code the catalogue leaves out is one the tool calls unknown.
                ausente = next(c for c in range(codigos[0], codigos[-1] + 2) if c not in codigos)
                codigo, _, _ = cli("mensagem", tipo, str(ausente))
                self.assertEqual(codigo, 1)
                texto = self.servico.pede("GET", f"/v1/mensagens/{tipo}",
                                          cabecalhos={"Accept": "text/plain"})
                self.assertEqual(texto.corpo.decode(),
                                 "".join(f"{d['codigo']}\t{d['mensagem']}\n" for d in documentos))

    def test_dezesseis_clientes_ao_mesmo_tempo(self):
        nomes = sorted(ARQUIVOS)
        esperados = {nome: cli_valida("auto", ARQUIVOS[nome], ("--hoje", "20240630"))[0]
                     for nome in nomes}
        resultados = [None] * 16

        def cliente(indice):
            nome = nomes[indice % len(nomes)]
            try:
                resultados[indice] = (nome, self.servico.valida(
                    "/v1/auto", binario(ARQUIVOS[nome]), "hoje=20240630",
                    multipart=indice % 2 == 1, aceita=None))
            except Exception as erro:  # pylint: disable=broad-except
                resultados[indice] = (nome, erro)

        clientes = [threading.Thread(target=cliente, args=(i,)) for i in range(16)]
        for fio in clientes:
            fio.start()
        for fio in clientes:
            fio.join(ESPERA)
            self.assertFalse(fio.is_alive(), "um cliente não terminou")
        for nome, resposta in resultados:
            self.assertIsInstance(resposta, Resposta, resposta)
            self.assertEqual(resposta.status, 200, resposta)
            self.assertEqual(resposta.corpo, esperados[nome], nome)

    def test_nome_do_arquivo_enviado_nao_vira_caminho(self):
        alvo = os.path.join(self.servico.raiz, "nao-deve-existir.txt")
        conteudo = binario(ARQUIVOS["notas-limpo"])
        tipo, corpo = formulario([("arquivo", "../../" + alvo, conteudo)])
        resposta = self.servico.pede("POST", "/v1/notas", corpo, {"Content-Type": tipo})
        self.assertEqual(resposta.status, 200)
        self.assertEqual(resposta.json()["arquivo"], "remessa.txt")
        self.assertEqual(resposta.corpo, cli_valida("notas", ARQUIVOS["notas-limpo"])[0])
        self.assertFalse(os.path.exists(alvo))


class Erros(ComServico):
    OPCOES = ("--limite-corpo", "1MiB", "--tempo-leitura", "1", "--trabalhadores", "1")

    def tearDown(self):
        # Whatever a bad request did, the service keeps serving.
        self.assertServindo()
        self.assertEqual(self.servico.estado()["admitidas"], 0)

    def cru(self, dados, enviar_depois=None):
        """Sends raw bytes on a new connection, and then whatever `enviar_depois` sends while
        the answer is read back."""
        with self.servico.conecta() as soquete:
            soquete.sendall(dados)
            remetente = None
            if enviar_depois:
                remetente = threading.Thread(target=enviar_depois, args=(soquete,))
                remetente.start()
            try:
                return resposta_crua(soquete)
            finally:
                if remetente:
                    try:
                        soquete.shutdown(socket.SHUT_RDWR)
                    except OSError:
                        pass
                    remetente.join(ESPERA)

    def test_sem_corpo_e_corpo_vazio(self):
        status, cabecalhos, corpo, _ = self.cru(b"POST /v1/notas HTTP/1.1\r\nHost: x\r\n\r\n")
        self.assertEqual(status, 411)
        self.assertEqual(json.loads(corpo)["type"], "urn:quorvvalida:erro:comprimento_ausente")
        self.assertEqual(cabecalhos["content-type"], "application/problem+json")
        resposta = self.servico.pede("POST", "/v1/notas", b"",
                                     {"Content-Type": "application/octet-stream"})
        self.assertProblema(resposta, 400, "corpo_vazio")

    def test_metodo_errado(self):
        resposta = self.servico.pede("GET", "/v1/notas")
        self.assertProblema(resposta, 405, "metodo_nao_permitido")
        self.assertEqual(resposta.cabecalho("Allow"), "POST")
        resposta = self.servico.pede("DELETE", "/saude")
        self.assertProblema(resposta, 405, "metodo_nao_permitido")
        self.assertEqual(resposta.cabecalho("Allow"), "GET, HEAD")
        resposta = self.servico.pede("PUT", "/v1/fichas", b"x" * 1000)
        self.assertProblema(resposta, 405, "metodo_nao_permitido")

    def test_tipo_de_conteudo_errado(self):
        for tipo in ("application/json", "image/png", "multipart/mixed; boundary=x"):
            with self.subTest(tipo=tipo):
                resposta = self.servico.pede("POST", "/v1/notas", b"{}", {"Content-Type": tipo})
                self.assertProblema(resposta, 415, "tipo_de_conteudo")

    def test_formulario_quebrado(self):
        arquivo = binario(ARQUIVOS["notas-limpo"])
        tipo, corpo = formulario([("arquivo", "a.txt", arquivo)])
        casos = {
            "sem o fim": (tipo, corpo[:len(corpo) // 2]),
            "outra fronteira": ("multipart/form-data; boundary=outra", corpo),
            "sem fronteira": ("multipart/form-data", corpo),
            "outro campo": formulario([("arquivo", "a.txt", arquivo), ("extra", None, b"1")]),
            "campo repetido": formulario([("arquivo", "a.txt", arquivo),
                                          ("arquivo", "b.txt", arquivo)]),
            "sem o campo arquivo": formulario([("outro", "a.txt", arquivo)]),
        }
        for caso, (tipo_caso, corpo_caso) in casos.items():
            with self.subTest(caso=caso):
                if caso == "sem o fim":
                    # The body stops short of its length: the client is still sending.
                    cabeca = (f"POST /v1/notas HTTP/1.1\r\nHost: x\r\nContent-Type: {tipo_caso}\r\n"
                              f"Content-Length: {len(corpo)}\r\n\r\n").encode()
                    status, _, _, fechada = self.cru(cabeca + corpo_caso)
                    self.assertEqual(status, 408)
                    self.assertTrue(fechada)
                    continue
                resposta = self.servico.pede("POST", "/v1/notas", corpo_caso,
                                             {"Content-Type": tipo_caso})
                self.assertProblema(resposta, 400, "formulario_invalido")

    def test_corpo_maior_que_o_limite_recusado_antes_de_ser_lido(self):
        # Only the headers are sent: had the service waited for the body, it would have given up
        # with 408; it answers 413 at once and closes the connection.
        status, _, corpo, fechada = self.cru(
            b"POST /v1/notas HTTP/1.1\r\nHost: x\r\nContent-Length: 10000000000\r\n\r\n")
        self.assertEqual(status, 413)
        self.assertEqual(json.loads(corpo)["type"], "urn:quorvvalida:erro:corpo_grande")
        self.assertTrue(fechada)
        # With Expect: 100-continue, the client is told before it sends anything.
        status, _, _, _ = self.cru(b"POST /v1/fichas HTTP/1.1\r\nHost: x\r\nExpect: 100-continue"
                                   b"\r\nContent-Length: 1048577\r\n\r\n")
        self.assertEqual(status, 413)
        # In pieces, the file is cut off as soon as it passes the limit.
        pedaco = b"%x\r\n" % 65536 + b"0" * 65536 + b"\r\n"
        cabeca = b"POST /v1/notas HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: chunked\r\n\r\n"

        def envia(soquete):
            try:
                for _ in range(17):
                    soquete.sendall(pedaco)
            except OSError:
                pass

        status, _, corpo, fechada = self.cru(cabeca, envia)
        self.assertEqual(status, 413)
        self.assertTrue(fechada)
        # Exactly the limit goes through.
        resposta = self.servico.valida("/v1/notas", b"x" * (1024 * 1024))
        self.assertEqual(resposta.status, 200)

    def test_cliente_parado_e_cliente_lento(self):
        cabeca = b"POST /v1/notas HTTP/1.1\r\nHost: x\r\nContent-Length: 1000\r\n\r\n"
        inicio = time.monotonic()
        status, _, corpo, fechada = self.cru(cabeca + b"0000")
        self.assertEqual(status, 408)
        self.assertEqual(json.loads(corpo)["type"], "urn:quorvvalida:erro:tempo_esgotado")
        self.assertTrue(fechada)
        self.assertLess(time.monotonic() - inicio, 10)

        # One byte every 0.3 s never lets the wait for a piece run out, but the body as a whole
        # must arrive within the time allowed.
        def goteja(soquete):
            try:
                for _ in range(60):
                    soquete.sendall(b"0")
                    time.sleep(0.3)
            except OSError:
                pass

        inicio = time.monotonic()
        status, _, _, fechada = self.cru(cabeca, goteja)
        self.assertEqual(status, 408)
        self.assertLess(time.monotonic() - inicio, 10)

    def test_rota_desconhecida_e_caminho_com_pai(self):
        self.assertProblema(self.servico.pede("GET", "/v2/notas"), 404, "pagina_ausente")
        self.assertProblema(self.servico.pede("POST", "/v1/nada", b"123"), 404,
                            "rota_desconhecida")
        for caminho in ("/v1/../saude", "/v1/mensagens/notas/..", "/%2e%2e/etc/passwd", "/.."):
            with self.subTest(caminho=caminho):
                self.assertProblema(self.servico.pede("GET", caminho), 400, "caminho_invalido")

    def test_parametros_invalidos(self):
        arquivo = binario(ARQUIVOS["notas-limpo"])
        for consulta in ("chave_remessa=abc", "chave_processamento=", "desconhecido=1",
                         "hoje=20241399", "hoje=2024063", "separador=", "origem=a&origem=b",
                         "programa_chamador=X"):
            with self.subTest(consulta=consulta):
                resposta = self.servico.valida("/v1/notas", arquivo, consulta)
                self.assertProblema(resposta, 400, "uso")
        resposta = self.servico.valida("/v1/web/notas", arquivo, "separador=;")
        self.assertProblema(resposta, 400, "uso")
        self.assertProblema(self.servico.pede("GET", "/saude?x=1"), 400, "uso")

    def test_formato_que_o_cliente_nao_aceita(self):
        resposta = self.servico.valida("/v1/notas", binario(ARQUIVOS["notas-limpo"]),
                                       aceita="image/png")
        self.assertProblema(resposta, 406, "formato_nao_aceito")
        resposta = self.servico.valida("/v1/notas", binario(ARQUIVOS["notas-limpo"]),
                                       aceita="application/json;q=0, text/*;q=0.5")
        self.assertEqual(resposta.status, 200)
        self.assertEqual(resposta.cabecalho("Content-Type"), "text/plain; charset=windows-1252")

    def test_auto_sem_tipo_identificavel(self):
        resposta = self.servico.valida("/v1/auto", b"linha curta\r\n")
        self.assertProblema(resposta, 422, "tipo_nao_identificado")
        self.assertIn("11 caracteres", resposta.json()["detail"])

    def test_requisicao_malformada(self):
        status, _, corpo, _ = self.cru(b"\x00\x01 nada HTTP/9\r\n\r\n")
        self.assertEqual(status, 400)
        self.assertEqual(json.loads(corpo)["status"], 400)


class Fila(ComServico):
    OPCOES = ("--trabalhadores", "1", "--fila", "1", "--tempo-leitura", "20")

    def test_fila_cheia_responde_503_e_libera_depois(self):
        arquivo = binario(ARQUIVOS["notas-com-defeitos"])
        _, documento, advertencias = cli_valida("notas", ARQUIVOS["notas-com-defeitos"])
        cabeca = (f"POST /v1/notas HTTP/1.1\r\nHost: x\r\nAccept: text/plain\r\n"
                  f"Content-Length: {len(arquivo)}\r\n\r\n").encode()
        # Two uploads half sent hold the worker's place and the queue's.
        ocupantes = [self.servico.conecta() for _ in range(2)]
        for soquete in ocupantes:
            soquete.sendall(cabeca + arquivo[:100])
        self.servico.aguarda(lambda estado: estado["admitidas"] == 2, "duas admitidas")
        saude = self.servico.pede("GET", "/saude")
        self.assertEqual(saude.status, 503)
        self.assertEqual(saude.json()["status"], "ocupado")
        resposta = self.servico.valida("/v1/notas", arquivo)
        self.assertProblema(resposta, 503, "servico_ocupado")
        self.assertGreaterEqual(int(resposta.cabecalho("Retry-After")), 1)
        # Refused before anything is read, even with a body too large to be taken.
        with self.servico.conecta() as soquete:
            soquete.sendall(b"POST /v1/fichas HTTP/1.1\r\nHost: x\r\n"
                            b"Content-Length: 500\r\n\r\n")
            status, cabecalhos, _, fechada = resposta_crua(soquete)
        self.assertEqual(status, 503)
        self.assertIn("retry-after", cabecalhos)
        self.assertTrue(fechada)
        for soquete in ocupantes:
            soquete.sendall(arquivo[100:])
        for soquete in ocupantes:
            status, cabecalhos, corpo, _ = resposta_crua(soquete)
            soquete.close()
            self.assertEqual(status, 200)
            self.assertEqual(cabecalhos["x-quorv-status"], str(documento["status"]))
            self.assertEqual(corpo, advertencias)
        self.servico.aguarda(lambda estado: estado["admitidas"] == 0, "nenhuma admitida")
        self.assertEqual(self.servico.pede("GET", "/saude").status, 200)
        self.assertServindo()


class Autorizacao(ComServico):
    @classmethod
    def setUpClass(cls):
        cls.pasta = tempfile.mkdtemp(prefix="servico-token-")
        cls.token = "s3gr3do-" + hashlib.sha256(os.urandom(16)).hexdigest()
        caminho = os.path.join(cls.pasta, "token")
        with open(caminho, "w", encoding="ascii") as arquivo:
            arquivo.write(cls.token + "\n")
        cls.OPCOES = ("--token-arquivo", caminho)
        super().setUpClass()

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.pasta, ignore_errors=True)
        super().tearDownClass()

    def test_token(self):
        arquivo = binario(ARQUIVOS["notas-limpo"])
        resposta = self.servico.valida("/v1/notas", arquivo)
        self.assertProblema(resposta, 401, "nao_autorizado")
        self.assertEqual(resposta.cabecalho("WWW-Authenticate"), 'Bearer realm="quorvvalida"')
        for errado in ("Bearer outro", "Bearer " + self.token[:-1], "Bearer " + self.token + "x",
                       "Basic " + self.token, self.token):
            with self.subTest(cabecalho=errado):
                resposta = self.servico.valida("/v1/notas", arquivo,
                                               cabecalhos={"Authorization": errado})
                self.assertProblema(resposta, 401, "nao_autorizado")
        resposta = self.servico.valida("/v1/notas", arquivo,
                                       cabecalhos={"Authorization": "Bearer " + self.token})
        self.assertEqual(resposta.status, 200)
        resposta = self.servico.valida("/v1/notas", arquivo,
                                       cabecalhos={"Authorization": "bearer " + self.token})
        self.assertEqual(resposta.status, 200)
        self.assertProblema(self.servico.pede("GET", "/metricas"), 401, "nao_autorizado")
        self.assertProblema(self.servico.pede("GET", "/v1/mensagens/notas/1"), 401,
                            "nao_autorizado")
        # Health checks and the OpenAPI document need no token.
        self.assertEqual(self.servico.pede("GET", "/saude").status, 200)
        self.assertEqual(self.servico.pede("GET", "/openapi.json").status, 200)

    def assertServindo(self):
        resposta = self.servico.valida("/v1/notas", binario(ARQUIVOS["notas-limpo"]),
                                       cabecalhos={"Authorization": "Bearer " + self.token})
        self.assertEqual(resposta.status, 200)


class RegistroEMetricas(ComServico):
    def test_uma_linha_por_requisicao_e_as_contas_das_metricas(self):
        requisicoes = []
        arquivos = ["notas-com-defeitos", "fichas-com-defeitos", "notas-gerado"]
        advertencias = 0
        for indice, nome in enumerate(arquivos):
            tipo = "notas" if nome.startswith("notas") else "fichas"
            _, _, esperado = cli_valida(tipo, ARQUIVOS[nome])
            advertencias += (esperado or b"").count(b"\n")
            id_pedido = f"teste.{indice}" if indice != 1 else None
            # The second answer is the JSON object, sent in pieces.
            resposta = self.servico.valida(
                "/v1/" + tipo, binario(ARQUIVOS[nome]),
                aceita=None if indice == 1 else "text/plain",
                cabecalhos={"X-Request-Id": id_pedido} if id_pedido else None)
            self.assertEqual(resposta.status, 200)
            if id_pedido:
                self.assertEqual(resposta.cabecalho("X-Request-Id"), id_pedido)
            requisicoes.append(("POST", "/v1/" + tipo, 200, len(binario(ARQUIVOS[nome])),
                                len(resposta.corpo), resposta.cabecalho("X-Request-Id")))
        resposta = self.servico.pede("GET", "/nada/de/nada", cabecalhos={"X-Request-Id": "x y"})
        self.assertNotEqual(resposta.cabecalho("X-Request-Id"), "x y")
        requisicoes.append(("GET", "/nada/de/nada", 404, 0, len(resposta.corpo),
                            resposta.cabecalho("X-Request-Id")))

        texto = self.servico.pede("GET", "/metricas").corpo.decode()
        metricas = {}
        for linha in texto.splitlines():
            if linha and not linha.startswith("#"):
                nome, valor = linha.rsplit(" ", 1)
                metricas[nome] = float(valor)
        notas = [n for n in arquivos if n.startswith("notas")]
        self.assertEqual(metricas['quorvvalida_arquivos_validados_total{tipo="notas"}'], 2)
        self.assertEqual(metricas['quorvvalida_bytes_validados_total{tipo="notas"}'],
                         sum(len(binario(ARQUIVOS[n])) for n in notas))
        self.assertEqual(metricas['quorvvalida_linhas_validadas_total{tipo="fichas"}'],
                         binario(ARQUIVOS["fichas-com-defeitos"]).count(b"\n"))
        self.assertEqual(metricas['quorvvalida_advertencias_total{tipo="notas"}'] +
                         metricas['quorvvalida_advertencias_total{tipo="fichas"}'], advertencias)
        self.assertEqual(metricas['quorvvalida_requisicoes_total{rota="/v1/notas",metodo="POST",'
                                  'status="200"}'], 2)
        self.assertEqual(metricas['quorvvalida_requisicoes_total{rota="pagina",metodo="GET",'
                                  'status="404"}'], 1)
        self.assertEqual(metricas['quorvvalida_duracao_requisicoes_segundos_count'
                                  '{rota="/v1/notas"}'], 2)
        self.assertEqual(metricas['quorvvalida_duracao_requisicoes_segundos_bucket'
                                  '{rota="/v1/notas",le="+Inf"}'], 2)
        self.assertEqual(metricas["quorvvalida_validacoes_em_andamento"], 0)
        # The request for the metrics is counted once it is answered.
        segunda = self.servico.pede("GET", "/metricas").corpo.decode()
        self.assertIn('quorvvalida_requisicoes_total{rota="/metricas",metodo="GET",status="200"} 1',
                      segunda)

        linhas = [linha for linha in self.servico.registro().splitlines()
                  if re.match(r"^\d{4}-\d\d-\d\dT", linha)]
        formato = re.compile(r"^\S+ (\S+) (\S+) (\d{3}) recebidos=(\d+) enviados=(\d+) ms=(\d+) "
                             r"id=(\S+)$")
        lidas = [formato.match(linha) for linha in linhas]
        self.assertTrue(all(lidas), linhas)
        por_id = {m.group(7): m for m in lidas}
        self.assertEqual(len(por_id), len(lidas), "ids repetidos")
        for metodo, caminho, status, recebidos, enviados, id_resposta in requisicoes:
            linha = por_id[id_resposta]
            self.assertEqual((linha.group(1), linha.group(2), int(linha.group(3)),
                              int(linha.group(4)), int(linha.group(5))),
                             (metodo, caminho, status, recebidos, enviados))


class Encerramento(unittest.TestCase):
    def test_sigterm_conclui_a_validacao_em_andamento(self):
        servico = Servico("--trabalhadores", "1")
        try:
            arquivo = binario(ARQUIVOS["fichas-com-defeitos"])
            objeto, _, _ = cli_valida("fichas", ARQUIVOS["fichas-com-defeitos"])
            soquete = servico.conecta()
            soquete.sendall((f"POST /v1/fichas HTTP/1.1\r\nHost: x\r\n"
                             f"Content-Length: {len(arquivo)}\r\n\r\n").encode() + arquivo[:500])
            servico.aguarda(lambda estado: estado["admitidas"] == 1, "uma admitida")
            servico.processo.send_signal(signal.SIGTERM)
            # New connections are no longer taken...
            limite = time.monotonic() + ESPERA
            while time.monotonic() < limite:
                try:
                    socket.create_connection(("127.0.0.1", servico.porta), timeout=1).close()
                    time.sleep(0.02)
                except OSError:
                    break
            else:
                self.fail("o serviço continuou aceitando conexões")
            self.assertIsNone(servico.processo.poll())
            # ...and the one in progress is answered in full: its object goes out in pieces.
            soquete.sendall(arquivo[500:])
            status, cabecalhos, corpo, fechada = resposta_crua(soquete)
            soquete.close()
            self.assertEqual(status, 200)
            self.assertEqual(cabecalhos.get("transfer-encoding"), "chunked")
            self.assertEqual(desfaz_pedacos(corpo), objeto)
            self.assertTrue(fechada)
            self.assertEqual(servico.processo.wait(timeout=ESPERA), 0)
            self.assertEqual(os.listdir(servico.temporario), [])
            self.assertIn("SIGTERM recebido", servico.registro())
        finally:
            servico.remove()

    def test_sigint_sem_requisicoes(self):
        servico = Servico()
        try:
            servico.processo.send_signal(signal.SIGINT)
            self.assertEqual(servico.processo.wait(timeout=ESPERA), 0)
            self.assertEqual(os.listdir(servico.temporario), [])
        finally:
            servico.remove()


class LinhaDeComando(unittest.TestCase):
    def test_ajuda_e_erros_de_uso(self):
        codigo, saida, _ = cli("servir", "--help")
        self.assertEqual(codigo, 0)
        self.assertIn(b"Uso: quorvvalida servir", saida)
        self.assertIn(b"--limite-corpo BYTES", saida)
        casos = [
            (("--porta", "70000"), 2, "--porta: valor inválido '70000'"),
            (("--limite-corpo", "0"), 2, "--limite-corpo: tamanho inválido '0'"),
            (("--tempo-leitura", "rapido"), 2, "--tempo-leitura: tempo inválido 'rapido'"),
            (("--trabalhadores", "0"), 2, "--trabalhadores: valor inválido '0'"),
            (("--desconhecida",), 2, "opção desconhecida: --desconhecida"),
            (("--porta", "0", "--token-arquivo", "/nao/existe"), 3,
             "não foi possível ler o token de /nao/existe"),
            (("--porta", "0", "--inscricao-lib", "/nao/existe.so"), 3,
             "não foi possível carregar a biblioteca de inscrição estadual: /nao/existe.so"),
        ]
        for argumentos, esperado, mensagem in casos:
            with self.subTest(argumentos=argumentos):
                codigo, saida, erros = cli("servir", *argumentos)
                self.assertEqual(codigo, esperado, erros)
                self.assertEqual(saida, b"")
                self.assertIn("quorvvalida servir: " + mensagem, erros.decode())
        with tempfile.NamedTemporaryFile("w", suffix=".token") as vazio:
            vazio.write("  \n")
            vazio.flush()
            codigo, _, erros = cli("servir", "--porta", "0", "--token-arquivo", vazio.name)
            self.assertEqual(codigo, 3)
            self.assertIn("o arquivo de token está vazio", erros.decode())


class Pagina(unittest.TestCase):
    def test_pagina_instalada_e_ausente(self):
        pasta = tempfile.mkdtemp(prefix="servico-pagina-")
        try:
            with open(os.path.join(pasta, "index.html"), "wb") as arquivo:
                arquivo.write(b"<!doctype html><title>QuorvValida</title>\n")
            with open(os.path.join(pasta, "app.js"), "wb") as arquivo:
                arquivo.write(b"console.log(1);\n")
            servico = Servico("--pagina", pasta)
            try:
                resposta = servico.pede("GET", "/")
                self.assertEqual(resposta.status, 200)
                self.assertEqual(resposta.corpo, b"<!doctype html><title>QuorvValida</title>\n")
                self.assertTrue(resposta.cabecalho("Content-Type").startswith("text/html"))
                resposta = servico.pede("GET", "/app.js", conferir=False)
                self.assertEqual(resposta.corpo, b"console.log(1);\n")
                resposta = servico.pede("GET", "/nada.js")
                self.assertEqual(resposta.status, 404)
                self.assertEqual(resposta.json()["type"],
                                 "urn:quorvvalida:erro:rota_desconhecida")
                self.assertEqual(servico.encerra(), 0)
            finally:
                servico.remove()
            servico = Servico("--pagina", os.path.join(pasta, "nao-existe"))
            try:
                resposta = servico.pede("GET", "/")
                self.assertEqual(resposta.status, 404)
                self.assertEqual(resposta.json()["type"], "urn:quorvvalida:erro:pagina_ausente")
                self.assertIn("nao-existe", resposta.json()["detail"])
            finally:
                servico.remove()
        finally:
            shutil.rmtree(pasta, ignore_errors=True)


class Memoria(ComServico):
    OPCOES = ("--limite-corpo", "1GiB")

    def test_um_arquivo_grande_nao_fica_na_memoria(self):
        def pico():
            with open(f"/proc/{self.servico.processo.pid}/status", encoding="ascii") as status:
                for linha in status:
                    if linha.startswith("VmHWM:"):
                        return int(linha.split()[1]) * 1024
            raise AssertionError("sem VmHWM")

        antes = pico()
        linha = b"0" * 160 + b"\r\n"
        bloco = linha * 4096
        total = 256 * 1024 * 1024 // len(bloco)

        def pedacos():
            for _ in range(total):
                yield bloco

        conexao = http.client.HTTPConnection("127.0.0.1", self.servico.porta, timeout=ESPERA)
        try:
            conexao.request("POST", "/v1/notas", body=pedacos(), encode_chunked=True,
                            headers={"Accept": "text/plain", "Transfer-Encoding": "chunked"})
            resposta = conexao.getresponse()
            corpo = resposta.read()
        finally:
            conexao.close()
        self.assertEqual(resposta.status, 200, corpo[:300])
        self.assertEqual(resposta.getheader("X-Quorv-Status"), "8")
        # 256 MiB went through; the service grew by far less than that.
        self.assertLess(pico() - antes, 32 * 1024 * 1024)


class OpenApi(ComServico):
    def test_o_documento_descreve_o_que_o_servico_responde(self):
        documento = self.servico.pede("GET", "/openapi.json").json()
        self.assertEqual(documento["openapi"], "3.1.0")
        with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools",
                               "quorvvalida", "servir", "openapi.json"), "rb") as fonte:
            self.assertEqual(documento, json.load(fonte))
        # Every route the service answers is in the document, and nothing else is.
        descritas = {(modelo, metodo.upper()) for modelo, operacoes in documento["paths"].items()
                     for metodo in operacoes}
        respondidas = set()
        for modelo in documento["paths"]:
            if modelo == "/":
                continue
            caminho = modelo.replace("{tipo}", "P").replace("{codigo}", "1")
            for metodo in ("GET", "POST"):
                resposta = self.servico.pede(metodo, caminho, b"" if metodo == "POST" else None,
                                             {"Content-Type": "application/octet-stream"},
                                             conferir=False)
                if resposta.status != 405:
                    respondidas.add((modelo, metodo))
        self.assertEqual(respondidas | {("/", "GET")}, descritas)
        # HEAD as GET.
        resposta = self.servico.pede("HEAD", "/saude")
        self.assertEqual(resposta.status, 200)
        self.assertEqual(resposta.corpo, b"")


def gera_arquivos(pasta):
    ARQUIVOS.update({nome[:-4]: os.path.join(AMOSTRAS, nome) for nome in sorted(
        os.listdir(AMOSTRAS)) if nome.endswith(".txt")})
    # An empty line among a form file's records stops the form run (status 9), an outcome the
    # tool reports with an error of its own.
    linhas = binario(ARQUIVOS["fichas-limpo"]).split(b"\r\n")
    caminho = os.path.join(pasta, "fichas-linha-vazia.txt")
    with open(caminho, "wb") as arquivo:
        arquivo.write(b"\r\n".join(linhas[:5] + [b""] + linhas[5:]))
    ARQUIVOS["fichas-linha-vazia"] = caminho
    for tipo in ("notas", "fichas"):
        for defeitos in (False, True):
            nome = f"{tipo}-gerado" + ("-defeitos" if defeitos else "")
            caminho = os.path.join(pasta, nome + ".txt")
            subprocess.run([GERADOR, tipo, "-n", "1500", "-o", caminho] +
                           (["--defeitos"] if defeitos else []), check=True, timeout=ESPERA)
            ARQUIVOS[nome] = caminho


def main():
    global PROGRAMA, GERADOR, AMOSTRAS, INSCRICAO  # pylint: disable=global-statement
    if len(sys.argv) < 5:
        sys.exit(__doc__)
    PROGRAMA, GERADOR, AMOSTRAS, INSCRICAO = (os.path.abspath(a) for a in sys.argv[1:5])
    pasta = tempfile.mkdtemp(prefix="servico-arquivos-")
    try:
        gera_arquivos(pasta)
        unittest.main(argv=[sys.argv[0]] + sys.argv[5:], verbosity=2)
    finally:
        shutil.rmtree(pasta, ignore_errors=True)


if __name__ == "__main__":
    main()
