# The library as its users get it: installed from this tree, with the symbols it shows. Not under the
# sanitizers: the hosts here are built without them and could not link an instrumented library.
if(NOT QUORVVALIDA_SANITIZAR)
  find_package(Python3 COMPONENTS Interpreter)
  set(quorv_pacote ${CMAKE_CURRENT_LIST_DIR})

  # A host project builds against the installed tree and as a subproject.
  if(QUORVVALIDA_INSTALAR)
    add_test(NAME pacote.anfitriao
      COMMAND ${CMAKE_COMMAND} -DFONTES=${PROJECT_SOURCE_DIR} -DCONSTRUCAO=${PROJECT_BINARY_DIR}
        -DTRABALHO=${CMAKE_CURRENT_BINARY_DIR}/pacote -DCOMPILADOR_C=${CMAKE_C_COMPILER}
        -DCMAKE_INSTALL_LIBDIR=${CMAKE_INSTALL_LIBDIR} -DVERSAO=${PROJECT_VERSION}
        -P ${quorv_pacote}/testa_pacote.cmake)
    set_tests_properties(pacote.anfitriao PROPERTIES TIMEOUT 600)
  endif()

  # A shared build shows its public contract and nothing else.
  get_target_property(quorv_tipo quorvvalida TYPE)
  if(quorv_tipo STREQUAL "SHARED_LIBRARY" AND NOT WIN32 AND Python3_Interpreter_FOUND)
    add_test(NAME pacote.simbolos
      COMMAND Python3::Interpreter ${quorv_pacote}/confere_simbolos.py $<TARGET_FILE:quorvvalida>
        ${PROJECT_SOURCE_DIR}/include/quorvvalida)
  endif()
endif()
