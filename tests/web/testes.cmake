# Readers, the web facade and the file-name utilities.
list(APPEND QUORV_TESTES
  web/file_utility_test.cpp
  web/leitor_fichas_test.cpp)
list(APPEND QUORV_TESTES_INTERNOS
  web/leitor_notas_test.cpp)
