#!/usr/bin/env bash
# The component's tests under Wine, one step per call (ctest runs them in order, serially):
#   prepara      a fresh Wine prefix, the DLL and the example DllInscE32.dll installed in
#                C:\QuorvValida and registered with regsvr32
#   script NOME  one VBScript or JScript test through Wine's cscript
#   tipos        the type library read back and compared with the contract
#   despacho     IDispatch called as compiled late-binding hosts call it
#   eventos      Progress and FichaProgress sunk by a compiled client
#   identico     the same files through COM and through the Linux command line: byte-identical
#                warnings files and return files, the same statuses and remessa numbers
#   direto       the DLL loaded by path, without DllInscE32.dll beside it, against the command line
#                without a state-registration library
#   usuario      regsvr32 /n /i:user registers under HKCU and removes all of it again
#   pacote       the zip for Windows users, unpacked, registered for the user by its
#                registrar.cmd, used, and unregistered by its desregistrar.cmd
#   desregistra  regsvr32 /u leaves no key of the component behind
# Environment (set by CMake): QV_WINE (the loader of this bitness), QV_PREFIXO, QV_DLL,
# QV_INSCRICAO (the Windows DllInscE32.dll), QV_CLIENTES (folder of the test programs),
# QV_SCRIPTS (folder of the scripts), QV_IDL, QV_AMOSTRAS, QV_NATIVO (the Linux build folder),
# QV_SISTEMA (system32 or syswow64), QV_ZIP.
set -euo pipefail

export WINEPREFIX="$QV_PREFIXO"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
export LC_ALL=C.UTF-8

quorvvalida="$QV_NATIVO/tools/quorvvalida/quorvvalida"
gerador="$QV_NATIVO/tools/gerador/quorvvalida-gerador"
inscricao_linux="$QV_NATIVO/tools/inscricao-exemplo/libDllInscE32.so"
c="$WINEPREFIX/drive_c"
# A working folder whose name has an accent, as the treasury's users' folders do.
trabalho_linux="$c/Remessas/São Paulo"
trabalho='C:\Remessas\São Paulo'
dados_linux="$c/dados"
dados='C:\dados'
comparar="$QV_PREFIXO.comparacao"

falha() {
  echo "FALHA: $*" >&2
  exit 1
}

wine_() {
  "$QV_WINE" "$@"
}

# Runs a program under Wine and checks that it ended with 0 and that its last line is FIM, which
# only a program that ran to its end prints (Wine's script host exits 0 even after a run-time
# error).
roda_ate_o_fim() {
  local saida codigo=0
  saida=$(wine_ "$@" 2>&1) || codigo=$?
  printf '%s\n' "$saida"
  local ultima
  ultima=$(printf '%s\n' "$saida" | tr -d '\r' | grep -v '^$' | tail -n 1)
  [[ "$ultima" == "FIM" ]] || falha "$1 não chegou ao fim"
  ((codigo == 0)) || falha "$1 terminou com $codigo"
}

# Runs a test script of the scripts folder through Wine's script host; a VBScript test gets the
# shared helpers of comum.vbs put before it.
cscript() {
  local nome=$1 pronto
  shift
  pronto="$QV_PREFIXO.scripts/$nome"
  mkdir -p "$QV_PREFIXO.scripts"
  if [[ "$nome" == *.vbs ]]; then
    cat "$QV_SCRIPTS/comum.vbs" "$QV_SCRIPTS/$nome" >"$pronto"
  else
    cp "$QV_SCRIPTS/$nome" "$pronto"
  fi
  roda_ate_o_fim "C:\\windows\\$QV_SISTEMA\\cscript.exe" //nologo "$(winepath -w "$pronto")" "$@"
}

# Every identifier the IDL gives the component, as an extended regular expression.
identificadores=$(grep -o 'uuid([0-9A-Fa-f-]*)' "$QV_IDL" | sed 's/uuid(\(.*\))/\1/' | paste -sd '|')

# Lists the component's keys in a registry branch: every line of the export that names one of
# its identifiers or its ProgIDs.
chaves_do_componente() {
  local ramo=$1 arquivo
  arquivo=$(mktemp)
  wine_ regedit /E "$(winepath -w "$arquivo")" "$ramo" >/dev/null 2>&1 || true
  iconv -f UTF-16LE -t UTF-8 "$arquivo" 2>/dev/null | tr -d '\r' |
    grep -iE "$identificadores|QuorvValida\." || true
  rm -f "$arquivo"
}

winepath() {
  wine_ winepath "$@" 2>/dev/null | tr -d '\r'
}

gera() {
  local tipo=$1 linhas=$2 nome=$3
  shift 3
  [[ -f "$dados_linux/$nome" ]] || "$gerador" "$tipo" -n "$linhas" "$@" -o "$dados_linux/$nome"
}

prepara() {
  rm -rf "$QV_PREFIXO" "$comparar"
  mkdir -p "$QV_PREFIXO"
  wine_ wineboot --init >/dev/null 2>&1
  wineserver -w
  chaves_do_componente 'HKEY_LOCAL_MACHINE\Software\Classes' >"$QV_PREFIXO.antes"
  [[ ! -s "$QV_PREFIXO.antes" ]] || falha "o prefixo novo já tem chaves do componente"
  mkdir -p "$c/QuorvValida" "$trabalho_linux" "$dados_linux"
  cp "$QV_DLL" "$QV_INSCRICAO" "$c/QuorvValida/"
  cp "$QV_AMOSTRAS"/*.txt "$dados_linux/"
  wine_ regsvr32 /s 'C:\QuorvValida\QuorvValida.dll' || falha "regsvr32 terminou com $?"
  [[ -n "$(chaves_do_componente 'HKEY_LOCAL_MACHINE\Software\Classes')" ]] ||
    falha "regsvr32 não escreveu as chaves"
}

# A clean folder of its own for each test, under the working folder.
pasta() {
  rm -rf "${trabalho_linux:?}/$1"
  mkdir -p "$trabalho_linux/$1"
  printf '%s\\%s' "$trabalho" "$1"
}

# UTF-16 text (the scripts' own files) to UTF-8 without the mark and with LF.
de_utf16() {
  python3 -c 'import sys; sys.stdout.write(open(sys.argv[1], encoding="utf-16").read().replace("\r\n", "\n"))' "$1"
}

script() {
  local nome=$1 dir
  case "$nome" in
    catalogos)
      cscript "catalogos.vbs" "$trabalho\\catalogos.txt"
      local esperado obtido
      esperado=$(mktemp)
      for n in $(seq -2 400); do
        printf 'notas|%s|%s\n' "$n" "$("$quorvvalida" mensagem notas -- "$n" 2>/dev/null || true)"
        printf 'fichas|%s|%s\n' "$n" "$("$quorvvalida" mensagem fichas -- "$n" 2>/dev/null || true)"
      done >"$esperado"
      de_utf16 "$trabalho_linux/catalogos.txt" | cmp - "$esperado" ||
        falha "os catálogos diferem da linha de comando"
      rm -f "$esperado"
      ;;
    caminhos)
      cscript "caminhos.vbs" "$dados\\notas-limpo.txt" "$trabalho"
      ;;
    validacao)
      dir=$(pasta validacao)
      cscript "validacao.vbs" "$dados\\notas-limpo.txt" \
        "$dados\\notas-com-defeitos.txt" "$dir"
      ;;
    fichas)
      dir=$(pasta fichas)
      cscript "fichas.vbs" "$dados\\fichas-limpo.txt" \
        "$dados\\fichas-com-defeitos.txt" "$dir"
      ;;
    web)
      dir=$(pasta web)
      cscript "web.vbs" "$dados\\notas-com-defeitos.txt" "$dados\\fichas-limpo.txt" "$dir"
      ;;
    leitor)
      dir=$(pasta leitor)
      cscript "leitor.vbs" "$dados\\fichas-com-defeitos.txt" "$dir" "$dir\\leitor.txt"
      # The command line's reader on the same warnings file, written by the command line.
      local nativo
      nativo=$(mktemp -d)
      "$quorvvalida" fichas "$dados_linux/fichas-com-defeitos.txt" -d "$nativo" -q \
        --inscricao-lib "$inscricao_linux" || true
      # The command line trims the description; the reader gives it 100 characters wide.
      "$quorvvalida" advertencias fichas "$nativo/ADVERTENCIAS.TXT" --json |
        python3 -c '
import json, sys
for a in json.load(sys.stdin)["advertencias"]:
    print("%s|%s|%s|%s" % (a["linha"], a["tr"], a["nota"], a["descricao"].ljust(100)))' >"$nativo/esperado.txt"
      de_utf16 "$trabalho_linux/leitor/leitor.txt" | cmp - "$nativo/esperado.txt" ||
        falha "o leitor difere da linha de comando"
      rm -rf "$nativo"
      ;;
    todas)
      dir=$(pasta todas)
      cscript "todas.js" "$dados\\notas-limpo.txt" "$dados\\fichas-com-defeitos.txt" "$dir" \
        'C:\QuorvValida\QuorvValida.dll'
      ;;
    *) falha "script desconhecido: $nome" ;;
  esac
}

tipos() {
  roda_ate_o_fim "$QV_CLIENTES/verifica_tipos.exe"
}

despacho() {
  local dir
  dir=$(pasta despacho)
  roda_ate_o_fim "$QV_CLIENTES/despacho.exe" "$dados\\notas-limpo.txt" "$dir"
}

eventos() {
  gera notas 5000 notas-5000.txt
  gera fichas 5000 fichas-5000.txt
  local dir
  dir=$(pasta eventos)
  roda_ate_o_fim "$QV_CLIENTES/eventos.exe" "$dados\\notas-5000.txt" "$dados\\fichas-5000.txt" "$dir" \
    'C:\QuorvValida\DllInscE32.dll'
  # A file of fewer than a hundred lines raises the event before every line.
  dir=$(pasta eventos-curto)
  roda_ate_o_fim "$QV_CLIENTES/eventos.exe" "$dados\\notas-limpo.txt" "$dados\\fichas-limpo.txt" "$dir" \
    'C:\QuorvValida\DllInscE32.dll'
}

# The command line's answer for a job, as comparacao.vbs writes it: kind|status|number.
nativo() {
  local tipo=$1 arquivo=$2 dir=$3
  shift 3
  mkdir -p "$dir"
  "$quorvvalida" "$tipo" "$arquivo" -d "$dir" --json "$@" 2>/dev/null |
    python3 -c '
import json, sys
d = json.load(sys.stdin)
print("%s|%s|%s" % (sys.argv[1], d["status"], d["numero_remessa"]))' "$tipo" || true
}

nativo_web() {
  local tipo=$1 arquivo=$2 dir=$3
  shift 3
  mkdir -p "$dir"
  "$quorvvalida" web "$arquivo" -r RETORNO.TXT -d "$dir" --tipo "$tipo" --json "$@" 2>/dev/null |
    python3 -c '
import json, sys
d = json.load(sys.stdin)
print("web|%d|%s" % (-1 if d["resultado"] else 0, d["numero_remessa"]))' || true
}

identico() {
  gera notas 20000 notas-20000.txt
  gera notas 20000 notas-20000-defeitos.txt --defeitos
  gera fichas 20000 fichas-20000.txt
  gera fichas 20000 fichas-20000-defeitos.txt --defeitos
  rm -rf "$comparar" "${trabalho_linux:?}/identico"
  mkdir -p "$comparar" "$trabalho_linux/identico"
  local tarefas="$comparar/tarefas.txt" esperado="$comparar/esperado.txt" i=0
  : >"$esperado"
  : >"$tarefas.utf8"
  for arquivo in notas-limpo notas-com-defeitos notas-20000 notas-20000-defeitos; do
    # Plain, with keys and another separator, and as the web system calls it.
    i=$((i + 1))
    echo "notas|$dados\\$arquivo.txt|$trabalho\\identico\\$i|0|0|||#" >>"$tarefas.utf8"
    nativo notas "$dados_linux/$arquivo.txt" "$comparar/$i" --inscricao-lib "$inscricao_linux" >>"$esperado"
    i=$((i + 1))
    echo "notas|$dados\\$arquivo.txt|$trabalho\\identico\\$i|20241125|12.5|REM|SRV01|;" >>"$tarefas.utf8"
    nativo notas "$dados_linux/$arquivo.txt" "$comparar/$i" --chave-remessa 20241125 \
      --chave-processamento 12.5 --origem REM --servidor SRV01 --separador ';' \
      --inscricao-lib "$inscricao_linux" >>"$esperado"
    i=$((i + 1))
    echo "web|P|$dados\\$arquivo.txt|$trabalho\\identico\\$i|SISTEMA|" >>"$tarefas.utf8"
    nativo_web P "$dados_linux/$arquivo.txt" "$comparar/$i" --programa-chamador SISTEMA \
      --inscricao-lib "$inscricao_linux" >>"$esperado"
  done
  for arquivo in fichas-limpo fichas-com-defeitos fichas-20000 fichas-20000-defeitos; do
    i=$((i + 1))
    echo "fichas|$dados\\$arquivo.txt|$trabalho\\identico\\$i|0|0|||#" >>"$tarefas.utf8"
    nativo fichas "$dados_linux/$arquivo.txt" "$comparar/$i" --inscricao-lib "$inscricao_linux" >>"$esperado"
    i=$((i + 1))
    echo "fichas|$dados\\$arquivo.txt|$trabalho\\identico\\$i|7|3.25|RET||;" >>"$tarefas.utf8"
    nativo fichas "$dados_linux/$arquivo.txt" "$comparar/$i" --chave-remessa 7 \
      --chave-processamento 3.25 --origem RET --separador ';' \
      --inscricao-lib "$inscricao_linux" >>"$esperado"
    i=$((i + 1))
    echo "web|F|$dados\\$arquivo.txt|$trabalho\\identico\\$i||REM" >>"$tarefas.utf8"
    nativo_web F "$dados_linux/$arquivo.txt" "$comparar/$i" --tipo-arquivo REM \
      --inscricao-lib "$inscricao_linux" >>"$esperado"
    i=$((i + 1))
    echo "web|F|$dados\\$arquivo.txt|$trabalho\\identico\\$i|SISTEMA|ret" >>"$tarefas.utf8"
    nativo_web F "$dados_linux/$arquivo.txt" "$comparar/$i" --programa-chamador SISTEMA \
      --tipo-arquivo ret --inscricao-lib "$inscricao_linux" >>"$esperado"
  done
  python3 -c 'import sys; open(sys.argv[2], "w", encoding="utf-16").write(open(sys.argv[1], encoding="utf-8").read().replace("\n", "\r\n"))' "$tarefas.utf8" "$tarefas"
  for j in $(seq 1 "$i"); do mkdir -p "$trabalho_linux/identico/$j"; done
  cscript "comparacao.vbs" "$(winepath -w "$tarefas")" "$trabalho\\identico\\resultado.txt"
  de_utf16 "$trabalho_linux/identico/resultado.txt" | diff - "$esperado" ||
    falha "statuses ou números diferem da linha de comando"
  local arquivos=0
  for j in $(seq 1 "$i"); do
    for nome in ADVERTENCIAS.TXT RETORNO.TXT; do
      local com="$trabalho_linux/identico/$j/$nome" nat="$comparar/$j/$nome"
      if [[ -e "$nat" || -e "$com" ]]; then
        [[ -e "$nat" && -e "$com" ]] || falha "tarefa $j: $nome só de um lado"
        cmp "$com" "$nat" || falha "tarefa $j: $nome difere"
        echo "tarefa $j: $nome idêntico ($(wc -c <"$com") bytes)"
        arquivos=$((arquivos + 1))
      fi
    done
  done
  echo "$i validações, $arquivos arquivos idênticos byte a byte"
  ((arquivos >= 10)) || falha "poucos arquivos comparados: $arquivos"
}

direto() {
  mkdir -p "$c/SemInscricao"
  cp "$QV_DLL" "$c/SemInscricao/"
  rm -rf "$comparar-direto"
  mkdir -p "$comparar-direto"
  local tarefas="$comparar-direto/tarefas.txt" esperado="$comparar-direto/esperado.txt" i=0
  : >"$tarefas"
  : >"$esperado"
  for arquivo in notas-limpo notas-com-defeitos fichas-limpo fichas-com-defeitos; do
    i=$((i + 1))
    local tipo=${arquivo%%-*}
    local dir
    dir=$(pasta "direto-$i")
    printf '%s|%s\\%s.txt|%s\n' "$tipo" "$dados" "$arquivo" "$dir" >>"$tarefas"
    # No state-registration library on the loader's path: every home-state registration refused.
    (
      unset LD_LIBRARY_PATH
      nativo "$tipo" "$dados_linux/$arquivo.txt" "$comparar-direto/$i"
    ) >>"$esperado"
  done
  roda_ate_o_fim "$QV_CLIENTES/cliente_direto.exe" 'C:\SemInscricao\QuorvValida.dll' \
    "$(winepath -w "$tarefas")" "$(winepath -w "$comparar-direto/resultado.txt")"
  diff "$comparar-direto/resultado.txt" "$esperado" || falha "resultados sem a biblioteca diferem"
  for j in $(seq 1 "$i"); do
    local com="$trabalho_linux/direto-$j/ADVERTENCIAS.TXT" nat="$comparar-direto/$j/ADVERTENCIAS.TXT"
    if [[ -e "$nat" || -e "$com" ]]; then
      cmp "$com" "$nat" || falha "sem a biblioteca: advertências de $j diferem"
    fi
  done
  # The clean invoice sample has home-state registrations: without the library they are refused.
  [[ -e "$trabalho_linux/direto-1/ADVERTENCIAS.TXT" ]] ||
    falha "sem a biblioteca, as inscrições do estado não foram recusadas"
}

usuario() {
  local ramo='HKEY_CURRENT_USER\Software\Classes'
  [[ -z "$(chaves_do_componente "$ramo")" ]] || falha "HKCU já tinha chaves do componente"
  wine_ regsvr32 /s /n /i:user 'C:\QuorvValida\QuorvValida.dll' || falha "registro do usuário: $?"
  local chaves
  chaves=$(chaves_do_componente "$ramo")
  for chave in 'CLSID\\{8B425DEE-240C-490A-BE81-874BE4EBCA22}\\InprocServer32' \
    'QuorvValida.clsQuorvAdvBDFichas\\CLSID' \
    'TypeLib\\{5AD026E3-8C80-4DC7-8310-05A64E75EF1A}\\1.0\\0\\win' \
    'Interface\\{2E62BEEF-F4E4-44BE-B90A-3D050B88187E}\\TypeLib'; do
    grep -q "$chave" <<<"$chaves" || falha "registro do usuário sem $chave"
  done
  grep -q 'QuorvValida.clsQuorvAdvBD\\' <<<"$chaves" && falha "clsQuorvAdvBD registrado"
  wine_ regsvr32 /s /u /n /i:user 'C:\QuorvValida\QuorvValida.dll' || falha "remoção do usuário: $?"
  [[ -z "$(chaves_do_componente "$ramo")" ]] || falha "a remoção do usuário deixou chaves"
  [[ -n "$(chaves_do_componente 'HKEY_LOCAL_MACHINE\Software\Classes')" ]] ||
    falha "a remoção do usuário apagou o registro da máquina"
  echo "registro do usuário: $(wc -l <<<"$chaves") linhas escritas e removidas"
}

pacote() {
  local destino="$c/Pacote" ramo='HKEY_CURRENT_USER\Software\Classes'
  rm -rf "$destino"
  mkdir -p "$destino"
  unzip -q "$QV_ZIP" -d "$destino"
  local pasta
  pasta=$(basename "$QV_ZIP" .zip)
  for arquivo in QuorvValida.dll QuorvValida.tlb QuorvValida.idl QuorvValida.h QuorvValida_i.c \
    registrar.cmd desregistrar.cmd LEIA-ME.txt exemplo/DllInscE32.dll; do
    [[ -f "$destino/$pasta/$arquivo" ]] || falha "o pacote não tem $arquivo"
  done
  [[ ! -e "$destino/$pasta/DllInscE32.dll" ]] || falha "a biblioteca de exemplo está ao lado da DLL"
  cmp "$destino/$pasta/QuorvValida.dll" "$QV_DLL" || falha "a DLL do pacote não é a construída"
  local saida
  saida=$(wine_ cmd /c "C:\\Pacote\\$pasta\\registrar.cmd" usuario 2>&1 | tr -d '\r')
  echo "$saida"
  grep -q "QuorvValida registrado" <<<"$saida" || falha "registrar.cmd usuario falhou"
  chaves_do_componente "$ramo" | grep -qi "Pacote" || falha "o registro não aponta para o pacote"
  cscript "caminhos.vbs" "$dados\\notas-limpo.txt" "$trabalho"
  saida=$(wine_ cmd /c "C:\\Pacote\\$pasta\\desregistrar.cmd" usuario 2>&1 | tr -d '\r')
  echo "$saida"
  grep -q "Registro do QuorvValida removido" <<<"$saida" || falha "desregistrar.cmd usuario falhou"
  [[ -z "$(chaves_do_componente "$ramo")" ]] || falha "desregistrar.cmd deixou chaves"
}

desregistra() {
  wine_ regsvr32 /s /u 'C:\QuorvValida\QuorvValida.dll' || falha "regsvr32 /u terminou com $?"
  local restos
  restos=$(chaves_do_componente 'HKEY_LOCAL_MACHINE\Software\Classes')
  [[ -z "$restos" ]] || falha "chaves deixadas: $restos"
  wineserver -k || true
}

etapa=$1
shift
case "$etapa" in
  prepara | script | tipos | despacho | eventos | identico | direto | usuario | pacote | desregistra)
    "$etapa" "$@"
    ;;
  *) falha "etapa desconhecida: $etapa" ;;
esac
