# Installs the library into a fresh prefix, builds the host project against the installed
# package and runs it, builds the C host through pkg-config and runs it; then builds the same
# host project with the library as a subproject.
# Variables: FONTES (source tree), CONSTRUCAO (the library's build tree), TRABALHO (scratch),
# COMPILADOR_C (the C compiler), CMAKE_INSTALL_LIBDIR (the library directory under the prefix),
# VERSAO (the version the library must answer).
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
foreach(cabecalho quorvvalida.hpp quorvvalida.h exportacao.h geral.hpp validacao.hpp
    cls_quorv_adv_bd_fichas.hpp versao.hpp)
  if(NOT EXISTS ${prefixo}/include/quorvvalida/${cabecalho})
    message(FATAL_ERROR "cabeçalho público não instalado: ${cabecalho}")
  endif()
endforeach()

executa(${CMAKE_COMMAND} -S ${FONTES}/tests/pacote -B ${TRABALHO}/instalado
  -DCMAKE_PREFIX_PATH=${prefixo} -DCMAKE_BUILD_TYPE=Release)
executa(${CMAKE_COMMAND} --build ${TRABALHO}/instalado)
executa(${TRABALHO}/instalado/anfitriao)

# A C host built without CMake, through each pkg-config file: quorvvalida links the library as
# this tree built it, quorvvalida-estatica the static one. Their paths are the prefix the tree was
# installed to, written plainly.
find_program(pkg_config pkg-config REQUIRED)
set(ENV{PKG_CONFIG_PATH} ${prefixo}/${CMAKE_INSTALL_LIBDIR}/pkgconfig)
foreach(pc quorvvalida quorvvalida-estatica)
  execute_process(COMMAND ${pkg_config} --variable=prefix ${pc}
    OUTPUT_VARIABLE prefixo_pc RESULT_VARIABLE resultado OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT resultado EQUAL 0 OR NOT prefixo_pc STREQUAL prefixo)
    message(FATAL_ERROR "${pc}.pc: prefixo \"${prefixo_pc}\", esperado ${prefixo}")
  endif()
  execute_process(COMMAND ${pkg_config} --cflags --libs --static ${pc}
    OUTPUT_VARIABLE opcoes RESULT_VARIABLE resultado OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT resultado EQUAL 0)
    message(FATAL_ERROR "pkg-config não leu ${pc}.pc em ${prefixo}")
  endif()
  separate_arguments(opcoes UNIX_COMMAND "${opcoes}")
  executa(${COMPILADOR_C} -std=c11 -o ${TRABALHO}/capi_${pc} ${FONTES}/tests/capi/capi_teste.c
    ${opcoes})
  file(MAKE_DIRECTORY ${TRABALHO}/capi_${pc}.trabalho)
  executa(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${prefixo}/${CMAKE_INSTALL_LIBDIR}
    ${TRABALHO}/capi_${pc} ${TRABALHO}/capi_${pc}.trabalho ${VERSAO})
endforeach()

executa(${CMAKE_COMMAND} -S ${FONTES}/tests/pacote -B ${TRABALHO}/subprojeto
  -DQUORVVALIDA_FONTES=${FONTES} -DCMAKE_BUILD_TYPE=Release)
executa(${CMAKE_COMMAND} --build ${TRABALHO}/subprojeto --target anfitriao)
executa(${TRABALHO}/subprojeto/anfitriao)
