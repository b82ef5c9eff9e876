#!/usr/bin/env bash
# Builds the Debian package as scripts/empacotar does (shared library, prefix /usr), opens it
# into a scratch root and uses what it holds the way its users would: the program on the samples,
# a C host compiled through pkg-config, and a Python host through ctypes. Every run must give the
# same status and the same ADVERTENCIAS.TXT, byte for byte, as the program of the build under
# test.
#
#   testa_deb.sh SOURCES REFERENCE_PROGRAM REGISTRATION_LIBRARY SCRATCH
set -euo pipefail
fontes=$1
referencia=$2
inscricao=$3
trabalho=$4
hoje=20261123

falha() {
  echo "testa_deb: $*" >&2
  exit 1
}

rm -rf "$trabalho"
mkdir -p "$trabalho"
"$fontes/scripts/empacotar" "$trabalho/construcao" >"$trabalho/empacotar.log" 2>&1 ||
  { cat "$trabalho/empacotar.log" >&2; falha "o pacote não foi construído"; }
pacote=$(ls "$trabalho"/construcao/quorvvalida_*.deb)

# The control fields: the run-time libraries were read off the binaries.
[ "$(dpkg-deb -f "$pacote" Package)" = quorvvalida ] || falha "nome do pacote"
[ "$(dpkg-deb -f "$pacote" Version)" = 1.1.0.1 ] || falha "versão do pacote"
dpkg-deb -f "$pacote" Depends | grep -q 'libstdc++6' || falha "dependências não lidas"

raiz="$trabalho/raiz"
dpkg-deb -x "$pacote" "$raiz"
biblioteca=$(find "$raiz/usr/lib" -name 'libquorvvalida.so.1' -print -quit)
[ -n "$biblioteca" ] || falha "libquorvvalida.so.1 fora do pacote"
libdir=$(dirname "$biblioteca")
for esperado in usr/bin/quorvvalida usr/include/quorvvalida/quorvvalida.h \
  usr/include/quorvvalida/quorvvalida.hpp usr/include/quorvvalida/versao.hpp; do
  [ -e "$raiz/$esperado" ] || falha "$esperado fora do pacote"
done
[ -e "$libdir/pkgconfig/quorvvalida.pc" ] || falha "quorvvalida.pc fora do pacote"
[ -e "$libdir/cmake/QuorvValida/QuorvValidaConfig.cmake" ] || falha "pacote CMake fora do pacote"
for indevido in usr/include/quorvvalida/cls_quorv_adv_bd.hpp \
  usr/include/quorvvalida/versao.hpp.in; do
  [ ! -e "$raiz/$indevido" ] || falha "$indevido não pode estar no pacote"
done

# Runs the reference program on FILE in a directory of its own; prints the run status.
status_de_referencia() {
  local tipo=$1 arquivo=$2 diretorio=$3
  mkdir -p "$diretorio"
  "$referencia" "$tipo" "$arquivo" -d "$diretorio" --json --hoje "$hoje" \
    --inscricao-lib "$inscricao" >"$diretorio.json" || true
  python3 -c 'import json, sys; print(json.load(open(sys.argv[1]))["status"])' "$diretorio.json"
}

mesmas_advertencias() {
  local esperado=$1 obtido=$2 quem=$3
  if [ -e "$esperado/ADVERTENCIAS.TXT" ]; then
    cmp "$esperado/ADVERTENCIAS.TXT" "$obtido/ADVERTENCIAS.TXT" ||
      falha "$quem: ADVERTENCIAS.TXT difere"
  else
    [ ! -e "$obtido/ADVERTENCIAS.TXT" ] || falha "$quem: ADVERTENCIAS.TXT a mais"
  fi
}

for amostra in notas-limpo notas-com-defeitos fichas-limpo fichas-com-defeitos; do
  tipo=${amostra%%-*}
  arquivo="$fontes/samples/$amostra.txt"
  esperado="$trabalho/referencia/$amostra"
  status=$(status_de_referencia "$tipo" "$arquivo" "$esperado")

  # The packaged program finds the packaged library through its run path.
  programa="$trabalho/programa/$amostra"
  mkdir -p "$programa"
  codigo=0
  "$raiz/usr/bin/quorvvalida" "$tipo" "$arquivo" -d "$programa" -q --hoje "$hoje" \
    --inscricao-lib "$inscricao" || codigo=$?
  esperado_codigo=0
  [ -e "$esperado/ADVERTENCIAS.TXT" ] && esperado_codigo=1
  [ "$codigo" = "$esperado_codigo" ] || falha "$amostra: programa saiu com $codigo"
  mesmas_advertencias "$esperado" "$programa" "programa do pacote, $amostra"

  python="$trabalho/python/$amostra"
  mkdir -p "$python"
  resposta=$(python3 "$fontes/tests/pacote/anfitriao_ctypes.py" "$biblioteca" "$inscricao" \
    "$tipo" "$arquivo" "$python" "$hoje")
  [ "${resposta%% *}" = "$status" ] || falha "$amostra: Python recebeu $resposta, esperado $status"
  mesmas_advertencias "$esperado" "$python" "Python, $amostra"
done

# A C host that knows the library only through pkg-config.
export PKG_CONFIG_PATH="$libdir/pkgconfig"
# shellcheck disable=SC2046 # pkg-config gives several words on purpose
cc -std=c11 -Wall -Wextra -Werror -o "$trabalho/capi_teste" "$fontes/tests/capi/capi_teste.c" \
  $(pkg-config --cflags --libs quorvvalida)
mkdir -p "$trabalho/capi"
LD_LIBRARY_PATH="$libdir" "$trabalho/capi_teste" "$trabalho/capi" || falha "host C pelo pkg-config"
echo "testa_deb: pacote $(basename "$pacote") conferido"
