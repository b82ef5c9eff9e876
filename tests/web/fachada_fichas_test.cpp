// The web facade's registration-form path and the choice by document type, through real runs
// of the form validator.
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "arquivo_fichas.hpp"
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

  // A request whose category is no code: the field checks record 89 on its line, and the
  // request's closing 125 against its TR 110 line; the structure rules find nothing.
  std::string FichasComCategoriaErrada() {
    ArquivoFichas arquivo;
    arquivo.Cabecalho();
    arquivo.TR100();
    arquivo.TR110();
    arquivo.TR111().Campo(22, 2, "00");
    arquivo.DaSolicitacao("199");
    arquivo.Trailer();
    return arquivo.Grava(entrada, "fichas.txt");
  }

  std::string Retorno() const { return LeBytes(trabalho.Arquivo("RETORNO.TXT")); }
  static std::string Esperado(const std::string& nome) {
    return LeBytes(std::string(QUORV_DADOS_WEB) + "/" + nome);
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

TEST_F(FachadaFichas, SemProgramaChamadorSoAsRegrasDeEstrutura) {
  // Origin "REM" with the server name "TARNWEB": the category is not looked at.
  EXPECT_TRUE(web.Valida_Dados_Ficha_Cadastral(FichasComCategoriaErrada(), "/RETORNO.TXT",
                                               trabalho.Texto(), numero));
  EXPECT_EQ(numero, "000001");
  EXPECT_FALSE(TemRetorno());
  EXPECT_FALSE(trabalho.TemAdvertencias());
}

TEST_F(FachadaFichas, ComProgramaChamadorOsCamposSaoVerificados) {
  web.ProgramaChamador("sistema");
  EXPECT_FALSE(web.Valida_Dados_Ficha_Cadastral(FichasComCategoriaErrada(), "/RETORNO.TXT",
                                                trabalho.Texto(), numero));
  EXPECT_EQ(Retorno(), Esperado("retorno_fichas_execucao.txt"));
  EXPECT_FALSE(trabalho.TemAdvertencias());
}

TEST_F(FachadaFichas, TipoArquivoRetComBrancosEMinusculasVerificaOsCampos) {
  // " ret " is stored as "RET": origin "RET" and no "TARNWEB", although no calling program
  // was set, so the field checks run.
  web.TipoArquivo(" ret ");
  EXPECT_FALSE(
      web.Valida_TIPO(FichasComCategoriaErrada(), "/RETORNO.TXT", trabalho.Texto(), numero, "F"));
  EXPECT_EQ(Retorno(), Esperado("retorno_fichas_execucao.txt"));
}

TEST_F(FachadaFichas, TipoArquivoDiferenteDeRetSemProgramaChamadorNaoVerificaCampos) {
  web.TipoArquivo("REM");
  EXPECT_TRUE(web.Valida_Dados_Ficha_Cadastral(FichasComCategoriaErrada(), "/RETORNO.TXT",
                                               trabalho.Texto(), numero));
  EXPECT_FALSE(TemRetorno());
}

TEST_F(FachadaFichas, ArquivoDeFichasLimpoRespondeTrue) {
  ArquivoFichas arquivo;
  arquivo.Cabecalho();
  arquivo.SolicitacaoCompleta("0000000001");
  arquivo.Trailer();
  web.ProgramaChamador("SISTEMA");
  EXPECT_TRUE(web.Valida_Dados_Ficha_Cadastral(arquivo.Grava(entrada), "/RETORNO.TXT",
                                               trabalho.Texto(), numero));
  EXPECT_FALSE(TemRetorno());
}

}  // namespace
}  // namespace quorv::teste
