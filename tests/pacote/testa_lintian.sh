#!/bin/sh
# lintian on what scripts/empacotar built, as the .changes file names it: the source package and
# the binary packages, debug symbols included. Any error or warning fails; the rest (information,
# overridden tags with their reasons) is shown.
#
#   testa_lintian.sh PACKAGES_DIR
set -eu
changes=$(ls "$1"/quorvvalida_*.changes)
lintian --fail-on error,warning --info --show-overrides "$changes"
echo "testa_lintian: nenhum erro e nenhum aviso em $(basename "$changes")"
