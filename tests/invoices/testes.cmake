list(APPEND QUORV_APOIO invoices/arquivo_notas.cpp)
list(APPEND QUORV_TESTES
  invoices/amostra_limpa_test.cpp
  invoices/auto_lancamento_test.cpp
  invoices/blocos_test.cpp
  invoices/cabecalho_test.cpp
  invoices/catalogo_notas_test.cpp
  invoices/execucao_notas_test.cpp
  invoices/gravacao_test.cpp
  invoices/grupo_notas_test.cpp
  invoices/grupo_test.cpp
  invoices/liquidacao_test.cpp
  invoices/nota_test.cpp
  invoices/trailer_test.cpp)
list(APPEND QUORV_TESTES_INTERNOS invoices/estado_grupo_test.cpp)
