#!/usr/bin/env bash
# The three Debian packages that scripts/empacotar built, installed into a scratch root and used
# the way their users would: the program and its manual page, a C host compiled through
# pkg-config against the shared and against the static library, a C++ host through
# find_package(QuorvValida), and a Python host through ctypes on libquorvvalida.so.1. Every run
# on the samples must give the same status and the same ADVERTENCIAS.TXT, byte for byte, as the
# program of the build under test.
#
#   testa_deb.sh SOURCES PACKAGES_DIR REFERENCE_PROGRAM REGISTRATION_LIBRARY VERSION SCRATCH
set -euo pipefail
fontes=$1
pacotes=$2
referencia=$3
inscricao=$4
versao=$5
trabalho=$6
hoje=20261123
chave=5
separador=';'

falha() {
  echo "testa_deb: $*" >&2
  exit 1
}

rm -rf "$trabalho"
mkdir -p "$trabalho"
arquitetura=$(dpkg --print-architecture)
deb() { echo "$pacotes/${1}_${versao}_$arquitetura.deb"; }
for nome in libquorvvalida1 libquorvvalida-dev quorvvalida; do
  [ -e "$(deb "$nome")" ] || falha "$(deb "$nome") não foi construído"
  [ "$(dpkg-deb -f "$(deb "$nome")" Version)" = "$versao" ] || falha "$nome: versão"
done

# The control data: the run-time libraries read off the binaries, the library registered with
# the loader and its symbols listed, the development files tied to this very library.
controle="$trabalho/controle"
dpkg-deb -e "$(deb libquorvvalida1)" "$controle"
grep -q '^activate-noawait ldconfig$' "$controle/triggers" || falha "ldconfig não é avisado"
grep -q '^libquorvvalida.so.1 libquorvvalida1 #MINVER#$' "$controle/symbols" ||
  falha "libquorvvalida1 sem o arquivo symbols"
dpkg-deb -f "$(deb libquorvvalida1)" Depends | grep -q 'libstdc++6' || falha "dependências"
dpkg-deb -f "$(deb libquorvvalida-dev)" Depends | grep -qF "libquorvvalida1 (= $versao)" ||
  falha "libquorvvalida-dev não depende de libquorvvalida1 (= $versao)"

# Each file in the package it belongs to, and in no other.
conteudo() { dpkg-deb -c "$(deb "$1")" | awk '{print $6}' | sed 's|^\./|/|'; }
pertence() {
  local pacote=$1 padrao=$2 outro
  conteudo "$pacote" | grep -qE "$padrao" || falha "$padrao fora de $pacote"
  for outro in libquorvvalida1 libquorvvalida-dev quorvvalida; do
    if [ "$outro" != "$pacote" ] && conteudo "$outro" | grep -qE "$padrao"; then
      falha "$padrao também em $outro"
    fi
  done
}
pertence libquorvvalida1 '/libquorvvalida\.so\.1$'
pertence libquorvvalida1 "/libquorvvalida\\.so\\.$versao\$"
pertence libquorvvalida-dev '/libquorvvalida\.so$'
pertence libquorvvalida-dev '/libquorvvalida\.a$'
pertence libquorvvalida-dev '^/usr/include/quorvvalida/quorvvalida\.h$'
pertence libquorvvalida-dev '/cmake/QuorvValida/QuorvValidaConfig\.cmake$'
pertence libquorvvalida-dev '/pkgconfig/quorvvalida\.pc$'
pertence libquorvvalida-dev '/pkgconfig/quorvvalida-estatica\.pc$'
pertence quorvvalida '^/usr/bin/quorvvalida$'
pertence quorvvalida '^/usr/bin/quorvvalida-gerador$'
pertence quorvvalida '^/usr/share/man/man1/quorvvalida\.1\.gz$'
pertence quorvvalida '^/usr/share/man/man1/quorvvalida-gerador\.1\.gz$'
pertence quorvvalida '^/usr/share/doc/quorvvalida/examples/notas-limpo\.txt$'
pertence quorvvalida '^/lib/systemd/system/quorvvalida\.service$'
# The service is installed disabled and stopped: the maintainer scripts never start it, and
# enable it again only where an operator had enabled it before (an upgrade).
controle_quorvvalida="$trabalho/controle-quorvvalida"
dpkg-deb -e "$(deb quorvvalida)" "$controle_quorvvalida"
if grep -qE 'deb-systemd-invoke (start|restart)' "$controle_quorvvalida"/postinst; then
  falha "o serviço quorvvalida é iniciado na instalação"
fi
if ! awk '/deb-systemd-helper enable/ && anterior !~ /was-enabled/ { sem_guarda = 1 }
          NF && $1 !~ /^#/ { anterior = $0 } END { exit sem_guarda }' \
  "$controle_quorvvalida"/postinst; then
  falha "o serviço quorvvalida é habilitado na instalação"
fi
conteudo libquorvvalida-dev | grep -q 'cls_quorv_adv_bd\.hpp\|\.in$' &&
  falha "cabeçalho privado ou modelo no pacote"

raiz="$trabalho/raiz"
for nome in libquorvvalida1 libquorvvalida-dev quorvvalida; do
  dpkg-deb -x "$(deb "$nome")" "$raiz"
done
libdir=$(dirname "$(find "$raiz/usr/lib" -name libquorvvalida.so.1 -print -quit)")
biblioteca="$libdir/libquorvvalida.so.1"
for amostra in notas-limpo notas-com-defeitos fichas-limpo fichas-com-defeitos; do
  cmp "$fontes/samples/$amostra.txt" "$raiz/usr/share/doc/quorvvalida/examples/$amostra.txt" ||
    falha "exemplo $amostra difere da amostra"
done

# The program and its manual pages, as installed.
[ "$("$raiz/usr/bin/quorvvalida" --version)" = "quorvvalida $versao" ] || falha "--version"
MANPATH="$raiz/usr/share/man" man -P cat quorvvalida 2>&1 | grep -q 'quorvvalida - valida arquivos' ||
  falha "man quorvvalida não mostra a página"
python3 "$fontes/tests/pacote/confere_manual.py" \
  "$raiz/usr/bin/quorvvalida" "$raiz/usr/share/man/man1/quorvvalida.1.gz" \
  "$raiz/usr/bin/quorvvalida-gerador" "$raiz/usr/share/man/man1/quorvvalida-gerador.1.gz"

# Runs the reference program on FILE in a directory of its own; prints the run status.
status_de_referencia() {
  local tipo=$1 arquivo=$2 diretorio=$3
  mkdir -p "$diretorio"
  "$referencia" "$tipo" "$arquivo" -d "$diretorio" --json --hoje "$hoje" \
    --chave-remessa "$chave" --separador "$separador" --inscricao-lib "$inscricao" \
    >"$diretorio.json" || true
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
  arquivo="$raiz/usr/share/doc/quorvvalida/examples/$amostra.txt"
  esperado="$trabalho/referencia/$amostra"
  status=$(status_de_referencia "$tipo" "$arquivo" "$esperado")

  programa="$trabalho/programa/$amostra"
  mkdir -p "$programa"
  codigo=0
  "$raiz/usr/bin/quorvvalida" "$tipo" "$arquivo" -d "$programa" -q --hoje "$hoje" \
    --chave-remessa "$chave" --separador "$separador" --inscricao-lib "$inscricao" || codigo=$?
  esperado_codigo=0
  [ -e "$esperado/ADVERTENCIAS.TXT" ] && esperado_codigo=1
  [ "$codigo" = "$esperado_codigo" ] || falha "$amostra: programa saiu com $codigo"
  mesmas_advertencias "$esperado" "$programa" "programa do pacote, $amostra"

  python="$trabalho/python/$amostra"
  mkdir -p "$python"
  resposta=$(python3 "$fontes/tests/pacote/anfitriao_ctypes.py" "$biblioteca" "$inscricao" \
    "$versao" "$tipo" "$arquivo" "$python" "$hoje" "$chave" "$separador")
  [ "${resposta%% *}" = "$status" ] || falha "$amostra: Python recebeu $resposta, esperado $status"
  mesmas_advertencias "$esperado" "$python" "Python, $amostra"
done

# pkg-config as it reads the installed files: the include directory is the system's, so the
# compiler needs no flag for it; the library is -lquorvvalida.
export PKG_CONFIG_PATH="$libdir/pkgconfig"
cflags=$(pkg-config --cflags quorvvalida | xargs)
libs=$(pkg-config --libs quorvvalida | xargs)
[ -z "$cflags" ] || falha "Cflags traz $cflags"
[ "$libs" = "-lquorvvalida" ] || falha "Libs traz $libs"

# C hosts that know the library only through pkg-config, its prefix moved to the scratch root:
# one linked to the shared library, one to the static.
precisa_da_compartilhada() {
  readelf -d "$1" | grep -q 'NEEDED.*\[libquorvvalida\.so\.1\]'
}
for pc in quorvvalida quorvvalida-estatica; do
  # shellcheck disable=SC2046 # pkg-config gives several words on purpose
  cc -std=c11 -Wall -Wextra -Werror -o "$trabalho/capi_$pc" "$fontes/tests/capi/capi_teste.c" \
    $(pkg-config --define-variable=prefix="$raiz/usr" --cflags --libs "$pc")
  mkdir -p "$trabalho/capi_$pc.trabalho"
  LD_LIBRARY_PATH="$libdir" "$trabalho/capi_$pc" "$trabalho/capi_$pc.trabalho" "$versao" ||
    falha "host C pelo pkg-config $pc"
done
precisa_da_compartilhada "$trabalho/capi_quorvvalida" || falha "host C sem libquorvvalida.so.1"
precisa_da_compartilhada "$trabalho/capi_quorvvalida-estatica" &&
  falha "host C estático depende de libquorvvalida.so.1"

# A C++ host through the CMake package, with each library.
for estatico in OFF ON; do
  cmake -S "$fontes/tests/pacote" -B "$trabalho/cmake-$estatico" -G Ninja \
    -DCMAKE_PREFIX_PATH="$raiz/usr" -DCMAKE_BUILD_TYPE=Release -DANFITRIAO_ESTATICO="$estatico" \
    >"$trabalho/cmake-$estatico.log" 2>&1 &&
    cmake --build "$trabalho/cmake-$estatico" >>"$trabalho/cmake-$estatico.log" 2>&1 ||
    { cat "$trabalho/cmake-$estatico.log" >&2; falha "host C++ (estático: $estatico)"; }
  LD_LIBRARY_PATH="$libdir" "$trabalho/cmake-$estatico/anfitriao" ||
    falha "host C++ (estático: $estatico) falhou"
done
precisa_da_compartilhada "$trabalho/cmake-OFF/anfitriao" || falha "host C++ sem a compartilhada"
precisa_da_compartilhada "$trabalho/cmake-ON/anfitriao" && falha "host C++ estático e compartilhado"
echo "testa_deb: pacotes $versao instalados e conferidos"
