# The validation service (quorvvalida servir), started on a free loopback port and driven over
# HTTP by a client in Python; one test per group of cases, so that they run side by side.
if(QUORVVALIDA_FERRAMENTAS AND UNIX AND NOT EMSCRIPTEN)
  find_package(Python3 COMPONENTS Interpreter REQUIRED)
  foreach(grupo Validacao Erros Fila Autorizacao RegistroEMetricas Encerramento Pagina Memoria
          OpenApi LinhaDeComando)
    add_test(NAME servico.${grupo}
      COMMAND Python3::Interpreter ${CMAKE_CURRENT_SOURCE_DIR}/servico/servico_test.py
        $<TARGET_FILE:quorvvalida_cli> $<TARGET_FILE:quorvvalida-gerador>
        ${PROJECT_SOURCE_DIR}/samples $<TARGET_FILE:DllInscE32> ${grupo})
    set_tests_properties(servico.${grupo} PROPERTIES TIMEOUT 300)
  endforeach()
  # The systemd unit, where systemd is there to check it.
  find_program(QUORV_SYSTEMD_ANALYZE systemd-analyze)
  if(QUORV_SYSTEMD_ANALYZE)
    add_test(NAME servico.unidade_systemd
      COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/servico/verifica_unidade.sh
        ${PROJECT_SOURCE_DIR}/tools/quorvvalida/servir/quorvvalida.service
        $<TARGET_FILE:quorvvalida_cli> ${CMAKE_CURRENT_BINARY_DIR}/unidade)
  endif()
endif()
