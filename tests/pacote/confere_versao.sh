#!/bin/sh
# The version is written once, in the top CMakeLists.txt, and read from there by the build, the
# program, the C interface and the Windows version resource. The Debian changelog and
# CHANGELOG.md must carry the same: the changelog's newest entry and CHANGELOG.md's first
# version heading.
#
#   confere_versao.sh VERSION SOURCES
set -eu
versao=$1
fontes=$2
falhas=0
debian=$(dpkg-parsechangelog -l "$fontes/debian/changelog" -S Version)
if [ "$debian" != "$versao" ]; then
  echo "debian/changelog traz $debian; CMakeLists.txt, $versao" >&2
  falhas=1
fi
changelog=$(sed -n 's/^## \([0-9][^ ]*\).*/\1/p' "$fontes/CHANGELOG.md" | head -n 1)
if [ "$changelog" != "$versao" ]; then
  echo "CHANGELOG.md traz ${changelog:-nenhuma versão}; CMakeLists.txt, $versao" >&2
  falhas=1
fi
[ "$falhas" = 0 ] && echo "versão $versao em CMakeLists.txt, debian/changelog e CHANGELOG.md"
exit "$falhas"
