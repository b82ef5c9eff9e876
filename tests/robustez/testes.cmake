# Robustness: bad input files for both validators and both readers, and faults of the files a run
# writes. The threads test and the 1 GiB file test have executables of their own (see
# tests/CMakeLists.txt).
list(APPEND QUORV_APOIO robustez/robustez.cpp)
list(APPEND QUORV_TESTES
  robustez/entradas_fichas_test.cpp
  robustez/entradas_notas_test.cpp
  robustez/falhas_test.cpp
  robustez/numeros_test.cpp
  robustez/ultima_falha_test.cpp)
list(APPEND QUORV_TESTES_INTERNOS
  robustez/leitor_em_pedacos_test.cpp
  robustez/leitores_test.cpp)
