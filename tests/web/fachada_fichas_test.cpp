// The web facade's registration-form path and the choice by document type, through real runs
// of the form validator.
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "arquivo_notas.hpp"
#include "arquivos.hpp"
#include "quorvvalida/validacao_tarnweb.hpp"

namespace quorv::teste {
namespace {

class FachadaFichas : public ::testing::Test {
 protected:
  FachadaFichas() {
    web.Hoje = [] { return SerialDaData(2024, 6, 30); };
  }

  bool TemRetorno() const {
    return std::filesystem::exists(std::filesystem::u8path(trabalho.Arquivo("RETORNO.TXT")));
  }

  // An invoice file whose third line holds a "#": any run of it leaves a warnings file.
  std::string ArquivoComAdvertencia() {
    ArquivoNotas arquivo;
    arquivo.CabecalhoV1();
    arquivo.TR01();
    arquivo.Novo("10").Campo(11, 20, "12345678901ABC000123").Campo(150, 1, "#");
    return arquivo.Grava(entrada);
  }

  DiretorioTemporario entrada;
  DiretorioTemporario trabalho;
  ValidacaoTarnWEB web;
  std::string numero = "intocado";
};

TEST_F(FachadaFichas, TipoDiferenteDePOuFNaoValidaNada) {
  const std::string arquivo = ArquivoComAdvertencia();
  for (const std::string tipo : {"p", " P", "P ", "f", " F", "", "PF", "X"}) {
    EXPECT_FALSE(web.Valida_TIPO(arquivo, "/RETORNO.TXT", trabalho.Texto(), numero, tipo)) << tipo;
    EXPECT_FALSE(trabalho.TemAdvertencias()) << tipo;
    EXPECT_FALSE(TemRetorno()) << tipo;
    EXPECT_EQ(numero, "intocado") << tipo;
  }
}

TEST_F(FachadaFichas, TipoPValidaNotas) {
  EXPECT_FALSE(
      web.Valida_TIPO(ArquivoComAdvertencia(), "/RETORNO.TXT", trabalho.Texto(), numero, "P"));
  EXPECT_EQ(LeBytes(trabalho.Arquivo("RETORNO.TXT")),
            LeBytes(std::string(QUORV_DADOS_WEB) + "/retorno_notas_caractere.txt"));
  EXPECT_EQ(numero, "000001");
}

TEST_F(FachadaFichas, TipoFComArquivoAusenteRespondeTrue) {
  EXPECT_TRUE(web.Valida_TIPO(entrada.Arquivo("ausente.txt"), "/RETORNO.TXT", trabalho.Texto(),
                              numero, "F"));
  EXPECT_FALSE(TemRetorno());
  EXPECT_FALSE(trabalho.TemAdvertencias());
}

// The form run ends with 9 and leaves no warnings file: the facade answers true.
TEST_F(FachadaFichas, ExecucaoQueTerminaEm9SemAdvertenciasRespondeTrue) {
  EXPECT_TRUE(web.Valida_Dados_Ficha_Cadastral(entrada.Arquivo("ausente.txt"), "/RETORNO.TXT",
                                               trabalho.Texto(), numero));
  EXPECT_FALSE(TemRetorno());
  EXPECT_FALSE(trabalho.TemAdvertencias());
  EXPECT_TRUE(web.Valida_Dados_Ficha_Cadastral(ArquivoComAdvertencia(), "/RETORNO.TXT",
                                               trabalho.Arquivo("nao-ha"), numero));
}

}  // namespace
}  // namespace quorv::teste
