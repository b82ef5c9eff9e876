list(APPEND QUORV_TESTES forms/catalogo_fichas_test.cpp)
