list(APPEND QUORV_TESTES
  component/geral_test.cpp
  component/inscricao_test.cpp)
list(APPEND QUORV_TESTES_INTERNOS
  component/arquivo_saida_test.cpp
  component/decimal_test.cpp
  component/leitor_linhas_test.cpp
  component/texto_test.cpp)
