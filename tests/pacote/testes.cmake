# The library as its users get it: installed from this tree, built into Debian packages and
# installed from them, with the symbols it shows and its tools' manual pages. Not under the
# sanitizers: the hosts here are built without them and could not link an instrumented library.
if(NOT QUORVVALIDA_SANITIZAR)
  find_package(Python3 COMPONENTS Interpreter)
  set(quorv_pacote ${CMAKE_CURRENT_LIST_DIR})

  # The version is written once; what must repeat it says the same.
  find_program(QUORVVALIDA_DPKG_PARSECHANGELOG dpkg-parsechangelog)
  if(QUORVVALIDA_DPKG_PARSECHANGELOG)
    add_test(NAME pacote.versao
      COMMAND ${quorv_pacote}/confere_versao.sh ${PROJECT_VERSION} ${PROJECT_SOURCE_DIR})
  endif()

  # A host project builds against the installed tree and as a subproject.
  if(QUORVVALIDA_INSTALAR)
    add_test(NAME pacote.anfitriao
      COMMAND ${CMAKE_COMMAND} -DFONTES=${PROJECT_SOURCE_DIR} -DCONSTRUCAO=${PROJECT_BINARY_DIR}
        -DTRABALHO=${CMAKE_CURRENT_BINARY_DIR}/pacote -DCOMPILADOR_C=${CMAKE_C_COMPILER}
        -DCMAKE_INSTALL_LIBDIR=${CMAKE_INSTALL_LIBDIR} -DVERSAO=${PROJECT_VERSION}
        -P ${quorv_pacote}/testa_pacote.cmake)
    set_tests_properties(pacote.anfitriao PROPERTIES TIMEOUT 600)
  endif()

  # Every option the programs accept is in their manual pages.
  if(QUORVVALIDA_MANUAIS AND QUORVVALIDA_FERRAMENTAS AND Python3_Interpreter_FOUND)
    add_test(NAME manual.opcoes
      COMMAND Python3::Interpreter ${quorv_pacote}/confere_manual.py
        $<TARGET_FILE:quorvvalida_cli> ${PROJECT_BINARY_DIR}/man/quorvvalida.1
        $<TARGET_FILE:quorvvalida-gerador> ${PROJECT_BINARY_DIR}/man/quorvvalida-gerador.1)
  endif()

  # A shared build shows its public contract and nothing else.
  get_target_property(quorv_tipo quorvvalida TYPE)
  if(quorv_tipo STREQUAL "SHARED_LIBRARY" AND NOT WIN32 AND Python3_Interpreter_FOUND)
    add_test(NAME pacote.simbolos
      COMMAND Python3::Interpreter ${quorv_pacote}/confere_simbolos.py $<TARGET_FILE:quorvvalida>
        ${PROJECT_SOURCE_DIR}/include/quorvvalida)
  endif()

  # The Debian packages, built with dpkg-buildpackage from this tree without running these tests
  # again inside (nocheck), then checked by lintian, for their symbols, and installed and used.
  find_program(QUORVVALIDA_DPKG_BUILDPACKAGE dpkg-buildpackage)
  if(QUORVVALIDA_TESTE_PACOTE AND QUORVVALIDA_INSTALAR AND QUORVVALIDA_FERRAMENTAS
     AND QUORVVALIDA_MANUAIS AND QUORVVALIDA_DPKG_BUILDPACKAGE AND Python3_Interpreter_FOUND)
    set(quorv_debs ${CMAKE_CURRENT_BINARY_DIR}/deb)
    add_test(NAME pacote.construcao
      COMMAND ${CMAKE_COMMAND} -E env DEB_BUILD_OPTIONS=nocheck
        ${PROJECT_SOURCE_DIR}/scripts/empacotar ${quorv_debs}/pacotes)
    set_tests_properties(pacote.construcao PROPERTIES FIXTURES_SETUP pacotes_debian
      TIMEOUT 1800 LABELS debian)
    add_test(NAME pacote.lintian COMMAND ${quorv_pacote}/testa_lintian.sh ${quorv_debs}/pacotes)
    execute_process(COMMAND dpkg --print-architecture OUTPUT_VARIABLE quorv_arquitetura
      OUTPUT_STRIP_TRAILING_WHITESPACE)
    add_test(NAME pacote.simbolos_deb
      COMMAND Python3::Interpreter ${quorv_pacote}/confere_simbolos.py
        ${quorv_debs}/pacotes/libquorvvalida1_${PROJECT_VERSION}_${quorv_arquitetura}.deb
        ${PROJECT_SOURCE_DIR}/include/quorvvalida)
    add_test(NAME pacote.instalado
      COMMAND ${quorv_pacote}/testa_deb.sh ${PROJECT_SOURCE_DIR} ${quorv_debs}/pacotes
        $<TARGET_FILE:quorvvalida_cli> $<TARGET_FILE:DllInscE32> ${PROJECT_VERSION}
        ${quorv_debs}/instalado)
    set_tests_properties(pacote.lintian pacote.simbolos_deb pacote.instalado PROPERTIES
      FIXTURES_REQUIRED pacotes_debian TIMEOUT 900 LABELS debian)
  endif()
endif()
