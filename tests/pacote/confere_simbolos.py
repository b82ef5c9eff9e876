"""The shared library shows its public contract and nothing else: every symbol it defines for
the dynamic linker is a C function declared in quorvvalida.h or belongs to a class or function
that a public header marks with QUORVVALIDA_API, and each of those is there.

    confere_simbolos.py BIBLIOTECA|PACOTE.deb DIRETORIO_DOS_CABECALHOS

Prints the symbols counted; exits 1 naming every symbol out of place and every name missing.
"""

import pathlib
import re
import subprocess
import sys
import tempfile


def simbolos(biblioteca):
    """The defined dynamic symbols of the library, demangled."""
    saida = subprocess.run(["nm", "-D", "--defined-only", "--demangle", str(biblioteca)],
                           check=True, capture_output=True, text=True).stdout
    # "value type name": the name may hold blanks, the first two fields do not.
    return [linha.split(" ", 2)[2] for linha in saida.splitlines() if linha.strip()]


def contrato(cabecalhos):
    """The C functions, and the C++ classes and functions, that the public headers export."""
    funcoes_c = set()
    nomes_cpp = set()
    for caminho in sorted(cabecalhos.glob("*.h")):
        texto = caminho.read_text(encoding="utf-8")
        funcoes_c.update(re.findall(r"QUORVVALIDA_API\b[^;{(]*?\b(quorv_\w+)\s*\(", texto))
    for caminho in sorted(cabecalhos.glob("*.hpp")):
        texto = caminho.read_text(encoding="utf-8")
        nomes_cpp.update(re.findall(r"\bclass\s+QUORVVALIDA_API\s+(\w+)", texto))
        nomes_cpp.update(re.findall(r"^QUORVVALIDA_API\b[^;{(]*?\b(\w+)\s*\(", texto, re.M))
    return funcoes_c, nomes_cpp


def biblioteca_do_pacote(pacote, destino):
    subprocess.run(["dpkg-deb", "-x", str(pacote), str(destino)], check=True)
    encontradas = sorted(pathlib.Path(destino).glob("usr/lib/*/libquorvvalida.so.*.*"))
    if not encontradas:
        sys.exit(f"confere_simbolos: {pacote} não traz libquorvvalida.so")
    return encontradas[0]


def confere(biblioteca, cabecalhos):
    funcoes_c, nomes_cpp = contrato(cabecalhos)
    if not funcoes_c or not nomes_cpp:
        sys.exit(f"confere_simbolos: nenhuma marca QUORVVALIDA_API em {cabecalhos}")
    todos = simbolos(biblioteca)
    fora = []
    vistos_c = set()
    vistos_cpp = set()
    for simbolo in todos:
        if simbolo in funcoes_c:
            vistos_c.add(simbolo)
            continue
        nome = re.match(r"quorv::(\w+)", simbolo)
        if nome and nome.group(1) in nomes_cpp:
            vistos_cpp.add(nome.group(1))
            continue
        fora.append(simbolo)
    faltam = sorted(funcoes_c - vistos_c) + sorted(nomes_cpp - vistos_cpp)
    print(f"{biblioteca.name}: {len(todos)} símbolos definidos: {len(vistos_c)} funções C, "
          f"{len(todos) - len(fora) - len(vistos_c)} de {len(vistos_cpp)} nomes C++")
    for simbolo in fora:
        print(f"fora do contrato: {simbolo}")
    for nome in faltam:
        print(f"marcado e não exportado: {nome}")
    return not fora and not faltam


def main():
    alvo = pathlib.Path(sys.argv[1])
    cabecalhos = pathlib.Path(sys.argv[2])
    with tempfile.TemporaryDirectory() as raiz:
        biblioteca = biblioteca_do_pacote(alvo, raiz) if alvo.suffix == ".deb" else alvo
        sys.exit(0 if confere(biblioteca, cabecalhos) else 1)


main()
