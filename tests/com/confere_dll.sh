#!/usr/bin/env bash
# Checks a built QuorvValida.dll without running it: its machine type, that it exports exactly the
# five entry points of an in-process server by their plain names, that it imports from Windows
# system DLLs only (the C and C++ run times are linked in), and that the example DllInscE32.dll
# exports ConsisteInscricaoEstadual by its plain name.
# Use: confere_dll.sh OBJDUMP QuorvValida.dll DllInscE32.dll FORMATO (pei-x86-64 or pei-i386)
set -euo pipefail
objdump=$1 dll=$2 inscricao=$3 formato=$4

falha() {
  echo "FALHA: $*" >&2
  exit 1
}

exportacoes() {
  "$objdump" -p "$1" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/p' |
    sed -n 's/^\s*\[ *[0-9]*\] //p'
}

"$objdump" -f "$dll" | grep -q "file format $formato" || falha "$dll não é $formato"
"$objdump" -f "$inscricao" | grep -q "file format $formato" || falha "$inscricao não é $formato"
esperadas=$'DllCanUnloadNow\nDllGetClassObject\nDllInstall\nDllRegisterServer\nDllUnregisterServer'
[[ "$(exportacoes "$dll")" == "$esperadas" ]] || falha "exportações: $(exportacoes "$dll" | paste -sd ' ')"
[[ "$(exportacoes "$inscricao")" == "ConsisteInscricaoEstadual" ]] ||
  falha "DllInscE32.dll exporta: $(exportacoes "$inscricao" | paste -sd ' ')"
sistema='^(ADVAPI32|KERNEL32|msvcrt|ole32|OLEAUT32|USER32)\.dll$'
while read -r importada; do
  [[ "$importada" =~ $sistema ]] || falha "$dll importa $importada"
done < <("$objdump" -p "$dll" | sed -n 's/^\s*DLL Name: //p')
echo "$(basename "$dll") ($formato): 5 exportações, importações só do sistema"
