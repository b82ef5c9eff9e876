# Readers, the web facade and the file-name utilities.
list(APPEND QUORV_TESTES
  web/file_utility_test.cpp
  web/leitor_fichas_test.cpp
  web/tarnweb_test.cpp)
list(APPEND QUORV_TESTES_INTERNOS
  web/leitor_notas_test.cpp
  web/retorno_test.cpp)
# The expected return files, written by hand from the layout.
set_source_files_properties(web/tarnweb_test.cpp web/retorno_test.cpp PROPERTIES
  COMPILE_DEFINITIONS QUORV_DADOS_WEB="${CMAKE_CURRENT_LIST_DIR}/dados")
# The form path of the facade runs the registration-form validator: its tests join the others
# as soon as that validator is part of the library.
if(EXISTS ${PROJECT_SOURCE_DIR}/src/forms/validacao_ficha_cadastral.cpp)
  list(APPEND QUORV_TESTES web/fachada_fichas_test.cpp)
  set_source_files_properties(web/fachada_fichas_test.cpp PROPERTIES
    COMPILE_DEFINITIONS QUORV_DADOS_WEB="${CMAKE_CURRENT_LIST_DIR}/dados")
endif()
