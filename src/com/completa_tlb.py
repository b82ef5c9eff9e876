#!/usr/bin/env python3
"""Writes into a type library the default values that widl leaves out or writes wrongly.

widl (mingw-w64-tools 10, Wine 8) cannot store a Double default value: it warns and leaves the
parameter marked "has a default" with no value, which makes the function unreadable. For an
optional parameter passed by reference it stores the default as a pointer rather than as a value
of the type pointed to. Automation hosts read these values to fill in the arguments a caller
leaves out, so they must be exact: this script puts them right, taking the values from the IDL.

Use: completa_tlb.py IDL ENTRADA.tlb SAIDA.tlb

The type library format (MSFT) is the one widl writes: a header, the offsets of the type infos, a
directory of fifteen segments, the segments, then each type info's member records. A Double value
lives in the custom-data segment (a VARTYPE and eight bytes); small integers and Booleans are
written inside the parameter's own slot.
"""

import re
import struct
import sys

VT_I2, VT_I4, VT_R8, VT_BSTR, VT_BOOL, VT_PTR = 2, 3, 5, 8, 11, 26
VT_TYPEMASK = 0x0FFF
PARAMFLAG_FHASDEFAULT = 0x20
HELPDLLFLAG = 0x0100
SEGMENTOS = 15
SEG_TYPEINFO, SEG_NAME, SEG_TYPEDESC, SEG_CUSTDATA = 0, 7, 9, 11
TAMANHO_CABECALHO = 0x54
TAMANHO_TYPEINFO = 0x64


def falha(mensagem):
    sys.exit(f"completa_tlb: {mensagem}")


def padroes_da_idl(caminho):
    """Maps each parameter name that has a default value to (VARTYPE, value) as the IDL says."""
    texto = open(caminho, encoding="utf-8").read()
    declaracao = re.compile(
        r"defaultvalue\(([^)]*)\)\]\s*(double|VARIANT_BOOL|short|long|BSTR)\s*(\*?)\s*(\w+)")
    tipos = {"double": VT_R8, "VARIANT_BOOL": VT_BOOL, "short": VT_I2, "long": VT_I4,
             "BSTR": VT_BSTR}
    padroes = {}
    for valor, tipo, _, nome in declaracao.findall(texto):
        padrao = (tipos[tipo], valor.strip())
        if padroes.setdefault(nome, padrao) != padrao:
            falha(f"o parâmetro {nome} tem valores padrão diferentes na IDL")
    return padroes


class Biblioteca:
    def __init__(self, dados):
        self.dados = bytearray(dados)
        if self.le(0) != 0x5446534D:
            falha("o arquivo não é uma biblioteca de tipos MSFT")
        self.tipos = self.le(0x20)
        inicio = TAMANHO_CABECALHO + (4 if self.le(0x14) & HELPDLLFLAG else 0)
        self.diretorio = inicio + 4 * self.tipos

    def le(self, posicao):
        return struct.unpack_from("<i", self.dados, posicao)[0]

    def escreve(self, posicao, valor):
        struct.pack_into("<i", self.dados, posicao, valor)

    def segmento(self, indice):
        posicao = self.diretorio + 16 * indice
        return self.le(posicao), self.le(posicao + 4)

    def nome(self, deslocamento):
        inicio, _ = self.segmento(SEG_NAME)
        posicao = inicio + deslocamento
        tamanho = self.dados[posicao + 8]
        return self.dados[posicao + 12:posicao + 12 + tamanho].decode("latin-1")

    def tipo_apontado(self, codigo):
        """The VARTYPE of a parameter, and the VARTYPE it points to when it is a pointer."""
        if codigo < 0:
            return codigo & VT_TYPEMASK, None
        inicio, _ = self.segmento(SEG_TYPEDESC)
        vt = self.le(inicio + codigo) & 0xFFFF
        alvo = self.le(inicio + codigo + 4)
        if vt != VT_PTR:
            return vt, None
        if alvo < 0:
            return VT_PTR, alvo & VT_TYPEMASK
        return VT_PTR, self.le(inicio + alvo) & 0xFFFF

    def parametros_com_padrao(self):
        """Yields (slot position, parameter name, VARTYPE of the value) for every default."""
        inicio, _ = self.segmento(SEG_TYPEINFO)
        for indice in range(self.tipos):
            info = inicio + indice * TAMANHO_TYPEINFO
            registros = self.le(info + 4)
            funcoes = self.le(info + 0x18) & 0xFFFF
            if registros < 0 or funcoes == 0:
                continue
            posicao = registros + 4
            for _ in range(funcoes):
                tamanho = self.le(posicao) & 0xFFFF
                fkccic = self.le(posicao + 0x10)
                argumentos = struct.unpack_from("<H", self.dados, posicao + 0x14)[0]
                if fkccic & 0x1000:
                    parametros = posicao + tamanho - 12 * argumentos
                    padroes = parametros - 4 * argumentos
                    for i in range(argumentos):
                        tipo, nome, bandeiras = struct.unpack_from(
                            "<iii", self.dados, parametros + 12 * i)
                        if bandeiras & PARAMFLAG_FHASDEFAULT:
                            vt, apontado = self.tipo_apontado(tipo)
                            yield padroes + 4 * i, self.nome(nome), apontado or vt
                posicao += tamanho

    def acrescenta_dado(self, conteudo):
        """Appends bytes to the custom-data segment; answers their offset in it."""
        inicio, tamanho = self.segmento(SEG_CUSTDATA)
        if inicio < 0:
            falha("a biblioteca não tem segmento de dados (nenhum texto padrão?)")
        conteudo = bytes(conteudo) + b"\x57" * (-len(conteudo) % 4)
        fim = inicio + tamanho
        self.dados[fim:fim] = conteudo
        acrescimo = len(conteudo)
        for indice in range(SEGMENTOS):
            posicao = self.diretorio + 16 * indice
            if indice == SEG_CUSTDATA:
                self.escreve(posicao + 4, tamanho + acrescimo)
            elif self.le(posicao) >= fim:
                self.escreve(posicao, self.le(posicao) + acrescimo)
        tipos, _ = self.segmento(SEG_TYPEINFO)
        for indice in range(self.tipos):
            memoria = tipos + indice * TAMANHO_TYPEINFO + 4
            if self.le(memoria) >= fim:
                self.escreve(memoria, self.le(memoria) + acrescimo)
        return tamanho


def valor_embutido(vt, valor):
    """A small value written inside the slot itself, as the format allows for integers."""
    if not 0 <= valor < (1 << 26):
        falha(f"valor {valor} não cabe no próprio parâmetro")
    return struct.unpack("<i", struct.pack("<I", 0x80000000 | (vt << 26) | valor))[0]


def completa(idl, entrada, saida):
    padroes = padroes_da_idl(idl)
    biblioteca = Biblioteca(open(entrada, "rb").read())

    def valor(nome, vt):
        if nome not in padroes:
            falha(f"o parâmetro {nome} tem valor padrão na biblioteca e não na IDL")
        vt_idl, texto = padroes[nome]
        if vt != vt_idl:
            falha(f"o parâmetro {nome} é do tipo {vt} na biblioteca e {vt_idl} na IDL")
        return texto

    # The Double values go first into the custom data, once each; appending moves the member
    # records, so the slots are found afresh afterwards.
    duplos = {}
    for _, nome, vt in list(biblioteca.parametros_com_padrao()):
        numero = float(valor(nome, vt)) if vt == VT_R8 else None
        if numero is not None and numero not in duplos:
            duplos[numero] = biblioteca.acrescenta_dado(struct.pack("<Hd", VT_R8, numero))
    for posicao, nome, vt in list(biblioteca.parametros_com_padrao()):
        texto = valor(nome, vt)
        if vt == VT_BSTR:
            continue
        if vt == VT_R8:
            novo = duplos[float(texto)]
        elif vt == VT_BOOL:
            novo = valor_embutido(VT_BOOL, 0xFFFF if texto.upper() in ("-1", "TRUE") else 0)
        else:
            novo = valor_embutido(vt, int(texto, 0))
        biblioteca.escreve(posicao, novo)
    open(saida, "wb").write(biblioteca.dados)


if __name__ == "__main__":
    if len(sys.argv) != 4:
        falha("uso: completa_tlb.py IDL ENTRADA.tlb SAIDA.tlb")
    completa(*sys.argv[1:])
