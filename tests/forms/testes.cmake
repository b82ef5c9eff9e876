list(APPEND QUORV_APOIO forms/arquivo_fichas.cpp)
list(APPEND QUORV_TESTES
  forms/cabecalho_fichas_test.cpp
  forms/catalogo_fichas_test.cpp
  forms/categoria_test.cpp
  forms/cnae_test.cpp
  forms/estrutura_test.cpp
  forms/execucao_fichas_test.cpp
  forms/gravacao_fichas_test.cpp
  forms/imovel_test.cpp
  forms/pessoas_test.cpp)
list(APPEND QUORV_TESTES_INTERNOS
  forms/estado_solicitacao_test.cpp)
