// The invoice warning catalogue.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "quorvvalida/cls_quorv_msg.hpp"

namespace quorv {
namespace {

std::string Texto(int16_t codigo) {
  return clsQuorvMsg().MensagemAdvertencia(codigo);
}

TEST(CatalogoNotas, CodigoSemTextoDizErroNaoCadastrado) {
  for (int16_t codigo : {0, 204, -1, 96, 97, 98, 99, 100, 180, 181, 182, 192, 199, 32767}) {
    EXPECT_EQ(Texto(codigo), "Erro não cadastrado") << codigo;
  }
}

TEST(CatalogoNotas, TodoCodigoDe1A203TemTextoSalvoOsDezSemUso) {
  int comTexto = 0;
  for (int16_t codigo = 1; codigo <= 203; ++codigo) {
    if (Texto(codigo) != "Erro não cadastrado") ++comTexto;
  }
  EXPECT_EQ(comTexto, 193);
}

TEST(CatalogoNotas, SeisTextosServemADuasPartes) {
  const std::vector<std::pair<int16_t, int16_t>> pares = {{20, 53}, {21, 54}, {22, 55},
                                                          {23, 56}, {46, 59}, {47, 60}};
  for (const auto& [primeiro, segundo] : pares) {
    EXPECT_EQ(Texto(primeiro), Texto(segundo)) << primeiro << " e " << segundo;
  }
  EXPECT_EQ(Texto(53), "Dígito verificador do CNPJ/CPF do Destinatário inválido");
}

struct CasoTexto {
  int16_t codigo;
  std::string texto;
};

TEST(CatalogoNotas, TextosComoOSistemaOsMostra) {
  const std::vector<CasoTexto> casos = {
      {1, "Série tem que ser numérica"},
      {65, "CNPJ/CPF do Destinátario deve ser numérico"},
      {70, "Campo deve ser ' ' ou 'T'"},
      {77, "Linha com tamanho Incorreto"},
      {87, "Arquivo com:  Mais de um Header"},
      {88, "Arquivo sem Trailler"},
      {101, "ERRO NA EXECUÇÃO"},
      {144, "Dois TR´s  20 seguidos"},
      {148, "Bloco de registros não foi fechado corretamente ( falta TR98 ou TR01 )"},
      {160, "Quantidade de TR´s 10 informado no TR 98 é inválida"},
      {166, "Sequência do registro ( número da linha ) está incorreta"},
      {167, "Nota Fiscal de Produtor rejeitada."},
      {178,
       "Notas do mesmo grupo com emitente ou destinatário ou país ou UF's ou operação "
       "diferentes entre si"},
      {201, "Caractere inválido:#"},
      {203, "Informante não autorizado ao Estabelecimento"},
  };
  for (const CasoTexto& caso : casos)
    EXPECT_EQ(Texto(caso.codigo), caso.texto) << caso.codigo;
}

}  // namespace
}  // namespace quorv
