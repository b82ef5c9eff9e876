"""A host in another language: Python loads the shared library through ctypes and runs one
validation through the C interface, as a script of the treasury's would, with every function's
argument and result types declared and every object it creates released.

    anfitriao_ctypes.py LIBRARY REGISTRATION_LIBRARY VERSION notas|fichas FILE DIR AAAAMMDD
                        CHAVE_REMESSA SEPARADOR

Prints the run status and the remessa number; exits 1, naming the failed check, when the library
does not answer as its C header says.
"""

import ctypes
import datetime
import sys


class Opcoes(ctypes.Structure):
    """quorv_opcoes, laid out as the header declares it."""

    _fields_ = [
        ("tamanho", ctypes.c_size_t),
        ("chave_remessa", ctypes.c_double),
        ("chave_processamento", ctypes.c_double),
        ("origem", ctypes.c_char_p),
        ("servidor", ctypes.c_char_p),
        ("separador", ctypes.c_char_p),
    ]


PROGRESSO = ctypes.CFUNCTYPE(None, ctypes.POINTER(ctypes.c_double), ctypes.c_void_p)


def confere(condicao, o_que):
    if not condicao:
        sys.exit(f"anfitriao_ctypes: falhou: {o_que}")


def declara(quorv):
    """The types of every function this host calls."""
    texto = [ctypes.c_char_p, ctypes.c_size_t]
    tipos = {
        "quorv_versao": (ctypes.c_char_p, []),
        "quorv_mensagem_notas": (ctypes.c_size_t, [ctypes.c_int16, *texto]),
        "quorv_carrega_biblioteca_inscricao": (ctypes.c_int, [ctypes.c_char_p]),
    }
    for prefixo in ("quorv_validacao", "quorv_ficha"):
        tipos[prefixo + "_cria"] = (ctypes.c_void_p, [])
        tipos[prefixo + "_destroi"] = (None, [ctypes.c_void_p])
        tipos[prefixo + "_progresso"] = (None, [ctypes.c_void_p, PROGRESSO, ctypes.c_void_p])
        tipos[prefixo + "_hoje"] = (None, [ctypes.c_void_p, ctypes.c_double])
    for funcao in ("quorv_valida_dados", "quorv_valida_fichas"):
        tipos[funcao] = (ctypes.c_int16, [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_char_p,
                                          ctypes.POINTER(Opcoes), *texto])
    for nome, (resultado, argumentos) in tipos.items():
        funcao = getattr(quorv, nome)
        funcao.restype = resultado
        funcao.argtypes = argumentos


def texto(funcao, *argumentos):
    """A text given snprintf-style: asks for its length first, then for the whole of it."""
    tamanho = funcao(*argumentos, None, 0)
    destino = ctypes.create_string_buffer(tamanho + 1)
    confere(funcao(*argumentos, destino, tamanho + 1) == tamanho, "tamanho do texto")
    return destino.value.decode("utf-8")


def main():
    biblioteca, inscricao, versao, tipo, arquivo, diretorio, hoje, chave, separador = sys.argv[1:]
    quorv = ctypes.CDLL(biblioteca)
    declara(quorv)

    confere(quorv.quorv_versao().decode() == versao, "versão")
    confere(
        texto(quorv.quorv_mensagem_notas, 148)
        == "Bloco de registros não foi fechado corretamente ( falta TR98 ou TR01 )",
        "mensagem 148",
    )
    confere(quorv.quorv_carrega_biblioteca_inscricao(inscricao.encode()) == 1,
            "biblioteca de inscrição")

    eventos = []
    ouvinte = PROGRESSO(lambda porcentagem, contexto: eventos.append(porcentagem[0]))

    data = datetime.date(int(hoje[:4]), int(hoje[4:6]), int(hoje[6:]))
    serial = float((data - datetime.date(1899, 12, 30)).days)

    opcoes = Opcoes(tamanho=ctypes.sizeof(Opcoes), chave_remessa=float(chave),
                    separador=separador.encode())
    prefixo = "quorv_validacao" if tipo == "notas" else "quorv_ficha"
    valida = quorv.quorv_valida_dados if tipo == "notas" else quorv.quorv_valida_fichas
    validador = getattr(quorv, prefixo + "_cria")()
    confere(validador, "validador criado")
    try:
        getattr(quorv, prefixo + "_progresso")(validador, ouvinte, None)
        getattr(quorv, prefixo + "_hoje")(validador, serial)
        numero = ctypes.create_string_buffer(32)
        status = valida(validador, arquivo.encode(), diretorio.encode(), ctypes.byref(opcoes),
                        numero, len(numero))
    finally:
        getattr(quorv, prefixo + "_destroi")(validador)

    confere(eventos, "eventos de progresso")
    print(status, numero.value.decode("utf-8"))


main()
