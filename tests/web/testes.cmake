# Readers, the web facade and the file-name utilities.
list(APPEND QUORV_TESTES
  web/fachada_fichas_test.cpp
  web/file_utility_test.cpp
  web/leitor_fichas_test.cpp
  web/tarnweb_test.cpp)
list(APPEND QUORV_TESTES_INTERNOS
  web/leitor_notas_test.cpp
  web/retorno_test.cpp)
# The expected return files, written by hand from the layout.
set_source_files_properties(web/tarnweb_test.cpp web/retorno_test.cpp web/fachada_fichas_test.cpp
  PROPERTIES COMPILE_DEFINITIONS QUORV_DADOS_WEB="${CMAKE_CURRENT_LIST_DIR}/dados")
