// The registration-form warning catalogue.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "quorvvalida/cls_quorv_msg_fichas.hpp"

namespace quorv {
namespace {

std::string Texto(int16_t codigo) {
  return clsQuorvMsgFichas().MensagemAdvertenciaFichas(codigo);
}

TEST(CatalogoFichas, ForaDe1A129DaTextoVazio) {
  for (int16_t codigo : {0, 130, -1, 999, 32767, -32768})
    EXPECT_EQ(Texto(codigo), "") << codigo;
}

TEST(CatalogoFichas, TodoCodigoDe1A129TemTexto) {
  for (int16_t codigo = 1; codigo <= 129; ++codigo)
    EXPECT_NE(Texto(codigo), "") << codigo;
}

struct CasoTexto {
  int16_t codigo;
  std::string texto;
};

TEST(CatalogoFichas, TextosComoOSistemaOsMostra) {
  const std::vector<CasoTexto> casos = {
      {1, "Linha com tamanho incorreto"},
      {7, "Arquivo sem TRAILLER"},
      {8, "Arquivo com mais de um TRAILLER"},
      {38, "Falta TR199 - Solicitação em Aberto"},
      {92, "Código do CNAE Fiscal inválido "},
      {103, "Código do páis inválido"},
      {125, "Solicitação Rejeitada"},
      {127, "Inclusao/Alteracao com dados informados"},
      {129, "Caracter inválido:#"},
  };
  for (const CasoTexto& caso : casos)
    EXPECT_EQ(Texto(caso.codigo), caso.texto) << caso.codigo;
}

}  // namespace
}  // namespace quorv
