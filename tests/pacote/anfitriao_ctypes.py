"""A host in another language: Python loads the shared library through ctypes and runs one
validation through the C interface, as a script of the treasury's would.

    anfitriao_ctypes.py LIBRARY REGISTRATION_LIBRARY notas|fichas FILE DIR AAAAMMDD

Prints the run status and the remessa number; exits 1, naming the failed check, when the library
does not answer as its C header says.
"""

import ctypes
import datetime
import sys


def confere(condicao, o_que):
    if not condicao:
        sys.exit(f"anfitriao_ctypes: falhou: {o_que}")


def texto(funcao, *argumentos):
    """A text given snprintf-style: asks for its length first, then for the whole of it."""
    tamanho = funcao(*argumentos, None, 0)
    destino = ctypes.create_string_buffer(tamanho + 1)
    confere(funcao(*argumentos, destino, tamanho + 1) == tamanho, "tamanho do texto")
    return destino.value.decode("utf-8")


def main():
    biblioteca, inscricao, tipo, arquivo, diretorio, hoje = sys.argv[1:]
    quorv = ctypes.CDLL(biblioteca)

    quorv.quorv_versao.restype = ctypes.c_char_p
    confere(quorv.quorv_versao() == b"1.1.0.1", "versão")

    quorv.quorv_mensagem_notas.argtypes = [ctypes.c_int16, ctypes.c_char_p, ctypes.c_size_t]
    quorv.quorv_mensagem_notas.restype = ctypes.c_size_t
    confere(
        texto(quorv.quorv_mensagem_notas, 148)
        == "Bloco de registros não foi fechado corretamente ( falta TR98 ou TR01 )",
        "mensagem 148",
    )

    quorv.quorv_carrega_biblioteca_inscricao.argtypes = [ctypes.c_char_p]
    confere(quorv.quorv_carrega_biblioteca_inscricao(inscricao.encode()) == 1,
            "biblioteca de inscrição")

    progresso = ctypes.CFUNCTYPE(None, ctypes.POINTER(ctypes.c_double), ctypes.c_void_p)
    eventos = []
    ouvinte = progresso(lambda porcentagem, contexto: eventos.append(porcentagem[0]))

    data = datetime.date(int(hoje[:4]), int(hoje[4:6]), int(hoje[6:]))
    serial = float((data - datetime.date(1899, 12, 30)).days)

    prefixo = "quorv_validacao" if tipo == "notas" else "quorv_ficha"
    cria = getattr(quorv, prefixo + "_cria")
    cria.restype = ctypes.c_void_p
    destroi = getattr(quorv, prefixo + "_destroi")
    destroi.argtypes = [ctypes.c_void_p]
    escuta = getattr(quorv, prefixo + "_progresso")
    escuta.argtypes = [ctypes.c_void_p, progresso, ctypes.c_void_p]
    fixa_hoje = getattr(quorv, prefixo + "_hoje")
    fixa_hoje.argtypes = [ctypes.c_void_p, ctypes.c_double]
    valida = quorv.quorv_valida_dados if tipo == "notas" else quorv.quorv_valida_fichas
    valida.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_char_p, ctypes.c_void_p,
                       ctypes.c_char_p, ctypes.c_size_t]
    valida.restype = ctypes.c_int16

    validador = cria()
    confere(validador, "validador criado")
    escuta(validador, ouvinte, None)
    fixa_hoje(validador, serial)
    numero = ctypes.create_string_buffer(32)
    status = valida(validador, arquivo.encode(), diretorio.encode(), None, numero, len(numero))
    destroi(validador)

    confere(eventos, "eventos de progresso")
    print(status, numero.value.decode("utf-8"))


main()
