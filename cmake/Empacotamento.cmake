# The package a server installs: `cpack -G DEB` in a build tree gives quorvvalida_VERSION_ARCH.deb
# with the command-line tool, the library, its headers, its CMake package and its pkg-config file.
# Build it shared and with the prefix /usr (scripts/empacotar does), so that the library lands in
# the system's library directory and hosts in other languages find it.
set(CPACK_PACKAGE_NAME quorvvalida)
set(CPACK_PACKAGE_VENDOR "QuorvValida")
set(CPACK_PACKAGE_CONTACT "Equipe QuorvValida")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
  "Validação dos arquivos de notas fiscais de produtor e de ficha cadastral")
set(CPACK_PACKAGE_DESCRIPTION
  "Confere os arquivos de largura fixa que os contribuintes enviam à Secretaria da Fazenda: \
notas fiscais de produtor (linhas de 160 caracteres) e fichas cadastrais (linhas de 260 \
caracteres). Cada problema vira uma linha de ADVERTENCIAS.TXT no diretório de trabalho. \
Traz o programa quorvvalida, a biblioteca com suas interfaces C++ e C, os cabeçalhos, o pacote \
CMake e o arquivo do pkg-config.")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
# The dependencies (the C and C++ run-time libraries) are read off the binaries by dpkg-shlibdeps.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
find_program(QUORVVALIDA_DPKG_DEB dpkg-deb)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
elseif(QUORVVALIDA_DPKG_DEB)
  set(CPACK_GENERATOR DEB)
else()
  set(CPACK_GENERATOR TGZ)
endif()
include(CPack)
