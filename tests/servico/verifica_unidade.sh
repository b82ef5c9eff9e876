#!/usr/bin/env bash
# The service's systemd unit, checked by systemd itself with the program under test in place of
# the installed one: any complaint fails.
# Usage: verifica_unidade.sh UNIDADE PROGRAMA PASTA
set -euo pipefail
unidade=$1
programa=$2
pasta=$3
rm -rf "$pasta"
mkdir -p "$pasta"
sed "s#/usr/bin/quorvvalida#$programa#" "$unidade" >"$pasta/quorvvalida.service"
grep -q "^ExecStart=$programa servir " "$pasta/quorvvalida.service" ||
  { echo "a unidade não roda 'quorvvalida servir'"; exit 1; }
for chave in DynamicUser=yes PrivateTmp=yes ProtectSystem=strict NoNewPrivileges=yes; do
  grep -qx "$chave" "$pasta/quorvvalida.service" || { echo "falta $chave"; exit 1; }
done
saida=$(systemd-analyze verify "$pasta/quorvvalida.service" 2>&1)
if [ -n "$saida" ]; then
  echo "$saida"
  exit 1
fi
# Installed disabled: nothing in the unit enables it along with another.
if grep -q "^Alias=\|^Also=" "$pasta/quorvvalida.service"; then
  echo "a unidade se habilita junto com outra"
  exit 1
fi
