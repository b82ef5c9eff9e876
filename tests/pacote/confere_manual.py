"""Every option a program accepts appears in its manual page, and so does every command.

    confere_manual.py PROGRAMA PAGINA [PROGRAMA PAGINA ...]

The options are read from the program itself: its --help, and the --help of every command its
help lists. The page (roff, compressed or not) is rendered by man as a reader sees it, and man
must render it without a warning. Exits 1 naming everything a page lacks.
"""

import os
import re
import subprocess
import sys

# An option as help texts write it: "-d", "--chave-remessa", "-h,--help", "[--tipo".
OPCAO = re.compile(r"(?<![\w-])(--?[A-Za-z][A-Za-z0-9]*(?:-[A-Za-z0-9]+)*)")
# The heading of a help text's list of commands.
TITULO_COMANDOS = re.compile(r"^(?=\S).*?\b(comandos|subcomandos|subcommands)\b.*:\s*$", re.I)


def ajuda(programa, *argumentos):
    resultado = subprocess.run([programa, *argumentos, "--help"], capture_output=True,
                               text=True, check=False)
    if resultado.returncode != 0:
        sys.exit(f"confere_manual: {' '.join([programa, *argumentos])} --help saiu com "
                 f"{resultado.returncode}:\n{resultado.stderr}")
    return resultado.stdout


def comandos(texto):
    """The commands a help text lists: the first word of each line under its heading."""
    achados = []
    dentro = False
    for linha in texto.splitlines():
        if TITULO_COMANDOS.match(linha):
            dentro = True
            continue
        if dentro and (not linha.strip() or not linha[0].isspace()):
            dentro = False
        if dentro:
            palavra = linha.split()[0]
            if re.fullmatch(r"[a-z][a-z0-9-]*", palavra):
                achados.append(palavra)
    return achados


def pagina_como_texto(pagina):
    ambiente = dict(os.environ, MANWIDTH="300", LC_ALL="C.UTF-8", MAN_KEEP_FORMATTING="")
    resultado = subprocess.run(["man", "--warnings", "--no-hyphenation", "--no-justification",
                                "-l", pagina], capture_output=True, text=True, env=ambiente,
                               check=False)
    if resultado.returncode != 0 or resultado.stderr.strip():
        sys.exit(f"confere_manual: man -l {pagina}:\n{resultado.stderr}")
    # Hyphens as groff may print them, and the overstrikes of a terminal's bold.
    texto = re.sub(r".\x08", "", resultado.stdout)
    return texto.translate({0x2010: "-", 0x2011: "-", 0x2212: "-"})


def presente(palavra, texto):
    return re.search(r"(?<![\w-])" + re.escape(palavra) + r"(?![\w-])", texto) is not None


def confere(programa, pagina):
    geral = ajuda(programa)
    lidos = {programa: geral}
    lista = comandos(geral)
    for comando in lista:
        lidos[f"{programa} {comando}"] = ajuda(programa, comando)
    texto = pagina_como_texto(pagina)
    faltas = []
    for comando in lista:
        if not presente(comando, texto):
            faltas.append(f"o comando {comando}")
    vistas = set()
    for origem, saida in lidos.items():
        for opcao in OPCAO.findall(saida):
            if opcao not in vistas and not presente(opcao, texto):
                faltas.append(f"a opção {opcao} (de {os.path.basename(origem)} --help)")
            vistas.add(opcao)
    nome = os.path.basename(pagina)
    for falta in faltas:
        print(f"{nome} não traz {falta}")
    print(f"{nome}: {len(lista)} comandos e {len(vistas)} opções de {os.path.basename(programa)}"
          f" procurados, {len(faltas)} faltando")
    return not faltas


def main():
    pares = sys.argv[1:]
    if not pares or len(pares) % 2:
        sys.exit("uso: confere_manual.py PROGRAMA PAGINA [PROGRAMA PAGINA ...]")
    resultados = [confere(pares[i], pares[i + 1]) for i in range(0, len(pares), 2)]
    sys.exit(0 if all(resultados) else 1)


main()
