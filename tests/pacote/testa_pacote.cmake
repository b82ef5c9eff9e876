# Installs the library into a fresh prefix, builds the host project against the installed
# package and runs it, builds the C host through pkg-config and runs it; then builds the same
# host project with the library as a subproject.
# Variables: FONTES (source tree), CONSTRUCAO (the library's build tree), TRABALHO (scratch),
# COMPILADOR_C (the C compiler).
file(REMOVE_RECURSE ${TRABALHO})
set(prefixo ${TRABALHO}/prefixo)

function(executa)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE resultado OUTPUT_VARIABLE saida
    ERROR_VARIABLE saida)
  if(NOT resultado EQUAL 0)
    message(FATAL_ERROR "falhou: ${ARGN}\n${saida}")
  endif()
  message(STATUS "${saida}")
endfunction()

executa(${CMAKE_COMMAND} --install ${CONSTRUCAO} --prefix ${prefixo})
if(EXISTS ${prefixo}/include/quorvvalida/cls_quorv_adv_bd.hpp)
  message(FATAL_ERROR "o leitor interno clsQuorvAdvBD não pode ser instalado")
endif()
foreach(cabecalho quorvvalida.hpp geral.hpp validacao.hpp cls_quorv_adv_bd_fichas.hpp versao.hpp)
  if(NOT EXISTS ${prefixo}/include/quorvvalida/${cabecalho})
    message(FATAL_ERROR "cabeçalho público não instalado: ${cabecalho}")
  endif()
endforeach()

executa(${CMAKE_COMMAND} -S ${FONTES}/tests/pacote -B ${TRABALHO}/instalado
  -DCMAKE_PREFIX_PATH=${prefixo} -DCMAKE_BUILD_TYPE=Release)
executa(${CMAKE_COMMAND} --build ${TRABALHO}/instalado)
executa(${TRABALHO}/instalado/anfitriao)

# A C host built without CMake, with the flags pkg-config gives for the static library.
find_program(pkg_config pkg-config REQUIRED)
file(GLOB_RECURSE arquivo_pc ${prefixo}/quorvvalida.pc)
if(NOT arquivo_pc)
  message(FATAL_ERROR "quorvvalida.pc não instalado")
endif()
get_filename_component(diretorio_pc ${arquivo_pc} DIRECTORY)
set(ENV{PKG_CONFIG_PATH} ${diretorio_pc})
execute_process(COMMAND ${pkg_config} --cflags --libs --static quorvvalida
  OUTPUT_VARIABLE opcoes RESULT_VARIABLE resultado OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT resultado EQUAL 0)
  message(FATAL_ERROR "pkg-config não achou quorvvalida.pc em ${prefixo}")
endif()
separate_arguments(opcoes UNIX_COMMAND "${opcoes}")
executa(${COMPILADOR_C} -std=c11 -o ${TRABALHO}/capi_teste ${FONTES}/tests/capi/capi_teste.c
  ${opcoes})
file(MAKE_DIRECTORY ${TRABALHO}/capi)
executa(${TRABALHO}/capi_teste ${TRABALHO}/capi)

executa(${CMAKE_COMMAND} -S ${FONTES}/tests/pacote -B ${TRABALHO}/subprojeto
  -DQUORVVALIDA_FONTES=${FONTES} -DCMAKE_BUILD_TYPE=Release)
executa(${CMAKE_COMMAND} --build ${TRABALHO}/subprojeto --target anfitriao)
executa(${TRABALHO}/subprojeto/anfitriao)
